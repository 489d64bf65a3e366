// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/window/SchemeChoice.h"

#include "workbench/receiver/SymbolRateEstimate.h"

#include <QWidget>

#include <optional>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QFormLayout;
class QLabel;
class QPushButton;
class QSlider;
class QSpinBox;
class SignalFeed;

/// What is known of the signal, and what can be set: shown beside the views. It changes nothing
/// itself; the signals say what the user wants, and come from the user only.
class ParameterPanel : public QWidget
{
    Q_OBJECT
public:
    explicit ParameterPanel(QWidget* parent = nullptr);

    /// Shows the feed's source and settings. The feed has a source.
    void show(const SignalFeed& feed);
    /// Shows which colour scheme is chosen.
    void show(SchemeChoice::Choice choice);
    /// Shows what an estimate of the symbol rate found; none: nothing.
    void showEstimate(const std::optional<SymbolRateEstimate>& estimate);

signals:
    void channelChosen(const ChannelChoice& channel);
    void spanChosen(double seconds);
    /// Bd; 0: not known, of recordings only.
    void symbolRateChosen(double symbolRate);
    void estimateWanted();
    void eyeSymbolCountChosen(int count);
    void eyeBandwidthChosen(double bandwidth); ///< As in EyeCut.
    void noiseChosen(double rms);              ///< As in NrzSettings.
    void jitterChosen(double rms);             ///< As in NrzSettings.
    void levelCountChosen(int count);          ///< As in NrzSettings.
    void bandwidthChosen(double part);         ///< As in NrzSettings.
    void frameChosen(int symbolCount);         ///< As in NrzSettings.
    void snrChosen(double decibels);           ///< These as in ModulationSettings.
    void phaseNoiseChosen(double rms);
    void carrierErrorChosen(double cyclesPerSymbol);
    void trajectoryChosen(bool wanted); ///< As in IqFeed.
    void schemeChosen(SchemeChoice::Choice choice);
    void autoScaleWanted();
    void fullScaleWanted();

private:
    void addEstimate(QFormLayout* form);
    QFormLayout* addSection(const QString& title);
    QLabel* addFact(QFormLayout* form, const QString& name);
    QSlider* addSlider(QFormLayout* form, const QString& name, int lowest, int highest,
                       QLabel** value);
    void addSignalSection();
    void addTimeSection();
    void addEyeSection();
    void addIqSection();
    void addLevelSection();
    void addBuiltInSection();
    void addDemoSection();
    void addAppearanceSection();
    void showChannel(const SignalFeed& feed);
    void showBuiltIn(const SignalFeed& feed);
    void showDemo(const SignalFeed& feed);
    void showSymbolRate(const SignalFeed& feed);
    void describeNoise();
    void describeJitter();
    void describeBandwidth();
    void describeDemo();

    QLabel* m_sampleRate;
    QDoubleSpinBox* m_symbolRate;
    QPushButton* m_estimate;
    QLabel* m_estimateText;
    QSpinBox* m_channel;
    QComboBox* m_subtracted; // channel
    QLabel* m_channelCount;
    QLabel* m_length;
    QDoubleSpinBox* m_span;
    QLabel* m_unit;
    QLabel* m_segment;
    QSpinBox* m_eyeSymbols;
    QDoubleSpinBox* m_eyeBandwidth;
    QLabel* m_clock;
    QCheckBox* m_trajectory;
    QWidget* m_builtIn; // section of the built-in signal
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
    QComboBox* m_scheme;
    double m_unitSeconds = 1.0; // of the span's editor
};
