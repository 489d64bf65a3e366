// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMenu>

#include <optional>

class Player;
class QComboBox;
class QMainWindow;
class QToolBar;
class SeekBar;
class ViewPanes;

/// The menu of playing, and its part of the tool bar: the position is gone to in both. The views'
/// pause buttons and the feed stay in step: the signal is paused with them, and goes on
/// where it stopped.
class PlaybackControls : public QMenu
{
    Q_OBJECT
public:
    PlaybackControls(QMainWindow& window, Player& player, ViewPanes& panes);

    void addTo(QToolBar& bar);
    /// Shows speed, length and time as the feed has them.
    void refresh();
    void refreshTime();

private:
    void addPlaces(QMainWindow& window);
    void addSpeeds(QMainWindow& window);
    void fillSpeeds();
    void addGate(QMainWindow& window);
    QAction* addPlace(QMainWindow& window, const QString& text, const QKeySequence& shortcut);
    void showPlaying(bool playing);
    void changeSpeed(int steps);
    void seek(double seconds);
    void showAgain();
    void playAgain();

    Player& m_player;
    ViewPanes& m_panes;
    QAction* m_playPause;
    QAction* m_toStart;
    QAction* m_repeat;
    QList<QAction*> m_speeds;
    QList<QAction*> m_places; // can be gone to in a signal with an end only...
    QList<QAction*> m_gate;   // ...as can a gate be set in it
    QComboBox* m_speed;
    SeekBar* m_seek;
    std::optional<double> m_length; // as shown, s
};
