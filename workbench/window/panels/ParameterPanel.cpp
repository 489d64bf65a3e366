// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/panels/ParameterPanel.h"

#include "workbench/player/Player.h"
#include "workbench/window/panels/AppearancePanel.h"
#include "workbench/window/panels/BuiltInPanel.h"
#include "workbench/window/panels/EyePanel.h"
#include "workbench/window/panels/GatePanel.h"
#include "workbench/window/panels/IqPanel.h"
#include "workbench/window/panels/LevelPanel.h"
#include "workbench/window/panels/ModulationPanel.h"
#include "workbench/window/panels/SignalPanel.h"
#include "workbench/window/panels/TimePanel.h"

#include <QVBoxLayout>

namespace {

constexpr int panelWidth = 282;

} // namespace

ParameterPanel::ParameterPanel(QWidget* parent)
    : QWidget(parent)
    , m_signal(new SignalPanel(this))
    , m_time(new TimePanel(this))
    , m_gate(new GatePanel(this))
    , m_eye(new EyePanel(this))
    , m_iq(new IqPanel(this))
    , m_level(new LevelPanel(this))
    , m_builtIn(new BuiltInPanel(this))
    , m_modulation(new ModulationPanel(this))
    , m_appearance(new AppearancePanel(this))
{
    auto* sections = new QVBoxLayout(this);
    sections->setContentsMargins(14, 10, 6, 10);
    sections->setSpacing(18);
    setMinimumWidth(panelWidth);
    for (QWidget* section : std::initializer_list<QWidget*>{
             m_signal, m_time, m_gate, m_eye, m_iq, m_level, m_builtIn, m_modulation, m_appearance})
        sections->addWidget(section);
    sections->addStretch();
}

void ParameterPanel::show(const Player& player)
{
    const SignalFeed& feed = player.feed();
    m_signal->show(player);
    m_time->show(feed);
    m_gate->show(feed);
    m_eye->show(feed);
    m_iq->show(feed);
    m_builtIn->show(player);
    m_modulation->show(player);
}
