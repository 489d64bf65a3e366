// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

class IHasPropertyPage;
class QAction;
class QMenu;
class QObject;
class QWidget;

/// Menu and dialog that every diagram offers.
namespace diagramDialogs {

/// Creates a diagram's context menu: "Properties...", then "Auto Scaling". The actions stay the
/// diagram's. Owned by the parent; the caller may delete it earlier.
QMenu* createContextMenu(QWidget* parent, QAction& properties, QAction& autoScale);

/// Runs the properties dialog with the pages of the diagram and of the colour service until it is
/// closed. Each apply calls the diagram's slotAcceptPropertyChanges(). The parent or the diagram
/// may be destroyed while the dialog runs.
/// @param diagram  the object behind pages, which has the slot.
void runProperties(QWidget* parent, QObject* diagram, IHasPropertyPage* pages);

} // namespace diagramDialogs
