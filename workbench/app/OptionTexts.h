// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

class QCommandLineParser;

namespace optionTexts {

/// Adds the program's options, with their help texts, to a parser.
void describe(QCommandLineParser& parser);

} // namespace optionTexts
