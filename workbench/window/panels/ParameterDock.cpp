// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/panels/ParameterDock.h"

#include "workbench/player/Player.h"
#include "workbench/player/SymbolRateSearch.h"
#include "workbench/window/panels/AppearancePanel.h"
#include "workbench/window/panels/BuiltInPanel.h"
#include "workbench/window/panels/DensityPanel.h"
#include "workbench/window/panels/EyePanel.h"
#include "workbench/window/panels/GatePanel.h"
#include "workbench/window/panels/IqPanel.h"
#include "workbench/window/panels/LevelPanel.h"
#include "workbench/window/panels/ModulationPanel.h"
#include "workbench/window/panels/ParameterPanel.h"
#include "workbench/window/panels/ReceiverPanel.h"
#include "workbench/window/panels/SignalPanel.h"
#include "workbench/window/panels/TimePanel.h"

#include <QEvent>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabWidget>

#include <algorithm>

ParameterDock::ParameterDock(Player& player, QWidget* parent)
    : QDockWidget(tr("Parameters"), parent)
    , m_player(player)
    , m_tabs(new QTabWidget(this))
    , m_panel(new ParameterPanel(this))
    , m_receiver(new ReceiverPanel(this))
    , m_density(new DensityPanel(this))
    , m_search(new SymbolRateSearch(this))
{
    m_tabs->setDocumentMode(true);
    addPanel(m_panel, tr("Parameters"));
    addPanel(m_receiver, tr("Receiver"));
    addPanel(m_density, tr("Density"));
    setObjectName(QStringLiteral("Parameters"));
    setFeatures(QDockWidget::DockWidgetClosable);
    setTitleBarWidget(new QWidget(this)); // none: the tabs have titles
    setWidget(m_tabs);
    connectTo(player);
    connectSearch(player);
    connect(m_receiver, &ReceiverPanel::settingsChosen, &player, &Player::setReceiver);
}

void ParameterDock::addPanel(QWidget* panel, const QString& title)
{
    auto* scroll = new QScrollArea(this);
    scroll->setWidget(panel);
    scroll->setWidgetResizable(true);
    scroll->setFocusPolicy(Qt::NoFocus); // its controls get the focus
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_tabs->addTab(scroll, title);
    panel->installEventFilter(this);
    for (auto* label :
         panel->findChildren<QLabel*>()) { // so that no name is cut by the width of a column
        if (label->minimumWidth() > 0)
            label->setMinimumWidth(
                std::max(label->minimumWidth(), label->minimumSizeHint().width()));
    }
    fit(*panel);
}

/// Gives a panel all the width that its texts need. The width only grows, so that nothing moves
/// when a text comes and goes.
void ParameterDock::fit(const QWidget& panel)
{
    auto* scroll = static_cast<QScrollArea*>(panel.parentWidget()->parentWidget());
    const int least = std::max(panel.minimumSizeHint().width(), panel.minimumWidth()) +
                      scroll->verticalScrollBar()->sizeHint().width();
    if (least <= scroll->minimumWidth())
        return;
    for (auto* each : m_tabs->findChildren<QScrollArea*>()) // or the narrower one would leave a gap
        each->setFixedWidth(std::max(least, each->minimumWidth()));
}

bool ParameterDock::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::Show)
        fit(*static_cast<QWidget*>(watched));
    return QDockWidget::eventFilter(watched, event);
}

void ParameterDock::raiseReceiver()
{
    m_tabs->setCurrentIndex(1);
    m_receiver->setFocus();
}

bool ParameterDock::isDensitySeen() const { return m_density->isVisible(); }

void ParameterDock::showReceiver()
{
    const SignalFeed& feed = m_player.feed();
    m_receiver->show(feed.receiver(), feed.symbolRate().has_value(),
                     feed.isOpen() && !feed.source().firstSymbol);
    m_receiver->showReports(feed.reports());
}

void ParameterDock::showReports()
{
    if (m_receiver->isVisible())
        m_receiver->showReports(m_player.feed().reports());
}

void ParameterDock::connectTo(Player& player)
{
    connect(&m_panel->signal(), &SignalPanel::chosen, &player,
            [this, &player](const SignalPanel::Settings& settings) {
                if (!(settings.channel == player.feed().channel()))
                    player.setChannel(settings.channel);
                if (settings.symbolRate != player.feed().symbolRate().value_or(0.0)) {
                    player.setSymbolRate(settings.symbolRate);
                    m_panel->signal().showEstimate(std::nullopt);
                }
                if (settings.estimatesSymbolRate)
                    searchSymbolRate(true);
            });
    connect(&m_panel->time(), &TimePanel::chosen, &player,
            [&player](const TimePanel::Settings& settings) {
                if (settings.span != player.feed().span())
                    player.setSpan(settings.span);
                if (settings.countsSymbols != player.feed().time().countsSymbols())
                    player.setCountingSymbols(settings.countsSymbols);
            });
    connect(&m_panel->gate(), &GatePanel::chosen, &player,
            [&player](const GatePanel::Settings& settings) {
                if (settings.isFixed)
                    player.fixGate(settings.from, settings.to);
                else
                    player.releaseGate();
            });
    connect(&m_panel->eye(), &EyePanel::chosen, &player,
            [&player](const EyePanel::Settings& settings) {
                player.setEye(settings.symbolCount, settings.bandwidth);
                ReceiverSettings receiver = player.feed().receiver();
                if (receiver.characterBits != settings.characterBits) {
                    receiver.characterBits = settings.characterBits;
                    player.setReceiver(receiver);
                }
            });
    connect(&m_panel->builtIn(), &BuiltInPanel::chosen, &player, &Player::setBuiltIn);
    connect(&m_panel->modulation(), &ModulationPanel::chosen, &player, &Player::setDemo);
    connect(&m_panel->iq(), &IqPanel::chosen, &player,
            [&player](const IqPanel::Settings& settings) {
                player.setTrajectory(settings.showsTrajectory);
            });
    connect(&m_panel->level(), &LevelPanel::chosen, &player,
            [&player](const LevelPanel::Settings& settings) {
                if (settings.scale == LevelPanel::Scale::Full)
                    player.showFullScale();
                else
                    player.fitLevels();
            });
}

void ParameterDock::connectTo(SchemeChoice& scheme)
{
    AppearancePanel& appearance = m_panel->appearance();
    const auto show = [&appearance, &scheme] { appearance.show({scheme.choice()}); };
    show();
    connect(&scheme, &SchemeChoice::changed, &appearance, show);
    connect(
        &appearance, &AppearancePanel::chosen, &scheme,
        [&scheme](const AppearancePanel::Settings& settings) { scheme.choose(settings.scheme); });
}

void ParameterDock::searchSymbolRate(bool isAsked)
{
    m_isAsked = isAsked;
    m_panel->signal().showEstimate(std::nullopt);
    m_search->start(m_player.feed());
}

void ParameterDock::connectSearch(Player& player)
{
    connect(&player, &Player::symbolRateMissed, this, [this] { searchSymbolRate(false); });
    connect(m_search, &SymbolRateSearch::found, this,
            [this, &player](const SymbolRateEstimate& estimate) {
                if (estimate.isToBeTaken(m_isAsked)) {
                    player.setSymbolRate(estimate.symbolRate);
                    player.setConfidence(estimate.confidence);
                }
                m_panel->signal().showEstimate(estimate);
            });
    // A result would be of the signal before, or not be wanted any more.
    connect(&player, &Player::opened, this, [this] {
        m_search->cancel();
        m_panel->signal().showEstimate(std::nullopt);
    });
}
