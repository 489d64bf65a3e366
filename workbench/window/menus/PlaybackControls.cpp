// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/menus/PlaybackControls.h"

#include "workbench/player/Player.h"
#include "workbench/player/Speeds.h"
#include "workbench/window/menus/Icons.h"
#include "workbench/window/menus/MenuEntries.h"
#include "workbench/window/menus/SeekBar.h"
#include "workbench/window/panes/ViewPanes.h"

#include <QComboBox>
#include <QMainWindow>
#include <QToolBar>

#include <algorithm>

PlaybackControls::PlaybackControls(QMainWindow& window, Player& player, ViewPanes& panes)
    : QMenu(tr("&Playback"), &window)
    , m_player(player)
    , m_panes(panes)
    , m_playPause(menus::add(window, *this, tr("&Play"), Qt::Key_Space))
    , m_toStart(menus::add(window, *this, tr("From the &start"), Qt::Key_Home))
    , m_speed(new QComboBox(&window))
    , m_seek(new SeekBar(&window))
{
    addPlaces(window);
    m_repeat = menus::add(window, *this, tr("&Repeat"), Qt::Key_R);
    addSpeeds(window);
    addGate(window);
    Transport& transport = player.feed().transport();
    m_playPause->setShortcuts({Qt::Key_Space, Qt::Key_P});
    m_playPause->setAutoRepeat(false);
    m_playPause->setIcon(signIcon(Sign::Play));
    m_toStart->setIcon(signIcon(Sign::ToStart));
    m_repeat->setIcon(signIcon(Sign::Repeat));
    m_repeat->setCheckable(true);
    m_repeat->setChecked(transport.repeat());
    connect(m_playPause, &QAction::triggered, this,
            [this] { m_panes.setPaused(m_player.feed().transport().isPlaying()); });
    connect(m_toStart, &QAction::triggered, this, [this] {
        SignalFeed& feed = m_player.feed();
        if (!feed.transport().isPlaying())
            m_panes.showWhilePaused([&feed] { feed.showNothing(); });
        m_player.rewind();
    });
    connect(m_repeat, &QAction::toggled, &transport, &Transport::setRepeat);
    connect(m_seek, &SeekBar::seekWanted, this, &PlaybackControls::seek);
    connect(&m_player, &Player::outdated, this, &PlaybackControls::playAgain);
    connect(&m_player, &Player::lookChanged, this, &PlaybackControls::showAgain);
    connect(&m_player, &Player::gateFixed, this, [this] {
        m_panes.setPaused(true);
        m_player.feed().transport().pause();
        m_panes.showWhilePaused([this] { m_player.playGate(); });
    });
    connect(&m_panes, &ViewPanes::paused, &transport, &Transport::pause);
    connect(&m_panes, &ViewPanes::resumed, this, [this, &transport] {
        transport.play();
        if (!transport.isPlaying()) // it cannot play: resets the button that was pressed
            m_panes.setPaused(true);
    });
    connect(&transport, &Transport::playingChanged, this, &PlaybackControls::showPlaying);
}

QAction* PlaybackControls::addPlace(QMainWindow& window, const QString& text,
                                    const QKeySequence& shortcut)
{
    m_places += menus::add(window, *this, text, shortcut);
    return m_places.last();
}

void PlaybackControls::addPlaces(QMainWindow& window)
{
    const SignalFeed& feed = m_player.feed();
    connect(addPlace(window, tr("&Back"), Qt::Key_Left), &QAction::triggered, this,
            [this, &feed] { seek(feed.transport().time() - m_seek->step()); });
    connect(addPlace(window, tr("F&orward"), Qt::Key_Right), &QAction::triggered, this,
            [this, &feed] { seek(feed.transport().time() + m_seek->step()); });
    connect(addPlace(window, tr("To the &end"), Qt::Key_End), &QAction::triggered, this,
            [this, &feed] { seek(feed.transport().length().value_or(0.0)); });
    addSeparator();
}

