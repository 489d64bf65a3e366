// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/glbase/GLBaseWidget.h"
#include "platform/glbase/IHasContextMenu.h"
#include "platform/glbase/IMouseHandler.h"
#include "platform/glbase/ITextDisplayer.h"

#include <memory>
#include <vector>

/// A GL widget with helpers: mouse objects, which take part in events and painting, and context
/// menu providers. Events go to them in descending z-order; among equals the first added comes
/// first.
class ORVANE_PLATFORM_API GLCommonWidget : public GLBaseWidget, public ITextDisplayer
{
    Q_OBJECT
public:
    enum EWindowType : int { wtPlot = 0 };
    enum eZOrder : int { zoBottom = 0, zoRuler = 4, zoAxis = 8 };

    GLCommonWidget(const std::string& name, GLLayout* layout);
    ~GLCommonWidget() override;

    /// Adds a mouse object; the widget does not keep it alive.
    void addMouseObject(std::weak_ptr<IMouseHandler> handler, eZOrder zOrder);
    void removeMouseObject(const IMouseHandler* handler);
    /// Adds a context menu provider; the widget does not keep it alive.
    void addContextMenu(std::weak_ptr<IHasContextMenu> provider, eZOrder zOrder);

    /// No lines of text, unless a derived class shows them.
    void clear() override {}
    void addTextFreqList(const QString&) override {}

protected:
    // Mouse and wheel events are accepted when a mouse object took them, otherwise ignored.
    void resizeEvent(QResizeEvent* event) override;
    /// Draws the overlays of the mouse objects, lowest z-order first. May run inside the painter of
    /// a derived class.
    void paintEvent(QPaintEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    /// Runs the first menu that a provider offers.
    void contextMenuEvent(QContextMenuEvent* event) override;
    void leaveEvent(QEvent* event) override;

    /// Vertical range of the widget's content in a dimension, for helpers that draw over it. The
    /// default is its pixel rows: 0 at the top, its height at the bottom.
    virtual double YStart(short dimension);
    virtual double YStop(short dimension);

private:
    friend struct TestAccess;
    using Handlers = std::vector<std::shared_ptr<IMouseHandler>>;
    template<class T>
    struct Entry
    {
        std::weak_ptr<T> object;
        eZOrder zOrder;
    };

    template<class T>
    static void Insert(std::vector<Entry<T>>& entries, const std::shared_ptr<T>& object,
                       eZOrder zOrder);
    template<class T>
    static void Remove(std::vector<Entry<T>>& entries, const T* object);
    Handlers MouseObjects() const;
    bool HasMouseObject(const IMouseHandler* handler) const;
    /// Offers an event. Returns the mouse object that took it, or null.
    template<class Event>
    std::shared_ptr<IMouseHandler> Offer(bool (IMouseHandler::*operation)(GLCommonWidget*, Event*),
                                         Event* event);
    void OfferPress(bool (IMouseHandler::*operation)(GLCommonWidget*, QMouseEvent*),
                    QMouseEvent* event);

    std::vector<Entry<IMouseHandler>> m_mouseObjects;   // descending z-order
    std::vector<Entry<IHasContextMenu>> m_contextMenus; // descending z-order
    std::weak_ptr<IMouseHandler> m_grabber;             // took the last press
};
