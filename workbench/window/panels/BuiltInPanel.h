// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/NrzSource.h"

#include <QWidget>

class Player;
class QComboBox;
class QLabel;
class QSlider;
class QSpinBox;

/// Settings of the built-in signal of levels; shown while it plays.
class BuiltInPanel : public QWidget
{
    Q_OBJECT
public:
    explicit BuiltInPanel(QWidget* parent);

    void show(const Player& player);

signals:
    void chosen(const NrzSettings& settings);

private:
    void connectControls();
    void describe();

    NrzSettings m_settings;
    QSlider* m_noise;
    QLabel* m_noiseText;
    QSlider* m_jitter;
    QLabel* m_jitterText;
    QSlider* m_bandwidth;
    QLabel* m_bandwidthText;
    QComboBox* m_levels;
    QSpinBox* m_frame;
};
