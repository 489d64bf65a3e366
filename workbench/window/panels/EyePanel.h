// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

#include <optional>

class QDoubleSpinBox;
class QLabel;
class QSpinBox;
class SignalFeed;

/// Settings of the eye and of its clock.
class EyePanel : public QWidget
{
    Q_OBJECT
public:
    struct Settings
    {
        int symbolCount = 1;
        double bandwidth = 0.0;           ///< as in EyeCut
        std::optional<int> characterBits; ///< of a serial line
    };

    explicit EyePanel(QWidget* parent);

    void show(const SignalFeed& feed);

signals:
    void chosen(const EyePanel::Settings& settings);

private:
    Settings m_settings;
    QSpinBox* m_symbols;
    QDoubleSpinBox* m_bandwidth;
    QSpinBox* m_characters;
    QLabel* m_clock;
};
