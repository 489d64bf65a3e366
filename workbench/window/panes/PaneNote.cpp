// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/panes/PaneNote.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int padding = 6;
constexpr int gap = 6;          // to the edges of the view
constexpr float opacity = 0.8F; // of the ground, so that a signal shows through
constexpr float veilOpacity = 0.6F;

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

void PaneNote::say(const QString& text, Veil veil)
{
    if (text == this->text() && veil == m_veil)
        return;
    m_veil = veil;
    setText(text);
    setVisible(!text.isEmpty());
    arrange();
}

void PaneNote::arrange()
{
    const QRect view = parentWidget()->rect();
    setGeometry(m_veil != Veil::None ? roomIn(view) : placeIn(view));
}

/// The part of a view that shows the signal.
QRect PaneNote::roomIn(const QRect& view) const { return view.adjusted(0, m_captionHeight, 0, 0); }

QRect PaneNote::placeIn(const QRect& view) const
{
    const QRect room = roomIn(view).adjusted(gap, gap, -gap, -gap);
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
    painter.translate(-pos());
    paint(painter, parentWidget()->rect());
}

void PaneNote::paintPicture(QPainter& painter, const QSize& size) const
{
    if (isHidden())
        return;
    painter.save();
    painter.setFont(font());
    paint(painter, QRect(QPoint(), size));
    painter.restore();
}

void PaneNote::paint(QPainter& painter, const QRect& view) const
{
    const QRect place = placeIn(view);
    if (place.isEmpty())
        return;
    QColor ground = palette().color(QPalette::Window);
    ground.setAlphaF(m_veil == Veil::Whole ? 1.0F : veilOpacity);
    if (m_veil != Veil::None)
        painter.fillRect(roomIn(view), ground);
    ground.setAlphaF(opacity);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ground);
    painter.drawRoundedRect(place, padding / 2.0, padding / 2.0);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(place.marginsRemoved(contentsMargins()), Qt::AlignCenter | Qt::TextWordWrap,
                     text());
}
