// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glwidgets/CaptionWidget.h"

#include "platform/gui/ColorSet.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QToolButton>

namespace {

constexpr int barHeight = 26;
constexpr int buttonSize = 20;

/// Toggle with a pause sign, or a play sign while it is checked; drawn in the label colour.
class PauseButton : public QToolButton
{
public:
    using QToolButton::QToolButton;

protected:
    void paintEvent(QPaintEvent*) override
    {
        ColorSet& colors = ColorSet::Instance();
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        if (underMouse() || isDown()) {
            painter.setBrush(colors[IColorBase::colGrid]);
            painter.drawRoundedRect(rect(), 3.0, 3.0);
        }
        painter.setBrush(colors[isChecked() ? IColorBase::colTimeMarker : IColorBase::colLabel]);
        const QRectF sign = QRectF(rect()).adjusted(6.0, 5.0, -6.0, -5.0);
        if (isChecked()) {
            painter.drawPolygon(QPolygonF({sign.topLeft(), sign.bottomLeft(),
                                           QPointF(sign.right() + 1.0, sign.center().y())}));
        } else {
            const double bar = sign.width() * 0.35;
            painter.drawRect(QRectF(sign.left(), sign.top(), bar, sign.height()));
            painter.drawRect(QRectF(sign.right() - bar, sign.top(), bar, sign.height()));
        }
    }
};

} // namespace

CaptionWidget::CaptionWidget(QWidget* parent, const QString& title, bool pauseControl)
    : QWidget(parent)
    , m_pTitle(new QLabel(title, this))
    , m_pReadout(new QLabel(this))
    , m_pPause(pauseControl ? new PauseButton(this) : nullptr)
{
    setFixedHeight(barHeight);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(title);

    auto* bar = new QHBoxLayout(this);
    bar->setContentsMargins(8, 0, 4, 0);
    bar->addWidget(m_pTitle);
    bar->addStretch();
    bar->addWidget(m_pReadout);
    QFont bold = m_pTitle->font();
    bold.setBold(true);
    m_pTitle->setFont(bold);
    // Clicks on the texts are the bar's.
    m_pTitle->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_pReadout->setAttribute(Qt::WA_TransparentForMouseEvents);

    if (m_pPause) {
        m_pPause->setCheckable(true);
        m_pPause->setFixedSize(buttonSize, buttonSize);
        m_pPause->setFocusPolicy(Qt::NoFocus);
        bar->addWidget(m_pPause);
        connect(m_pPause, &QToolButton::toggled, this, &CaptionWidget::OnToggled);
        DescribePause();
    }
}

CaptionWidget::~CaptionWidget() = default;

void CaptionWidget::OnToggled(bool paused)
{
    DescribePause();
    emit pausedChanged(paused); // last: a receiver may delete the bar
}

void CaptionWidget::DescribePause()
{
    m_pPause->setToolTip(isPaused() ? tr("Resume (Space)") : tr("Pause (Space)"));
    m_pPause->setAccessibleName(isPaused() ? tr("Resume") : tr("Pause"));
}

void CaptionWidget::setReadout(const QString& text) { m_pReadout->setText(text); }

QString CaptionWidget::readout() const { return m_pReadout->text(); }

bool CaptionWidget::isPaused() const { return m_pPause && m_pPause->isChecked(); }

void CaptionWidget::setPaused(bool paused)
{
    if (m_pPause)
        m_pPause->setChecked(paused);
}

void CaptionWidget::paintEvent(QPaintEvent*)
{
    ColorSet& colors = ColorSet::Instance();
    // The labels draw with the palette; it follows the colour scheme here, where both are
    // repainted.
    const QColor text = colors[IColorBase::colLabel];
    for (QLabel* label : {m_pTitle, m_pReadout}) {
        if (label->palette().color(QPalette::WindowText) != text) {
            QPalette labelPalette = label->palette();
            labelPalette.setColor(QPalette::WindowText, text);
            label->setPalette(labelPalette);
        }
    }
    QPainter painter(this);
    painter.fillRect(rect(), colors[IColorBase::colBackground]);
    if (hasFocus())
        painter.fillRect(0, height() - 1, width(), 1, colors[IColorBase::colTimeTrace]);
}

void CaptionWidget::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Space && m_pPause) {
        if (!event->isAutoRepeat())
            m_pPause->toggle();
    } else if (event->key() == Qt::Key_Escape) {
        emit cleared();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void CaptionWidget::mousePressEvent(QMouseEvent*) { setFocus(Qt::MouseFocusReason); }
