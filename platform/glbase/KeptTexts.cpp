// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glbase/KeptTexts.h"

#include "platform/base/QtVersions.h"

#include <QCoreApplication>
#include <QFont>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QGlyphRun>
#include <QHash>
#include <QPaintEngine>
#include <QPainter>
#include <QStaticText>
#include <QTextLayout>
#include <QTransform>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

/// All that the layout of a text depends on; the font is that of the device.
struct Look
{
    QString text;
    QFont font;

    bool operator==(const Look& other) const { return text == other.text && font == other.font; }
};

using Hash = decltype(::qHash(QString()));
Hash qHash(const Look& look, Hash seed) { return ::qHash(look.text, seed); }

/// The layout of a text, made where there is none.
template<class Laid, class LayOut>
Laid& kept(const QPainter& painter, const QString& text, const LayOut& layOut)
{
    constexpr int mostKept = 512;
    static QHash<Look, Laid> all;
    // Fonts must be gone before the application is.
    static const bool isTidy = (qAddPostRoutine([] { all.clear(); }), true);
    Q_UNUSED(isTidy);
    const Look look{text, QFont(painter.font(), painter.device())};
    auto found = all.find(look);
    if (found == all.end()) {
        if (all.size() >= mostKept)
            all.clear();
        found = all.insert(look, layOut(look));
    }
    return found.value();
}

} // namespace

bool keptTexts::draw(QPainter& painter, const QRect& rect, int flags, const QString& text)
{
    if (flags != Qt::AlignCenter || text.contains(QLatin1Char('\n')) ||
        text.contains(QLatin1Char('\t')) ||
        painter.deviceTransform().type() > QTransform::TxTranslate)
        return false;
    auto& laidOut = kept<QStaticText>(painter, text, [](const Look& look) {
        QStaticText made(look.text);
        made.setTextFormat(Qt::PlainText);
        made.setPerformanceHint(QStaticText::AggressiveCaching);
        made.prepare({}, look.font);
        return made;
    });
    const QSizeF size = laidOut.size();
    if (size.width() > rect.width() || size.height() > rect.height())
        return false;
    painter.drawStaticText(QPointF(rect.x() + (rect.width() - size.width()) / 2.0,
                                   rect.y() + (rect.height() - size.height()) / 2.0),
                           laidOut);
    return true;
}

namespace {

/// Lines of a text as QPainter::drawText lays them out, from its upper left corner.
struct Lines
{
    struct Line
    {
        QList<QGlyphRun> runs;
        double advance;
    };
    std::vector<Line> lines;
    QSizeF size;
};

Lines linesOf(const Look& look)
{
    constexpr double noLimit = 1 << 24;
    QString text = look.text;
    text.replace(QLatin1Char('\n'), QChar::LineSeparator);
    QTextLayout layout(text, look.font);
    Lines result;
    const double leading = QFontMetricsF(look.font).leading();
    double height = -leading;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(noLimit);
        height = std::ceil(height + leading);
        line.setPosition({0.0, height});
        height += line.height();
        result.size.setWidth(std::max(result.size.width(), line.naturalTextWidth()));
    }
    layout.endLayout();
    result.size.setHeight(height);
    for (int i = 0; i < layout.lineCount(); ++i)
        result.lines.push_back(
            {layout.lineAt(i).glyphRuns(), layout.lineAt(i).horizontalAdvance()});
    return result;
}

/// Qt's fixed point numbers, of 1/64.
double fixed(double value) { return std::trunc(value * 64.0) / 64.0; }

/// Where a raster painter has to be told that a glyph is, in device pixels along X, so that it
/// draws what OpenGL's does. That takes the part of a pixel from the logical place.
double deviceX(double logical, double scale, double origin)
{
    constexpr double parts = 4.0; // of a pixel, by which glyphs are placed
    const double part = std::floor((logical - std::floor(logical)) * parts);
    return std::floor(logical * scale) + std::ceil(origin - 0.5) + (part + 0.5) / parts;
}

double deviceY(double logical, double scale, double origin)
{
    return std::floor(logical * scale + 0.5) + std::ceil(origin - 0.5);
}

bool isDrawnByGlyphs(const QFont& font, const QTransform& toDevice)
{
    constexpr double largest = 64.0; // pixels, from where on Qt fills outlines
    return QFontInfo(font).pixelSize() * std::max(toDevice.m11(), toDevice.m22()) < largest;
}

} // namespace

bool keptTexts::drawLikeOpenGL(QPainter& painter, const QRect& rect, int flags, const QString& text)
{
    const QTransform toDevice = painter.deviceTransform();
    const bool isScaled =
        toDevice.type() == QTransform::TxScale && toDevice.m11() > 0.0 && toDevice.m22() > 0.0;
    if (!QtVersions::placesTextsByLogicalPixels || !isScaled || !painter.paintEngine() ||
        painter.paintEngine()->type() != QPaintEngine::Raster || text.contains(QLatin1Char('\t')) ||
        !isDrawnByGlyphs(painter.font(), toDevice))
        return false;
    const Lines& laidOut = kept<Lines>(painter, text, linesOf);
    const double below = rect.height() - laidOut.size.height();
    const double y = rect.y() + (flags & Qt::AlignBottom    ? below
                                 : flags & Qt::AlignVCenter ? below / 2.0
                                                            : 0.0);
    const bool isCut = laidOut.size.width() > rect.width() || laidOut.size.height() > rect.height();
    if (isCut) {
        painter.save();
        painter.setClipRect(rect, Qt::IntersectClip);
    }
    for (const Lines::Line& line : laidOut.lines) {
        const double beside = rect.width() - line.advance;
        const double x = rect.x() + (flags & Qt::AlignRight     ? beside
                                     : flags & Qt::AlignHCenter ? beside / 2.0
                                                                : 0.0);
        for (QGlyphRun run : line.runs) {
            QVector<QPointF> places = run.positions();
            for (QPointF& place : places) {
                const double column = deviceX(fixed(x) + place.x(), toDevice.m11(), toDevice.dx());
                const double row = deviceY(fixed(y) + place.y(), toDevice.m22(), toDevice.dy());
                place = {(column - toDevice.dx()) / toDevice.m11(),
                         (row - toDevice.dy()) / toDevice.m22()};
            }
            run.setPositions(places);
            painter.drawGlyphRun({}, run);
        }
    }
    if (isCut)
        painter.restore();
    return true;
}
