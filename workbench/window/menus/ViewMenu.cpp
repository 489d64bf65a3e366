// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/menus/ViewMenu.h"

#include "workbench/player/Player.h"
#include "workbench/window/menus/Icons.h"
#include "workbench/window/menus/MenuEntries.h"
#include "workbench/window/panels/ParameterDock.h"
#include "workbench/window/panes/ViewPanes.h"

#include <QDockWidget>
#include <QMainWindow>

ViewMenu::ViewMenu(QMainWindow& window, Player& player, ViewPanes& panes, ParameterDock& parameters)
    : QMenu(tr("&View"), &window)
    , m_autoScale(menus::add(window, *this, tr("&Auto scale"), Qt::Key_A))
{
    m_autoScale->setIcon(signIcon(Sign::AutoScale));
    connect(m_autoScale, &QAction::triggered, &player, &Player::fitLevels);
    QAction* full = menus::add(window, *this, tr("&Full scale"), Qt::Key_F);
    connect(full, &QAction::triggered, &player, &Player::showFullScale);
    m_trajectory = menus::add(window, *this, tr("T&rajectory of I and Q"), Qt::Key_T);
    m_trajectory->setCheckable(true);
    m_trajectory->setToolTip(tr("Shows the way between the symbols, too"));
    connect(m_trajectory, &QAction::triggered, &player, &Player::setTrajectory);
    addSeparator();
    for (const ViewPanes::Pane& pane : panes.panes()) {
        addAction(pane.showing);
        window.addAction(pane.showing);
    }
    addAction(&panes.showingReadings());
    window.addAction(&panes.showingReadings());
    addSeparator();
    for (const ViewPanes::Pane& pane : panes.panes()) {
        const QString title = pane.showing->text().remove(QLatin1Char('&'));
        addMenu(tr("%1 setup").arg(title))->addActions(pane.menu->actions());
    }
    addSeparator();
    QAction* panel = parameters.toggleViewAction();
    panel->setText(tr("&Parameters"));
    panel->setShortcut(Qt::Key_F9);
    addAction(panel);
    window.addAction(panel);
    QAction* receiver = menus::add(window, *this, tr("Re&ceiver"), Qt::Key_F8);
    connect(receiver, &QAction::triggered, panel, [panel, &parameters] {
        panel->setChecked(true);
        parameters.raiseReceiver();
    });
    QAction* fullScreen = menus::add(window, *this, tr("F&ull screen"), Qt::Key_F11);
    connect(fullScreen, &QAction::triggered, &window,
            [&window] { window.setWindowState(window.windowState() ^ Qt::WindowFullScreen); });
}

void ViewMenu::refresh(const SignalFeed& feed)
{
    m_trajectory->setChecked(!feed.iq().showsDecisions());
    m_trajectory->setEnabled(feed.iq().knowsSymbols());
}
