// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/CsvWords.h"

#include <QRegularExpression>

#include <algorithm>

namespace csvwords {

bool isAmong(const QString& word, std::initializer_list<const char*> words)
{
    return std::any_of(words.begin(), words.end(),
                       [&word](const char* other) { return word == QString::fromUtf8(other); });
}

double secondsOf(const QString& unit)
{
    struct
    {
        std::initializer_list<const char*> names;
        double seconds;
    } const units[] = {{{"ms", "msec", "millisecond", "milliseconds"}, 1e-3},
                       {{"us", "\u00b5s", "\u03bcs", "usec", "microsecond", "microseconds"}, 1e-6},
                       {{"ns", "nsec", "nanosecond", "nanoseconds"}, 1e-9},
                       {{"ps"}, 1e-12},
                       {{"min", "minutes"}, 60.0},
                       {{"h", "hours"}, 3600.0}};
    for (const auto& candidate : units) {
        if (isAmong(unit, candidate.names))
            return candidate.seconds;
    }
    return 1.0;
}

bool isTime(const QStringList& words)
{
    return isAmong(words.value(0), {"t", "x", "s", "sec", "second", "seconds", "ms", "us"}) ||
           std::any_of(words.begin(), words.end(), [](const QString& word) {
               return isAmong(word, {"time", "timestamp", "zeit"});
           });
}

bool isNamedTime(const QStringList& words)
{
    return words.size() <= 2 && isAmong(words.value(0), {"time", "timestamp", "zeit"});
}

bool isCounter(const QStringList& words)
{
    return std::any_of(words.begin(), words.end(), [](const QString& word) {
        return isAmong(word, {"index", "sequence", "sample", "samples", "number", "nr", "no", "n",
                              "point", "points"});
    });
}

QStringList wordsOf(const QString& text)
{
    static const QRegularExpression gap(QStringLiteral("[^\\p{L}]+"));
    return text.toLower().split(gap, Qt::SkipEmptyParts);
}

} // namespace csvwords
