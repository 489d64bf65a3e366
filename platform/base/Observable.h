// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/IObserver.h"

#include <QString>

#include <cstddef>
#include <vector>

/// Sender of the observer pattern. GUI thread only, no locks.
///
/// Registrations are counted: an observer attached twice must be detached twice, but is called once
/// a change. Observers are called in the order of their first attachment. During a notification
/// - a detached observer is not called any more,
/// - a newly attached observer is first called at the next notification,
/// - notifications may nest,
/// - the observable itself may be destroyed: observers not yet called are skipped.
/// Observers do not throw.
class ORVANE_PLATFORM_API Observable
{
public:
    Observable();
    virtual ~Observable();
    Observable(const Observable&) = delete;
    Observable& operator=(const Observable&) = delete;

    /// Registers an observer, which must stay alive until it is detached. Null is ignored.
    void Attach(IObserver* observer);
    /// Takes one registration back. An observer that is not registered is ignored.
    void Detach(IObserver* observer);
    /// Calls every registered observer once.
    void Notify(TChangeCode code);

    /// Number of distinct observers that are registered.
    std::size_t ObserverCount() const;

protected:
    /// Called as the outermost notification ends. The object may delete itself here.
    virtual void NotificationEnded();
    /// Name of the object in messages.
    virtual QString Name() const;

private:
    struct Registration
    {
        IObserver* observer;
        std::size_t count; // 0: detached during a notification, removed when it ends
    };
    Registration* Find(const IObserver* observer);
    void RemoveDetached();
    void CheckThread() const;

    std::vector<Registration> m_registrations;
    int m_notifyDepth = 0;
    bool* m_pDestroyed = nullptr; // flag of the innermost notification that is running
};
