// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

#include <initializer_list>

/// Meaning of the words in the names and units of columns.
namespace csvwords {

/// The words of a text, in small letters; other characters separate them.
QStringList wordsOf(const QString& text);
bool isAmong(const QString& word, std::initializer_list<const char*> words);

/// Whether a column with these words may hold times.
bool isTime(const QStringList& words);
/// Whether a column with these words holds times for sure: a name with a unit at most.
bool isNamedTime(const QStringList& words);
/// Whether a column with these words counts rows.
bool isCounter(const QStringList& words);
/// Length of a unit of time, s; 1 for any other word.
double secondsOf(const QString& unit);

} // namespace csvwords
