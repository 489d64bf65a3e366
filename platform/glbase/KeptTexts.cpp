// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glbase/KeptTexts.h"

#include "platform/base/QtVersions.h"

#include <QCoreApplication>
#include <QFont>
#include <QHash>
#include <QPainter>
#include <QStaticText>
#include <QTransform>

#include <algorithm>
#include <cmath>

namespace {

/// All that the layout of a text depends on.
struct Look
{
    QString text;
    QFont font;
    QTransform scale; ///< To device pixels, without its translation.

    bool operator==(const Look& other) const
    {
        return text == other.text && scale == other.scale && font == other.font;
    }
};

using Hash = decltype(::qHash(QString()));
Hash qHash(const Look& look, Hash seed) { return ::qHash(look.text, seed); }

using Texts = QHash<Look, QStaticText>;

Texts& texts()
{
    static Texts kept;
    // Fonts must be gone before the application is.
    static const bool isTidy = (qAddPostRoutine([] { kept.clear(); }), true);
    Q_UNUSED(isTidy);
    return kept;
}

} // namespace

bool keptTexts::draw(QPainter& painter, const QRect& rect, int flags, const QString& text)
{
    constexpr int mostKept = 512;
    if (flags != Qt::AlignCenter || text.contains(QLatin1Char('\n')) ||
        text.contains(QLatin1Char('\t')))
        return false;
    // Between two pixels, kept texts are rounded in another way.
    const QTransform& toDevice = painter.deviceTransform();
    if (toDevice.type() > QTransform::TxScale || toDevice.m11() != std::floor(toDevice.m11()) ||
        toDevice.m22() != std::floor(toDevice.m22()) ||
        std::max(toDevice.m11(), toDevice.m22()) > QtVersions::exactStaticTextScale)
        return false;
    const Look look{
        text, painter.font(),
        QTransform(toDevice.m11(), toDevice.m12(), toDevice.m21(), toDevice.m22(), 0.0, 0.0)};
    Texts& kept = texts();
    auto found = kept.find(look);
    if (found == kept.end()) {
        if (kept.size() >= mostKept)
            kept.clear();
        QStaticText laidOut(text);
        laidOut.setTextFormat(Qt::PlainText);
        laidOut.setPerformanceHint(QStaticText::AggressiveCaching);
        laidOut.prepare(look.scale, look.font);
        found = kept.insert(look, laidOut);
    }
    const QSizeF size = found->size();
    if (size.width() > rect.width() || size.height() > rect.height())
        return false;
    painter.drawStaticText(QPointF(rect.x() + (rect.width() - size.width()) / 2.0,
                                   rect.y() + (rect.height() - size.height()) / 2.0),
                           *found);
    return true;
}
