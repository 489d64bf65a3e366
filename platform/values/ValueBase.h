// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Observable.h"

#include <QString>

namespace values {

class ValueBase;

/// Owner of values. Is told when somebody else destroys one.
class ORVANE_PLATFORM_API ValueOwner
{
protected:
    ValueOwner() = default;
    virtual ~ValueOwner();

private:
    friend class ValueBase;
    virtual void LetGo(ValueBase& value) = 0;
};

/// A named value of the value tree. Before it is destroyed it notifies its observers with ccState
/// while its state is StateRemoved. A value destroyed by somebody else than the tree also leaves
/// the tree; its observers may then use only the members of this class.
class ORVANE_PLATFORM_API ValueBase : public Observable
{
public:
    static constexpr int StateAlive = 0;
    static constexpr int StateRemoved = 1; ///< Leaving the tree: let go of it.

    explicit ValueBase(const QString& pathName = QString());
    ~ValueBase() override;

    /// Path in the tree; empty for a value outside of a tree.
    QString GetPathName() const { return m_pathName; }
    /// StateAlive or StateRemoved.
    int GetState() const { return m_state; }

protected:
    void NotificationEnded() override;
    QString Name() const override;

private:
    friend class Tree;
    QString m_pathName;
    ValueOwner* m_pOwner = nullptr;
    int m_state = StateAlive;
    bool m_deleteWhenQuiet = false; // out of the tree: goes as its notifications end
};

} // namespace values
