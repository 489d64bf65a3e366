// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

class Player;
class QComboBox;
class TimeEditor;

/// The gate: what the time view shows, or the stretch between two times. It changes nothing itself;
/// the signals say what the user wants, and come from the user only.
class GatePanel : public QWidget
{
    Q_OBJECT
public:
    explicit GatePanel(QWidget* parent);

    void show(const Player& player);

signals:
    void shownChosen();
    void stretchChosen(double from, double to); ///< s

private:
    TimeEditor* addTime(const QString& name);

    QComboBox* m_kind;
    TimeEditor* m_from;
    TimeEditor* m_to;
};
