// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/SymbolTiming.h"
#include "workbench/sources/LowPass.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

/// How a signal is cut into the traces of an eye diagram.
struct EyeCut
{
    enum class Clock {
        Known,     ///< symbols lie where firstSymbol says
        Recovered, ///< symbols are found in the signal
        None       ///< symbols are unknown: the signal is cut at a fixed length
    };
    static constexpr int fixedLength = 100; ///< samples of a trace where symbols are unknown
    static constexpr int maxSymbolCount = 16;
    static constexpr double minBandwidth = 0.2;
    static constexpr double maxBandwidth = 2.0;

    Clock clock = Clock::None;
    double samplesPerSymbol = 1.0; ///< where recovered, within the bounds of SymbolTiming
    double firstSymbol = 0.0;      ///< where known: middle of symbol 0, samples
    int symbolCount = 2;           ///< symbols of a trace, 1 to maxSymbolCount
    /// Where a low-pass before the eye is 3 dB down, symbol rates; 0: none. Without symbols, none.
    double bandwidth = 0.0;
};

/// Cuts a signal into traces of equally many samples, at the same instants of the symbols: it is
/// resampled so that a symbol period is a whole number of them. Each trace ends with the sample
/// that the next one starts with, and has the middle of a symbol in its middle.
class EyeCutter
{
public:
    explicit EyeCutter(const EyeCut& cut);
    ~EyeCutter();

    /// Samples of a trace.
    std::size_t traceLength() const { return m_traceLength; }

    /// The samples from a position on. Where they do not continue the ones before, the trace that
    /// is open is given up and the clock starts anew.
    void push(std::int64_t position, const std::vector<double>& samples);
    /// No more samples come for now: gives the traces up to the last one.
    void finish();
    /// Takes the newest of the traces that were finished: samples, and beside them markers, which
    /// are the trace's length where one starts, 0 elsewhere.
    /// @param most  samples worth taking; older traces are dropped.
    void takeTraces(std::size_t most, std::vector<double>& samples, std::vector<double>& markers);

private:
    struct Interpolator;

    void start(std::int64_t position);
    void cut(const std::vector<double>& samples);
    void follow(const std::vector<SymbolKnot>& knots);
    void follow(const SymbolKnot& from, const SymbolKnot& to);
    void append(double sample);
    SymbolKnot knownKnot(double offset) const;

    EyeCut m_cut;
    int m_symbolLength; // output samples
    std::size_t m_traceLength = 0;
    std::int64_t m_start = 0;               // position of the run's first sample
    std::unique_ptr<LowPass> m_filter;      // of the run, where there is one
    std::unique_ptr<SymbolTiming> m_timing; // of the run, where recovered
    std::unique_ptr<Interpolator> m_run;    // null before the first one
    std::optional<SymbolKnot> m_knot;       // up to which the signal was cut
    std::int64_t m_next = 0;                // next instant, in output samples of the clock
    std::vector<double> m_open;             // trace
    std::vector<double> m_traces;
};
