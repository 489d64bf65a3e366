// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

class AppearancePanel;
class BuiltInPanel;
class EyePanel;
class GatePanel;
class IqPanel;
class LevelPanel;
class ModulationPanel;
class Player;
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

    SignalPanel& signal() { return *m_signal; }
    TimePanel& time() { return *m_time; }
    GatePanel& gate() { return *m_gate; }
    EyePanel& eye() { return *m_eye; }
    IqPanel& iq() { return *m_iq; }
    LevelPanel& level() { return *m_level; }
    BuiltInPanel& builtIn() { return *m_builtIn; }
    ModulationPanel& modulation() { return *m_modulation; }
    AppearancePanel& appearance() { return *m_appearance; }

private:
    SignalPanel* m_signal;
    TimePanel* m_time;
    GatePanel* m_gate;
    EyePanel* m_eye;
    IqPanel* m_iq;
    LevelPanel* m_level;
    BuiltInPanel* m_builtIn;
    ModulationPanel* m_modulation;
    AppearancePanel* m_appearance;
};
