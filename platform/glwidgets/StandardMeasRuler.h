// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

#include <memory>

class AxisHandler;
class QWidget;
class ScanBufferWidgetBase;

/// Measurement ruler: a click in a plot sets a cursor with a read-out of x and y; a drag with the
/// left button sets a second one with dx and dy as well. Read-outs stand beside the cursors and in
/// the caption bar. The cursors stay at their values when the axes change. Escape clears them.
class ORVANE_PLATFORM_API StandardMeasRuler
{
public:
    StandardMeasRuler();
    ~StandardMeasRuler();
    StandardMeasRuler(const StandardMeasRuler&) = delete;
    StandardMeasRuler& operator=(const StandardMeasRuler&) = delete;

    /// Connects the ruler to a plot and its axes. Keeps none of them alive; each may be destroyed
    /// first.
    /// @param caption  caption bar that shows the read-out, may be null.
    void init(const std::shared_ptr<ScanBufferWidgetBase>& plot,
              const std::shared_ptr<AxisHandler>& xAxis, const std::shared_ptr<AxisHandler>& yAxis,
              QWidget* caption);
    /// Removes the cursors and their read-outs.
    void clear();
    /// Number of cursors that are set: 0, 1 or 2.
    int CursorCount() const;

private:
    friend struct TestAccess;
    class Handler;
    std::shared_ptr<Handler> m_handler;
};
