// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

class QComboBox;
class SignalFeed;
class TimeEditor;

/// The gate: what the time view shows, or the stretch between two times.
class GatePanel : public QWidget
{
    Q_OBJECT
public:
    struct Settings
    {
        bool isFixed = false;
        double from = 0.0; ///< s, when fixed
        double to = 0.0;
    };

    explicit GatePanel(QWidget* parent);

    void show(const SignalFeed& feed);

signals:
    void chosen(const GatePanel::Settings& settings);

private:
    TimeEditor* addTime(const QString& name);

    QComboBox* m_kind;
    TimeEditor* m_from;
    TimeEditor* m_to;
};
