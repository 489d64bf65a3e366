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

PaneNote::PaneNote(QWidget* view, int captionHeight, Place place)
    : QLabel(view)
    , m_captionHeight(captionHeight)
    , m_place(place)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setTextFormat(Qt::PlainText);
    setAlignment(Qt::AlignCenter);
    setWordWrap(place == Place::Middle);
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

void PaneNote::arrange()
{
    const QRect room = parentWidget()->rect().adjusted(gap, m_captionHeight + gap, -gap, -gap);
    QSize size = sizeHint().boundedTo(room.size());
    if (wordWrap())
        size = QSize(std::min(room.width(), fontMetrics().horizontalAdvance(text()) + 3 * padding),
                     heightForWidth(size.width()));
    QRect place(QPoint(), size);
    if (m_place == Place::Middle)
        place.moveCenter(room.center());
    else
        place.moveTopRight(room.topRight());
    setGeometry(place);
}

bool PaneNote::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        arrange();
    return QLabel::eventFilter(watched, event);
}

void PaneNote::paintEvent(QPaintEvent* event)
{
    QColor ground = palette().color(QPalette::Window);
    ground.setAlphaF(opacity);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ground);
    painter.drawRoundedRect(rect(), padding / 2.0, padding / 2.0);
    painter.end();
    QLabel::paintEvent(event);
}
