// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/DensityTypes.h"

#include <QPointF>
#include <QRectF>

#include <optional>
#include <vector>

namespace density {

/// The part of the plane that a plot shows, its place, and the parts that it showed before. Without
/// a zoom it shows the home. Pixels are logical, y down.
class PlotView
{
public:
    enum Axes { XAxis = 1, YAxis = 2, BothAxes = 3 };
    static constexpr std::size_t mostSteps = 100; ///< that can be undone

    /// @param hasEqualScale  whether a unit has the same length on both axes.
    explicit PlotView(bool hasEqualScale)
        : m_hasEqualScale(hasEqualScale)
    {}

    void setEqualScale(bool isEqual) { m_hasEqualScale = isEqual; }
    bool hasEqualScale() const { return m_hasEqualScale; }
    /// Sets the home, and forgets the steps. A zoom stays.
    void setHome(const Window& home);
    const Window& home() const { return m_home; }
    /// The place of the plot. With an equal scale, what is shown depends on it.
    void setPlace(const QRectF& place) { m_place = place; }
    const QRectF& place() const { return m_place; }
    /// The part that the user zoomed to; none while the home is shown.
    const std::optional<Window>& zoom() const { return m_zoom; }
    /// The home, widened where the scale is equal.
    Window shownHome() const { return equalled(m_home); }
    std::optional<Window> shownZoom() const
    {
        return m_zoom ? std::optional<Window>(equalled(*m_zoom)) : m_zoom;
    }
    Window window() const { return equalled(m_zoom ? *m_zoom : m_home); }

    QPointF toPixel(const QPointF& value) const;
    QPointF toValue(const QPointF& pixel) const;

    // Each is a step that can be undone. Returns whether something changed.
    bool zoomAbout(const QPointF& pixel, double factor, Axes axes);
    bool zoomTo(const QRectF& pixels);
    bool goHome();
    bool undo();
    bool redo();
    /// A drag is one step: pan moves by pixels from where beginPan was called.
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
