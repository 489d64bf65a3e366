// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

constexpr int maxTextLength = 500;  ///< of a name or a value, characters
constexpr int maxLineLength = 4000; ///< of a line or a sentence that holds several

/// A text from outside, such as a file's name or what is written in a file, so that it can be shown
/// in one line: white space of any kind is a space; characters that control a terminal, the
/// direction of the text after them, or are half a character, become U+FFFD. A text that is too
/// long ends in an ellipsis.
QString plainText(const QString& text, int maxLength = maxTextLength);
