// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glwidgets/CaptionWidget.h"

#include "platform/gui/ColorSet.h"

#include <QAction>
#include <QActionEvent>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QToolButton>

namespace {

constexpr int barHeight = 26;
constexpr int buttonSize = 20;
constexpr int leftMargin = 8;
constexpr int rightMargin = 4;
constexpr int spacing = 8; // between title, read-out and button

/// A pause sign, or a play sign while paused, in the place of a button.
void drawSign(QPainter& painter, const QRectF& place, bool isPaused)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(
        ColorSet::Instance()[isPaused ? IColorBase::colTimeMarker : IColorBase::colLabel]);
    const QRectF sign = place.adjusted(6.0, 5.0, -6.0, -5.0);
    if (isPaused) {
        painter.drawPolygon(QPolygonF(
            {sign.topLeft(), sign.bottomLeft(), QPointF(sign.right() + 1.0, sign.center().y())}));
    } else {
        const double bar = sign.width() * 0.35;
        painter.drawRect(QRectF(sign.left(), sign.top(), bar, sign.height()));
        painter.drawRect(QRectF(sign.right() - bar, sign.top(), bar, sign.height()));
    }
}

class CaptionButton : public QToolButton
{
public:
    using QToolButton::QToolButton;

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        if (!painter.isActive()) // on an empty picture
            return;
        if (underMouse() || isDown() || isMarked()) {
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(Qt::NoPen);
            painter.setBrush(ColorSet::Instance()[IColorBase::colGrid]);
            painter.drawRoundedRect(rect(), 3.0, 3.0);
        }
        paintSign(painter);
    }
    virtual bool isMarked() const = 0;
    virtual void paintSign(QPainter& painter) const = 0;
};

/// Toggle of the two signs.
class PauseButton : public CaptionButton
{
public:
    using CaptionButton::CaptionButton;

protected:
    bool isMarked() const override { return false; }
    void paintSign(QPainter& painter) const override { drawSign(painter, rect(), isChecked()); }
};

/// Button of an action, with its icon; marked while that is checked.
class ActionButton : public CaptionButton
{
public:
    ActionButton(QWidget* parent, QAction* action)
        : CaptionButton(parent)
    {
        setDefaultAction(action);
    }
    QSize sizeHint() const override { return {buttonSize, buttonSize}; }
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool isMarked() const override { return isChecked(); }
    void paintSign(QPainter& painter) const override
    {
        icon().paint(&painter, rect().adjusted(3, 3, -3, -3));
    }
};

} // namespace

CaptionWidget::CaptionWidget(QWidget* parent, const QString& title, bool pauseControl)
    : QWidget(parent)
    , m_pPause(pauseControl ? new PauseButton(this) : nullptr)
{
    setFixedHeight(barHeight);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setTitle(title);

    auto* bar = new QHBoxLayout(this);
    bar->setContentsMargins(0, 0, rightMargin, 0);
    bar->setSpacing(0);
    bar->addStretch();
    if (m_pPause) {
        m_pPause->setCheckable(true);
        AddButton(*m_pPause);
        connect(m_pPause, &QToolButton::toggled, this, &CaptionWidget::DescribePause);
        // A receiver may delete the bar. QToolButton allows that during clicked(), but not during
        // toggled(), the only signal when an assistive tool toggles it.
        connect(m_pPause, &QToolButton::clicked, this, &CaptionWidget::TellPause);
        connect(m_pPause, &QToolButton::toggled, this, &CaptionWidget::TellPause,
                Qt::QueuedConnection);
        DescribePause();
    }
}

CaptionWidget::~CaptionWidget() = default;

void CaptionWidget::AddButton(QToolButton& button)
{
    auto* bar = static_cast<QHBoxLayout*>(layout());
    bar->insertWidget(1, &button, 0, Qt::AlignVCenter); // behind the stretch
    button.setFixedSize(buttonSize, buttonSize);
    // After a click the bar keeps the focus, for Space.
    button.setFocusPolicy(Qt::ClickFocus);
    button.setFocusProxy(this);
}

void CaptionWidget::actionEvent(QActionEvent* event)
{
    if (event->type() == QEvent::ActionAdded) {
        AddButton(*new ActionButton(this, static_cast<QAction*>(event->action())));
    } else if (event->type() == QEvent::ActionRemoved) {
        for (auto* button : findChildren<QToolButton*>())
            if (button->defaultAction() == event->action())
                delete button;
    }
    TellWholeNote();
    update();
}

