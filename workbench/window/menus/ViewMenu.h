// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMenu>

class ParameterDock;
class Player;
class SignalFeed;
class QDockWidget;
class QMainWindow;
class ViewPanes;

/// The menu that shows and hides parts of the window.
class ViewMenu : public QMenu
{
    Q_OBJECT
public:
    /// @param parameters  the dock that it hides and shows.
    ViewMenu(QMainWindow& window, Player& player, ViewPanes& panes, ParameterDock& parameters);

    QAction& autoScaleAction() { return *m_autoScale; }

    /// Shows what is set elsewhere, too.
    void refresh(const SignalFeed& feed);

private:
    QAction* m_autoScale;
    QAction* m_trajectory;
};
