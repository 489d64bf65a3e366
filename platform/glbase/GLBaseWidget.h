// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

#include <QObject>
#include <QPointer>
#include <QRect>
#include <QSize>
#include <QString>

#include <string>

class GLFrameWidget;
class GLLayout;
class QContextMenuEvent;
class QEvent;
class QMouseEvent;
class QPainter;
class QPaintEvent;
class QResizeEvent;
class QWheelEvent;
class QWidget;

enum eHorizontalAlignment : int {
    haFill = 0,  ///< Full width of the layout.
    haAlign = 1, ///< The left edge and, times the factor, the width of the widget named.
};

/// A child of a GLLayout: an area of the frame's picture with its own painting and events. Holds no
/// GL resources. Owned by std::shared_ptr, so it has no QObject parent.
class ORVANE_PLATFORM_API GLBaseWidget : public QObject
{
    Q_OBJECT
public:
    /// @param name    object name, by which siblings align themselves.
    /// @param layout  the layout that the widget will be added to, its frame from now on; may be
    ///                null.
    GLBaseWidget(const std::string& name, GLLayout* layout);
    ~GLBaseWidget() override;

    /// The widget's area in its own pixel frame: (0, 0, width, height), logical pixels.
    QRect rect() const;
    /// The widget's area in the frame widget.
    QRect geometry() const;
    /// Schedules a repaint of the layout, if it was added to one.
    void update();
    /// The frame that paints this widget; null while it belongs to no layout.
    GLFrameWidget* GetFrameWidget() const;

    /// Aligns the widget to "Top" (the layout itself) or to a sibling by its object name, each time
    /// the layout places its children. Usable are a name, mode haAlign and a finite factor > 0;
    /// with anything else the widget fills the width. Returns whether the arguments are usable.
    bool SetHorizontalAlignment(const char* name, eHorizontalAlignment mode, double factor);
    /// Makes the widget carry a Qt widget, a child of the layout, which then has its place and is
    /// shown and hidden with it; null ends that. Owner and parent of the Qt widget do not change.
    /// It may be destroyed first.
    void SetQWidget(QWidget* widget);
    QWidget* GetQWidget() const;

    /// Height in logical pixels that the widget needs; 0 for a share of the remaining height.
    virtual int FixedHeight() const;

    /// Whether the widget has a place in its layout's picture; true at first.
    void ShowInLayout(bool show);
    bool IsShownInLayout() const { return m_visible; }

signals:
    // The layout listens from when the widget is added to it until it is removed.
    void repaintNeeded(const QRect& area); ///< in the frame widget
    /// It needs another place, or none.
    void placeNeeded();

protected:
    // Called by the layout, with event positions in the widget's pixel frame. An ignored event goes
    // on to the layout's parent; the defaults ignore theirs. The widget may be destroyed while it
    // runs a context menu; during other events the layout keeps it alive.
    virtual void resizeEvent(QResizeEvent* event);
    virtual void paintEvent(QPaintEvent* event);
    virtual void mouseDoubleClickEvent(QMouseEvent* event);
    virtual void mouseMoveEvent(QMouseEvent* event);
    virtual void mousePressEvent(QMouseEvent* event);
    virtual void mouseReleaseEvent(QMouseEvent* event);
    virtual void wheelEvent(QWheelEvent* event);
    virtual void contextMenuEvent(QContextMenuEvent* event);
    virtual void leaveEvent(QEvent* event);

    /// Paints the carried Qt widget into a picture, see GLLayout::RenderPicture. The default paints
    /// it as it is on the screen; override it to fill the place.
    /// @param painter  logical pixels, origin at the top left corner of the place.
    /// @param size     of the place.
    virtual void PaintCarried(QPainter& painter, const QSize& size);

    // Drawing rectangle in the frame, logical pixels, set by the layout.
    float m_left = 0.0F;
    float m_top = 0.0F;
    float m_right = 0.0F;
    float m_bottom = 0.0F;
    /// Passed to grid drawers unchanged.
    int m_drawParam = 0;

private:
    friend class GLLayout;
    friend struct TestAccess;

    void PlaceQWidget();

    QPointer<GLFrameWidget> m_pFrame;
    QPointer<QWidget> m_pQWidget;
    QString m_alignName;
    eHorizontalAlignment m_alignMode = haFill;
    double m_alignFactor = 1.0;
    bool m_visible = true;
    QSize m_reportedSize{0, 0}; // of the last resizeEvent
};
