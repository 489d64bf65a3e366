// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/pipeline/Transport.h"
#include "workbench/sources/LowPass.h"

#include <cstdint>
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
    /// Where a low-pass before the eye is 3 dB down, symbol rates; 0: none.
    double bandwidth = 0.0;
};

/// Cuts a signal into traces of equally many samples, about the middle of each symbol: that is in
/// the middle of the trace, and a symbol period is a whole number of samples, between those of the
/// signal. Where no symbols are known there are no traces.
///
/// Traces that touch a gap, silenced samples or a symbol that cannot be trusted are left out.
class EyeCutter
{
public:
    explicit EyeCutter(const EyeCut& cut);
    ~EyeCutter();

    /// Samples of a trace.
    std::size_t traceLength() const { return m_traceLength; }
    /// Cuts one trace of so many, at least 1, chosen at random, but always the same one.
    void setStep(std::int64_t step);

    /// The next samples, after those of the last call or anywhere else.
    void push(const BlockPart& part);
    /// Takes the newest of the traces that were cut: samples, and beside them markers, which are
    /// the trace's length where one starts, 0 elsewhere.
    /// @param most  samples worth taking; older traces are dropped.
    void takeTraces(std::size_t most, std::vector<double>& samples, std::vector<double>& markers);
    /// Traces that were chosen but left out.
    std::int64_t leftOutCount() const { return m_leftOutCount; }

private:
    void start(std::int64_t position);
    void append(const BlockPart& part);
    void cutSymbols();
    bool isChosen(double number) const;
    bool isWhole(std::size_t middle) const;
    double placeOf(std::size_t middle, double symbols) const;
    bool isClear(std::int64_t first, std::int64_t last, std::uint8_t flaws) const;
    void trace(std::size_t middle);
    std::int64_t filter(std::int64_t first, std::int64_t last);
    float sampleAt(std::int64_t position) const;
    void forget();

    EyeCut m_cut;
    int m_symbolLength; // output samples
    std::size_t m_traceLength = 0;
    std::size_t m_reach; // symbols to either side of a trace's middle that have to be known
    std::int64_t m_step = 1;
    std::unique_ptr<LowPass> m_filter; // where there is one
    std::int64_t m_start = 0;          // position of the first sample that is kept
    std::vector<float> m_samples;
    std::vector<std::uint8_t> m_flaws; // of the samples...
    std::int64_t m_lastFlaw = -1;      // ...of which this one has the last, where not negative
    std::vector<Symbol> m_symbols;
    std::size_t m_next = 0; // symbol in the middle of the next trace
    std::int64_t m_leftOutCount = 0;
    std::vector<float> m_filtered; // samples that a trace takes
    std::vector<float> m_traces;
};
