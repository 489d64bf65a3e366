// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/glbase/GLCommonWidget.h"
#include "platform/glwidgets/AxisHandler.h"

#include <memory>

/// X axis below a plot: tick marks with labels through the axis definition's formatter, and, while
/// the pointer is over the axis, a read-out of the value under it with its unit. The wheel zooms
/// about the pointer, a drag pans, a double click or the context menu returns to the last range set
/// by program. Labels never overlap.
///
/// FixShownRange makes the axis of a diagram that always shows one range show that range, whatever
/// else is set; the user cannot change it.
class ORVANE_PLATFORM_API XAxisWidget : public GLCommonWidget, public AxisHandler
{
    Q_OBJECT
public:
    XAxisWidget(const char* name, GLLayout* layout);
    ~XAxisWidget() override;

    int FixedHeight() const override;

    /// Shows this range from now on, until ReleaseShownRange.
    void FixShownRange(double start, double stop);
    /// Ends FixShownRange.
    void ReleaseShownRange();

signals:
    /// The range changed: repaint the pictures that follow it. A receiver must not destroy the
    /// axis.
    void si_rangeChanged();

protected:
    void RequestRepaint() override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    friend struct TestAccess;
    struct Private;
    std::shared_ptr<Private> d;
};
