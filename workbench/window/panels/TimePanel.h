// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

class QComboBox;
class QLabel;
class SignalFeed;
class TimeEditor;

/// Span and unit of the time axis.
class TimePanel : public QWidget
{
    Q_OBJECT
public:
    struct Settings
    {
        double span = 1.0; ///< s
        bool countsSymbols = true;
    };

    explicit TimePanel(QWidget* parent);

    void show(const SignalFeed& feed);

signals:
    void chosen(const TimePanel::Settings& settings);

private:
    Settings m_settings;
    TimeEditor* m_span;
    QComboBox* m_counting;
    QLabel* m_unit;
    QLabel* m_segment;
};
