// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/base/Observable.h"

#include "platform/base/GuiThread.h"

#include <algorithm>
#include <utility>

Observable::Observable() = default;

Observable::~Observable()
{
    if (m_pDestroyed)
        *m_pDestroyed = true;
}

void Observable::Attach(IObserver* observer)
{
    CheckThread();
    if (!observer)
        return;
    // A freed entry is not used again during a notification: this may be a new observer at the same
    // address.
    if (Registration* known = Find(observer))
        ++known->count;
    else
        m_registrations.push_back({observer, 1});
}

void Observable::Detach(IObserver* observer)
{
    CheckThread();
    Registration* known = Find(observer);
    if (!known)
        return;
    --known->count;
    if (m_notifyDepth == 0)
        RemoveDetached();
}

void Observable::Notify(TChangeCode code)
{
    CheckThread();
    bool destroyed = false;
    bool* const outer = std::exchange(m_pDestroyed, &destroyed);
    ++m_notifyDepth;
    const std::size_t end = m_registrations.size();
    for (std::size_t i = 0; i < end; ++i) {
        if (m_registrations[i].count == 0)
            continue;
        m_registrations[i].observer->Update(this, code);
        if (destroyed) {
            if (outer)
                *outer = true;
            return;
        }
    }
    m_pDestroyed = outer;
    if (--m_notifyDepth == 0) {
        RemoveDetached();
        NotificationEnded();
    }
}

std::size_t Observable::ObserverCount() const
{
    return static_cast<std::size_t>(
        std::count_if(m_registrations.begin(), m_registrations.end(),
                      [](const Registration& r) { return r.count != 0; }));
}

void Observable::NotificationEnded() {}

QString Observable::Name() const { return QStringLiteral("An object that is observed"); }

void Observable::CheckThread() const
{
    guiThread::check([this] { return Name(); });
}

Observable::Registration* Observable::Find(const IObserver* observer)
{
    const auto found = std::find_if(
        m_registrations.begin(), m_registrations.end(),
        [observer](const Registration& r) { return r.observer == observer && r.count != 0; });
    return found == m_registrations.end() ? nullptr : &*found;
}

void Observable::RemoveDetached()
{
    m_registrations.erase(std::remove_if(m_registrations.begin(), m_registrations.end(),
                                         [](const Registration& r) { return r.count == 0; }),
                          m_registrations.end());
}
