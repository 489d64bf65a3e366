// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

#include <memory>

class QPainter;
class QSize;
class QWidget;

namespace OndoChartDisplay {
class CChartDisplay;
}

namespace OndoChartDisplayComfort {

enum GraphicEngine : int {
    geRaster = 1, ///< Drawn by the processor into a picture; the one engine there is.
};

/// Draws a chart into a widget. A paint costs as much as the changes since the last one: new values
/// of the last curve cost only themselves.
class ORVANE_PLATFORM_API CGraphicEngineSwitch
{
public:
    /// Renderer number of the layers that this class draws.
    static constexpr int RENDERER_ID = 1;

    /// @param display  may be destroyed first; then nothing is drawn any more.
    /// @param widget  must outlive the last Update.
    /// @param engine  kept for the caller, as are the two options; they do not change the picture.
    CGraphicEngineSwitch(OndoChartDisplay::CChartDisplay* display, QWidget* widget,
                         GraphicEngine engine, bool option1, bool option2);
    CGraphicEngineSwitch(const CGraphicEngineSwitch&) = delete;
    CGraphicEngineSwitch& operator=(const CGraphicEngineSwitch&) = delete;
    virtual ~CGraphicEngineSwitch();

    /// Paints the widget as the display's last Update left the picture. Only while the widget
    /// handles a paint event.
    /// @param afresh  draws everything again.
    void Update(bool afresh);
    /// Paints a picture of the display's last Update, as vectors where the painter draws vectors
    /// (SVG, PDF). Does not change the cost of later paints.
    /// @param size  that the display is laid out for, logical pixels.
    void Render(QPainter& painter, const QSize& size) const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace OndoChartDisplayComfort
