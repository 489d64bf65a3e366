// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/measure/EyeReadings.h"
#include "workbench/measure/SymbolCutter.h"

#include <cstdint>
#include <vector>

/// The traces of a stretch of signal that an eye is measured by: two symbols long, one for each
/// symbol whose instant of decision is in its middle, in the signal's own level.
struct EyeTraces
{
    static constexpr std::size_t perSymbol = 32; ///< samples
    static constexpr std::size_t length = 2 * perSymbol + 1;

    /// @param blocks  in order; see EyeTraceCutter for the others.
    static EyeTraces of(const std::vector<SignalBlockPtr>& blocks, double from, double to,
                        const SignalFormat& format, double bandwidth, std::size_t most);

    std::size_t count() const { return samples.size() / length; }

    std::vector<double> samples; ///< trace by trace
    /// Of each trace the sample of the signal that is nearest to its middle. Interpolation rings
    /// where a signal is not limited to half the sample rate, which its own samples do not.
    std::vector<double> nearest;
    /// Of each trace; none where the clock starts anew with each character.
    std::vector<EyeReadings::Instant> instants;
    std::int64_t skipped = 0; ///< traces that were not taken, of more than the most
};

/// Cuts them out of blocks that come one by one, any number. Of more than the most every
/// second, fourth... stretch of some thousand is kept, within which jitter shows as it does in all.
class EyeTraceCutter
{
public:
    /// @param from,to    s; symbols outside do not count.
    /// @param bandwidth  of a low-pass before, symbol rates; 0: none.
    /// @param most       traces, at least 16.
    EyeTraceCutter(double from, double to, const SignalFormat& format, double bandwidth,
                   std::size_t most);

    /// Takes the next block. Which traces there are, SymbolCutter tells.
    void add(const SignalBlock& block) { m_cutter.add(block); }
    /// No more blocks come: all traces.
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
    std::int64_t m_every = 1;  // group is kept
    std::int64_t m_number = 0; // of traces so far
    SymbolCutter m_cutter;
    EyeReadings::Instant m_instant;
    double m_runStart = 0.0; // s
};
