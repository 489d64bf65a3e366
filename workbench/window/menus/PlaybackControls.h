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

/// The Playback menu and its part of the tool bar, with the seek bar. Keeps the views' pause
/// buttons and the feed in step: the signal is paused with the views, and continues where it
/// stopped.
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
    QList<QAction*> m_places; // enabled only for a signal with an end...
    QList<QAction*> m_gate;   // ...as are the entries of the gate
    QComboBox* m_speed;
    SeekBar* m_seek;
    std::optional<double> m_length; // as shown, s
};
