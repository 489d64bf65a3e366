// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/PaneNote.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int padding = 6;
constexpr int gap = 6;          // to the edges of the view
constexpr double opacity = 0.8; // of the ground, so that a signal shows through

} // namespace

PaneNote::PaneNote(QWidget* view, int captionHeight)
    : QLabel(view)
    , m_captionHeight(captionHeight)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setTextFormat(Qt::PlainText);
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
    setContentsMargins(padding, padding / 2, padding, padding / 2);
    view->installEventFilter(this);
    hide();
}

void PaneNote::say(const QString& text)
{
    if (text == this->text())
        return;
    setText(text);
    setVisible(!text.isEmpty());
    arrange();
}

void PaneNote::arrange() { setGeometry(placeIn(parentWidget()->rect())); }

QRect PaneNote::placeIn(const QRect& view) const
{
    const QRect room = view.adjusted(gap, m_captionHeight + gap, -gap, -gap);
    const int width = std::min(room.width(), fontMetrics().horizontalAdvance(text()) + 3 * padding);
    QRect place(0, 0, width, heightForWidth(width));
    place.moveCenter(room.center());
    return place;
}

bool PaneNote::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        arrange();
    return QLabel::eventFilter(watched, event);
}

void PaneNote::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    paint(painter, rect());
}

void PaneNote::paintPicture(QPainter& painter, const QSize& size) const
{
    const QRect place = placeIn(QRect(QPoint(), size));
    if (isHidden() || place.isEmpty())
        return;
    painter.save();
    painter.setFont(font());
    paint(painter, place);
    painter.restore();
}

void PaneNote::paint(QPainter& painter, const QRect& place) const
{
    QColor ground = palette().color(QPalette::Window);
    ground.setAlphaF(opacity);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ground);
    painter.drawRoundedRect(place, padding / 2.0, padding / 2.0);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(place.marginsRemoved(contentsMargins()), Qt::AlignCenter | Qt::TextWordWrap,
                     text());
}
