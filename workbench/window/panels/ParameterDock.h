// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDockWidget>

class DensityPanel;
class ParameterPanel;
class Player;
class QTabWidget;
class ReceiverPanel;
class SchemeChoice;
class SymbolRateSearch;

/// The dock of the parameters and of the receiver: its settings act on the player and on the
/// scheme.
class ParameterDock : public QDockWidget
{
    Q_OBJECT
public:
    ParameterDock(Player& player, QWidget* parent);

    ParameterPanel& panel() { return *m_panel; }
    ReceiverPanel& receiver() { return *m_receiver; }
    DensityPanel& density() { return *m_density; }
    /// Whether the densities' panel is seen.
    bool isDensitySeen() const;
    /// Brings the receiver to the front, with the keyboard's focus.
    void raiseReceiver();
    /// Shows the settings of the receiver; showReports shows its stages, but only when visible.
    void showReceiver();
    void showReports();
    /// Shows which colour scheme is chosen, and lets the user choose another.
    void connectTo(SchemeChoice& scheme);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void connectTo(Player& player);
    void connectSearch(Player& player);
    void searchSymbolRate(bool isAsked);

    void fit(const QWidget& panel);
    void addPanel(QWidget* panel, const QString& title);

    Player& m_player;
    QTabWidget* m_tabs;
    ParameterPanel* m_panel;
    ReceiverPanel* m_receiver;
    DensityPanel* m_density;
    SymbolRateSearch* m_search;
    bool m_isAsked = false; // for an estimate, by the user
};
