// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/ParameterPanel.h"

#include "workbench/receiver/CharacterClock.h"
#include "workbench/window/BuiltInPanel.h"
#include "workbench/window/GatePanel.h"
#include "workbench/window/PanelForm.h"
#include "workbench/window/Player.h"
#include "workbench/window/QuantityEditor.h"
#include "workbench/window/Units.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>

namespace {

constexpr int panelWidth = 282;
constexpr double bandwidthStep = 0.05;
constexpr int spanDigits = 6;

} // namespace

ParameterPanel::ParameterPanel(QWidget* parent)
    : QWidget(parent)
{
    auto* sections = new QVBoxLayout(this);
    sections->setContentsMargins(14, 10, 6, 10);
    sections->setSpacing(18);
    setMinimumWidth(panelWidth);
    addSignalSection();
    addTimeSection();
    m_gate = new GatePanel(this);
    sections->addWidget(m_gate);
    addEyeSection();
    addIqSection();
    addLevelSection();
    m_builtIn = new BuiltInPanel(this);
    sections->addWidget(m_builtIn);
    addAppearanceSection();
    sections->addStretch();
}

void ParameterPanel::addSignalSection()
{
    QFormLayout* form = panelForm::addSection(*this, tr("Signal"));
    m_sampleRate = panelForm::addFact(*form, tr("Sample rate"));
    m_symbolRate = new FrequencyEditor(QStringLiteral("Bd"), this);
    form->addRow(tr("S&ymbol rate"), m_symbolRate);
    form->labelForField(m_symbolRate)->setMinimumWidth(panelForm::nameWidth);
    connect(m_symbolRate, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            &ParameterPanel::symbolRateChosen);
    addEstimate(form);
    m_length = panelForm::addFact(*form, tr("Length"));

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
    form->labelForField(row)->setMinimumWidth(panelForm::nameWidth);
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
    panelForm::reserve(*m_estimateText, verdicts(0.88));
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(m_estimate);
    line->addWidget(m_estimateText, 1);
    form->addRow(QString(), row);
    connect(m_estimate, &QPushButton::clicked, this, &ParameterPanel::estimateWanted);
}

void ParameterPanel::addTimeSection()
{
    QFormLayout* form = panelForm::addSection(*this, tr("Time"));
    m_span = new TimeEditor(spanDigits, this);
    form->addRow(tr("&Span"), m_span);
    form->labelForField(m_span)->setMinimumWidth(panelForm::nameWidth);
    connect(m_span, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            &ParameterPanel::spanChosen);
    m_counting = new QComboBox(this);
    m_counting->addItems({tr("symbols"), tr("seconds")});
    m_counting->setToolTip(tr("What the time axis counts, and the times of the eye"));
    form->addRow(tr("A&xis counts"), m_counting);
    connect(m_counting, QOverload<int>::of(&QComboBox::activated), this,
            [this](int index) { emit countingSymbolsChosen(index == 0); });
    m_unit = panelForm::addFact(*form, tr("Axis unit T"));
    m_segment = panelForm::addFact(*form, tr("Trace"));
}

void ParameterPanel::addEyeSection()
{
    QFormLayout* form = panelForm::addSection(*this, tr("Eye"));
    m_eyeSymbols = new QSpinBox(this);
    m_eyeSymbols->setRange(1, EyeCut::maxSymbolCount);
    m_eyeSymbols->setKeyboardTracking(false);
    form->addRow(tr("Sym&bols"), m_eyeSymbols);
    form->labelForField(m_eyeSymbols)->setMinimumWidth(panelForm::nameWidth);
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
    form->labelForField(m_eyeBandwidth)->setMinimumWidth(panelForm::nameWidth);
    connect(
        m_eyeBandwidth, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
        [this](double part) { emit eyeBandwidthChosen(part < EyeCut::minBandwidth ? 0.0 : part); });
    m_characters = new QSpinBox(this);
    m_characters->setRange(CharacterClock::minBits - 1, CharacterClock::maxBits);
    m_characters->setSpecialValueText(tr("off"));
    m_characters->setSuffix(tr(" bits"));
    m_characters->setKeyboardTracking(false);
    m_characters->setToolTip(tr("Follows each start bit of an asynchronous serial line, with so "
                                "many bits after it"));
    form->addRow(tr("Characters"), m_characters);
    form->labelForField(m_characters)->setMinimumWidth(panelForm::nameWidth);
    connect(m_characters, QOverload<int>::of(&QSpinBox::valueChanged), this,
            [this](int bits) { emit charactersChosen(bits < CharacterClock::minBits ? 0 : bits); });
    m_clock = panelForm::addFact(*form, tr("Clock"));
}

void ParameterPanel::addIqSection()
{
    QFormLayout* form = panelForm::addSection(*this, tr("I and Q"));
    m_trajectory = new QCheckBox(tr("&Trajectory"), this);
    m_trajectory->setToolTip(tr("Shows the way between the symbols, too (T)"));
    form->addRow(m_trajectory);
    connect(m_trajectory, &QCheckBox::clicked, this, &ParameterPanel::trajectoryChosen);
}

