// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/ParameterDock.h"

#include "workbench/window/ParameterPanel.h"
#include "workbench/window/Player.h"
#include "workbench/window/ReceiverPanel.h"
#include "workbench/window/SymbolRateSearch.h"

#include <QScrollArea>
#include <QScrollBar>
#include <QTabWidget>

ParameterDock::ParameterDock(Player& player, QWidget* parent)
    : QDockWidget(tr("Parameters"), parent)
    , m_player(player)
    , m_tabs(new QTabWidget(this))
    , m_panel(new ParameterPanel(this))
    , m_receiver(new ReceiverPanel(this))
    , m_search(new SymbolRateSearch(this))
{
    m_tabs->setDocumentMode(true);
    addTab(m_panel, tr("Parameters"));
    addTab(m_receiver, tr("Receiver"));
    setObjectName(QStringLiteral("Parameters"));
    setFeatures(QDockWidget::DockWidgetClosable);
    setTitleBarWidget(new QWidget(this)); // none: the tabs have titles
    setWidget(m_tabs);
    connectTo(player);
    connectSearch(player);
    connect(m_receiver, &ReceiverPanel::settingsChosen, &player, &Player::setReceiver);
}

QScrollArea* ParameterDock::addTab(QWidget* panel, const QString& title)
{
    auto* scroll = new QScrollArea(this);
    scroll->setWidget(panel);
    scroll->setWidgetResizable(true);
    scroll->setFocusPolicy(Qt::NoFocus); // its controls have it
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFixedWidth(panel->width() + scroll->verticalScrollBar()->sizeHint().width());
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_tabs->addTab(scroll, title);
    return scroll;
}

void ParameterDock::raiseReceiver()
{
    m_tabs->setCurrentIndex(1);
    m_receiver->setFocus();
}

void ParameterDock::showReceiver()
{
    const SignalFeed& feed = m_player.feed();
    const SignalSource* input = feed.input();
    m_receiver->show(feed.receiver(), feed.symbolRate().has_value(),
                     input && !input->firstSymbol());
    m_receiver->showReports(feed.receiverReports());
}

void ParameterDock::showReports()
{
    if (m_receiver->isVisible())
        m_receiver->showReports(m_player.feed().receiverReports());
}

void ParameterDock::connectTo(Player& player)
{
    connect(m_panel, &ParameterPanel::channelChosen, &player, &Player::setChannel);
    connect(m_panel, &ParameterPanel::spanChosen, &player, &Player::setSpan);
    connect(m_panel, &ParameterPanel::symbolRateChosen, &player, &Player::setSymbolRate);
    connect(m_panel, &ParameterPanel::eyeSymbolCountChosen, &player, &Player::setEyeSymbolCount);
    connect(m_panel, &ParameterPanel::eyeBandwidthChosen, &player, &Player::setEyeBandwidth);
    connect(m_panel, &ParameterPanel::trajectoryChosen, &player, &Player::setTrajectory);
    connect(m_panel, &ParameterPanel::noiseChosen, &player, &Player::setNoise);
    connect(m_panel, &ParameterPanel::jitterChosen, &player, &Player::setJitter);
    connect(m_panel, &ParameterPanel::bandwidthChosen, &player, &Player::setBandwidth);
    connect(m_panel, &ParameterPanel::levelCountChosen, &player, &Player::setLevelCount);
    connect(m_panel, &ParameterPanel::frameChosen, &player, &Player::setFrame);
    connect(m_panel, &ParameterPanel::snrChosen, &player, &Player::setSnr);
    connect(m_panel, &ParameterPanel::phaseNoiseChosen, &player, &Player::setPhaseNoise);
    connect(m_panel, &ParameterPanel::carrierErrorChosen, &player, &Player::setCarrierError);
    connect(m_panel, &ParameterPanel::autoScaleWanted, &player, &Player::fitLevels);
    connect(m_panel, &ParameterPanel::fullScaleWanted, &player, &Player::showFullScale);
}

void ParameterDock::connectSearch(Player& player)
{
    connect(m_panel, &ParameterPanel::estimateWanted, this, [this, &player] {
        m_panel->showEstimate(std::nullopt);
        m_search->start(player.feed());
    });
    connect(m_search, &SymbolRateSearch::found, this,
            [this, &player](const SymbolRateEstimate& estimate) {
                if (estimate.verdict != SymbolRateEstimate::Verdict::None)
                    player.setSymbolRate(estimate.symbolRate);
                m_panel->showEstimate(estimate);
            });
    // What was found is of the signal before, or not what was wanted.
    connect(&player, &Player::opened, this, [this] {
        m_search->cancel();
        m_panel->showEstimate(std::nullopt);
    });
    connect(m_panel, &ParameterPanel::symbolRateChosen, this,
            [this] { m_panel->showEstimate(std::nullopt); });
}
