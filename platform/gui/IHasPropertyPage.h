// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

#include <QString>

class QWidget;

/// An object that shows a page in the properties dialog.
class ORVANE_PLATFORM_API IHasPropertyPage
{
public:
    /// Creates the page, filled with the current settings, as a child of parent.
    virtual QWidget* GetPropertyPage(QWidget* parent, const char* name) = 0;
    /// Applies the page. The dialog does not call it: the object connects it to signalApply()
    /// itself.
    virtual void slotAcceptPropertyChanges() = 0;
    /// The dialog is about to take its current values as the new defaults (not used today).
    virtual void slotSetDefaultProperties() = 0;
    /// The dialog was cancelled (not used today).
    virtual void slotRejectPropertyChanges() = 0;
    /// Title of the page.
    virtual const QString& GetPropertyPagePath() = 0;
    virtual ~IHasPropertyPage();
};
