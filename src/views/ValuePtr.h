// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/IObserver.h"
#include "platform/values/Tree.h"
#include "platform/values/Values.h"

#include <QString>

struct TestAccess;

namespace values {

/// Binds to a value of type T in the value tree by its path. Unbinds when the value goes away
/// (ccState while its state is StateRemoved). While bound, the pointer is an observer of the value.
/// The value is not owned. GUI thread only.
template<class T>
class ValuePtr : public IObserver
{
public:
    ValuePtr() = default;
    /// Detaches; the path is not released in the tree.
    ~ValuePtr() override
    {
        if (m_pValue)
            m_pValue->Detach(this);
    }
    ValuePtr(const ValuePtr&) = delete;
    ValuePtr& operator=(const ValuePtr&) = delete;

    void Update(Observable*, TChangeCode code) override
    {
        if (IsGoingAway(code))
            LetGo();
    }
    /// Unbinds and releases the path in the tree.
    virtual void Release()
    {
        if (!m_pValue)
            return;
        const QString path = m_pValue->GetPathName();
        LetGo();
        Tree::Instance().ReleaseValue(path);
    }
    /// Binds to a value; null unbinds.
    virtual void Reset(T* value)
    {
        if (value == m_pValue)
            return;
        LetGo();
        Hold(value);
    }
    /// Unbinds, then binds to the value at a path. Returns false, and stays unbound, when there is
    /// no value or one of another type.
    bool SetPath(const QString& path)
    {
        Reset(nullptr);
        T* value = dynamic_cast<T*>(Tree::Instance().FindValue(path));
        if (!value)
            return false;
        Reset(value);
        return true;
    }

    /// The value, or null.
    T* Get() const { return m_pValue; }
    /// Whether the pointer is bound and this is its value's sender part.
    bool IsFrom(const Observable* source) const { return m_pValue && source == m_pValue; }

protected:
    bool IsGoingAway(TChangeCode code) const
    {
        return code == ccState && m_pValue && m_pValue->GetState() == ValueBase::StateRemoved;
    }
    void LetGo()
    {
        if (m_pValue)
            m_pValue->Detach(this);
        m_pValue = nullptr;
    }
    void Hold(T* value)
    {
        m_pValue = value;
        if (m_pValue)
            m_pValue->Attach(this);
    }

private:
    friend struct ::TestAccess;
    T* m_pValue = nullptr;
};

} // namespace values
