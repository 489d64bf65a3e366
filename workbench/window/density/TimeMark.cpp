// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/density/TimeMark.h"

#include "platform/gui/ColorSet.h"
#include "views/VCGLTimeDiagram.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

constexpr double leastWidth = 7.0; // pixels, to be seen
constexpr float opacity = 0.35F;

} // namespace

TimeMark::TimeMark(VCGLTimeDiagram& view)
    : QWidget(view.GetCanvas())
    , m_view(view)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    view.GetCanvas()->installEventFilter(this);
    hide();
}

void TimeMark::mark(const std::optional<std::pair<double, double>>& stretch)
{
    m_stretch = stretch;
    place();
}

/// Covers just the mark, so that little has to be painted twice.
void TimeMark::place()
{
    const auto [start, stop] = m_view.GetXAxisRange();
    const QRect plot = m_view.GetPlotRect();
    if (!m_stretch || !(stop > start) || plot.isEmpty()) {
        hide();
        return;
    }
    const auto pixelOf = [&, start = start, stop = stop](double value) {
        return plot.left() + (value - start) / (stop - start) * plot.width();
    };
    const double middle = 0.5 * (pixelOf(m_stretch->first) + pixelOf(m_stretch->second));
    const double width =
        std::max(pixelOf(m_stretch->second) - pixelOf(m_stretch->first), leastWidth);
    const QRectF band(middle - 0.5 * width, plot.top(), width, plot.height());
    const QRect seen = band.toAlignedRect() & plot;
    if (geometry() != seen)
        setGeometry(seen);
    setVisible(!seen.isEmpty());
}

bool TimeMark::eventFilter(QObject* watched, QEvent* event)
{
    // The axis may be another one than when it was marked.
    if (m_stretch && (event->type() == QEvent::Paint || event->type() == QEvent::Resize))
        QMetaObject::invokeMethod(this, &TimeMark::place, Qt::QueuedConnection);
    return QWidget::eventFilter(watched, event);
}

void TimeMark::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QColor color = ColorSet::Instance()[IColorBase::colTimeMarker];
    const double middle = 0.5 * width();
    color.setAlphaF(opacity);
    painter.fillRect(rect(), color);
    color.setAlphaF(1.0F);
    painter.fillRect(QRectF(middle - 0.5, 0.0, 1.0, height()), color);
}
