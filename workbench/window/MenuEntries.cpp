// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/MenuEntries.h"

#include <QMainWindow>
#include <QMenu>

QAction* menus::add(QMainWindow& window, QMenu& menu, const QString& text,
                    const QKeySequence& shortcut)
{
    QAction* action = menu.addAction(text);
    action->setShortcut(shortcut);
    window.addAction(action);
    return action;
}
