// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/ParameterPanel.h"

#include "workbench/feed/SignalFeed.h"
#include "workbench/sources/ModulationSource.h"
#include "workbench/sources/NrzSource.h"
#include "workbench/window/FrequencyEditor.h"
#include "workbench/window/Units.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>

#include <cmath>

namespace {

constexpr int panelWidth = 282;
constexpr int nameWidth = 96;
constexpr double percent = 0.01;
constexpr double bandwidthStep = 0.05;
constexpr double phaseNoiseStep = 2.5e-4;   // rad
constexpr double carrierErrorStep = 2.5e-4; // cycles a symbol
constexpr double pi = 3.14159265358979323846;
constexpr int maxFrameSymbolCount = 4096;

double fromDecibels(double level) { return std::pow(10.0, level / 20.0); }
double toDecibels(double factor) { return 20.0 * std::log10(factor); }

} // namespace

ParameterPanel::ParameterPanel(QWidget* parent)
    : QWidget(parent)
{
    auto* sections = new QVBoxLayout(this);
    sections->setContentsMargins(14, 10, 6, 10);
    sections->setSpacing(18);
    setFixedWidth(panelWidth);
    addSignalSection();
    addTimeSection();
    addEyeSection();
    addIqSection();
    addLevelSection();
    addBuiltInSection();
    addDemoSection();
    addAppearanceSection();
    sections->addStretch();
}

QFormLayout* ParameterPanel::addSection(const QString& title)
{
    auto* section = new QWidget(this);
    auto* form = new QFormLayout(section);
    form->setContentsMargins(0, 0, 0, 0);
    form->setHorizontalSpacing(10);
    form->setVerticalSpacing(7);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    auto* heading = new QLabel(title, section);
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);
    form->addRow(heading);
    layout()->addWidget(section);
    return form;
}

QLabel* ParameterPanel::addFact(QFormLayout* form, const QString& name)
{
    auto* value = new QLabel(this);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    form->addRow(name, value);
    form->labelForField(value)->setMinimumWidth(nameWidth);
    return value;
}

QSlider* ParameterPanel::addSlider(QFormLayout* form, const QString& name, int lowest, int highest,
                                   QLabel** value)
{
    auto* row = new QWidget(this);
    auto* slider = new QSlider(Qt::Horizontal, row);
    slider->setRange(lowest, highest);
    slider->setAccessibleName(name);
    *value = new QLabel(row);
    (*value)->setFixedWidth(fontMetrics().horizontalAdvance(QStringLiteral("-888.8 Hz")));
    (*value)->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(slider, 1);
    line->addWidget(*value);
    form->addRow(name, row);
    form->labelForField(row)->setMinimumWidth(nameWidth);
    return slider;
}

void ParameterPanel::addSignalSection()
{
    QFormLayout* form = addSection(tr("Signal"));
    m_sampleRate = addFact(form, tr("Sample rate"));
    m_symbolRate = new FrequencyEditor(QStringLiteral("Bd"), this);
    form->addRow(tr("S&ymbol rate"), m_symbolRate);
    form->labelForField(m_symbolRate)->setMinimumWidth(nameWidth);
    connect(m_symbolRate, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            &ParameterPanel::symbolRateChosen);
    addEstimate(form);
    m_length = addFact(form, tr("Length"));

    auto* row = new QWidget(this);
    m_channel = new QSpinBox(row);
    m_channel->setAccessibleName(tr("Channel"));
    m_subtracted = new QComboBox(row);
    m_subtracted->setAccessibleName(tr("Channel that is subtracted"));
    m_subtracted->setToolTip(m_subtracted->accessibleName());
    m_channelCount = new QLabel(row);
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(m_channel);
    line->addWidget(m_subtracted);
    line->addWidget(m_channelCount, 1);
    form->addRow(tr("&Channel"), row);
    form->labelForField(row)->setMinimumWidth(nameWidth);
    static_cast<QLabel*>(form->labelForField(row))->setBuddy(m_channel);
    connect(m_channel, QOverload<int>::of(&QSpinBox::valueChanged), this,
            [this](int channel) { emit channelChosen(channel - 1); });
    connect(m_subtracted, QOverload<int>::of(&QComboBox::activated), this, [this](int index) {
        emit channelChosen({m_channel->value() - 1, m_subtracted->itemData(index).toInt()});
    });
}

