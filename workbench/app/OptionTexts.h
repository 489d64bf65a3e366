// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

class QCommandLineParser;

namespace optionTexts {

/// Tells a parser the program's options, with what help says of them.
void describe(QCommandLineParser& parser);

} // namespace optionTexts
