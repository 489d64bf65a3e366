// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/window/SchemeChoice.h"

#include <QWidget>

class BuiltInPanel;
class EyePanel;
class GatePanel;
class ModulationPanel;
class Player;
class QCheckBox;
class QComboBox;
class SignalPanel;
class TimePanel;

/// Facts and settings of the signal: the sections beside the views, one below the other. They
/// change nothing themselves: each has a signal that is emitted only when the user changes
/// something.
class ParameterPanel : public QWidget
{
    Q_OBJECT
public:
    explicit ParameterPanel(QWidget* parent = nullptr);

    /// Shows the player's signal and settings. Its feed is open.
    void show(const Player& player);
    /// Shows which colour scheme is chosen.
    void show(SchemeChoice::Choice choice);

    SignalPanel& signal() { return *m_signal; }
    TimePanel& time() { return *m_time; }
    GatePanel& gate() { return *m_gate; }
    EyePanel& eye() { return *m_eye; }
    BuiltInPanel& builtIn() { return *m_builtIn; }
    ModulationPanel& modulation() { return *m_modulation; }

signals:
    void trajectoryChosen(bool wanted); ///< As in IqFeed.
    void autoScaleWanted();
    void fullScaleWanted();
    void schemeChosen(SchemeChoice::Choice choice);

private:
    void addIqSection();
    void addLevelSection();
    void addAppearanceSection();

    SignalPanel* m_signal;
    TimePanel* m_time;
    GatePanel* m_gate;
    EyePanel* m_eye;
    QCheckBox* m_trajectory;
    BuiltInPanel* m_builtIn;
    ModulationPanel* m_modulation;
    QComboBox* m_scheme;
};
