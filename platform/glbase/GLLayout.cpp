// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glbase/GLLayout.h"

#include "platform/base/QtVersions.h"
#include "platform/base/Saturate.h"

#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QResizeEvent>
#include <QScopedValueRollback>
#include <QWheelEvent>

#include <algorithm>
#include <utility>

GLLayout::GLLayout(QWidget* parent)
    : GLFrameWidget(parent)
{
    setMouseTracking(true);
}

GLLayout::~GLLayout()
{
    for (const Child& child : m_children)
        LetGo(*child);
}

bool GLLayout::IsChild(const GLBaseWidget* widget) const
{
    return std::any_of(m_children.begin(), m_children.end(),
                       [widget](const Child& child) { return child.get() == widget; });
}

bool GLLayout::AddWidget(std::shared_ptr<GLBaseWidget> widget)
{
    if (!widget)
        return false;
    const auto* owner = qobject_cast<const GLLayout*>(widget->GetFrameWidget());
    if (owner && owner->IsChild(widget.get()))
        return false;
    widget->m_pFrame = this;
    connect(widget.get(), &GLBaseWidget::repaintNeeded, this, &GLLayout::RepaintChild);
    connect(widget.get(), &GLBaseWidget::placeNeeded, this, &GLLayout::ChildrenChanged);
    m_children.push_back(std::move(widget));
    ChildrenChanged();
    return true;
}

bool GLLayout::RemoveWidget(GLBaseWidget& widget)
{
    const auto place =
        std::find_if(m_children.begin(), m_children.end(),
                     [&widget](const Child& child) { return child.get() == &widget; });
    if (place == m_children.end())
        return false;
    const Child removed = *place;
    m_children.erase(place);
    LetGo(widget);
    ChildrenChanged();
    return true;
}

void GLLayout::LetGo(GLBaseWidget& widget)
{
    widget.m_pFrame = nullptr;
    widget.disconnect(this);
    if (widget.m_pQWidget)
        widget.m_pQWidget->hide();
    if (m_grabbed.lock().get() == &widget)
        m_grabbed.reset();
    if (m_hovered.lock().get() == &widget)
        m_hovered.reset();
}

namespace {

/// Heights of the visible children, 0 for the others. Where the fixed heights do not fit, the last
/// children lose.
std::vector<int> SharedHeights(const std::vector<std::shared_ptr<GLBaseWidget>>& children,
                               int available)
{
    int fixed = 0;
    int shareCount = 0;
    for (const auto& child : children) {
        if (child->IsShownInLayout() && child->FixedHeight() > 0)
            fixed += child->FixedHeight();
        else if (child->IsShownInLayout())
            ++shareCount;
    }
    const int shared = std::max(0, available - fixed);
    int shareIndex = 0;
    std::vector<int> heights;
    for (const auto& child : children) {
        int height = 0;
        if (child->IsShownInLayout() && child->FixedHeight() > 0) {
            height = std::min(child->FixedHeight(), available);
        } else if (child->IsShownInLayout()) {
            height = shared * (shareIndex + 1) / shareCount - shared * shareIndex / shareCount;
            ++shareIndex;
        }
        available -= height;
        heights.push_back(height);
    }
    return heights;
}

} // namespace

void GLLayout::RepaintChild(const QRect& area)
{
    if (!IsPaintingPicture())
        UpdateContent(area);
}

void GLLayout::ChildrenChanged()
{
    updateGeometry();
    PlaceChildren();
}

void GLLayout::PlaceChildren()
{
    const bool isPicture = IsPaintingPicture();
    m_placedSize = ContentSize();
    const std::vector<Child> children = m_children;
    const std::vector<int> heights = SharedHeights(children, m_placedSize.height());
    int top = 0;
    for (std::size_t i = 0; i < children.size(); ++i) {
        GLBaseWidget& child = *children[i];
        child.m_left = 0.0F;
        child.m_right = static_cast<float>(WidthOf(child, 0));
        child.m_top = static_cast<float>(top);
        top += heights[i];
        child.m_bottom = static_cast<float>(top);
        if (!isPicture)
            child.PlaceQWidget();
    }
    if (!isPicture)
        UpdateContent();

    // A child may place, add or remove children in its event.
    const QPointer<GLLayout> self(this);
    for (const Child& child : children) {
        const QSize newSize = child->rect().size();
        const QSize oldSize = std::exchange(child->m_reportedSize, newSize);
        if (newSize == oldSize)
            continue;
        QResizeEvent event(newSize, oldSize);
        child->resizeEvent(&event);
        if (!self)
            return;
    }
}

