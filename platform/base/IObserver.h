// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

class Observable;

/// What a notification is about. The numbers are part of the interface.
enum TChangeCode : int {
    ccState = 2,      ///< The state changed; the sender may be going away.
    ccContent = 3,    ///< New content.
    ccAttributes = 4, ///< Attributes such as unit or limits changed.
    ccSelection = 7,  ///< The set of choices changed (selections only).
};

/// Receives the notifications of an Observable that it is attached to.
class ORVANE_PLATFORM_API IObserver
{
public:
    virtual ~IObserver();
    /// Called synchronously by the sender, on the GUI thread. An observer may attach, detach or
    /// destroy observers and the sender itself while it is called.
    virtual void Update(Observable* source, TChangeCode code) = 0;
};
