// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

class Player;
class QComboBox;
class QLabel;
class QSlider;
class QSpinBox;

/// What can be set of the built-in signals: the section of the one that plays. It changes nothing
/// itself; the signals say what the user wants, and come from the user only.
class BuiltInPanel : public QWidget
{
    Q_OBJECT
public:
    explicit BuiltInPanel(QWidget* parent);

    void show(const Player& player);

signals:
    void noiseChosen(double rms); ///< These as in NrzSettings.
    void jitterChosen(double rms);
    void levelCountChosen(int count);
    void bandwidthChosen(double part);
    void frameChosen(int symbolCount);
    void snrChosen(double decibels); ///< These as in ModulationSettings.
    void phaseNoiseChosen(double rms);
    void carrierErrorChosen(double cyclesPerSymbol);

private:
    void addBuiltInSection();
    void addDemoSection();
    void showBuiltIn(const Player& player);
    void showDemo(const Player& player);
    void describeNoise();
    void describeJitter();
    void describeBandwidth();
    void describeDemo();

    QWidget* m_builtIn; // section of the signal of levels
    QSlider* m_noise;
    QLabel* m_noiseText;
    QSlider* m_jitter;
    QLabel* m_jitterText;
    QComboBox* m_levels;
    QSlider* m_bandwidth;
    QLabel* m_bandwidthText;
    QSpinBox* m_frame;
    QWidget* m_demo; // section of the modulated signal
    QSlider* m_snr;
    QLabel* m_snrText;
    QSlider* m_phaseNoise;
    QLabel* m_phaseNoiseText;
    QSlider* m_carrierError;
    QLabel* m_carrierErrorText;
    double m_demoSymbolRate = 1.0;
};
