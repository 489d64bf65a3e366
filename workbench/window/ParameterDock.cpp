// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/ParameterDock.h"

#include "workbench/window/ParameterPanel.h"
#include "workbench/window/Player.h"

#include <QScrollArea>
#include <QScrollBar>

ParameterDock::ParameterDock(Player& player, QWidget* parent)
    : QDockWidget(tr("Parameters"), parent)
    , m_panel(new ParameterPanel(this))
{
    auto* scroll = new QScrollArea(this);
    scroll->setWidget(m_panel);
    scroll->setWidgetResizable(true);
    scroll->setFocusPolicy(Qt::NoFocus); // its controls have it
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFixedWidth(m_panel->width() + scroll->verticalScrollBar()->sizeHint().width());
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setObjectName(QStringLiteral("Parameters"));
    setFeatures(QDockWidget::DockWidgetClosable);
    setTitleBarWidget(new QWidget(this)); // none: the sections have headings
    setWidget(scroll);
    connectTo(player);
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
