// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/PlotView.h"

#include <algorithm>

namespace density {

void PlotView::setHome(const Window& home)
{
    m_home = home;
    m_undo.clear();
    m_redo.clear();
}

QPointF PlotView::toPixel(const QPointF& value) const
{
    const Window shown = window();
    return {m_place.left() + m_place.width() * ((value.x() - shown.left) / shown.width()),
            m_place.bottom() - m_place.height() * ((value.y() - shown.bottom) / shown.height())};
}

QPointF PlotView::toValue(const QPointF& pixel) const
{
    const Window shown = window();
    return {shown.left + shown.width() * ((pixel.x() - m_place.left()) / m_place.width()),
            shown.bottom + shown.height() * ((m_place.bottom() - pixel.y()) / m_place.height())};
}

// Widened about its middle, so that a unit is as long on both axes.
Window PlotView::equalled(const Window& window) const
{
    if (!m_hasEqualScale || m_place.isEmpty())
        return window;
    const double perPixel =
        std::max(window.width() / m_place.width(), window.height() / m_place.height());
    const double x = 0.5 * (window.left + window.right);
    const double y = 0.5 * (window.bottom + window.top);
    const double halfWidth = 0.5 * perPixel * m_place.width();
    const double halfHeight = 0.5 * perPixel * m_place.height();
    return {x - halfWidth, x + halfWidth, y - halfHeight, y + halfHeight};
}

bool PlotView::show(const std::optional<Window>& zoom, bool isStep)
{
    const std::optional<Window> wanted = zoom ? std::optional<Window>(equalled(*zoom)) : zoom;
    if (wanted == m_zoom || (wanted && !wanted->isUsable()))
        return false;
    if (isStep) {
        m_undo.push_back(m_zoom);
        if (m_undo.size() > mostSteps)
            m_undo.erase(m_undo.begin());
        m_redo.clear();
    }
    m_zoom = wanted;
    return true;
}

bool PlotView::zoomAbout(const QPointF& pixel, double factor, Axes axes)
{
    Window wanted = window();
    const QPointF about = toValue(pixel);
    if (axes & XAxis || m_hasEqualScale) {
        wanted.left = about.x() + (wanted.left - about.x()) * factor;
        wanted.right = about.x() + (wanted.right - about.x()) * factor;
    }
    if (axes & YAxis || m_hasEqualScale) {
        wanted.bottom = about.y() + (wanted.bottom - about.y()) * factor;
        wanted.top = about.y() + (wanted.top - about.y()) * factor;
    }
    return show(wanted, true);
}

bool PlotView::zoomTo(const QRectF& pixels)
{
    const QPointF low = toValue(pixels.bottomLeft());
    const QPointF high = toValue(pixels.topRight());
    return show(Window{low.x(), high.x(), low.y(), high.y()}, true);
}

bool PlotView::goHome() { return show({}, true); }

bool PlotView::undo()
{
    if (m_undo.empty())
        return false;
    m_redo.push_back(m_zoom);
    m_zoom = m_undo.back();
    m_undo.pop_back();
    return true;
}

bool PlotView::redo()
{
    if (m_redo.empty())
        return false;
    m_undo.push_back(m_zoom);
    m_zoom = m_redo.back();
    m_redo.pop_back();
    return true;
}

void PlotView::beginPan()
{
    m_panStart = window();
    m_isPanStep = true;
}

bool PlotView::pan(const QPointF& pixels)
{
    if (!m_panStart || m_place.isEmpty())
        return false;
    const double x = -pixels.x() / m_place.width() * m_panStart->width();
    const double y = pixels.y() / m_place.height() * m_panStart->height();
    const bool isNew = show(Window{m_panStart->left + x, m_panStart->right + x,
                                   m_panStart->bottom + y, m_panStart->top + y},
                            m_isPanStep);
    m_isPanStep = m_isPanStep && !isNew;
    return isNew;
}

} // namespace density
