// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDockWidget>

class ParameterPanel;
class Player;

/// The place of the parameters at the window's edge: what is set there acts on the player.
class ParameterDock : public QDockWidget
{
    Q_OBJECT
public:
    ParameterDock(Player& player, QWidget* parent);

    ParameterPanel& panel() { return *m_panel; }

private:
    void connectTo(Player& player);

    ParameterPanel* m_panel;
};
