// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/SampleFormat.h"
#include "workbench/sources/SignalSource.h"
#include "workbench/sources/Trouble.h"

#include <QCoreApplication>

#include <algorithm>
#include <atomic>
#include <chrono>

/// A live signal of one channel that comes as bytes of one format, in pieces of any length: the
/// bytes of an incomplete sample wait for the rest of it. A derived class brings the bytes and
/// reports trouble other than a silence.
class LiveSource : public SignalSource
{
    Q_DECLARE_TR_FUNCTIONS(LiveSource)
public:
    using Clock = std::chrono::steady_clock;

    /// Longest time that a read waits.
    static constexpr std::chrono::milliseconds timeout{100};

    ~LiveSource() override;

    std::optional<std::int64_t> sampleCount() const override { return std::nullopt; }
    bool hasEnded() const override { return m_hasEnded; }
    std::optional<Message> trouble() const override { return m_trouble.message(); }
    std::int64_t position() const override { return m_position; }
    std::size_t read(std::vector<double>& block, std::size_t count) override;
    std::size_t discard(std::size_t count) override;
    bool seek(std::int64_t) override { return false; }

protected:
    /// Number of bytes to receive at a time.
    static constexpr std::size_t pieceSize = 1 << 18;

    LiveSource(const QString& name, const SampleFormat& format, double sampleRate);

    /// Appends the bytes that have come; waits for some no longer than the timeout. Samples before
    /// and after a loss come in different calls.
    /// @return false once none can come any more.
    virtual bool receive(std::vector<char>& bytes) = 0;
    /// The current trouble, if there is any. Called in the thread that reads, after receive. By
    /// default a silence of a second or more.
    virtual std::optional<Message> amiss() const;

    const SampleFormat& format() const { return m_format; }
    std::size_t sampleSize() const;
    /// Notes that samples were lost before those that receive appends next: count, or one if that
    /// is less.
    void leap(std::int64_t count) { m_position += std::max<std::int64_t>(count, 1); }
    /// Number of bytes that are not delivered yet.
    std::size_t remainder() const { return m_bytes.size() - m_used; }
    /// Whole seconds since samples came last.
    std::int64_t silentSeconds() const;

private:
    std::size_t await(std::size_t count);
    void use(std::size_t samples);

    const SampleFormat m_format;
    std::int64_t m_position = 0;
    std::vector<char> m_bytes; // received, up to...
    std::size_t m_used = 0;    // ...here already delivered
    bool m_canReceive = true;
    Clock::time_point m_lastArrival = Clock::now();
    std::atomic<bool> m_hasEnded = false;
    Trouble m_trouble;
};