void CaptionWidget::TellPause()
{
    if (m_toldPaused == isPaused())
        return;
    m_toldPaused = isPaused();
    emit pausedChanged(m_toldPaused); // last: a receiver may delete the bar
}

void CaptionWidget::DescribePause()
{
    m_pPause->setToolTip(isPaused() ? tr("Resume (Space)") : tr("Pause (Space)"));
    m_pPause->setAccessibleName(isPaused() ? tr("Resume") : tr("Pause"));
}

void CaptionWidget::setTitle(const QString& title)
{
    m_title = title;
    setAccessibleName(title);
    TellWholeNote();
    update();
}

void CaptionWidget::setReadout(const QString& text)
{
    if (m_readout == text)
        return;
    m_readout = text;
    update();
}

void CaptionWidget::setNote(const QString& text)
{
    if (m_note == text)
        return;
    m_note = text;
    setAccessibleDescription(WholeNote());
    TellWholeNote();
    update();
}

QString CaptionWidget::WholeNote() const { return m_note.section(QChar(0x9c), 0, 0); }

void CaptionWidget::TellWholeNote()
{
    QFont bold = font();
    bold.setBold(true);
    const int free =
        RoomForTitle(rect()).width() - QFontMetrics(bold).horizontalAdvance(m_title) - spacing;
    const QString note = WholeNote();
    const bool isShown = QFontMetrics(font()).horizontalAdvance(note) <= free;
    setToolTip(isShown ? QString() : note);
}

void CaptionWidget::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    TellWholeNote();
}

bool CaptionWidget::isPaused() const { return m_pPause && m_pPause->isChecked(); }

void CaptionWidget::setPaused(bool paused)
{
    if (m_pPause && paused != isPaused())
        m_pPause->click();
}

void CaptionWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (!painter.isActive())
        return;
    PaintBar(painter, rect());
    if (hasFocus())
        painter.fillRect(0, height() - 1, width(), 1,
                         ColorSet::Instance()[IColorBase::colTimeTrace]);
}

void CaptionWidget::PaintPicture(QPainter& painter, const QSize& size) const
{
    PaintBar(painter, QRect(QPoint(0, 0), size));
}

QRect CaptionWidget::RoomForTitle(const QRect& place) const
{
    int right = spacing;
    const int count = (m_pPause ? 1 : 0) + int(actions().size());
    if (count > 0)
        right += rightMargin + count * buttonSize;
    return place.adjusted(leftMargin, 0, -right, 0);
}

// Without the button, which is a widget of its own.
void CaptionWidget::PaintBar(QPainter& painter, const QRect& place) const
{
    ColorSet& colors = ColorSet::Instance();
    painter.fillRect(place, colors[IColorBase::colBackground]);
    painter.setPen(colors[IColorBase::colLabel]);
    QRect free = RoomForTitle(place);
    const auto draw = [&](const QFont& font, int alignment, const QString& text) {
        painter.setFont(font);
        const QFontMetrics metrics(font);
        const QString shown = metrics.elidedText(text, Qt::ElideRight, free.width());
        painter.drawText(free, alignment | Qt::AlignVCenter | Qt::TextSingleLine, shown);
        return metrics.horizontalAdvance(shown);
    };
    QFont bold = font();
    bold.setBold(true);
    free.setLeft(free.left() + draw(bold, Qt::AlignLeft, m_title) + spacing);
    if (m_readout.isEmpty()) {
        painter.setPen(palette().color(QPalette::PlaceholderText));
        draw(font(), Qt::AlignRight, m_note);
        return;
    }
    // Digits of one width, so that changing numbers do not move.
    QFont digits = font();
    digits.setFamily(QFontDatabase::systemFont(QFontDatabase::FixedFont).family());
    draw(digits, Qt::AlignRight, m_readout);
}

void CaptionWidget::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Space && m_pPause) {
        if (!event->isAutoRepeat())
            m_pPause->click();
    } else if (event->key() == Qt::Key_Escape) {
        event->setAccepted(!m_readout.isEmpty());
        emit cleared();
    } else {
        QWidget::keyPressEvent(event);
    }
}

// Presses on the bar end here: the layout below would look for a child of its own.
void CaptionWidget::mousePressEvent(QMouseEvent*) {}

void CaptionWidget::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::LanguageChange)
        return;
    if (m_pPause)
        DescribePause();
    emit languageChanged();
}
