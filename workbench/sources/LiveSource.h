// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/Recording.h"

#include <QCoreApplication>

#include <chrono>
#include <mutex>

/// What live signals have in common: bytes of a known format come when they come, and become
/// samples; what is amiss is told from any thread.
class LiveSource : public SignalSource
{
    Q_DECLARE_TR_FUNCTIONS(LiveSource)
public:
    /// Whether an address is that of a live signal: "-" for standard input, zmq:// or soapy://.
    static bool isAddress(const QString& address);
    /// Opens an address, and says in the recording what came of it.
    static void open(Recording& recording, const QString& address,
                     const Recording::Options& options);
    ~LiveSource() override;

    QString name() const override { return m_name; }
    double sampleRate() const override { return m_sampleRate; }
    int channelCount() const override { return 1; }
    bool isComplex() const override { return m_format.isComplex; }
    std::optional<std::int64_t> sampleCount() const override { return std::nullopt; }
    bool isLive() const override { return true; }
    bool hasEnded() const override { return m_hasEnded; }
    QString trouble() const override;
    std::int64_t lostBlockCount() const override;
    std::int64_t position() const override { return m_position; }
    std::size_t read(std::vector<double>& block, std::size_t count) override;
    bool seek(std::int64_t position) override;

protected:
    static constexpr std::chrono::milliseconds patience{100}; ///< of a read

    LiveSource(const QString& name, const SampleFormat& format, double sampleRate);

    /// Waits for bytes, no longer than patience, and adds them to others.
    /// @param most  bytes worth adding; more are kept until they are taken.
    virtual void receive(std::vector<char>& bytes, std::size_t most) = 0;
    /// Who sends, in a sentence.
    virtual QString peer() const = 0;

    std::size_t sampleSize() const { return m_format.byteCount() * valuesPerSample(); }
    void end() { m_hasEnded = true; }
    void setTrouble(const QString& trouble); ///< Empty where all is well again.
    void countLost(std::int64_t blocks);

private:
    std::size_t valuesPerSample() const { return static_cast<std::size_t>(m_format.valueCount()); }

    QString m_name;
    SampleFormat m_format;
    double m_sampleRate;
    bool m_hasEnded = false;
    std::int64_t m_position = 0;
    std::vector<char> m_bytes; // of samples that are not whole, or not wanted yet
    std::chrono::steady_clock::time_point m_lastTime;

    mutable std::mutex m_mutex; // guards the following
    QString m_trouble;
    bool m_isSilent = false;
    std::int64_t m_lostCount = 0;
};
