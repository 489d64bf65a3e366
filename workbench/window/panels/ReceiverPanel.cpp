// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/panels/ReceiverPanel.h"

#include "workbench/window/panels/PanelForm.h"
#include "workbench/window/panels/QuantityEditor.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QLabel>
#include <QSignalBlocker>

namespace {

constexpr int panelWidth = 276;
constexpr int nameWidth = 108;
constexpr double maxHertz = 1e12;
constexpr double percent = 100.0;
constexpr double rollOffStep = 0.05;

const QString unknown = QStringLiteral("\u2013");

QString readingText(const StageReport::Reading& reading)
{
    const auto text = [](double value, int decimals, const char* unit) {
        return QString::number(value, 'f', decimals) + QChar(0x2009) + QString::fromUtf8(unit);
    };
    switch (reading.quantity) {
    case StageReport::Quantity::Level:
        return text(reading.value, 1, "dB");
    case StageReport::Quantity::SymbolRateError:
        return text(reading.value, 1, "ppm");
    case StageReport::Quantity::TimingError:
        return text(percent * reading.value, 2, "%");
    case StageReport::Quantity::CarrierOffset:
        return text(reading.value, 1, "Hz");
    case StageReport::Quantity::PhaseError:
        return text(reading.value, 1, "°");
    case StageReport::Quantity::AliasDistance:
        break; // shown beside the figures
    }
    return QString();
}

} // namespace

ReceiverPanel::ReceiverPanel(QWidget* parent)
    : QWidget(parent)
{
    auto* form = new QFormLayout(this);
    form->setContentsMargins(14, 12, 0, 10);
    form->setHorizontalSpacing(10);
    form->setVerticalSpacing(7);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    setMinimumWidth(panelWidth);
    m_isOn = new QCheckBox(tr("&Receiver on"), this);
    form->addRow(m_isOn);
    addFilters(form);
    addSymbols(form);
    m_hint = new QLabel(this);
    m_hint->setWordWrap(true);
    form->addRow(m_hint);

    const auto chosen = [this] { choose(); };
    for (QCheckBox* box : {m_isOn, m_dc, m_symbolsOnly, m_gain, m_timing})
        connect(box, &QCheckBox::clicked, this, chosen);
    for (QComboBox* box : {m_demodulation, m_filter, m_modulation})
        connect(box, QOverload<int>::of(&QComboBox::activated), this, chosen);
    for (QDoubleSpinBox* box : {m_shift, m_bandwidth, m_squelch, m_rollOff})
        connect(box, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, chosen);
}

