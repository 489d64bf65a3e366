// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/CaptionNote.h"

#include "platform/glwidgets/CaptionWidget.h"

#include <QBoxLayout>
#include <QPainter>

namespace {

constexpr int gap = 8; // to the title and to the button

} // namespace

CaptionNote::CaptionNote(CaptionWidget& bar)
    : QWidget(&bar)
    , m_bar(bar)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    static_cast<QBoxLayout*>(bar.layout())->insertWidget(0, this, 1);
}

void CaptionNote::say(const QString& text)
{
    if (text == m_text)
        return;
    m_text = text;
    tellWhole();
    update();
}

void CaptionNote::resizeEvent(QResizeEvent*) { tellWhole(); }

/// A text that is cut is told to those who point at the bar.
void CaptionNote::tellWhole()
{
    const bool isCut = fontMetrics().horizontalAdvance(m_text) > freeRoom(rect()).width();
    m_bar.setToolTip(isCut ? m_text : QString());
}

/// What the title leaves.
QRect CaptionNote::freeRoom(const QRect& place) const
{
    QFont bold = font();
    bold.setBold(true);
    const int title = 2 * gap + QFontMetrics(bold).horizontalAdvance(m_bar.accessibleName());
    return place.adjusted(title, 0, -gap, 0);
}

void CaptionNote::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    paint(painter, rect());
}

void CaptionNote::paintPicture(QPainter& painter, int width) const
{
    painter.save();
    paint(painter, geometry().adjusted(0, 0, width - m_bar.width(), 0));
    painter.restore();
}

void CaptionNote::paint(QPainter& painter, const QRect& place) const
{
    if (!m_bar.readout().isEmpty())
        return;
    const QRect free = freeRoom(place);
    painter.setFont(font());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(free, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(m_text, Qt::ElideRight, free.width()));
}
