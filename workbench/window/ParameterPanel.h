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
class QSpinBox;
class BuiltInPanel;
class GatePanel;
class Player;
class SignalFeed;
class TimeEditor;

/// What is known of the signal, and what can be set: shown beside the views. It changes nothing
/// itself; the signals say what the user wants, and come from the user only.
class ParameterPanel : public QWidget
{
    Q_OBJECT
public:
    explicit ParameterPanel(QWidget* parent = nullptr);

    /// Shows the feed's source and settings. The feed has a source.
    void show(const Player& player);
    GatePanel& gate() { return *m_gate; }
    BuiltInPanel& builtIn() { return *m_builtIn; }
    /// Shows which colour scheme is chosen.
    void show(SchemeChoice::Choice choice);
    /// Shows what an estimate of the symbol rate found; none: nothing.
    void showEstimate(const std::optional<SymbolRateEstimate>& estimate);

signals:
    void channelChosen(const ChannelChoice& channel);
    void spanChosen(double seconds);
    void countingSymbolsChosen(bool wanted); ///< As in SignalFeed.
    /// Bd; 0: not known, of recordings only.
    void symbolRateChosen(double symbolRate);
    void estimateWanted();
    void eyeSymbolCountChosen(int count);
    void eyeBandwidthChosen(double bandwidth); ///< As in EyeCut.
    void charactersChosen(int bits);           ///< Of a serial line; 0: none.
    void trajectoryChosen(bool wanted);        ///< As in IqFeed.
    void schemeChosen(SchemeChoice::Choice choice);
    void autoScaleWanted();
    void fullScaleWanted();

private:
    static QStringList verdicts(double confidence);
    void addEstimate(QFormLayout* form);
    void addSignalSection();
    void addTimeSection();
    void addEyeSection();
    void addIqSection();
    void addLevelSection();
    void addAppearanceSection();
    void showChannel(const SignalFeed& feed);
    void showSymbolRate(const Player& player);

    QLabel* m_sampleRate;
    QDoubleSpinBox* m_symbolRate;
    QPushButton* m_estimate;
    QLabel* m_estimateText;
    QSpinBox* m_channel;
    QComboBox* m_subtracted; // channel
    QLabel* m_channelCount;
    QLabel* m_length;
    TimeEditor* m_span;
    QComboBox* m_counting;
    QLabel* m_unit;
    QLabel* m_segment;
    QSpinBox* m_eyeSymbols;
    QDoubleSpinBox* m_eyeBandwidth;
    QSpinBox* m_characters;
    QLabel* m_clock;
    QCheckBox* m_trajectory;
    GatePanel* m_gate;
    BuiltInPanel* m_builtIn;
    QComboBox* m_scheme;
};
