// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QKeySequence>
#include <QString>

class QAction;
class QMainWindow;
class QMenu;

namespace menus {

/// Adds an entry to a menu; its shortcut works in the window without the menu bar, too, and is
/// said by its tool tip.
QAction* add(QMainWindow& window, QMenu& menu, const QString& text, const QKeySequence& shortcut);

/// The text of an entry without what only a menu needs.
QString plain(QString text);

/// Gives an entry another text, and its tool tip, too.
void rename(QAction& action, const QString& text);

/// Shares the keys out between the window's shortcuts and the controls that it has now: sliders and
/// boxes of choices have those that they understand while they have the focus. Space is the
/// window's, but in a text that is being typed; Enter presses buttons instead.
void keepKeys(QMainWindow& window);

} // namespace menus
