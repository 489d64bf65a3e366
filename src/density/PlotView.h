// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/DensityTypes.h"

#include <QPointF>
#include <QRectF>

#include <optional>
#include <vector>

namespace density {

/// Which part of the plane a plot shows, where, and what it showed before. The home is what it
/// shows unless zoomed. Pixels are logical, y down.
class PlotView
{
public:
    enum Axes { XAxis = 1, YAxis = 2, BothAxes = 3 };
    static constexpr std::size_t mostSteps = 100; ///< that can be undone

    /// @param hasEqualScale  whether a unit is as long on both axes.
    explicit PlotView(bool hasEqualScale)
        : m_hasEqualScale(hasEqualScale)
    {}

    void setEqualScale(bool isEqual) { m_hasEqualScale = isEqual; }
    bool hasEqualScale() const { return m_hasEqualScale; }
    /// Forgets the steps. What is zoomed stays so.
    void setHome(const Window& home);
    const Window& home() const { return m_home; }
    /// The place of the plot. With an equal scale, what is shown depends on it.
    void setPlace(const QRectF& place) { m_place = place; }
    const QRectF& place() const { return m_place; }
    /// What is shown; none where that is the home.
    const std::optional<Window>& zoom() const { return m_zoom; }
    /// The home with an equal scale in its place, where it shall have one.
    Window shownHome() const { return equalled(m_home); }
    std::optional<Window> shownZoom() const
    {
        return m_zoom ? std::optional<Window>(equalled(*m_zoom)) : m_zoom;
    }
    Window window() const { return equalled(m_zoom ? *m_zoom : m_home); }

    QPointF toPixel(const QPointF& value) const;
    QPointF toValue(const QPointF& pixel) const;

    // Each is a step that can be undone; false where nothing changes.
    bool zoomAbout(const QPointF& pixel, double factor, Axes axes);
    bool zoomTo(const QRectF& pixels);
    bool goHome();
    bool undo();
    bool redo();
    /// A drag is one step: after begin, moves by pixels from there.
    void beginPan();
    bool pan(const QPointF& pixels);

private:
    bool show(const std::optional<Window>& zoom, bool isStep);
    Window equalled(const Window& window) const;

    bool m_hasEqualScale;
    Window m_home;
    QRectF m_place;
    std::optional<Window> m_zoom;
    std::vector<std::optional<Window>> m_undo, m_redo;
    std::optional<Window> m_panStart; // what was shown
    bool m_isPanStep = false;         // the drag has not been kept as a step
};

} // namespace density
