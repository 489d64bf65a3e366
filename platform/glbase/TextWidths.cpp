// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glbase/TextWidths.h"

#include <QCoreApplication>
#include <QFont>
#include <QFontMetrics>
#include <QHash>
#include <QString>

namespace {

/// All that the width of a text depends on.
struct Measured
{
    QString text;
    QFont font;
    int height; ///< Of the font, which differs between devices.

    bool operator==(const Measured& other) const
    {
        return text == other.text && height == other.height && font == other.font;
    }
};

using Hash = decltype(::qHash(QString()));
Hash qHash(const Measured& measured, Hash seed) { return ::qHash(measured.text, seed); }

} // namespace

int textWidths::of(const QFont& font, const QString& text)
{
    return of(font, QFontMetrics(font), text);
}

int textWidths::of(const QFont& font, const QFontMetrics& metrics, const QString& text)
{
    constexpr int mostKept = 512;
    static QHash<Measured, int> widths;
    // Fonts must be gone before the application is.
    static const bool isTidy = (qAddPostRoutine([] { widths.clear(); }), true);
    Q_UNUSED(isTidy);
    const Measured measured{text, font, metrics.height()};
    auto found = widths.find(measured);
    if (found == widths.end()) {
        if (widths.size() >= mostKept)
            widths.clear();
        found = widths.insert(measured, metrics.horizontalAdvance(text));
    }
    return *found;
}
