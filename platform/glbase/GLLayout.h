// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/glbase/GLBaseWidget.h"
#include "platform/glbase/GLFrameWidget.h"

#include <memory>
#include <vector>

/// Stacks GL widgets from top to bottom in the order in which they were added: those with a fixed
/// height get it, the others share the rest evenly. Paints them and routes events to them; a press
/// grabs the mouse for its child until all buttons are up or a context menu is asked for. The menu
/// key asks the children from the top for theirs, at their middle.
class ORVANE_PLATFORM_API GLLayout : public GLFrameWidget
{
    Q_OBJECT
public:
    explicit GLLayout(QWidget* parent = nullptr);
    /// Lets go of children that were not removed.
    ~GLLayout() override;

    /// Adds a widget at the bottom; false for null and for a widget that is in a layout's list
    /// already (nothing changes).
    bool AddWidget(std::shared_ptr<GLBaseWidget> widget);
    /// Drops the layout's reference and clears the widget's frame; false when it is not a child.
    bool RemoveWidget(GLBaseWidget& widget);
    const std::vector<std::shared_ptr<GLBaseWidget>>& Widgets() const { return m_children; }

    /// Paints a picture of the layout with all that it carries, laid out for a size whatever its
    /// own is. The layout and the Qt widgets in it are neither resized nor painted for it, its
    /// children are as before afterwards, and the picture changes nothing that later paints show.
    ///
    /// Where the painter draws vectors (SVG, PDF), so do texts, lines, traces and fills, on a grid
    /// of a quarter of a logical pixel. Of points, see GLPainter::drawPoints.
    /// @param painter  logical pixels, origin at the top left corner. Must not be called while the
    ///                 layout paints.
    /// @param size     logical pixels; an empty one paints nothing.
    void RenderPicture(QPainter& painter, const QSize& size);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void PaintChildren(QPainter& painter) override;
    void resizeEvent(QResizeEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void leaveEvent(QEvent* event) override;
    /// Fixed heights follow the font.
    void changeEvent(QEvent* event) override;

private:
    friend class GLBaseWidget;
    friend struct TestAccess;
    using Child = std::shared_ptr<GLBaseWidget>;

    bool IsChild(const GLBaseWidget* widget) const;
    void LetGo(GLBaseWidget& widget);
    /// Children were added, removed, or want another place.
    void ChildrenChanged();
    void PlaceChildren();
    int WidthOf(const GLBaseWidget& child, int depth) const;
    int HeightHint(int shareHeight) const;
    Child ChildAt(const QPoint& position) const;
    /// Tells the child that the pointer has left that it has.
    void Hover(const Child& child);
    static void Send(GLBaseWidget& child, void (GLBaseWidget::*handler)(QMouseEvent*),
                     QMouseEvent* event);
    /// Whether a child took the event.
    bool SendContextMenu(GLBaseWidget& child, const QContextMenuEvent& event, const QPoint& at);
    void SendPress(void (GLBaseWidget::*handler)(QMouseEvent*), QMouseEvent* event);

    std::vector<Child> m_children;
    std::weak_ptr<GLBaseWidget> m_grabbed; // child that took the press
    std::weak_ptr<GLBaseWidget> m_hovered; // child under the pointer
    QSize m_placedSize;                    // size that the children were placed for
};
