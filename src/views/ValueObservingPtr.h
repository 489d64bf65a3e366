// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "views/ValuePtr.h"

namespace values {

/// A value pointer that also registers an owner with the value, so that the value notifies the
/// owner directly. NotifyOwner applies the current content.
template<class T>
class ValueObservingPtr : public ValuePtr<T>
{
public:
    /// @param owner  must outlive the pointer.
    explicit ValueObservingPtr(IObserver* owner)
        : m_pOwner(owner)
    {}
    ~ValueObservingPtr() override { DetachOwner(); }

    void Update(Observable* source, TChangeCode code) override
    {
        if (this->IsGoingAway(code))
            DetachOwner();
        ValuePtr<T>::Update(source, code);
    }
    void Release() override
    {
        DetachOwner();
        ValuePtr<T>::Release();
    }
    void Reset(T* value) override
    {
        if (value == this->Get())
            return;
        DetachOwner();
        this->LetGo();
        if (value)
            value->Attach(m_pOwner);
        this->Hold(value);
    }

    /// Replays the state of the value to the owner: ccState, ccAttributes, ccSelection (selections
    /// only) and ccContent, so that the owner applies the current content. Nothing while unbound.
    /// If the value goes away during the replay, the remaining calls pass null as their source.
    void NotifyOwner()
    {
        if (!this->Get())
            return;
        m_pOwner->Update(this->Get(), ccState);
        m_pOwner->Update(this->Get(), ccAttributes);
        if (dynamic_cast<ValueSelection*>(static_cast<ValueBase*>(this->Get())))
            m_pOwner->Update(this->Get(), ccSelection);
        m_pOwner->Update(this->Get(), ccContent);
    }

private:
    friend struct ::TestAccess;
    void DetachOwner()
    {
        if (this->Get())
            this->Get()->Detach(m_pOwner);
    }

    IObserver* m_pOwner;
};

} // namespace values