void ParameterPanel::addEstimate(QFormLayout* form)
{
    auto* row = new QWidget(this);
    m_estimate = new QPushButton(tr("Est&imate"), row);
    m_estimate->setToolTip(tr("Looks for the symbol rate in the samples about the present time"));
    m_estimateText = new QLabel(row);
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(m_estimate);
    line->addWidget(m_estimateText, 1);
    form->addRow(QString(), row);
    connect(m_estimate, &QPushButton::clicked, this, &ParameterPanel::estimateWanted);
}

void ParameterPanel::addTimeSection()
{
    QFormLayout* form = addSection(tr("Time"));
    m_span = new QDoubleSpinBox(this);
    m_span->setStepType(QAbstractSpinBox::AdaptiveDecimalStepType);
    m_span->setKeyboardTracking(false);
    form->addRow(tr("&Span"), m_span);
    form->labelForField(m_span)->setMinimumWidth(nameWidth);
    connect(m_span, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            [this](double span) { emit spanChosen(span * m_unitSeconds); });
    m_unit = addFact(form, tr("Axis unit T"));
    m_segment = addFact(form, tr("Trace"));
}

void ParameterPanel::addEyeSection()
{
    QFormLayout* form = addSection(tr("Eye"));
    m_eyeSymbols = new QSpinBox(this);
    m_eyeSymbols->setRange(1, EyeCut::maxSymbolCount);
    m_eyeSymbols->setKeyboardTracking(false);
    form->addRow(tr("Sym&bols"), m_eyeSymbols);
    form->labelForField(m_eyeSymbols)->setMinimumWidth(nameWidth);
    connect(m_eyeSymbols, QOverload<int>::of(&QSpinBox::valueChanged), this,
            &ParameterPanel::eyeSymbolCountChosen);
    m_eyeBandwidth = new QDoubleSpinBox(this);
    m_eyeBandwidth->setRange(EyeCut::minBandwidth - bandwidthStep, EyeCut::maxBandwidth);
    m_eyeBandwidth->setSingleStep(bandwidthStep);
    m_eyeBandwidth->setSpecialValueText(tr("no low-pass"));
    m_eyeBandwidth->setKeyboardTracking(false);
    m_eyeBandwidth->setToolTip(tr("Where a low-pass before the eye is 3 dB down, as a part of the "
                                  "symbol rate"));
    form->addRow(tr("Band&width"), m_eyeBandwidth);
    form->labelForField(m_eyeBandwidth)->setMinimumWidth(nameWidth);
    connect(
        m_eyeBandwidth, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
        [this](double part) { emit eyeBandwidthChosen(part < EyeCut::minBandwidth ? 0.0 : part); });
    m_clock = addFact(form, tr("Clock"));
}

void ParameterPanel::addIqSection()
{
    QFormLayout* form = addSection(tr("I and Q"));
    m_trajectory = new QCheckBox(tr("&Trajectory"), this);
    m_trajectory->setToolTip(tr("Shows the way between the symbols, too (T)"));
    form->addRow(m_trajectory);
    connect(m_trajectory, &QCheckBox::clicked, this, &ParameterPanel::trajectoryChosen);
}

void ParameterPanel::addLevelSection()
{
    QFormLayout* form = addSection(tr("Level"));
    auto* row = new QWidget(this);
    auto* automatic = new QPushButton(tr("&Auto scale"), row);
    automatic->setToolTip(tr("Fits the axis to the signal of the next second (A)"));
    auto* full = new QPushButton(tr("F&ull scale"), row);
    full->setToolTip(tr("Shows -1 to 1, the full scale of recordings (F)"));
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(automatic);
    line->addWidget(full);
    form->addRow(row);
    connect(automatic, &QPushButton::clicked, this, &ParameterPanel::autoScaleWanted);
    connect(full, &QPushButton::clicked, this, &ParameterPanel::fullScaleWanted);
}

