// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QKeySequence>

class QAction;
class QMainWindow;
class QMenu;
class QString;

namespace menus {

/// Adds an entry to a menu; its shortcut works in the window without the menu bar, too.
QAction* add(QMainWindow& window, QMenu& menu, const QString& text, const QKeySequence& shortcut);

} // namespace menus
