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
/// Of a diagram that always shows one range, the axis shows that range, whatever is set, and its
/// user cannot change it.
class ORVANE_PLATFORM_API XAxisWidget : public GLCommonWidget, public AxisHandler
{
    Q_OBJECT
public:
    XAxisWidget(const char* name, GLLayout* layout);
    ~XAxisWidget() override;

    int FixedHeight() const override;

    /// From now on what is shown is this range.
    void FixShownRange(double start, double stop);
    void ReleaseShownRange();

signals:
    /// The range changed: what is painted by it has to be painted again. A receiver must not
    /// destroy the axis.
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