void ParameterPanel::addLevelSection()
{
    QFormLayout* form = panelForm::addSection(*this, tr("Level"));
    auto* row = new QWidget(this);
    auto* automatic = new QPushButton(tr("&Auto scale"), row);
    automatic->setToolTip(tr("Fits the axes to what is shown, and lets them follow it (A)"));
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

void ParameterPanel::addAppearanceSection()
{
    QFormLayout* form = panelForm::addSection(*this, tr("Appearance"));
    m_scheme = new QComboBox(this);
    m_scheme->addItems({tr("As the desktop"), tr("Dark"), tr("Light")});
    form->addRow(tr("Sche&me"), m_scheme);
    form->labelForField(m_scheme)->setMinimumWidth(panelForm::nameWidth);
    connect(m_scheme, QOverload<int>::of(&QComboBox::activated), this,
            [this](int index) { emit schemeChosen(static_cast<SchemeChoice::Choice>(index)); });
}

/// Of an estimate of the symbol rate, in order.
QStringList ParameterPanel::verdicts(double confidence)
{
    return {tr("none found"), tr("unsure, %1").arg(confidence, 0, 'f', 2), tr("sure")};
}

void ParameterPanel::showEstimate(const std::optional<SymbolRateEstimate>& estimate)
{
    QString text;
    if (estimate) {
        text = verdicts(estimate->confidence)[static_cast<int>(estimate->verdict)];
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
    const int count = feed.source().valueCount();
    const ChannelChoice& channel = feed.channel();
    const QSignalBlocker quietChannel(m_channel);
    m_channel->setRange(1, count);
    m_channel->setValue(channel.value + 1);
    m_channel->setVisible(count > 1);
    m_channelCount->setText(count > 1 ? tr("of %1").arg(count) : QStringLiteral("1"));
    if (feed.source().isComplex && !feed.format().isDemodulated)
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
    m_subtracted->setVisible(count > 1 && (!feed.source().isComplex || channel.isDifference()));
}

void ParameterPanel::show(const Player& player)
{
    const SignalFeed& feed = player.feed();
    const TimeScale& scale = feed.scale();
    const bool hasSymbols = scale.unit == TimeScale::Unit::Symbol;
    m_sampleRate->setText(units::rate(feed.source().sampleRate, "Hz"));
    showSymbolRate(player);
    QString length = player.kind() == Player::Kind::Recording ? tr("unknown") : tr("endless");
    if (feed.source().isLive)
        length = tr("live");
    if (const auto seconds = feed.transport().length())
        length = units::time(*seconds, *seconds);
    m_length->setText(length);

    showChannel(feed);

    const QSignalBlocker quietSpan(m_span);
    m_span->setUnit(units::sign(scale), scale.unitSeconds(),
                    scale.symbolRate ? std::optional(1.0 / *scale.symbolRate) : std::nullopt);
    m_span->setRange(scale.minSpan, scale.maxSpan);
    m_span->setValue(feed.span());
    m_counting->setCurrentIndex(hasSymbols ? 0 : 1);
    m_counting->setEnabled(scale.symbolRate.has_value());
    m_unit->setText(hasSymbols ? tr("1 symbol = %1").arg(units::duration(scale.unitSeconds()))
                               : units::duration(scale.unitSeconds()));
    m_segment->setText(tr("%1 samples").arg(feed.segmentLength(), 0, 'g', 6));
    const QSignalBlocker quietSymbols(m_eyeSymbols);
    const QSignalBlocker quietBandwidth(m_eyeBandwidth);
    m_eyeBandwidth->setValue(feed.eye().cut().bandwidth);
    m_eyeSymbols->setValue(feed.eye().cut().symbolCount);
    m_trajectory->setChecked(!feed.iq().showsDecisions());
    m_trajectory->setEnabled(feed.iq().knowsSymbols());
    m_gate->show(player);
    m_builtIn->show(player);
}

void ParameterPanel::showSymbolRate(const Player& player)
{
    const SignalFeed& feed = player.feed();
    const bool isBuiltIn = player.kind() == Player::Kind::BuiltIn;
    m_estimate->setEnabled(!feed.source().isLive && feed.transport().length());
    const QSignalBlocker quiet(m_symbolRate);
    m_symbolRate->setSpecialValueText(isBuiltIn ? QString() : tr("unknown"));
    if (isBuiltIn)
        m_symbolRate->setRange(NrzSettings::minSymbolRate, NrzSettings::maxSymbolRate);
    else
        m_symbolRate->setRange(0.0, feed.source().sampleRate);
    m_symbolRate->setValue(feed.symbolRate().value_or(0.0));

    const QString clocks[] = {tr("known"), tr("recovered"), tr("none", "clock of the symbols")};
    const bool hasSymbols = feed.eye().cut().hasSymbols();
    const bool isKnown = feed.source().firstSymbol && !feed.isSymbolRateGiven();
    m_eyeSymbols->setEnabled(hasSymbols);
    m_eyeBandwidth->setEnabled(hasSymbols);
    const QSignalBlocker quietCharacters(m_characters);
    m_characters->setValue(feed.receiver().characterBits.value_or(m_characters->minimum()));
    m_characters->setEnabled(hasSymbols && !isKnown && !feed.receiver().isOn);
    m_clock->setText(clocks[!hasSymbols ? 2 : isKnown ? 0 : 1]);
}
