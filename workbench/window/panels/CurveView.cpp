// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/panels/CurveView.h"

#include "platform/glbase/axisDefinition.h"
#include "platform/gui/ColorSet.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

constexpr int lines = 9; // of text that it is high
constexpr int gap = 4;

QColor color(IColorBase::ECOLOR number) { return ColorSet::Instance()[number]; }

} // namespace

CurveView::CurveView(const QString& name, QWidget* parent)
    : QWidget(parent)
{
    setAccessibleName(name);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void CurveView::show(const Content& content)
{
    m_content = content;
    update();
}

QSize CurveView::minimumSizeHint() const
{
    return {16 * fontMetrics().averageCharWidth(), lines * fontMetrics().lineSpacing()};
}

/// What the curves reach, y downwards from the top as in the signal's plane.
QRectF CurveView::range() const
{
    double left = HUGE_VAL, right = -HUGE_VAL, bottom = HUGE_VAL, top = -HUGE_VAL;
    for (const QPolygonF& curve : m_content.curves) {
        for (const QPointF& point : curve) {
            if (!std::isfinite(point.x()) || !std::isfinite(point.y()))
                continue;
            left = std::min(left, point.x());
            right = std::max(right, point.x());
            bottom = std::min(bottom, point.y());
            top = std::max(top, point.y());
        }
    }
    if (m_content.areBars)
        bottom = 0.0;
    if (m_content.isLogarithm)
        bottom = m_content.lowest;
    return left < right && bottom < top ? QRectF(left, bottom, right - left, top - bottom)
                                        : QRectF();
}

void CurveView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const int line = fontMetrics().lineSpacing();
    const int left = fontMetrics().horizontalAdvance(QStringLiteral("1e-12")) + gap;
    const QRectF area(left, gap, std::max(width() - left - gap, 1),
                      std::max(height() - 2 * line - 2 * gap, 1));
    painter.fillRect(area, color(IColorBase::colEyeBackground));
    const QRectF range = this->range();
    if (range.isEmpty()) {
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(area.adjusted(gap, 0, -gap, 0), Qt::AlignCenter | Qt::TextWordWrap,
                         m_content.missing);
        return;
    }
    paintAxes(painter, area, range);
    painter.setClipRect(area);
    paintCurves(painter, area, range);
}

void CurveView::paintAxes(QPainter& painter, const QRectF& area, const QRectF& range) const
{
    const QFontMetrics metrics = fontMetrics();
    const QPen grid(color(IColorBase::colGrid)), text(palette().color(QPalette::WindowText));
    axisDefinition x(axisDefinition::Orientation::Horizontal);
    x.SetRange(range.left(), range.right());
    x.SetLength(static_cast<int>(area.width()));
    for (const axisDefinition::Tick& tick : x.GetTicks()) {
        const double at = area.left() + (tick.value - range.left()) / range.width() * area.width();
        painter.setPen(grid);
        painter.drawLine(QPointF(at, area.top()), QPointF(at, area.bottom()));
        const QString label = x.Label(tick.value);
        const double width = metrics.horizontalAdvance(label);
        painter.setPen(text);
        painter.drawText(QPointF(std::clamp(at - 0.5 * width, 0.0, this->width() - width),
                                 area.bottom() + metrics.ascent() + 1),
                         label);
    }
    painter.drawText(
        QRectF(0.0, area.bottom() + metrics.lineSpacing(), width(), metrics.lineSpacing()),
        Qt::AlignRight, metrics.elidedText(m_content.xName, Qt::ElideRight, width()));
    const auto drawLevel = [&](double value, const QString& label) {
        const double at = area.bottom() - (value - range.top()) / range.height() * area.height();
        painter.setPen(grid);
        painter.drawLine(QPointF(area.left(), at), QPointF(area.right(), at));
        painter.setPen(text);
        painter.drawText(
            QRectF(0.0, at - 0.5 * metrics.lineSpacing(), area.left() - gap, metrics.lineSpacing()),
            Qt::AlignRight | Qt::AlignVCenter, label);
    };
    if (!m_content.isLogarithm)
        return;
    constexpr int decades = 3; // from line to line
    for (int exponent = 0; exponent > m_content.lowest; exponent -= decades) {
        if (exponent <= range.bottom())
            drawLevel(exponent,
                      exponent == 0 ? QStringLiteral("1") : QStringLiteral("1e%1").arg(exponent));
    }
}

void CurveView::paintCurves(QPainter& painter, const QRectF& area, const QRectF& range) const
{
    const auto pixelOf = [&](const QPointF& point) {
        return QPointF(area.left() + (point.x() - range.left()) / range.width() * area.width(),
                       area.bottom() - (point.y() - range.top()) / range.height() * area.height());
    };
    painter.setRenderHint(QPainter::Antialiasing, !m_content.areBars);
    const QColor ink = color(IColorBase::colEyeTrace);
    for (const QPolygonF& curve : m_content.curves) {
        for (int k = 0; k + 1 < curve.size(); ++k) {
            const QPointF from = pixelOf(curve[k]), to = pixelOf(curve[k + 1]);
            if (!std::isfinite(from.y()) || !std::isfinite(to.y()))
                continue;
            if (m_content.areBars) {
                painter.fillRect(QRectF(from, QPointF(to.x(), area.bottom())), ink);
            } else {
                painter.setPen(QPen(ink, 1.5));
                painter.drawLine(from, to);
            }
        }
    }
}
