// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/pipeline/Transport.h"
#include "workbench/sources/LowPass.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <vector>

/// How a signal is cut into the traces of an eye diagram.
struct EyeCut
{
    static constexpr int maxSymbolCount = 16;
    static constexpr double minBandwidth = 0.2;
    static constexpr double maxBandwidth = 2.0;

    bool hasSymbols() const { return samplesPerSymbol > 0.0; }

    double samplesPerSymbol = 0.0; ///< nominal; 0: symbols are unknown
    int symbolCount = 2;           ///< symbols of a trace, 1 to maxSymbolCount
    /// Cut-off frequency (3 dB) of a low-pass before the eye, symbol rates; 0: none.
    double bandwidth = 0.0;
};

/// Cuts a signal into traces of equally many samples around the middle of each symbol. The samples
/// are interpolated so that the middle of the symbol is the middle of the trace and a symbol period
/// is a whole number of samples. Without symbols there are no traces.
///
/// Traces that touch a gap, silenced samples or a symbol that is not good are left out.
class EyeCutter
{
public:
    explicit EyeCutter(const EyeCut& cut);
    ~EyeCutter();

    /// Number of samples of a trace.
    std::size_t traceLength() const { return m_traceLength; }
    /// Cuts one of so many traces, at least 1, chosen at random but reproducibly.
    void setStep(std::int64_t step);

    /// Takes the next samples, after those of the last call or anywhere else.
    void push(const BlockPart& part);
    /// Returns the newest traces: their samples, and beside them markers, which are the length of a
    /// trace at its start and 0 elsewhere. Older traces cost nothing, unless there are very many.
    /// @param most  largest number of samples to return; older traces are dropped.
    void takeTraces(std::size_t most, std::vector<double>& samples, std::vector<double>& markers);

private:
    void start(std::int64_t position);
    void append(const BlockPart& part);
    void read(std::int64_t first);
    void readPart(const BlockPart& part);
    void cut(std::size_t most);
    bool isKnown(std::size_t middle) const;
    bool isChosen(double number) const;
    bool isWhole(std::size_t middle);
    double placeOf(std::size_t middle, double symbols) const;
    bool isClear(std::int64_t first, std::int64_t last, std::uint8_t flaws) const;
    void trace(std::size_t middle);
    std::int64_t filter(std::int64_t first, std::int64_t last);
    float sampleAt(std::int64_t position) const;
    void forget();

    EyeCut m_cut;
    int m_symbolLength; // output samples
    std::size_t m_traceLength = 0;
    std::size_t m_reach; // symbols on either side of a trace's middle that have to be known
    std::int64_t m_step = 1;
    std::unique_ptr<LowPass> m_filter; // null without a low-pass
    std::int64_t m_start = 0;          // position of the first sample that is kept
    std::vector<float> m_samples;
    std::deque<BlockPart> m_unread;    // of which these were not made single yet
    std::vector<std::uint8_t> m_flaws; // of the samples...
    std::int64_t m_lastFlaw = -1;      // ...of which this one has the last, where not negative
    std::vector<Symbol> m_symbols;
    std::size_t m_next = 0;             // symbol in the middle of the next trace
    std::vector<std::size_t> m_middles; // symbols of the traces to be cut, newest first
    std::vector<float> m_filtered;      // samples that a trace takes
    std::vector<float> m_traces;
};
