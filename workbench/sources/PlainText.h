// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

constexpr int maxTextLength = 500;  ///< of a name or a value, characters
constexpr int maxLineLength = 4000; ///< of a line or a sentence that holds several

/// A text from outside, such as the name or the content of a file, made fit to be shown in one
/// line: white space of any kind becomes a space; characters that control a terminal or the
/// direction of the text, and halves of surrogate pairs, become U+FFFD. A text that is too long
/// ends in an ellipsis.
QString plainText(const QString& text, int maxLength = maxTextLength);
