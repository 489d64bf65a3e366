// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/Overlay.h"

#include "workbench/window/Appearance.h"

#include <QEvent>
#include <QPainter>
#include <QVBoxLayout>

namespace {

constexpr int gap = 8;  // to the edges of the widgets below, and between strips
constexpr int edge = 1; // around a strip

} // namespace

Overlay::Overlay(QWidget& under, int top, std::initializer_list<QWidget*> strips)
    : QWidget(under.parentWidget())
    , m_under(under)
    , m_top(top)
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(edge, edge, edge, edge);
    column->setSpacing(gap);
    for (QWidget* strip : strips) {
        column->addWidget(strip);
        strip->installEventFilter(this);
    }
    under.installEventFilter(this);
    arrange();
}

bool Overlay::eventFilter(QObject* watched, QEvent* event)
{
    const bool isPlace = event->type() == QEvent::Resize || event->type() == QEvent::Move;
    const bool isContent = event->type() == QEvent::ShowToParent ||
                           event->type() == QEvent::HideToParent ||
                           event->type() == QEvent::LayoutRequest;
    if (watched == &m_under ? isPlace : isContent)
        arrange();
    return QWidget::eventFilter(watched, event);
}

void Overlay::arrange()
{
    layout()->invalidate();
    const bool isEmpty = layout()->isEmpty();
    setVisible(!isEmpty);
    if (isEmpty)
        return;
    const QRect room = m_under.geometry().adjusted(gap, m_top + gap, -gap, 0);
    const int height = layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(room.width())
                                                     : layout()->totalSizeHint().height();
    setGeometry(room.x(), room.y(), room.width(), height);
    raise();
}

void Overlay::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(appearance::edge());
    for (int i = 0; i < layout()->count(); ++i) {
        const QWidget* strip = layout()->itemAt(i)->widget();
        if (!strip->isHidden())
            painter.drawRect(strip->geometry().adjusted(-edge, -edge, 0, 0));
    }
}