void ParameterPanel::addBuiltInSection()
{
    QFormLayout* form = addSection(tr("Built-in signal"));
    m_builtIn = form->parentWidget();
    m_noise = addSlider(form, tr("Noise"), static_cast<int>(NrzSettings::minNoiseDb),
                        static_cast<int>(NrzSettings::maxNoiseDb), &m_noiseText);
    m_noise->setToolTip(tr("RMS of the noise against the signal's level"));
    m_jitter =
        addSlider(form, tr("Jitter"), 0,
                  static_cast<int>(std::lround(NrzSettings::maxJitter / percent)), &m_jitterText);
    m_jitter->setToolTip(tr("RMS of the edges' displacement, in unit intervals"));
    m_bandwidth = addSlider(form, tr("Bandwidth"), 20, 300, &m_bandwidthText);
    m_bandwidth->setToolTip(tr("Where the signal is 3 dB down, as a part of the symbol rate"));
    m_levels = new QComboBox(this);
    for (const int count : {2, 4})
        m_levels->addItem(QString::number(count), count);
    form->addRow(tr("&Levels"), m_levels);
    form->labelForField(m_levels)->setMinimumWidth(nameWidth);
    m_frame = new QSpinBox(this);
    m_frame->setRange(NrzSource::syncSymbolCount, maxFrameSymbolCount);
    m_frame->setSuffix(tr(" symbols"));
    m_frame->setKeyboardTracking(false);
    form->addRow(tr("F&rame"), m_frame);
    form->labelForField(m_frame)->setMinimumWidth(nameWidth);
    connect(m_noise, &QSlider::valueChanged, this, [this](int level) {
        describeNoise();
        emit noiseChosen(fromDecibels(level));
    });
    connect(m_jitter, &QSlider::valueChanged, this, [this](int part) {
        describeJitter();
        emit jitterChosen(part * percent);
    });
    connect(m_levels, QOverload<int>::of(&QComboBox::activated), this,
            [this](int index) { emit levelCountChosen(m_levels->itemData(index).toInt()); });
    connect(m_bandwidth, &QSlider::valueChanged, this, [this](int part) {
        describeBandwidth();
        emit bandwidthChosen(part * percent);
    });
    connect(m_frame, QOverload<int>::of(&QSpinBox::valueChanged), this,
            &ParameterPanel::frameChosen);
}

void ParameterPanel::addDemoSection()
{
    QFormLayout* form = addSection(tr("Modulated signal"));
    m_demo = form->parentWidget();
    m_snr = addSlider(form, tr("SNR"), static_cast<int>(ModulationSettings::minSnrDb),
                      static_cast<int>(ModulationSettings::maxSnrDb), &m_snrText);
    m_snr->setToolTip(tr("Energy of a symbol against the density of the noise"));
    m_phaseNoise =
        addSlider(form, tr("Phase noise"), 0,
                  static_cast<int>(std::lround(ModulationSettings::maxPhaseNoise / phaseNoiseStep)),
                  &m_phaseNoiseText);
    m_phaseNoise->setToolTip(tr("RMS by which the carrier's phase walks in a symbol"));
    const auto most =
        static_cast<int>(std::lround(ModulationSettings::maxCarrierError / carrierErrorStep));
    m_carrierError = addSlider(form, tr("Carrier offset"), -most, most, &m_carrierErrorText);
    m_carrierError->setToolTip(tr("What is left of it after the receiver"));
    connect(m_snr, &QSlider::valueChanged, this, [this](int decibels) {
        describeDemo();
        emit snrChosen(decibels);
    });
    connect(m_phaseNoise, &QSlider::valueChanged, this, [this](int steps) {
        describeDemo();
        emit phaseNoiseChosen(steps * phaseNoiseStep);
    });
    connect(m_carrierError, &QSlider::valueChanged, this, [this](int steps) {
        describeDemo();
        emit carrierErrorChosen(steps * carrierErrorStep);
    });
}

void ParameterPanel::addAppearanceSection()
{
    QFormLayout* form = addSection(tr("Appearance"));
    m_scheme = new QComboBox(this);
    m_scheme->addItems({tr("As the desktop"), tr("Dark"), tr("Light")});
    form->addRow(tr("Sche&me"), m_scheme);
    form->labelForField(m_scheme)->setMinimumWidth(nameWidth);
    connect(m_scheme, QOverload<int>::of(&QComboBox::activated), this,
            [this](int index) { emit schemeChosen(static_cast<SchemeChoice::Choice>(index)); });
}

