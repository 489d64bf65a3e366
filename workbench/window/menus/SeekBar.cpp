// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/menus/SeekBar.h"

#include "workbench/player/Units.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QSlider>
#include <QStyle>
#include <QStyleOptionSlider>

#include <algorithm>
#include <cmath>

namespace {

constexpr int places = 1000000;
constexpr int dragPeriodMs = 50;
constexpr int pageSteps = 10;
constexpr double slowest = 0.01; // largest part of the length that a key moves

/// A slider in which a click goes to the pointer, and drags on from there.
class PlaceSlider : public QSlider
{
public:
    using QSlider::QSlider;

protected:
    void mousePressEvent(QMouseEvent* event) override
    {
        QStyleOptionSlider option;
        initStyleOption(&option);
        const QRect handle =
            style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this);
        if (event->button() == Qt::LeftButton && !handle.contains(event->pos())) {
            const int room = width() - handle.width();
            setSliderPosition(QStyle::sliderValueFromPosition(
                minimum(), maximum(), event->pos().x() - handle.width() / 2, room));
            triggerAction(SliderMove);
        }
        QSlider::mousePressEvent(event); // the handle is below the pointer now
    }
};

} // namespace

SeekBar::SeekBar(QWidget* parent)
    : QWidget(parent)
    , m_slider(new PlaceSlider(Qt::Horizontal, this))
    , m_text(new QLabel(this))
{
    setFocusProxy(m_slider);
    m_slider->setRange(0, places);
    m_slider->setAccessibleName(tr("Position"));
    m_slider->setToolTip(tr("Position in the signal"));
    m_text->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_text->setToolTip(tr("Position / length"));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(6, 0, 0, 0);
    row->setSpacing(8);
    row->addWidget(m_slider, 1);
    row->addWidget(m_text);
    m_dragTimer.setSingleShot(true);
    m_dragTimer.setInterval(dragPeriodMs);
    connect(&m_dragTimer, &QTimer::timeout, this, [this] { emit seekWanted(chosenTime()); });
    connect(m_slider, &QSlider::actionTriggered, this, [this] {
        showTime(chosenTime());
        if (!m_dragTimer.isActive())
            m_dragTimer.start();
    });
    setLength(std::nullopt);
}

void SeekBar::setLength(std::optional<double> length)
{
    m_dragTimer.stop();
    m_length = length && *length > 0.0 ? length : std::nullopt;
    m_slider->setEnabled(m_length.has_value());
    if (m_length) {
        const int single = std::max(1, static_cast<int>(std::lround(step() / *m_length * places)));
        m_slider->setSingleStep(single);
        m_slider->setPageStep(single * pageSteps);
    }
    const QString longest = QStringLiteral("888:88.888");
    const QString most =
        m_length ? units::time(*m_length, *m_length) + QStringLiteral(" / ") + longest : longest;
    // Of a fixed size, so that a new text does not have the whole window laid out again.
    m_text->setFixedSize(fontMetrics().horizontalAdvance(most), fontMetrics().height());
    m_slider->setSliderDown(false);
    setTime(0.0);
}

double SeekBar::step() const { return std::min(1.0, m_length.value_or(HUGE_VAL) * slowest); }

void SeekBar::setTime(double seconds)
{
    if (m_slider->isSliderDown() || m_dragTimer.isActive())
        return;
    if (m_length)
        m_slider->setValue(
            static_cast<int>(std::lround(std::clamp(seconds / *m_length, 0.0, 1.0) * places)));
    else
        m_slider->setValue(0);
    showTime(seconds);
}

void SeekBar::showTime(double seconds)
{
    QString text = units::time(seconds, m_length.value_or(HUGE_VAL));
    if (m_length)
        text += QStringLiteral(" / ") + units::time(*m_length, *m_length);
    m_text->setText(text);
}

double SeekBar::chosenTime() const
{
    return m_length.value_or(0.0) * m_slider->sliderPosition() / places;
}