void ReceiverPanel::addFilters(QFormLayout* form)
{
    m_shift = new FrequencyEditor(QStringLiteral("Hz"), this);
    m_shift->setRange(-maxHertz, maxHertz);
    m_shift->setToolTip(tr("Added to every frequency"));
    form->addRow(tr("Frequenc&y shift"), m_shift);
    form->labelForField(m_shift)->setMinimumWidth(nameWidth);
    m_dc = new QCheckBox(tr("Rem&ove what is at 0 Hz"), this);
    form->addRow(m_dc);
    m_bandwidth = new FrequencyEditor(QStringLiteral("Hz"), this);
    m_bandwidth->setRange(0.0, maxHertz);
    m_bandwidth->setSpecialValueText(tr("no filter"));
    m_bandwidth->setToolTip(tr("Width of the channel about 0 Hz"));
    form->addRow(tr("Channel &width"), m_bandwidth);
    m_squelch = new QDoubleSpinBox(this);
    m_squelch->setRange(ReceiverSettings::minSquelch, ReceiverSettings::maxSquelch);
    m_squelch->setDecimals(1);
    m_squelch->setKeyboardTracking(false);
    m_squelch->setSuffix(QStringLiteral("\u2009dB"));
    m_squelch->setSpecialValueText(tr("off"));
    m_squelch->setToolTip(tr("Level of the channel, of full scale, below which nothing is shown"));
    m_squelch->setAccessibleName(tr("Squelch"));
    form->addRow(tr("S&quelch"), beside(m_squelch, &m_squelchState));
    m_symbolsOnly = new QCheckBox(tr("Symbols only"), this);
    m_symbolsOnly->setToolTip(tr("Shows nothing where no symbols are found, however loud it is"));
    form->addRow(m_symbolsOnly);
    m_demodulation = new QComboBox(this);
    m_demodulation->addItems({tr("I and Q"), tr("FM"), tr("AM")});
    form->addRow(tr("&Demodulation"), m_demodulation);
    m_gain = new QCheckBox(tr("&Gain control"), this);
    form->addRow(m_gain);
    addState(form, tr("Level before"), StageReport::Quantity::Level);
    m_filter = new QComboBox(this);
    m_filter->addItems({tr("none"), tr("root raised cosine"), tr("raised cosine"), tr("Gaussian"),
                        tr("boxcar"), tr("half sine")});
    m_filter->setToolTip(tr("Matched to the pulses that were sent, or such that opens an eye"));
    form->addRow(tr("&Matched filter"), m_filter);
    m_rollOff = new QDoubleSpinBox(this);
    m_rollOff->setRange(0.0, ReceiverSettings::maxRollOff);
    m_rollOff->setDecimals(3);
    m_rollOff->setSingleStep(rollOffStep);
    m_rollOff->setKeyboardTracking(false);
    m_rollOff->setSpecialValueText(tr("usual"));
    m_rollOff->setToolTip(tr("Roll-off of the filter; of a Gaussian one its bandwidth in symbol "
                             "rates"));
    form->addRow(tr("Ro&ll-off"), m_rollOff);
}

void ReceiverPanel::addSymbols(QFormLayout* form)
{
    m_timing = new QCheckBox(tr("Symbol &timing"), this);
    form->addRow(beside(m_timing, &m_timingState));
    addState(form, tr("Symbol rate error"), StageReport::Quantity::SymbolRateError);
    addState(form, tr("Timing error"), StageReport::Quantity::TimingError);
    m_modulation = new QComboBox(this);
    m_modulation->addItem(tr("none"));
    m_modulation->addItems(modulationKinds::names());
    form->addRow(tr("&Carrier of"), beside(m_modulation, &m_carrierState));
    m_modulation->setAccessibleName(tr("Modulation of the carrier that is recovered"));
    addState(form, tr("Carrier offset"), StageReport::Quantity::CarrierOffset);
    addState(form, tr("Phase error"), StageReport::Quantity::PhaseError);
}

QLabel* ReceiverPanel::addState(QFormLayout* form, const QString& name,
                                StageReport::Quantity quantity)
{
    auto* value = new QLabel(unknown, this);
    value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    value->setAccessibleName(name);
    form->addRow(name, value);
    form->labelForField(value)->setForegroundRole(QPalette::PlaceholderText);
    m_readings[quantity] = value;
    return value;
}

QWidget* ReceiverPanel::beside(QWidget* control, QLabel** state)
{
    auto* row = new QWidget(this);
    *state = new QLabel(unknown, row);
    (*state)->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    panelForm::reserveRoom(**state, {tr("searching"), tr("locked"), tr("open"), tr("closed")});
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(control, 1);
    line->addWidget(*state);
    row->setFocusProxy(control);
    return row;
}

void ReceiverPanel::choose()
{
    m_settings.isOn = m_isOn->isChecked();
    m_settings.shift = m_shift->value();
    const auto unlessZero = [](double value) {
        return value > 0.0 ? std::optional<double>(value) : std::nullopt;
    };
    m_settings.bandwidth = unlessZero(m_bandwidth->value());
    const double squelch = m_squelch->value();
    m_settings.squelch = squelch > m_squelch->minimum() ? std::optional(squelch) : std::nullopt;
    m_settings.demodulation =
        static_cast<ReceiverSettings::Demodulation>(m_demodulation->currentIndex());
    m_settings.hasGainControl = m_gain->isChecked();
    m_settings.removesDc = m_dc->isChecked();
    m_settings.hasAutoSquelch = m_symbolsOnly->isChecked();
    const int filter = m_filter->currentIndex() - 1;
    m_settings.filter =
        filter < 0 ? std::nullopt : std::optional(static_cast<ReceiverSettings::Filter>(filter));
    m_settings.rollOff = m_settings.filter ? unlessZero(m_rollOff->value()) : std::nullopt;
    m_settings.hasTimingRecovery = m_timing->isChecked();
    m_settings.modulation = modulationKinds::named(m_modulation->currentText());
    emit settingsChosen(m_settings);
}

