// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/Result.h"

#include <QCoreApplication>
#include <QString>

#include <cstdint>
#include <mutex>
#include <optional>

/// The current trouble with a signal, if there is any. One thread sets it, any may read it.
class Trouble
{
    Q_DECLARE_TR_FUNCTIONS(Trouble)
public:
    static Message noMemory()
    {
        return tr("there is not enough memory for it; close other programs and open it again");
    }

    void say(const std::optional<Message>& message)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (!m_isFailure)
            m_message = message;
    }
    /// Notes that samples are missing that should be there. This stays from now on.
    void fail(const Message& message)
    {
        say(message);
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isFailure = true;
    }
    /// Notes that the system cannot read the file any further.
    void failReading(std::int64_t sample, const QString& reason)
    {
        fail(tr("it cannot be read after sample %1 (%2); open it again, or copy it elsewhere first")
                 .arg(sample)
                 .arg(reason));
    }
    std::optional<Message> message() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_message;
    }
    bool isFailure() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_isFailure;
    }

private:
    mutable std::mutex m_mutex;
    std::optional<Message> m_message;
    bool m_isFailure = false;
};
