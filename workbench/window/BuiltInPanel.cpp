// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/BuiltInPanel.h"

#include "workbench/window/PanelForm.h"
#include "workbench/window/Player.h"

#include <QComboBox>
#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>

#include <cmath>

namespace {

constexpr double percent = 0.01;
constexpr double phaseNoiseStep = 2.5e-4;   // rad
constexpr double carrierErrorStep = 2.5e-4; // cycles a symbol
constexpr double pi = 3.14159265358979323846;
constexpr int maxFrameSymbolCount = 4096;

double fromDecibels(double level) { return std::pow(10.0, level / 20.0); }
double toDecibels(double factor) { return 20.0 * std::log10(factor); }

} // namespace

BuiltInPanel::BuiltInPanel(QWidget* parent)
    : QWidget(parent)
{
    auto* sections = new QVBoxLayout(this);
    sections->setContentsMargins(0, 0, 0, 0);
    addBuiltInSection();
    addDemoSection();
}

void BuiltInPanel::show(const Player& player)
{
    setVisible(player.kind() != Player::Kind::Recording);
    showBuiltIn(player);
    showDemo(player);
}

void BuiltInPanel::addBuiltInSection()
{
    QFormLayout* form = panelForm::addSection(*this, tr("Built-in signal"));
    m_builtIn = form->parentWidget();
    m_noise = panelForm::addSlider(*form, tr("Noise"), static_cast<int>(NrzSettings::minNoiseDb),
                                   static_cast<int>(NrzSettings::maxNoiseDb), &m_noiseText);
    m_noise->setToolTip(tr("RMS of the noise against the signal's level"));
    m_jitter = panelForm::addSlider(*form, tr("Jitter"), 0,
                                    static_cast<int>(std::lround(NrzSettings::maxJitter / percent)),
                                    &m_jitterText);
    m_jitter->setToolTip(tr("RMS of the edges' displacement, in unit intervals"));
    m_bandwidth = panelForm::addSlider(*form, tr("Bandwidth"), 20, 300, &m_bandwidthText);
    m_bandwidth->setToolTip(tr("Where the signal is 3 dB down, as a part of the symbol rate"));
    m_levels = new QComboBox(this);
    for (const int count : {2, 4})
        m_levels->addItem(QString::number(count), count);
    form->addRow(tr("&Levels"), m_levels);
    form->labelForField(m_levels)->setMinimumWidth(panelForm::nameWidth);
    m_frame = new QSpinBox(this);
    m_frame->setRange(NrzSource::syncSymbolCount, maxFrameSymbolCount);
    m_frame->setSuffix(tr(" symbols"));
    m_frame->setKeyboardTracking(false);
    form->addRow(tr("F&rame"), m_frame);
    form->labelForField(m_frame)->setMinimumWidth(panelForm::nameWidth);
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
    connect(m_frame, QOverload<int>::of(&QSpinBox::valueChanged), this, &BuiltInPanel::frameChosen);
}

void BuiltInPanel::addDemoSection()
{
    QFormLayout* form = panelForm::addSection(*this, tr("Modulated signal"));
    m_demo = form->parentWidget();
    m_snr = panelForm::addSlider(*form, tr("SNR"), static_cast<int>(ModulationSettings::minSnrDb),
                                 static_cast<int>(ModulationSettings::maxSnrDb), &m_snrText);
    m_snr->setToolTip(tr("Energy of a symbol against the density of the noise"));
    m_phaseNoise = panelForm::addSlider(
        *form, tr("Phase noise"), 0,
        static_cast<int>(std::lround(ModulationSettings::maxPhaseNoise / phaseNoiseStep)),
        &m_phaseNoiseText);
    m_phaseNoise->setToolTip(tr("RMS by which the carrier's phase walks in a symbol"));
    const auto most =
        static_cast<int>(std::lround(ModulationSettings::maxCarrierError / carrierErrorStep));
    m_carrierError =
        panelForm::addSlider(*form, tr("Carrier offset"), -most, most, &m_carrierErrorText);
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

void BuiltInPanel::showBuiltIn(const Player& player)
{
    m_builtIn->setVisible(player.kind() == Player::Kind::BuiltIn);
    const NrzSettings& settings = player.builtIn();
    const QSignalBlocker quietNoise(m_noise);
    const QSignalBlocker quietJitter(m_jitter);
    const QSignalBlocker quietLevels(m_levels);
    const QSignalBlocker quietBandwidth(m_bandwidth);
    const QSignalBlocker quietFrame(m_frame);
    m_noise->setValue(static_cast<int>(std::lround(toDecibels(settings.noise))));
    m_jitter->setValue(static_cast<int>(std::lround(settings.jitter / percent)));
    m_levels->setCurrentIndex(m_levels->findData(settings.levelCount));
    m_bandwidth->setValue(static_cast<int>(std::lround(settings.bandwidth / percent)));
    m_frame->setValue(settings.frameSymbolCount);
    describeNoise();
    describeJitter();
    describeBandwidth();
}

void BuiltInPanel::showDemo(const Player& player)
{
    m_demo->setVisible(player.kind() == Player::Kind::Demo);
    const ModulationSettings& settings = player.demo();
    const QSignalBlocker quietSnr(m_snr);
    const QSignalBlocker quietNoise(m_phaseNoise);
    const QSignalBlocker quietError(m_carrierError);
    m_demoSymbolRate = settings.sampleRate / ModulationSource::samplesPerSymbol;
    m_snr->setValue(static_cast<int>(std::lround(settings.snrDb)));
    m_phaseNoise->setValue(static_cast<int>(std::lround(settings.phaseNoise / phaseNoiseStep)));
    m_carrierError->setValue(
        static_cast<int>(std::lround(settings.carrierError / carrierErrorStep)));
    describeDemo();
}

void BuiltInPanel::describeDemo()
{
    m_snrText->setText(QStringLiteral("%1 dB").arg(m_snr->value()));
    const double degrees = m_phaseNoise->value() * phaseNoiseStep * 180.0 / pi;
    m_phaseNoiseText->setText(QString::number(degrees, 'f', 2) + QChar(0x00b0));
    const double hertz = m_carrierError->value() * carrierErrorStep * m_demoSymbolRate;
    m_carrierErrorText->setText(QString::number(hertz, 'f', hertz < 1000.0 ? 1 : 0) +
                                QStringLiteral(" Hz"));
}

void BuiltInPanel::describeNoise()
{
    m_noiseText->setText(QStringLiteral("%1 dB").arg(m_noise->value()));
}

void BuiltInPanel::describeJitter()
{
    m_jitterText->setText(QString::number(m_jitter->value() * percent, 'f', 2));
}

void BuiltInPanel::describeBandwidth()
{
    m_bandwidthText->setText(QString::number(m_bandwidth->value() * percent, 'f', 2));
}
