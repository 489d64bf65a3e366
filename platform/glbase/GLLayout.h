// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/glbase/GLBaseWidget.h"
#include "platform/glbase/GLFrameWidget.h"

#include <memory>
#include <vector>

/// Stacks GL widgets from top to bottom in the order of their addition. Widgets with a fixed height
/// get it, the others share the rest evenly. Paints them and routes events to them. A press grabs
/// the mouse for its child until all buttons are up or a context menu opens. The menu key asks the
/// children from the top for a menu at their middle.
class ORVANE_PLATFORM_API GLLayout : public GLFrameWidget
{
    Q_OBJECT
public:
    explicit GLLayout(QWidget* parent = nullptr);
    /// Releases children that were not removed.
    ~GLLayout() override;

    /// Adds a widget at the bottom. Returns false, and changes nothing, for null and for a child of
    /// any layout.
    bool AddWidget(std::shared_ptr<GLBaseWidget> widget);
    /// Drops the layout's reference and clears the widget's frame. Returns false when it is not a
    /// child.
    bool RemoveWidget(GLBaseWidget& widget);
    const std::vector<std::shared_ptr<GLBaseWidget>>& Widgets() const { return m_children; }

    /// Paints a picture of the layout and the Qt widgets that its children carry, in any size. The
    /// layout and those widgets keep their own size and are not repainted. Later paints show the
    /// same as without the picture.
    ///
    /// Where the painter draws vectors (SVG, PDF), texts, lines, traces and fills become vectors,
    /// on a grid of a quarter of a logical pixel. See GLPainter::drawPoints for points.
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
    void RepaintChild(const QRect& area);
    /// Children were added, removed, or want another place.
    void ChildrenChanged();
    void PlaceChildren();
    int WidthOf(const GLBaseWidget& child, int depth) const;
    int HeightHint(int shareHeight) const;
    Child ChildAt(const QPoint& position) const;
    /// Notes the child under the pointer, and tells the one that the pointer left.
    void Hover(const Child& child);
    static void Send(GLBaseWidget& child, void (GLBaseWidget::*handler)(QMouseEvent*),
                     QMouseEvent* event);
    /// Returns whether the child took the event.
    bool SendContextMenu(GLBaseWidget& child, const QContextMenuEvent& event, const QPoint& at);
    void SendPress(void (GLBaseWidget::*handler)(QMouseEvent*), QMouseEvent* event);

    std::vector<Child> m_children;
    std::weak_ptr<GLBaseWidget> m_grabbed; // child that took the press
    std::weak_ptr<GLBaseWidget> m_hovered; // child under the pointer
    QSize m_placedSize;                    // size that the children were placed for
};
