// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/panels/TimePanel.h"

#include "workbench/feed/SignalFeed.h"
#include "workbench/player/Units.h"
#include "workbench/window/panels/PanelForm.h"
#include "workbench/window/panels/QuantityEditor.h"

#include <QComboBox>
#include <QLabel>
#include <QSignalBlocker>

namespace {

constexpr int spanDigits = 6;

} // namespace

TimePanel::TimePanel(QWidget* parent)
    : QWidget(parent)
{
    QFormLayout* form = panelForm::makeSection(*this, tr("Time"));
    m_span = new TimeEditor(spanDigits, this);
    panelForm::addControl(*form, tr("&Span"), m_span);
    connect(m_span, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            [this](double seconds) {
                m_settings.span = seconds;
                emit chosen(m_settings);
            });
    m_counting = new QComboBox(this);
    m_counting->addItems({tr("symbols"), tr("seconds")});
    m_counting->setToolTip(tr("What the time axis counts, and the times of the eye"));
    form->addRow(tr("A&xis counts"), m_counting);
    connect(m_counting, QOverload<int>::of(&QComboBox::activated), this, [this](int index) {
        m_settings.countsSymbols = index == 0;
        emit chosen(m_settings);
    });
    m_unit = panelForm::addFact(*form, tr("Axis unit T"));
    m_segment = panelForm::addFact(*form, tr("Trace"));
}

void TimePanel::show(const SignalFeed& feed)
{
    const TimeScale& scale = feed.scale();
    const bool hasSymbols = scale.unit == TimeScale::Unit::Symbol;
    m_settings = {feed.span(), feed.time().countsSymbols()};
    const QSignalBlocker quietSpan(m_span);
    m_span->setUnit(units::sign(scale), scale.unitSeconds(),
                    scale.symbolRate ? std::optional(1.0 / *scale.symbolRate) : std::nullopt);
    m_span->setRange(scale.minSpan, scale.maxSpan);
    m_span->setValue(m_settings.span);
    m_counting->setCurrentIndex(hasSymbols ? 0 : 1);
    m_counting->setEnabled(scale.symbolRate.has_value());
    m_unit->setText(hasSymbols ? tr("1 symbol = %1").arg(units::duration(scale.unitSeconds()))
                               : units::duration(scale.unitSeconds()));
    m_segment->setText(tr("%1 samples").arg(feed.segmentLength(), 0, 'g', 6));
}
