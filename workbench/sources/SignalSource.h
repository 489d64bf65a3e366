// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/Result.h"
#include "workbench/sources/SignalFacts.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

/// A signal that is read in blocks: one or several channels of real or complex samples at one rate.
/// "Sample i" is the i-th of each channel, counted from 0.
class SignalSource
{
public:
    virtual ~SignalSource();

    const SignalFacts& facts() const { return m_facts; }
    /// Number of samples of each channel; none for a signal without a known end.
    virtual std::optional<std::int64_t> sampleCount() const = 0;
    /// Whether a live signal has ended: no more samples can come. Valid after a read that returned
    /// 0.
    virtual bool hasEnded() const;
    /// The current trouble, if there is any. From any thread, also while another one reads.
    virtual std::optional<Message> trouble() const;
    /// Whether samples that should be there are missing, as trouble tells. From any thread.
    virtual bool hasFailed() const;
    /// Index of the next sample to be read. When samples of a live signal are lost, it leaps over
    /// as many as are known to be lost, at least one.
    virtual std::int64_t position() const = 0;
    /// Reads the next samples into a block, which it replaces: sample by sample, the channels of
    /// each beside one another, Q after I where complex. Values are full scale = 1 where the signal
    /// has a full scale, and are not checked: NaN and infinity come through.
    /// @param count  most samples to read; fewer may come at any time.
    /// @return samples read; 0 at the end, or where reading on is not possible, and of a live
    ///         signal also while none come.
    virtual std::size_t read(std::vector<double>& block, std::size_t count) = 0;
    /// Skips the next samples of a live signal at little cost: like read, without values.
    virtual std::size_t discard(std::size_t count);
    /// Moves to a sample. Returns false, and does not move, when that is not possible.
    virtual bool seek(std::int64_t position) = 0;

protected:
    SignalSource() = default;
    explicit SignalSource(SignalFacts facts)
        : m_facts(std::move(facts))
    {}

    SignalFacts m_facts; ///< complete once the source is open
};