void PlaybackControls::addSpeeds(QMainWindow& window)
{
    fillSpeeds();
    m_speed->setToolTip(tr("Seconds of signal played in a second"));
    m_speed->setAccessibleName(tr("Speed"));
    connect(m_speed, QOverload<int>::of(&QComboBox::activated), this,
            [this](int index) { m_player.setSpeed(m_speed->itemData(index).toDouble()); });
    m_speeds = {menus::add(window, *this, tr("&Faster"), Qt::Key_Plus),
                menus::add(window, *this, tr("S&lower"), Qt::Key_Minus)};
    connect(m_speeds[0], &QAction::triggered, this, [this] { changeSpeed(1); });
    connect(m_speeds[1], &QAction::triggered, this, [this] { changeSpeed(-1); });
}

void PlaybackControls::fillSpeeds()
{
    m_speed->clear();
    for (const double speed : speeds::of(m_length))
        m_speed->addItem(speeds::text(speed), speed);
}

void PlaybackControls::addGate(QMainWindow& window)
{
    addSeparator();
    m_gate = {
        menus::add(window, *this, tr("&Gate from here"), Qt::Key_BracketLeft),
        menus::add(window, *this, tr("Gate to &here"), Qt::Key_BracketRight),
        menus::add(window, *this, tr("Gate of &all"), Qt::CTRL | Qt::Key_BracketRight),
        menus::add(window, *this, tr("Gate of &what is shown"), Qt::CTRL | Qt::Key_BracketLeft)};
    void (Player::*const chosen[])() = {&Player::gateFromHere, &Player::gateToHere,
                                        &Player::gateAll, &Player::releaseGate};
    for (int k = 0; k < m_gate.size(); ++k)
        connect(m_gate[k], &QAction::triggered, &m_player, chosen[k]);
}

void PlaybackControls::changeSpeed(int steps)
{
    const int index = std::clamp(m_speed->currentIndex() + steps, 0, m_speed->count() - 1);
    m_player.setSpeed(m_speed->itemData(index).toDouble());
}

void PlaybackControls::seek(double seconds)
{
    if (m_player.feed().transport().isPlaying())
        m_player.seek(seconds);
    else
        m_panes.showWhilePaused([&] { m_player.seek(seconds); });
}

/// A paused signal also follows changed settings.
void PlaybackControls::showAgain()
{
    if (!m_player.feed().transport().isPlaying())
        m_panes.showWhilePaused([this] { m_player.feed().showGate(); });
}

void PlaybackControls::playAgain()
{
    const SignalFeed& feed = m_player.feed();
    if (!feed.transport().isPlaying() && feed.transport().length() && feed.transport().time() > 0.0)
        seek(feed.transport().time());
}

void PlaybackControls::addTo(QToolBar& bar)
{
    for (QAction* action : {m_toStart, m_playPause, m_repeat})
        bar.addAction(action);
    bar.addWidget(m_speed);
    bar.addWidget(m_seek);
}

void PlaybackControls::refresh()
{
    const SignalFeed& feed = m_player.feed();
    if (m_length != feed.transport().length()) {
        m_length = feed.transport().length();
        m_seek->setLength(m_length);
        fillSpeeds();
    }
    const double speed = feed.transport().speed();
    int index = m_speed->findData(speed);
    if (index < 0) { // a speed from the command line
        index = 0;
        while (m_speed->itemData(index).toDouble() < speed)
            ++index;
        m_speed->insertItem(index, speeds::text(speed), speed);
    }
    m_speed->setCurrentIndex(index);
    m_repeat->setChecked(feed.transport().repeat());
    m_speed->setEnabled(!feed.source().isLive);
    for (QAction* action : m_speeds + QList<QAction*>{m_repeat, m_toStart})
        action->setEnabled(!feed.source().isLive);
    for (QAction* place : m_places + m_gate)
        place->setEnabled(m_length.has_value());
    refreshTime();
}

void PlaybackControls::refreshTime()
{
    const SignalFeed& feed = m_player.feed();
    m_playPause->setEnabled(!feed.hasEnded()); // a stream does not start over
    m_seek->setTime(feed.transport().time());
}

void PlaybackControls::showPlaying(bool playing)
{
    menus::rename(*m_playPause, playing ? tr("&Pause") : tr("&Play"));
    m_playPause->setIcon(signIcon(playing ? Sign::Pause : Sign::Play));
    m_panes.setPaused(!playing); // the buttons of the views, if the user pressed another one
    showAgain();                 // all of it up to the same sample
}