int GLLayout::WidthOf(const GLBaseWidget& child, int depth) const
{
    // A chain longer than the number of siblings is a circle.
    if (child.m_alignMode != haAlign || depth > static_cast<int>(m_children.size()))
        return m_placedSize.width();
    int base = m_placedSize.width();
    if (child.m_alignName != QLatin1String("Top")) {
        const auto sibling =
            std::find_if(m_children.begin(), m_children.end(), [&child](const Child& other) {
                return other->objectName() == child.m_alignName;
            });
        if (sibling == m_children.end())
            return m_placedSize.width();
        base = WidthOf(**sibling, depth + 1);
    }
    return truncateSaturated<int>(base * child.m_alignFactor + 0.5, 0, m_placedSize.width());
}

void GLLayout::RenderPicture(QPainter& painter, const QSize& size)
{
    if (size.isEmpty() || !painter.isActive())
        return;
    const QSize shownSize = m_placedSize;
    const QScopedValueRollback<QSize> picture(m_pictureSize, size);
    painter.save();
    painter.setFont(font());
    Render(painter);
    painter.restore();
    // Place the children for the screen while the frame still paints a picture: no repaint follows.
    m_pictureSize = shownSize;
    PlaceChildren();
}

void GLLayout::PaintChildren(QPainter&)
{
    // A layout that was never shown has received no resize event.
    if (m_placedSize != ContentSize())
        PlaceChildren();
    const QScopedValueRollback<QRect> current(m_currentPlace);
    const std::vector<Child> children = m_children;
    for (const Child& child : children) {
        if (child->rect().isEmpty() || !IsChild(child.get()) || !IsExposed(child->geometry()))
            continue;
        m_currentPlace = child->geometry();
        QPaintEvent event(child->rect());
        child->paintEvent(&event);
    }
}

int GLLayout::HeightHint(int shareHeight) const
{
    int height = 0;
    for (const Child& child : m_children) {
        if (child->IsShownInLayout())
            height += child->FixedHeight() > 0 ? child->FixedHeight() : shareHeight;
    }
    return height;
}

QSize GLLayout::sizeHint() const { return {400, HeightHint(200)}; }

QSize GLLayout::minimumSizeHint() const { return {120, HeightHint(40)}; }

void GLLayout::resizeEvent(QResizeEvent* event)
{
    GLFrameWidget::resizeEvent(event);
    PlaceChildren();
}

void GLLayout::hideEvent(QHideEvent* event)
{
    GLFrameWidget::hideEvent(event);
    m_grabbed.reset();
    Hover(nullptr);
}

GLLayout::Child GLLayout::ChildAt(const QPoint& position) const
{
    const auto child =
        std::find_if(m_children.rbegin(), m_children.rend(), [&position](const Child& candidate) {
            return candidate->geometry().contains(position);
        });
    return child == m_children.rend() ? nullptr : *child;
}

void GLLayout::Hover(const Child& child)
{
    const Child left = m_hovered.lock();
    m_hovered = child;
    if (left && left != child) {
        QEvent event(QEvent::Leave);
        left->leaveEvent(&event);
    }
}

void GLLayout::Send(GLBaseWidget& child, void (GLBaseWidget::*handler)(QMouseEvent*),
                    QMouseEvent* event)
{
    QMouseEvent local(event->type(), QtVersions::position(*event) - child.geometry().topLeft(),
                      QtVersions::scenePosition(*event), QtVersions::globalPosition(*event),
                      event->button(), event->buttons(), event->modifiers(), event->source());
    local.setTimestamp(event->timestamp());
    (child.*handler)(&local);
    event->setAccepted(local.isAccepted());
}

