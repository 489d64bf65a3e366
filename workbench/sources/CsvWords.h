// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

#include <initializer_list>

/// What the words in the names and units of columns say.
namespace csvwords {

/// The words of a text, in small letters; what is no letter separates them.
QStringList wordsOf(const QString& text);
bool isAmong(const QString& word, std::initializer_list<const char*> words);

/// Whether they may be those of a column of times.
bool isTime(const QStringList& words);
/// Whether they are, and of nothing else: a name with a unit at most.
bool isNamedTime(const QStringList& words);
/// Whether they are those of a column that counts rows.
bool isCounter(const QStringList& words);
/// Seconds of a unit of time; 1 for a word that is none.
double secondsOf(const QString& unit);

} // namespace csvwords
