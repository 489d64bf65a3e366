// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

class GLCommonWidget;
class QContextMenuEvent;
class QMenu;

/// Offers a context menu.
class ORVANE_PLATFORM_API IHasContextMenu
{
public:
    /// Returns the menu for an event, or null for none at that position. The provider keeps owning
    /// the menu.
    /// @param event   position in the widget's pixel frame; may be null.
    /// @param widget  the widget that asks; may be null.
    /// @param index   tells requests of a caller apart; free to choose.
    virtual QMenu* getContextMenu(QContextMenuEvent* event, GLCommonWidget* widget, int index) = 0;
    /// The menu that the provider offered has been closed.
    virtual void contextMenuClosed() = 0;
    virtual ~IHasContextMenu();
};
