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

/// Leaves the keys that sliders and boxes of choices understand to them while they have the focus,
/// whatever shortcuts there are: to those that the window has now.
void keepKeys(QMainWindow& window);

} // namespace menus
