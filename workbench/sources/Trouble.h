// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <mutex>

/// What is amiss with a signal, a sentence or nothing: one thread says it, any thread may ask.
class Trouble
{
public:
    void say(const QString& sentence)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_sentence = sentence;
    }
    QString sentence() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_sentence;
    }

private:
    mutable std::mutex m_mutex;
    QString m_sentence;
};
