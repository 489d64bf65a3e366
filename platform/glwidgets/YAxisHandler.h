// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/glbase/IHasContextMenu.h"
#include "platform/glbase/IMouseHandler.h"
#include "platform/glwidgets/AxisHandler.h"
#include "platform/glwidgets/IUnitTextProvider.h"

#include <QPoint>
#include <QPointer>

#include <memory>

class GLCommonWidget;
class QResizeEvent;

/// Y axis inside a plot: labels in a strip along the left border, also while the grid is off. In
/// the strip the wheel zooms about the pointer, a drag with the left button pans, a double click or
/// the strip's menu returns to the last range set by program.
class ORVANE_PLATFORM_API YAxisHandler : public AxisHandler,
                                         public IMouseHandler,
                                         public IHasContextMenu,
                                         public IUnitTextProvider
{
public:
    /// @param kind  kept for the caller; does not change the axis.
    explicit YAxisHandler(int kind);
    ~YAxisHandler() override;

    using AxisHandler::SetRange;
    /// Sets the range. The axis has one dimension, whatever the number says.
    void SetRange(double start, double stop, short dimension);
    /// Follows the height of the widget.
    void resizeEvent(QResizeEvent* event);

    /// Width in logical pixels of the strip that holds the labels, from the left border of the
    /// plot.
    int StripWidth() const;

    void SetUnitText(QString unit) override;
    const QString& UnitText() const { return m_unitText; }

    QMenu* getContextMenu(QContextMenuEvent* event, GLCommonWidget* widget, int index) override;
    void contextMenuClosed() override;

    bool mousePress(GLCommonWidget* widget, QMouseEvent* event) override;
    bool mouseMove(GLCommonWidget* widget, QMouseEvent* event) override;
    bool mouseRelease(GLCommonWidget* widget, QMouseEvent* event) override;
    bool mouseDoubleClick(GLCommonWidget* widget, QMouseEvent* event) override;
    bool wheel(GLCommonWidget* widget, QWheelEvent* event) override;
    void leave(GLCommonWidget* widget) override;
    void attached(GLCommonWidget* widget) override;
    void drawOverlay(GLCommonWidget* widget, GLPainter& painter) override;

protected:
    void RequestRepaint() override;

private:
    friend struct TestAccess;
    struct Private;
    std::unique_ptr<Private> d;
    QString m_unitText;
};