void ReceiverPanel::show(const ReceiverSettings& settings, bool hasSymbolRate, bool canReceive)
{
    m_settings = settings;
    for (QDoubleSpinBox* box : {m_shift, m_bandwidth, m_rollOff}) {
        const QSignalBlocker quiet(box);
        const auto& value = box == m_shift       ? std::optional<double>(settings.shift)
                            : box == m_bandwidth ? settings.bandwidth
                                                 : settings.rollOff;
        box->setValue(value.value_or(0.0));
    }
    const QSignalBlocker quietSquelch(m_squelch);
    m_squelch->setValue(settings.squelch.value_or(m_squelch->minimum()));
    m_isOn->setChecked(settings.isOn);
    m_dc->setChecked(settings.removesDc);
    m_symbolsOnly->setChecked(settings.hasAutoSquelch);
    const auto filter = settings.usedFilter();
    m_filter->setCurrentIndex(filter ? 1 + static_cast<int>(*filter) : 0);
    m_demodulation->setCurrentIndex(static_cast<int>(settings.demodulation));
    m_gain->setChecked(settings.hasGainControl);
    m_timing->setChecked(settings.hasTimingRecovery);
    m_modulation->setCurrentIndex(settings.modulation ? 1 + static_cast<int>(*settings.modulation)
                                                      : 0);

    const bool isLinear = settings.demodulation == ReceiverSettings::Demodulation::Linear;
    const bool isOn = settings.isOn && canReceive;
    m_isOn->setEnabled(canReceive);
    for (QWidget* control : std::initializer_list<QWidget*>{m_shift, m_dc, m_bandwidth, m_squelch,
                                                            m_symbolsOnly, m_demodulation})
        control->setEnabled(isOn);
    m_gain->setEnabled(isOn && isLinear);
    m_filter->setEnabled(isOn && hasSymbolRate);
    m_rollOff->setEnabled(m_filter->isEnabled() && filter);
    m_timing->setEnabled(isOn && hasSymbolRate);
    m_modulation->setEnabled(isOn && hasSymbolRate && isLinear && settings.hasTimingRecovery);
    m_hint->setText(!canReceive ? tr("The built-in signals need no receiver: open a recording or "
                                     "a stream.")
                    : isOn && !hasSymbolRate
                        ? tr("Symbols can be recovered once the symbol rate is given.")
                        : QString());
}

void ReceiverPanel::showReports(const std::vector<StageReport>& reports)
{
    std::map<StageReport::Quantity, QString> texts;
    QString squelch = unknown;
    QString timing = unknown;
    QString carrier = unknown;
    for (const StageReport& report : reports) {
        for (const StageReport::Reading& reading : report.readings)
            texts[reading.quantity] = readingText(reading);
        if (!report.isLocked)
            continue;
        if (report.stage == StageReport::Stage::Squelch) {
            squelch = *report.isLocked ? tr("open") : tr("closed");
            continue;
        }
        QString& state = report.stage == StageReport::Stage::Carrier ? carrier : timing;
        state = *report.isLocked ? tr("locked") : tr("searching");
    }
    for (const auto& [quantity, label] : m_readings) {
        const auto known = texts.find(quantity);
        label->setText(known == texts.end() ? unknown : known->second);
    }
    m_squelchState->setText(squelch);
    m_timingState->setText(timing);
    m_carrierState->setText(carrier);
}
