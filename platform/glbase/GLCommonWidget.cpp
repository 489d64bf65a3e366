// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glbase/GLCommonWidget.h"

#include "platform/glbase/GLPainter.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QWheelEvent>

#include <algorithm>
#include <utility>

GLCommonWidget::GLCommonWidget(const std::string& name, GLLayout* layout)
    : GLBaseWidget(name, layout)
{}

GLCommonWidget::~GLCommonWidget()
{
    for (const Entry<IMouseHandler>& entry : std::exchange(m_mouseObjects, {})) {
        if (const auto handler = entry.object.lock())
            handler->attached(nullptr);
    }
}

template<class T>
void GLCommonWidget::Insert(std::vector<Entry<T>>& entries, const std::shared_ptr<T>& object,
                            eZOrder zOrder)
{
    Remove(entries, object.get());
    const auto place =
        std::find_if(entries.begin(), entries.end(),
                     [zOrder](const Entry<T>& entry) { return entry.zOrder < zOrder; });
    entries.insert(place, {object, zOrder});
}

template<class T>
void GLCommonWidget::Remove(std::vector<Entry<T>>& entries, const T* object)
{
    const auto isGone = [object](const Entry<T>& entry) {
        const auto known = entry.object.lock();
        return !known || known.get() == object;
    };
    entries.erase(std::remove_if(entries.begin(), entries.end(), isGone), entries.end());
}

void GLCommonWidget::addMouseObject(std::weak_ptr<IMouseHandler> handler, eZOrder zOrder)
{
    if (const auto added = handler.lock()) {
        Insert(m_mouseObjects, added, zOrder);
        added->attached(this);
    }
}

void GLCommonWidget::removeMouseObject(const IMouseHandler* handler)
{
    const auto place = std::find_if(m_mouseObjects.begin(), m_mouseObjects.end(),
                                    [handler](const Entry<IMouseHandler>& entry) {
                                        return entry.object.lock().get() == handler;
                                    });
    if (!handler || place == m_mouseObjects.end())
        return;
    const auto removed = place->object.lock();
    Remove(m_mouseObjects, handler);
    if (m_grabber.lock() == removed)
        m_grabber.reset();
    removed->attached(nullptr);
}

void GLCommonWidget::addContextMenu(std::weak_ptr<IHasContextMenu> provider, eZOrder zOrder)
{
    if (const auto added = provider.lock())
        Insert(m_contextMenus, added, zOrder);
}

void GLCommonWidget::resizeEvent(QResizeEvent* event)
{
    GLBaseWidget::resizeEvent(event);
    update();
}

GLCommonWidget::Handlers GLCommonWidget::MouseObjects() const
{
    Handlers handlers;
    for (const Entry<IMouseHandler>& entry : m_mouseObjects) {
        if (auto handler = entry.object.lock())
            handlers.push_back(std::move(handler));
    }
    return handlers;
}

bool GLCommonWidget::HasMouseObject(const IMouseHandler* handler) const
{
    return std::any_of(m_mouseObjects.begin(), m_mouseObjects.end(),
                       [handler](const Entry<IMouseHandler>& entry) {
                           return entry.object.lock().get() == handler;
                       });
}

void GLCommonWidget::paintEvent(QPaintEvent*)
{
    const auto handlers = MouseObjects();
    for (auto handler = handlers.rbegin(); handler != handlers.rend(); ++handler) {
        GLPainter painter(GetFrameWidget());
        if (HasMouseObject(handler->get()))
            (*handler)->drawOverlay(this, painter);
    }
}

template<class Event>
std::shared_ptr<IMouseHandler>
GLCommonWidget::Offer(bool (IMouseHandler::*operation)(GLCommonWidget*, Event*), Event* event)
{
    event->ignore();
    const QPointer<GLCommonWidget> self(this);
    const auto grabber = m_grabber.lock();
    for (const auto& handler : grabber ? Handlers{grabber} : MouseObjects()) {
        // A handler that was called before may have removed this one.
        if (!HasMouseObject(handler.get()))
            continue;
        if ((handler.get()->*operation)(this, event)) {
            event->accept();
            return handler;
        }
        if (!self)
            break;
    }
    return nullptr;
}

void GLCommonWidget::OfferPress(bool (IMouseHandler::*operation)(GLCommonWidget*, QMouseEvent*),
                                QMouseEvent* event)
{
    const QPointer<GLCommonWidget> self(this);
    const auto taker = Offer(operation, event);
    if (self && taker && HasMouseObject(taker.get()))
        m_grabber = taker;
}

void GLCommonWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
    OfferPress(&IMouseHandler::mouseDoubleClick, event);
}

void GLCommonWidget::mousePressEvent(QMouseEvent* event)
{
    OfferPress(&IMouseHandler::mousePress, event);
}

void GLCommonWidget::mouseMoveEvent(QMouseEvent* event)
{
    const QPointer<GLCommonWidget> self(this);
    Offer(&IMouseHandler::mouseMove, event);
    if (self && event->buttons() == Qt::NoButton)
        m_grabber.reset();
}

void GLCommonWidget::mouseReleaseEvent(QMouseEvent* event)
{
    const QPointer<GLCommonWidget> self(this);
    Offer(&IMouseHandler::mouseRelease, event);
    if (self && event->buttons() == Qt::NoButton)
        m_grabber.reset();
}

void GLCommonWidget::wheelEvent(QWheelEvent* event) { Offer(&IMouseHandler::wheel, event); }

void GLCommonWidget::contextMenuEvent(QContextMenuEvent* event)
{
    event->ignore();
    const QPointer<GLCommonWidget> self(this);
    const auto providers = m_contextMenus;
    for (const Entry<IHasContextMenu>& entry : providers) {
        QMenu* menu = nullptr;
        if (const auto provider = entry.object.lock())
            menu = provider->getContextMenu(event, this, 0);
        if (menu) {
            event->accept();
            // Keep nothing alive meanwhile: an action of the menu may destroy the provider or the
            // widget.
            menu->exec(event->globalPos());
            if (const auto provider = entry.object.lock())
                provider->contextMenuClosed();
            return;
        }
        if (!self)
            return;
    }
}

void GLCommonWidget::leaveEvent(QEvent*)
{
    const QPointer<GLCommonWidget> self(this);
    for (const auto& handler : MouseObjects()) {
        if (!self)
            return;
        if (HasMouseObject(handler.get()))
            handler->leave(this);
    }
}

double GLCommonWidget::YStart(short) { return 0.0; }

double GLCommonWidget::YStop(short) { return rect().height(); }
