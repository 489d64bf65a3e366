// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/panels/BuiltInPanel.h"

#include "workbench/player/Player.h"
#include "workbench/window/panels/PanelForm.h"

#include <QComboBox>
#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>

#include <cmath>

namespace {

constexpr double percent = 0.01;
constexpr int maxFrameSymbolCount = 4096;

double fromDecibels(double level) { return std::pow(10.0, level / 20.0); }
double toDecibels(double factor) { return 20.0 * std::log10(factor); }
int toPercent(double part) { return static_cast<int>(std::lround(part / percent)); }

} // namespace

BuiltInPanel::BuiltInPanel(QWidget* parent)
    : QWidget(parent)
{
    QFormLayout* form = panelForm::makeSection(*this, tr("Built-in signal"));
    m_noise = panelForm::addSlider(*form, tr("Noise"), static_cast<int>(NrzSettings::minNoiseDb),
                                   static_cast<int>(NrzSettings::maxNoiseDb), &m_noiseText);
    m_noise->setToolTip(tr("RMS of the noise against the signal's level"));
    m_jitter = panelForm::addSlider(*form, tr("Jitter"), 0, toPercent(NrzSettings::maxJitter),
                                    &m_jitterText);
    m_jitter->setToolTip(tr("RMS of the edges' displacement, in unit intervals"));
    m_bandwidth = panelForm::addSlider(*form, tr("Bandwidth"), 20, 300, &m_bandwidthText);
    m_bandwidth->setToolTip(tr("Where the signal is 3 dB down, as a part of the symbol rate"));
    m_levels = new QComboBox(this);
    for (const int count : {2, 4})
        m_levels->addItem(QString::number(count), count);
    panelForm::addControl(*form, tr("&Levels"), m_levels);
    m_frame = new QSpinBox(this);
    m_frame->setRange(NrzSource::syncSymbolCount, maxFrameSymbolCount);
    m_frame->setSuffix(tr(" symbols"));
    m_frame->setKeyboardTracking(false);
    panelForm::addControl(*form, tr("F&rame"), m_frame);
    connectControls();
}

void BuiltInPanel::connectControls()
{
    const auto choose = [this] {
        describe();
        emit chosen(m_settings);
    };
    connect(m_noise, &QSlider::valueChanged, this, [this, choose](int level) {
        m_settings.noise = fromDecibels(level);
        choose();
    });
    connect(m_jitter, &QSlider::valueChanged, this, [this, choose](int part) {
        m_settings.jitter = part * percent;
        choose();
    });
    connect(m_bandwidth, &QSlider::valueChanged, this, [this, choose](int part) {
        m_settings.bandwidth = part * percent;
        choose();
    });
    connect(m_levels, QOverload<int>::of(&QComboBox::activated), this, [this, choose](int index) {
        m_settings.levelCount = m_levels->itemData(index).toInt();
        choose();
    });
    connect(m_frame, QOverload<int>::of(&QSpinBox::valueChanged), this, [this, choose](int count) {
        m_settings.frameSymbolCount = count;
        choose();
    });
}

void BuiltInPanel::show(const Player& player)
{
    setVisible(player.kind() == Player::Kind::BuiltIn);
    m_settings = player.builtIn();
    const QSignalBlocker quietNoise(m_noise);
    const QSignalBlocker quietJitter(m_jitter);
    const QSignalBlocker quietBandwidth(m_bandwidth);
    const QSignalBlocker quietFrame(m_frame);
    m_noise->setValue(static_cast<int>(std::lround(toDecibels(m_settings.noise))));
    m_jitter->setValue(toPercent(m_settings.jitter));
    m_bandwidth->setValue(toPercent(m_settings.bandwidth));
    m_levels->setCurrentIndex(m_levels->findData(m_settings.levelCount));
    m_frame->setValue(m_settings.frameSymbolCount);
    describe();
}

void BuiltInPanel::describe()
{
    m_noiseText->setText(QStringLiteral("%1 dB").arg(m_noise->value()));
    m_jitterText->setText(QString::number(m_jitter->value() * percent, 'f', 2));
    m_bandwidthText->setText(QString::number(m_bandwidth->value() * percent, 'f', 2));
}
