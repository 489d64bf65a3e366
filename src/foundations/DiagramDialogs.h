// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class GLOrvanePropertyPage;
class IHasPropertyPage;
class QAction;
class QMenu;
class QObject;
class QWidget;

/// Menu and dialog that every diagram offers.
namespace diagramDialogs {

/// The tr() of a class.
using Translator = QString (*)(const char* text, const char* disambiguation, int count);

/// Creates a diagram's context menu: "Properties...", then "Auto Scaling", in the language that the
/// application has at the time. The actions stay the diagram's. Owned by the parent; the caller may
/// discard it earlier.
QMenu* createContextMenu(QWidget* parent, QAction& properties, QAction& autoScale, Translator tr);
/// Deletes such a menu, or null: at once, unless it runs the properties dialog, which a menu must
/// outlive. Then it goes after the dialog, and its parent may go.
void discard(QMenu* menu);

/// Runs the properties dialog with the pages of the diagram and of the colour service until it is
/// closed. Each apply calls the diagram's slotAcceptPropertyChanges(). The parent or the diagram
/// may be destroyed while the dialog runs.
/// @param diagram  the object behind pages, which has the slot.
/// @param menu     of createContextMenu, which may be running the dialog; null for none.
void runProperties(QWidget* parent, QObject* diagram, IHasPropertyPage* pages, QMenu* menu);

/// Sets a diagram's pointer to its page to null when the page is destroyed, whoever does that.
/// @param page   not null; a member of the diagram.
/// @param owner  the diagram.
void forgetDestroyed(GLOrvanePropertyPage*& page, QObject& owner);

} // namespace diagramDialogs
