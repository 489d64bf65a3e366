// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/measure/EyeReadings.h"
#include "workbench/measure/SymbolCutter.h"

#include <cstdint>
#include <vector>

/// The traces of a stretch of signal from which an eye is measured: two symbols long, one for each
/// symbol, whose instant of decision is in the middle, at the signal's own level.
struct EyeTraces
{
    static constexpr std::size_t perSymbol = 32; ///< samples
    static constexpr std::size_t length = 2 * perSymbol + 1;

    /// @param blocks  in order; see EyeTraceCutter for the others.
    static EyeTraces of(const std::vector<SignalBlockPtr>& blocks, double from, double to,
                        const SignalFormat& format, double bandwidth, std::size_t most);

    std::size_t count() const { return samples.size() / length; }

    std::vector<double> samples; ///< trace by trace
    /// Of each trace the sample of the signal nearest to its middle, which does not ring, as
    /// interpolation does when a signal is not limited to half the sample rate.
    std::vector<double> nearest;
    /// Of each trace; empty when the clock starts anew with each character.
    std::vector<EyeReadings::Instant> instants;
    std::int64_t skipped = 0; ///< number of traces that were left out beyond the largest number
};

/// Cuts traces out of any number of blocks. Beyond the largest number, every second, fourth...
/// stretch of some thousand traces is kept, within which jitter is that of all traces.
class EyeTraceCutter
{
public:
    /// @param from,to    s; symbols outside do not count.
    /// @param bandwidth  of a low-pass before, symbol rates; 0: none.
    /// @param most       traces, at least 16.
    EyeTraceCutter(double from, double to, const SignalFormat& format, double bandwidth,
                   std::size_t most);

    /// Takes the next block. See SymbolCutter for the traces that there are.
    void add(const SignalBlock& block) { m_cutter.add(block); }
    /// Ends the signal, and returns all traces.
    EyeTraces finish();

private:
    void take(const SymbolCutter::Place& place);
    void append(const Symbol& symbol);
    void thin();

    EyeTraces m_traces;
    std::vector<std::int64_t> m_groups; // of each trace: the number of its stretch
    double m_from, m_to;
    SignalFormat m_format;
    std::size_t m_most;
    std::int64_t m_groupLength;
    std::int64_t m_every = 1;  // groups: one of so many is kept
    std::int64_t m_number = 0; // of traces so far
    SymbolCutter m_cutter;
    EyeReadings::Instant m_instant;
    double m_runStart = 0.0; // s
};
