// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/StageReport.h"

#include <complex>
#include <cstdint>
#include <memory>
#include <vector>

/// How reliable a symbol is.
enum class SymbolState : std::uint8_t {
    Good,     ///< the loops held: drawn as a decision and counted
    Unlocked, ///< symbol timing or carrier was not found
    Edge      ///< so near the start or end of a burst that filters lacked samples
};

/// A symbol at its instant of decision.
struct Symbol
{
    double position = 0.0; ///< of its middle, samples of the block's signal, with a fraction
    double time = 0.0;     ///< s, of the middle in the input
    /// Of the pair that the constellation shows, scaled as it shows it.
    std::complex<float> value = {};
    double level = 0.0; ///< of the value, 1 for points with a mean power of 1; 0: not known
    double phase = 0.0; ///< rad, of the carrier that was taken off, not wrapped
    /// Turn from the samples to the value, in modulations that turn by themselves.
    std::complex<double> turn = 1.0;
    SymbolState state = SymbolState::Unlocked;
};

/// A measurement of the symbol clock, independent of other points.
struct ClockPoint
{
    double time = 0.0;   ///< s, in the input
    double symbol = 0.0; ///< symbols, whole in the middle of each
};

/// Format of all blocks of a signal.
struct SignalFormat
{
    double sampleRate = 1.0;       ///< Hz
    double samplesPerSymbol = 0.0; ///< nominal; 0: no symbols are searched for
    bool hasQ = false;             ///< the constellation has points off the I axis
    bool isDemodulated = false;    ///< samples are frequency or magnitude of I and Q
    bool hasDecisions = false;     ///< the symbols' values are those of a constellation
    /// Part of the noise power that the symbols lack, because phase and timing were fitted to them.
    double fittedPart = 0.0;
    bool hasCharacters = false; ///< the symbols' clock starts anew with each character
};

/// A stretch of the signal as it is shown and measured: samples, the symbols in them, and the
/// reports of the receiver's stages for exactly these samples. Does not change once it is passed
/// on.
struct SignalBlock
{
    std::size_t count() const { return samples.size(); }
    std::int64_t end() const { return position + static_cast<std::int64_t>(samples.size()); }

    std::int64_t position = 0;   ///< of the first sample, in samples of this signal
    double time = 0.0;           ///< s, of the first sample in the input
    bool isAfterGap = true;      ///< samples before it are missing, or it is the first
    std::vector<double> samples; ///< shown over time and as an eye
    std::vector<double> i;       ///< the pair that the constellation shows, as many as samples...
    std::vector<double> q;       ///< ...or empty when there is no Q
    /// Whether the squelch silences a sample; empty: none.
    std::vector<std::uint8_t> isQuiet;
    double gain = 1.0;           ///< by which the pair and the symbols were multiplied
    std::vector<Symbol> symbols; ///< with their middle within the block, in order
    std::vector<ClockPoint> clock;
    std::vector<StageReport> reports; ///< in the order of the stages; none without a receiver
};

using SignalBlockPtr = std::shared_ptr<const SignalBlock>;
