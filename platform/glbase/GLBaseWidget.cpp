// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glbase/GLBaseWidget.h"

#include "platform/glbase/GLFrameWidget.h"

#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <cmath>

GLBaseWidget::~GLBaseWidget() = default;

QRect GLBaseWidget::rect() const
{
    return {0, 0, static_cast<int>(m_right - m_left), static_cast<int>(m_bottom - m_top)};
}

QRect GLBaseWidget::geometry() const
{
    return rect().translated(static_cast<int>(m_left), static_cast<int>(m_top));
}

void GLBaseWidget::update() { emit repaintNeeded(geometry()); }

GLFrameWidget* GLBaseWidget::GetFrameWidget() const { return m_pFrame; }

bool GLBaseWidget::SetHorizontalAlignment(const char* name, eHorizontalAlignment mode,
                                          double factor)
{
    const bool isUsable = name && *name && mode == haAlign && std::isfinite(factor) && factor > 0.0;
    m_alignMode = isUsable ? haAlign : haFill;
    m_alignName = isUsable ? QString::fromUtf8(name) : QString();
    m_alignFactor = isUsable ? factor : 1.0;
    emit placeNeeded();
    return isUsable;
}

void GLBaseWidget::SetQWidget(QWidget* widget)
{
    if (m_pQWidget && m_pQWidget != widget)
        m_pQWidget->hide();
    m_pQWidget = widget;
    emit placeNeeded();
}

QWidget* GLBaseWidget::GetQWidget() const { return m_pQWidget; }

int GLBaseWidget::FixedHeight() const { return 0; }

void GLBaseWidget::ShowInLayout(bool show)
{
    if (m_visible == show)
        return;
    m_visible = show;
    emit placeNeeded();
}

void GLBaseWidget::PlaceQWidget()
{
    if (!m_pQWidget)
        return;
    if (geometry().isEmpty()) {
        m_pQWidget->hide();
        return;
    }
    m_pQWidget->setGeometry(geometry());
    if (m_pQWidget->isHidden()) {
        m_pQWidget->show();
        m_pQWidget->raise();
    }
}

void GLBaseWidget::resizeEvent(QResizeEvent*) {}

void GLBaseWidget::PaintCarried(QPainter& painter, const QSize&)
{
    m_pQWidget->render(&painter, QPoint(), QRegion(), QWidget::DrawChildren);
}

void GLBaseWidget::mouseDoubleClickEvent(QMouseEvent* event) { event->ignore(); }

void GLBaseWidget::mouseMoveEvent(QMouseEvent* event) { event->ignore(); }

void GLBaseWidget::mousePressEvent(QMouseEvent* event) { event->ignore(); }

void GLBaseWidget::mouseReleaseEvent(QMouseEvent* event) { event->ignore(); }

void GLBaseWidget::wheelEvent(QWheelEvent* event) { event->ignore(); }

void GLBaseWidget::contextMenuEvent(QContextMenuEvent* event) { event->ignore(); }

void GLBaseWidget::leaveEvent(QEvent*) {}
