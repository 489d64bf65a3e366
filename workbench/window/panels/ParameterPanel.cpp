// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/panels/ParameterPanel.h"

#include "workbench/player/Player.h"
#include "workbench/window/panels/BuiltInPanel.h"
#include "workbench/window/panels/EyePanel.h"
#include "workbench/window/panels/GatePanel.h"
#include "workbench/window/panels/ModulationPanel.h"
#include "workbench/window/panels/PanelForm.h"
#include "workbench/window/panels/SignalPanel.h"
#include "workbench/window/panels/TimePanel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
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
{
    auto* sections = new QVBoxLayout(this);
    sections->setContentsMargins(14, 10, 6, 10);
    sections->setSpacing(18);
    setMinimumWidth(panelWidth);
    for (QWidget* section : std::initializer_list<QWidget*>{m_signal, m_time, m_gate, m_eye})
        sections->addWidget(section);
    addIqSection();
    addLevelSection();
    m_builtIn = new BuiltInPanel(this);
    m_modulation = new ModulationPanel(this);
    sections->addWidget(m_builtIn);
    sections->addWidget(m_modulation);
    addAppearanceSection();
    sections->addStretch();
}

void ParameterPanel::addIqSection()
{
    QFormLayout* form = panelForm::addSection(*this, tr("I and Q"));
    m_trajectory = new QCheckBox(tr("&Trajectory"), this);
    m_trajectory->setToolTip(tr("Shows the way between the symbols, too (T)"));
    form->addRow(m_trajectory);
    connect(m_trajectory, &QCheckBox::clicked, this, &ParameterPanel::trajectoryChosen);
}

void ParameterPanel::addLevelSection()
{
    QFormLayout* form = panelForm::addSection(*this, tr("Level"));
    auto* row = new QWidget(this);
    auto* automatic = new QPushButton(tr("&Auto scale"), row);
    automatic->setToolTip(tr("Fits the axes to what is shown, and lets them follow it (A)"));
    auto* full = new QPushButton(tr("F&ull scale"), row);
    full->setToolTip(tr("Shows -1 to 1, the full scale of recordings (F)"));
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(automatic);
    line->addWidget(full);
    form->addRow(row);
    connect(automatic, &QPushButton::clicked, this, &ParameterPanel::autoScaleWanted);
    connect(full, &QPushButton::clicked, this, &ParameterPanel::fullScaleWanted);
}

void ParameterPanel::addAppearanceSection()
{
    QFormLayout* form = panelForm::addSection(*this, tr("Appearance"));
    m_scheme = new QComboBox(this);
    m_scheme->addItems({tr("As the desktop"), tr("Dark"), tr("Light")});
    panelForm::addControl(*form, tr("Sche&me"), m_scheme);
    connect(m_scheme, QOverload<int>::of(&QComboBox::activated), this,
            [this](int index) { emit schemeChosen(static_cast<SchemeChoice::Choice>(index)); });
}

void ParameterPanel::show(SchemeChoice::Choice choice)
{
    m_scheme->setCurrentIndex(static_cast<int>(choice));
}

void ParameterPanel::show(const Player& player)
{
    const SignalFeed& feed = player.feed();
    m_signal->show(player);
    m_time->show(feed);
    m_gate->show(feed);
    m_eye->show(feed);
    m_trajectory->setChecked(!feed.iq().showsDecisions());
    m_trajectory->setEnabled(feed.iq().knowsSymbols());
    m_builtIn->show(player);
    m_modulation->show(player);
}
