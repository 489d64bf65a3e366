// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Observable.h"

#include <QString>

namespace values {

class ValueBase;

/// Owns values, and is told when somebody else destroys one.
class ORVANE_PLATFORM_API ValueOwner
{
protected:
    ValueOwner() = default;
    virtual ~ValueOwner();

private:
    friend class ValueBase;
    virtual void LetGo(ValueBase& value) = 0;
};

/// A named value of the value tree. Before it goes it tells its observers ccState with
/// StateRemoved. So does one that is destroyed otherwise than by the tree, and leaves the tree; its
/// observers then may call only what this class has.
class ORVANE_PLATFORM_API ValueBase : public Observable
{
public:
    static constexpr int StateAlive = 0;
    static constexpr int StateRemoved = 1; ///< Leaving the tree: let go of it.

    explicit ValueBase(const QString& pathName = QString());
    ~ValueBase() override;

    QString GetPathName() const { return m_pathName; }
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
