// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/chart/CGraphicEngineSwitch.h"

#include "platform/chart/CChartDisplay.h"
#include "platform/chart/ChartPicture.h"
#include "platform/chart/CurveRaster.h"
#include "platform/glbase/DeviceRaster.h"
#include "platform/glbase/PixelTarget.h"

#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace OndoChartDisplayComfort {

namespace {

using Items = std::vector<ChartPicture::Item>;

void draw(QPainter& painter, const ChartPicture::Fill& fill, const QRect& visible)
{
    const QRect rect = fill.rect.intersected(visible);
    if (fill.from == fill.to) {
        painter.fillRect(rect, QColor::fromRgba(fill.from));
        return;
    }
    QLinearGradient gradient(0.0, fill.rect.top(), 0.0, fill.rect.top() + fill.rect.height());
    gradient.setColorAt(0.0, QColor::fromRgba(fill.from));
    gradient.setColorAt(1.0, QColor::fromRgba(fill.to));
    painter.fillRect(rect, gradient);
}

void draw(QPainter& painter, const ChartPicture::Text& text)
{
    painter.setFont(text.font);
    painter.setPen(QColor::fromRgba(text.color));
    painter.drawText(text.rect, Qt::AlignCenter, text.text);
}

/// Draws vectors, clipped: not every vector painter clips at its borders.
void drawVectors(QPainter& painter, const Items& items, const QRect& visible)
{
    for (const ChartPicture::Item& item : items) {
        if (const auto* fill = std::get_if<ChartPicture::Fill>(&item)) {
            draw(painter, *fill, visible);
        } else if (const auto* text = std::get_if<ChartPicture::Text>(&item)) {
            draw(painter, *text);
        } else {
            const auto& curve = std::get<ChartPicture::Curve>(item);
            QPen pen(QColor::fromRgba(curve.color), curve.lineWidth);
            pen.setJoinStyle(Qt::RoundJoin);
            painter.setPen(pen);
            for (const QPolygonF& line : CurveRaster::Lines(curve))
                painter.drawPolyline(line);
        }
    }
}

/// Whether a picture of this size can be made: painters have a largest width and height, and the
/// picture is held three times with four bytes a pixel.
bool canBeKept(const QSizeF& size)
{
    constexpr double longestSide = 32767.0, mostPixels = 134217728.0;
    return size.width() <= longestSide && size.height() <= longestSide &&
           size.width() * size.height() <= mostPixels;
}

} // namespace

struct CGraphicEngineSwitch::Private
{
    std::weak_ptr<const ChartPicture> chart;
    QWidget* widget;

    // Everything behind the last curve. The last curve is the one that changes often.
    Items backdropItems;
    QImage backdrop;
    double ratio = 0.0;
    CurveRaster curve;
    QImage picture;

    void DrawBackdrop(const QSize& size, const QRect& visible);
    void Draw(QPainter& painter, const ChartPicture& chartPicture, const QRect& visible,
              bool afresh);
};

void CGraphicEngineSwitch::Private::DrawBackdrop(const QSize& size, const QRect& visible)
{
    if (backdrop.size() != size)
        backdrop = QImage(size, QImage::Format_RGB32);
    backdrop.fill(Qt::black);
    QPainter painter(&backdrop);
    painter.scale(ratio, ratio);
    for (const ChartPicture::Item& item : backdropItems) {
        if (const auto* fill = std::get_if<ChartPicture::Fill>(&item)) {
            draw(painter, *fill, visible);
        } else if (const auto* text = std::get_if<ChartPicture::Text>(&item)) {
            draw(painter, *text);
        } else {
            QImage withCurve;
            CurveRaster().StartAfresh(std::get<ChartPicture::Curve>(item), ratio, backdrop,
                                      withCurve);
            painter.resetTransform();
            painter.drawImage(0, 0, withCurve);
            painter.scale(ratio, ratio);
        }
    }
}

void CGraphicEngineSwitch::Private::Draw(QPainter& painter, const ChartPicture& chartPicture,
                                         const QRect& visible, bool afresh)
{
    const double newRatio = painter.paintEngine()->paintDevice()->devicePixelRatioF();
    if (!canBeKept(newRatio * QSizeF(visible.size()))) {
        drawVectors(painter, chartPicture.Items(), visible);
        return;
    }
    const QSize size(static_cast<int>(std::ceil(visible.width() * newRatio)),
                     static_cast<int>(std::ceil(visible.height() * newRatio)));
    if (size.isEmpty())
        return;

    const Items& items = chartPicture.Items();
    const auto last =
        std::find_if(items.rbegin(), items.rend(), [](const ChartPicture::Item& item) {
            return std::holds_alternative<ChartPicture::Curve>(item);
        });
    const auto* lastCurve = last == items.rend() ? nullptr : &std::get<ChartPicture::Curve>(*last);
    const auto behindEnd = lastCurve ? std::prev(last.base()) : items.end();

    if (afresh || newRatio != ratio || size != backdrop.size() ||
        !std::equal(items.begin(), behindEnd, backdropItems.begin(), backdropItems.end())) {
        afresh = true;
        ratio = newRatio;
        backdropItems.assign(items.begin(), behindEnd);
        DrawBackdrop(size, visible);
    }
    if (afresh)
        curve = CurveRaster(); // its picture has the old backdrop
    PixelTarget::FreeRegisters();
    if (lastCurve && curve.CanFollow(*lastCurve, ratio, size))
        curve.Follow(*lastCurve, backdrop, picture);
    else if (lastCurve)
        curve.StartAfresh(*lastCurve, ratio, backdrop, picture);

    painter.save();
    painter.scale(1.0 / ratio, 1.0 / ratio);
    painter.drawImage(0, 0, lastCurve ? picture : backdrop);
    painter.restore();
    for (auto item = last.base(); lastCurve && item != items.end(); ++item) {
        if (const auto* fill = std::get_if<ChartPicture::Fill>(&*item))
            draw(painter, *fill, visible);
        else if (const auto* text = std::get_if<ChartPicture::Text>(&*item))
            draw(painter, *text);
    }
}

CGraphicEngineSwitch::CGraphicEngineSwitch(OndoChartDisplay::CChartDisplay* display,
                                           QWidget* widget, GraphicEngine, bool, bool)
    : d(std::make_unique<Private>())
{
    if (display)
        d->chart = display->Picture();
    d->widget = widget;
}

CGraphicEngineSwitch::~CGraphicEngineSwitch() = default;

void CGraphicEngineSwitch::Update(bool afresh)
{
    const std::shared_ptr<const ChartPicture> chart = d->chart.lock();
    if (!chart || !d->widget)
        return;
    QPainter painter(d->widget);
    if (painter.isActive())
        d->Draw(painter, *chart, d->widget->rect(), afresh);
}

void CGraphicEngineSwitch::Render(QPainter& painter, const QSize& size) const
{
    const std::shared_ptr<const ChartPicture> chart = d->chart.lock();
    if (!chart || !painter.isActive())
        return;
    const QRect visible(QPoint(0, 0), size);
    if (DeviceRaster::IsVector(painter))
        drawVectors(painter, chart->Items(), visible);
    else
        Private().Draw(painter, *chart, visible, true);
}

} // namespace OndoChartDisplayComfort
