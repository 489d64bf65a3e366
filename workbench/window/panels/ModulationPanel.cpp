// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/panels/ModulationPanel.h"

#include "workbench/player/Player.h"
#include "workbench/sources/Constants.h"
#include "workbench/window/panels/PanelForm.h"

#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>

#include <cmath>

namespace {

constexpr double phaseNoiseStep = 2.5e-4;   // rad
constexpr double carrierErrorStep = 2.5e-4; // cycles a symbol

int steps(double value, double step) { return static_cast<int>(std::lround(value / step)); }

} // namespace

ModulationPanel::ModulationPanel(QWidget* parent)
    : QWidget(parent)
{
    QFormLayout* form = panelForm::makeSection(*this, tr("Modulated signal"));
    m_snr = panelForm::addSlider(*form, tr("SNR"), static_cast<int>(ModulationSettings::minSnrDb),
                                 static_cast<int>(ModulationSettings::maxSnrDb), &m_snrText);
    m_snr->setToolTip(tr("Energy of a symbol against the density of the noise"));
    m_phaseNoise = panelForm::addSlider(*form, tr("Phase noise"), 0,
                                        steps(ModulationSettings::maxPhaseNoise, phaseNoiseStep),
                                        &m_phaseNoiseText);
    const int most = steps(ModulationSettings::maxCarrierError, carrierErrorStep);
    m_carrierError =
        panelForm::addSlider(*form, tr("Carrier offset"), -most, most, &m_carrierErrorText);
    m_carrierError->setToolTip(tr("What is left of it after the receiver"));
    const auto choose = [this] {
        describe();
        emit chosen(m_settings);
    };
    connect(m_snr, &QSlider::valueChanged, this, [this, choose](int decibels) {
        m_settings.snrDb = decibels;
        choose();
    });
    connect(m_phaseNoise, &QSlider::valueChanged, this, [this, choose](int count) {
        m_settings.phaseNoise = count * phaseNoiseStep;
        choose();
    });
    connect(m_carrierError, &QSlider::valueChanged, this, [this, choose](int count) {
        m_settings.carrierError = count * carrierErrorStep;
        choose();
    });
}

void ModulationPanel::show(const Player& player)
{
    setVisible(player.kind() == Player::Kind::Demo);
    m_settings = player.demo();
    const QSignalBlocker quietSnr(m_snr);
    const QSignalBlocker quietNoise(m_phaseNoise);
    const QSignalBlocker quietError(m_carrierError);
    m_snr->setValue(static_cast<int>(std::lround(m_settings.snrDb)));
    m_phaseNoise->setValue(steps(m_settings.phaseNoise, phaseNoiseStep));
    m_carrierError->setValue(steps(m_settings.carrierError, carrierErrorStep));
    describe();
}

void ModulationPanel::describe()
{
    m_snrText->setText(QStringLiteral("%1 dB").arg(m_snr->value()));
    const double degrees = m_phaseNoise->value() * phaseNoiseStep * 180.0 / pi;
    m_phaseNoiseText->setText(QString::number(degrees, 'f', 2) + QChar(0x00b0));
    m_phaseNoise->setToolTip(
        tr("RMS by which the carrier's phase walks in a symbol. With the noise, what the recovery "
           "of the carrier leaves of it makes an MER of %1 dB where decisions are right; over a "
           "few "
           "thousand symbols it may be 1 dB less")
            .arg(m_settings.merDb(), 0, 'f', 1));
    const double symbolRate = m_settings.sampleRate / ModulationSource::samplesPerSymbol;
    const double hertz = m_carrierError->value() * carrierErrorStep * symbolRate;
    m_carrierErrorText->setText(QString::number(hertz, 'f', hertz < 1000.0 ? 1 : 0) +
                                QStringLiteral(" Hz"));
}
