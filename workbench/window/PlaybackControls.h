// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMenu>

class Player;
class QComboBox;
class QMainWindow;
class QToolBar;
class ViewPanes;

/// The menu of playing, and its part of the tool bar. The views' pause buttons and the feed stay in
/// step: the signal stands still while it is paused, and goes on where it stopped.
class PlaybackControls : public QMenu
{
    Q_OBJECT
public:
    PlaybackControls(QMainWindow& window, Player& player, ViewPanes& panes);

    void addTo(QToolBar& bar);
    /// Shows the speed as the feed has it.
    void refresh();

private:
    void showPlaying(bool playing);

    Player& m_player;
    ViewPanes& m_panes;
    QAction* m_playPause;
    QAction* m_toStart;
    QAction* m_repeat;
    QComboBox* m_speed;
};