void ParameterPanel::showEstimate(const std::optional<SymbolRateEstimate>& estimate)
{
    QString text;
    if (estimate) {
        const QString texts[] = {tr("none found"),
                                 tr("unsure, %1").arg(estimate->sureness, 0, 'f', 2), tr("sure")};
        text = texts[static_cast<int>(estimate->verdict)];
    }
    m_estimateText->setText(text);
    m_estimateText->setToolTip(estimate ? estimate->sentence() : QString());
}

void ParameterPanel::show(SchemeChoice::Choice choice)
{
    m_scheme->setCurrentIndex(static_cast<int>(choice));
}

void ParameterPanel::showChannel(const SignalFeed& feed)
{
    const int count = feed.input()->valueCount();
    const ChannelChoice& channel = feed.channel();
    const QSignalBlocker quietChannel(m_channel);
    m_channel->setRange(1, count);
    m_channel->setValue(channel.value + 1);
    m_channel->setVisible(count > 1);
    m_channelCount->setText(count > 1 ? tr("of %1").arg(count) : QStringLiteral("1"));
    if (feed.source()->isComplex() && feed.input()->isComplex())
        m_channelCount->setText(m_channelCount->text() +
                                QLatin1String(channel.value % 2 == 0 ? ": I" : ": Q"));
    m_subtracted->clear();
    m_subtracted->addItem(tr("alone"), -1);
    for (int other = 0; other < count; ++other) {
        if (other != channel.value)
            m_subtracted->addItem(
                QChar(0x2212) + QString(QChar(0x2009)) + QString::number(other + 1), other);
    }
    m_subtracted->setCurrentIndex(m_subtracted->findData(channel.subtracted));
    m_subtracted->setVisible(count > 1 && (!feed.input()->isComplex() || channel.isDifference()));
}

void ParameterPanel::show(const SignalFeed& feed)
{
    const SignalSource& source = *feed.source();
    const TimeScale& scale = feed.scale();
    const bool hasSymbols = scale.unit == TimeScale::Unit::Symbol;
    m_sampleRate->setText(units::rate(scale.sampleRate, "Hz"));
    showSymbolRate(feed);
    const bool isEndless = dynamic_cast<const NrzSource*>(feed.input()) ||
                           dynamic_cast<const ModulationSource*>(feed.input());
    QString length = isEndless ? tr("endless") : tr("unknown");
    if (feed.isLive())
        length = tr("live");
    if (const auto count = source.sampleCount()) {
        const double seconds = static_cast<double>(*count) / scale.sampleRate;
        length = units::time(seconds, seconds);
    }
    m_length->setText(length);

    showChannel(feed);

    const char* const suffixes[] = {"T", "s", "ms", "µs", "ns"};
    const QSignalBlocker quietSpan(m_span);
    m_unitSeconds = scale.unitSeconds();
    m_span->setSuffix(QChar(0x2009) + QString::fromUtf8(suffixes[static_cast<int>(scale.unit)]));
    m_span->setDecimals(1);
    m_span->setRange(scale.span(scale.minSpan), scale.span(scale.maxSpan));
    m_span->setValue(scale.span(feed.span()));
    m_unit->setText(hasSymbols ? tr("1 symbol = %1").arg(units::duration(scale.unitSeconds()))
                               : units::duration(scale.unitSeconds()));
    m_segment->setText(tr("%1 samples").arg(feed.segmentLength(), 0, 'g', 6));
    const QSignalBlocker quietSymbols(m_eyeSymbols);
    const QSignalBlocker quietBandwidth(m_eyeBandwidth);
    m_eyeBandwidth->setValue(feed.eye().cut().bandwidth);
    m_eyeSymbols->setValue(feed.eye().cut().symbolCount);
    m_trajectory->setChecked(!feed.iq().showsDecisions());
    m_trajectory->setEnabled(feed.iq().knowsSymbols());
    showBuiltIn(feed);
    showDemo(feed);
}

