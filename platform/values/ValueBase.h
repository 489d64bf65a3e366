// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Observable.h"

#include <QString>

namespace values {

class Tree;

/// A named value of the value tree. Also one that is destroyed otherwise than by the tree tells its
/// observers ccState with StateRemoved first; they may call no more than this class has then.
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

private:
    friend class Tree;
    QString m_pathName;
    int m_state = StateAlive;
    bool m_deleteWhenQuiet = false; // out of the tree: goes as its notifications end
};

} // namespace values
