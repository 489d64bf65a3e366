// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QKeySequence>
#include <QString>

class QAction;
class QMainWindow;
class QMenu;

namespace menus {

/// Adds an entry to a menu; its shortcut also works without the menu bar, and is named in its tool
/// tip.
QAction* add(QMainWindow& window, QMenu& menu, const QString& text, const QKeySequence& shortcut);

/// The text of an entry without mnemonic and dots.
QString plain(QString text);

/// Changes the text of an entry and its tool tip.
void rename(QAction& action, const QString& text);

/// Divides the keys between the window's shortcuts and its present controls: sliders and combo
/// boxes get the keys that they use while they have the focus. Space belongs to the window, except
/// in a text that is being typed; Enter presses buttons instead.
void keepKeys(QMainWindow& window);

} // namespace menus
