// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/ModulationSource.h"

#include <QWidget>

class Player;
class QLabel;
class QSlider;

/// Settings of the built-in signal with a modulation; shown while it plays.
class ModulationPanel : public QWidget
{
    Q_OBJECT
public:
    explicit ModulationPanel(QWidget* parent);

    void show(const Player& player);

signals:
    void chosen(const ModulationSettings& settings);

private:
    void describe();

    ModulationSettings m_settings;
    QSlider* m_snr;
    QLabel* m_snrText;
    QSlider* m_phaseNoise;
    QLabel* m_phaseNoiseText;
    QSlider* m_carrierError;
    QLabel* m_carrierErrorText;
};