void GLLayout::SendPress(void (GLBaseWidget::*handler)(QMouseEvent*), QMouseEvent* event)
{
    const bool isFirstButton = event->buttons() == Qt::MouseButtons(event->button());
    const Child child = isFirstButton ? ChildAt(event->pos()) : m_grabbed.lock();
    m_grabbed = child;
    event->ignore();
    if (child)
        Send(*child, handler, event);
}

void GLLayout::mouseDoubleClickEvent(QMouseEvent* event)
{
    SendPress(&GLBaseWidget::mouseDoubleClickEvent, event);
}

void GLLayout::mousePressEvent(QMouseEvent* event)
{
    SendPress(&GLBaseWidget::mousePressEvent, event);
}

void GLLayout::mouseMoveEvent(QMouseEvent* event)
{
    event->ignore();
    Child child = m_grabbed.lock();
    if (!child && event->buttons() == Qt::NoButton) {
        child = ChildAt(event->pos());
        const QPointer<GLLayout> self(this);
        Hover(child);
        if (!self)
            return;
    }
    if (event->buttons() == Qt::NoButton)
        m_grabbed.reset();
    if (child)
        Send(*child, &GLBaseWidget::mouseMoveEvent, event);
}

void GLLayout::mouseReleaseEvent(QMouseEvent* event)
{
    event->ignore();
    const QPointer<GLLayout> self(this);
    const Child child = m_grabbed.lock();
    if (event->buttons() == Qt::NoButton)
        m_grabbed.reset();
    if (child)
        Send(*child, &GLBaseWidget::mouseReleaseEvent, event);
    if (self && event->buttons() == Qt::NoButton)
        Hover(ChildAt(event->pos()));
}

void GLLayout::wheelEvent(QWheelEvent* event)
{
    event->ignore();
    const Child grabbed = m_grabbed.lock();
    const Child child = grabbed ? grabbed : ChildAt(event->position().toPoint());
    if (!child)
        return;
    QWheelEvent local(event->position() - child->geometry().topLeft(), event->globalPosition(),
                      event->pixelDelta(), event->angleDelta(), event->buttons(),
                      event->modifiers(), event->phase(), event->inverted(), event->source());
    local.setTimestamp(event->timestamp());
    child->wheelEvent(&local);
    event->setAccepted(local.isAccepted());
}

void GLLayout::contextMenuEvent(QContextMenuEvent* event)
{
    event->ignore();
    // The menu takes over the pointer, and the release of the button.
    const QPointer<GLLayout> self(this);
    m_grabbed.reset();
    Hover(nullptr);
    if (!self)
        return;
    // Not kept alive: an action of the menu may remove the child, which must be destroyed at once
    // then.
    if (event->reason() != QContextMenuEvent::Keyboard) {
        if (GLBaseWidget* child = ChildAt(event->pos()).get())
            event->setAccepted(SendContextMenu(*child, *event, event->pos()));
        return;
    }
    const std::vector<std::weak_ptr<GLBaseWidget>> children(m_children.begin(), m_children.end());
    for (const std::weak_ptr<GLBaseWidget>& each : children) {
        GLBaseWidget* child = each.lock().get();
        if (!child || !IsChild(child) || child->geometry().isEmpty())
            continue;
        event->setAccepted(SendContextMenu(*child, *event, child->geometry().center()));
        if (!self || event->isAccepted())
            return;
    }
}

bool GLLayout::SendContextMenu(GLBaseWidget& child, const QContextMenuEvent& event,
                               const QPoint& at)
{
    QContextMenuEvent local(event.reason(), at - child.geometry().topLeft(), mapToGlobal(at),
                            event.modifiers());
    child.contextMenuEvent(&local);
    return local.isAccepted();
}

void GLLayout::leaveEvent(QEvent* event)
{
    GLFrameWidget::leaveEvent(event);
    if (!m_grabbed.lock())
        Hover(nullptr);
}

void GLLayout::changeEvent(QEvent* event)
{
    GLFrameWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        ChildrenChanged();
}
