// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/ReceiverChain.h"
#include "workbench/sources/ChannelChoice.h"
#include "workbench/sources/SignalSource.h"

#include <memory>
#include <mutex>

/// What a receiver makes of a signal, as a signal: complex, or where it is demodulated three real
/// channels, which are the demodulated signal and the I and Q that it came from. Once symbols are
/// recovered they have a whole number of samples, and symbol k lies at sample k times it. What a
/// squelch silences is not a number.
class ReceiverSource : public SignalSource
{
public:
    /// @param channel   of the input that is received: one of a complex pair, which is then
    /// received
    ///                  as a whole, or a real one, which is I without Q.
    /// @param settings  without a flaw at the input's sample rate.
    ReceiverSource(std::unique_ptr<SignalSource> input, const ChannelChoice& channel,
                   const ReceiverSettings& settings);
    ~ReceiverSource() override;

    /// The signal that is received.
    SignalSource& input() { return *m_input; }
    /// Gives it back; the object is of no use then.
    std::unique_ptr<SignalSource> takeInput();
    /// How the stages do. From any thread, also while another one reads.
    std::vector<StageReport> reports() const;

    QString name() const override { return m_input->name(); }
    double sampleRate() const override { return m_chain.format().sampleRate; }
    int channelCount() const override { return isComplex() ? 1 : 3; }
    bool isComplex() const override { return !m_chain.format().isDemodulated; }
    std::optional<int> constellationChannel() const override;
    std::optional<std::int64_t> sampleCount() const override;
    std::optional<double> symbolRate() const override { return m_chain.settings().symbolRate; }
    std::optional<double> firstSymbol() const override;
    bool isLive() const override { return m_input->isLive(); }
    bool hasEnded() const override { return m_isFinished && available() == 0; }
    QString trouble() const override { return m_input->trouble(); }
    std::int64_t lostBlockCount() const override { return m_input->lostBlockCount(); }

    std::int64_t position() const override { return m_position; }
    std::size_t read(std::vector<double>& block, std::size_t count) override;
    bool seek(std::int64_t position) override;

private:
    bool readOn();
    void take(const BasebandBlock& block);
    std::size_t available() const { return (m_ahead.size() - m_used) / valuesPerSample(); }
    std::size_t valuesPerSample() const { return isComplex() ? 2 : 3; }
    double ratio() const { return m_chain.format().sampleRate / m_input->sampleRate(); }

    std::unique_ptr<SignalSource> m_input;
    ChannelChoice m_channel;
    ReceiverChain m_chain;
    mutable std::mutex m_mutex; // guards the reports
    std::vector<StageReport> m_reports;
    std::int64_t m_position = 0;
    std::vector<double> m_block;
    std::vector<double> m_ahead; // values from m_used on are those of the next samples
    std::size_t m_used = 0;
    bool m_isFinished = false;
};
