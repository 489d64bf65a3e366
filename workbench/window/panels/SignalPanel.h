// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/SymbolRateEstimate.h"
#include "workbench/sources/ChannelChoice.h"

#include <QWidget>

#include <optional>

class Player;
class QComboBox;
class QDoubleSpinBox;
class QFormLayout;
class QLabel;
class QPushButton;
class QSpinBox;

/// Facts about the signal, and the choice of its channel and symbol rate.
class SignalPanel : public QWidget
{
    Q_OBJECT
public:
    struct Settings
    {
        ChannelChoice channel;
        double symbolRate = 0.0;          ///< Bd, of recordings; 0: not known
        bool estimatesSymbolRate = false; ///< it is to be looked for in the samples
    };

    explicit SignalPanel(QWidget* parent);

    void show(const Player& player);
    /// Shows an estimate of the symbol rate; none clears it.
    void showEstimate(const std::optional<SymbolRateEstimate>& estimate);

signals:
    void chosen(const SignalPanel::Settings& settings);

private:
    static QStringList verdicts(double confidence);
    void addEstimate(QFormLayout* form);
    void addChannel(QFormLayout* form);
    void choose(const ChannelChoice& channel);
    void showChannel(const Player& player);
    void showSymbolRate(const Player& player);

    Settings m_settings;
    QLabel* m_sampleRate;
    QDoubleSpinBox* m_symbolRate;
    QPushButton* m_estimate;
    QLabel* m_estimateText;
    QLabel* m_length;
    QSpinBox* m_channel;
    QComboBox* m_subtracted; // channel
    QLabel* m_channelCount;
};
