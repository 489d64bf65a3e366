// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class GLOrvanePropertyPage;
class IHasPropertyPage;
class QAction;
class QMenu;
class QObject;
class QWidget;

/// Context menu and properties dialog of the diagrams.
namespace diagramDialogs {

/// The tr() of a class.
using Translator = QString (*)(const char* text, const char* disambiguation, int count);

/// Creates a diagram's context menu, "Properties..." and "Auto Scaling", which follows the language
/// of the application. The diagram keeps the actions. The parent owns the menu; the caller may
/// discard it earlier.
QMenu* createContextMenu(QWidget* parent, QAction& properties, QAction& autoScale, Translator tr);
/// Deletes such a menu; null is ignored. A menu that runs the properties dialog is deleted after
/// the dialog, even if its parent goes first.
void discard(QMenu* menu);

/// Runs the properties dialog with the pages of the diagram and of the colour service until it is
/// closed. Each apply calls the diagram's slotAcceptPropertyChanges(). The parent or the diagram
/// may be destroyed while the dialog runs.
/// @param diagram  the object behind pages, which has the slot.
/// @param menu     of createContextMenu, which may be running the dialog; null for none.
void runProperties(QWidget* parent, QObject* diagram, IHasPropertyPage* pages, QMenu* menu);

/// Sets a diagram's pointer to its page to null when the page is destroyed.
/// @param page   not null; a member of the diagram.
/// @param owner  the diagram.
void forgetDestroyed(GLOrvanePropertyPage*& page, QObject& owner);

} // namespace diagramDialogs
