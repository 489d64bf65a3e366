// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/StageReport.h"

#include <complex>
#include <cstdint>
#include <memory>
#include <vector>

/// How far a symbol can be trusted.
enum class SymbolState : std::uint8_t {
    Good,     ///< the loops held: it is drawn as a decision and counted
    Unlocked, ///< symbol timing or carrier were not found
    Edge      ///< so near the start or end of a burst that filters lacked samples of it
};

/// A symbol at its instant of decision.
struct Symbol
{
    double position = 0.0; ///< its middle: a sample of the block's signal, need not be whole
    double time = 0.0;     ///< s, of the middle in the input
    std::complex<float> value = {}; ///< of the pair that a constellation shows, as it shows it
    double level = 0.0; ///< of the value, where points of mean power 1 have 1; 0: not known
    double phase = 0.0; ///< rad, the carrier's that was taken off; runs on over turns
    /// By which the samples are turned to give the value: of modulations that turn by themselves.
    std::complex<double> turn = 1.0;
    SymbolState state = SymbolState::Unlocked;
};

/// Where the clock of the symbols was measured, independently of other points.
struct ClockPoint
{
    double time = 0.0;   ///< s, in the input
    double symbol = 0.0; ///< whole in the middle of a symbol
};

/// Format of the blocks of a signal, the same for all of them.
struct SignalFormat
{
    double sampleRate = 1.0;       ///< Hz
    double samplesPerSymbol = 0.0; ///< nominal; 0: no symbols are looked for
    bool hasQ = false;             ///< the constellation has points off the I axis
    bool isDemodulated = false;    ///< samples are frequency or magnitude of I and Q
    bool hasDecisions = false;     ///< the symbols' values are those of a constellation
    /// Part of the power of noise that is not in the symbols any more, as what they were fitted to
    /// followed it.
    double fittedPart = 0.0;
    bool hasCharacters = false; ///< the symbols' clock starts anew with each character
};

/// A stretch of the signal as it is shown and measured: samples, the symbols in them, and how the
/// stages of the receiver did while just these came through. Not changed once it is passed on.
struct SignalBlock
{
    std::size_t count() const { return samples.size(); }
    std::int64_t end() const { return position + static_cast<std::int64_t>(samples.size()); }

    std::int64_t position = 0;   ///< of the first sample, in samples of this signal
    double time = 0.0;           ///< s, of the first sample in the input
    bool isAfterGap = true;      ///< samples before it are missing, or it is the first
    std::vector<double> samples; ///< what is shown over time and as an eye
    std::vector<double> i;       ///< the pair that a constellation shows, as many each...
    std::vector<double> q;       ///< ...or none, where there is no Q
    /// Whether the squelch silences a sample; empty: none.
    std::vector<std::uint8_t> isQuiet;
    double gain = 1.0;           ///< by which the pair and the symbols were multiplied
    std::vector<Symbol> symbols; ///< whose middles are within the block, in order
    std::vector<ClockPoint> clock;
    std::vector<StageReport> reports; ///< in the order of the stages; none without a receiver
};

using SignalBlockPtr = std::shared_ptr<const SignalBlock>;
