// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/PlaybackControls.h"

#include "workbench/window/Icons.h"
#include "workbench/window/MenuEntries.h"
#include "workbench/window/Player.h"
#include "workbench/window/ViewPanes.h"

#include <QComboBox>
#include <QMainWindow>
#include <QToolBar>

namespace {

constexpr double speeds[] = {0.1, 0.2, 0.5, 1.0, 2.0, 5.0, 10.0};

} // namespace

PlaybackControls::PlaybackControls(QMainWindow& window, Player& player, ViewPanes& panes)
    : QMenu(tr("&Playback"), &window)
    , m_player(player)
    , m_panes(panes)
    , m_playPause(menus::add(window, *this, tr("&Play"), Qt::Key_P))
    , m_toStart(menus::add(window, *this, tr("From the &start"), Qt::Key_Home))
    , m_repeat(menus::add(window, *this, tr("&Repeat"), Qt::Key_R))
    , m_speed(new QComboBox(&window))
{
    SignalFeed& feed = player.feed();
    m_playPause->setIcon(signIcon(Sign::Play));
    m_toStart->setIcon(signIcon(Sign::ToStart));
    m_repeat->setIcon(signIcon(Sign::Repeat));
    m_repeat->setCheckable(true);
    m_repeat->setChecked(feed.repeat());
    for (const double speed : speeds)
        m_speed->addItem(tr("%1x").arg(speed), speed);
    m_speed->setToolTip(tr("Seconds of signal played in a second"));
    m_speed->setAccessibleName(tr("Speed"));
    connect(m_playPause, &QAction::triggered, this,
            [this] { m_panes.setPaused(m_player.feed().isPlaying()); });
    connect(m_toStart, &QAction::triggered, &feed, &SignalFeed::rewind);
    connect(m_repeat, &QAction::toggled, &feed, &SignalFeed::setRepeat);
    connect(m_speed, QOverload<int>::of(&QComboBox::activated), this,
            [this](int index) { m_player.setSpeed(m_speed->itemData(index).toDouble()); });
    connect(&m_panes, &ViewPanes::paused, &feed, &SignalFeed::pause);
    connect(&m_panes, &ViewPanes::resumed, &feed, &SignalFeed::play);
    connect(&feed, &SignalFeed::playingChanged, this, &PlaybackControls::showPlaying);
}

void PlaybackControls::addTo(QToolBar& bar)
{
    for (QAction* action : {m_toStart, m_playPause, m_repeat})
        bar.addAction(action);
    bar.addWidget(m_speed);
}

void PlaybackControls::refresh()
{
    const double speed = m_player.feed().speed();
    int index = m_speed->findData(speed);
    if (index < 0) {
        index = m_speed->count();
        m_speed->addItem(tr("%1x").arg(speed), speed);
    }
    m_speed->setCurrentIndex(index);
}

void PlaybackControls::showPlaying(bool playing)
{
    m_playPause->setText(playing ? tr("&Pause") : tr("&Play"));
    m_playPause->setIcon(signIcon(playing ? Sign::Pause : Sign::Play));
    m_panes.setPaused(!playing); // the views' buttons, where it was not one of them
}