void ParameterPanel::showSymbolRate(const SignalFeed& feed)
{
    const TimeScale& scale = feed.scale();
    const bool isBuiltIn = dynamic_cast<const NrzSource*>(feed.input()) != nullptr;
    m_estimate->setEnabled(!feed.isLive() && feed.input() && feed.input()->sampleCount());
    const QSignalBlocker quiet(m_symbolRate);
    m_symbolRate->setSpecialValueText(isBuiltIn ? QString() : tr("unknown"));
    if (isBuiltIn)
        m_symbolRate->setRange(NrzSettings::minSymbolRate, NrzSettings::maxSymbolRate);
    else
        m_symbolRate->setRange(0.0, scale.sampleRate);
    m_symbolRate->setValue(scale.unit == TimeScale::Unit::Symbol ? 1.0 / scale.unitSeconds() : 0.0);

    const QString clocks[] = {tr("known"), tr("recovered"),
                              tr("none, %1 samples").arg(EyeCut::fixedLength)};
    m_eyeSymbols->setEnabled(feed.eye().cut().clock != EyeCut::Clock::None);
    m_eyeBandwidth->setEnabled(m_eyeSymbols->isEnabled());
    m_clock->setText(clocks[static_cast<int>(feed.eye().cut().clock)]);
}

void ParameterPanel::showBuiltIn(const SignalFeed& feed)
{
    const auto* source = dynamic_cast<const NrzSource*>(feed.input());
    m_builtIn->setVisible(source != nullptr);
    if (!source)
        return;
    const QSignalBlocker quietNoise(m_noise);
    const QSignalBlocker quietJitter(m_jitter);
    const QSignalBlocker quietLevels(m_levels);
    const QSignalBlocker quietBandwidth(m_bandwidth);
    const QSignalBlocker quietFrame(m_frame);
    m_noise->setValue(static_cast<int>(std::lround(toDecibels(source->settings().noise))));
    m_jitter->setValue(static_cast<int>(std::lround(source->settings().jitter / percent)));
    m_levels->setCurrentIndex(m_levels->findData(source->settings().levelCount));
    m_bandwidth->setValue(static_cast<int>(std::lround(source->settings().bandwidth / percent)));
    m_frame->setValue(source->settings().frameSymbolCount);
    describeNoise();
    describeJitter();
    describeBandwidth();
}

void ParameterPanel::showDemo(const SignalFeed& feed)
{
    const auto* source = dynamic_cast<const ModulationSource*>(feed.input());
    m_demo->setVisible(source != nullptr);
    if (!source)
        return;
    const QSignalBlocker quietSnr(m_snr);
    const QSignalBlocker quietNoise(m_phaseNoise);
    const QSignalBlocker quietError(m_carrierError);
    const ModulationSettings& settings = source->settings();
    m_demoSymbolRate = source->symbolRate().value_or(1.0);
    m_snr->setValue(static_cast<int>(std::lround(settings.snrDb)));
    m_phaseNoise->setValue(static_cast<int>(std::lround(settings.phaseNoise / phaseNoiseStep)));
    m_carrierError->setValue(
        static_cast<int>(std::lround(settings.carrierError / carrierErrorStep)));
    describeDemo();
}

void ParameterPanel::describeDemo()
{
    m_snrText->setText(QStringLiteral("%1 dB").arg(m_snr->value()));
    const double degrees = m_phaseNoise->value() * phaseNoiseStep * 180.0 / pi;
    m_phaseNoiseText->setText(QString::number(degrees, 'f', 2) + QChar(0x00b0));
    const double hertz = m_carrierError->value() * carrierErrorStep * m_demoSymbolRate;
    m_carrierErrorText->setText(QString::number(hertz, 'f', hertz < 1000.0 ? 1 : 0) +
                                QStringLiteral(" Hz"));
}

void ParameterPanel::describeNoise()
{
    m_noiseText->setText(QStringLiteral("%1 dB").arg(m_noise->value()));
}

void ParameterPanel::describeJitter()
{
    m_jitterText->setText(QString::number(m_jitter->value() * percent, 'f', 2));
}

void ParameterPanel::describeBandwidth()
{
    m_bandwidthText->setText(QString::number(m_bandwidth->value() * percent, 'f', 2));
}
