// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/ReceiverStage.h"

#include <QWidget>

#include <map>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QFormLayout;
class QLabel;

/// Settings and state of the receiver, stage by stage. It changes nothing itself: its signal is
/// emitted only when the user changes something.
class ReceiverPanel : public QWidget
{
    Q_OBJECT
public:
    explicit ReceiverPanel(QWidget* parent = nullptr);

    /// Shows settings. Controls that have no effect with them are disabled.
    /// @param hasSymbolRate  whether one is known.
    /// @param canReceive     whether the signal can be received.
    void show(const ReceiverSettings& settings, bool hasSymbolRate, bool canReceive);
    /// Shows the reports of the stages; empty: that nothing is known.
    void showReports(const std::vector<StageReport>& reports);

signals:
    void settingsChosen(const ReceiverSettings& settings);

private:
    QLabel* addState(QFormLayout* form, const QString& name, StageReport::Quantity quantity);
    QWidget* beside(QWidget* control, QLabel** state);
    void addFilters(QFormLayout* form);
    void addSymbols(QFormLayout* form);
    void choose();

    ReceiverSettings m_settings;
    QCheckBox* m_isOn;
    QDoubleSpinBox* m_shift;
    QDoubleSpinBox* m_bandwidth;
    QDoubleSpinBox* m_squelch;
    QLabel* m_squelchState;
    QComboBox* m_demodulation;
    QCheckBox* m_gain;
    QCheckBox* m_dc;
    QCheckBox* m_symbolsOnly;
    QComboBox* m_filter;
    QDoubleSpinBox* m_rollOff;
    QCheckBox* m_timing;
    QLabel* m_timingState;
    QComboBox* m_modulation;
    QLabel* m_carrierState;
    QLabel* m_hint;
    std::map<StageReport::Quantity, QLabel*> m_readings;
};
