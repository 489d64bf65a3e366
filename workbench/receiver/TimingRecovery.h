// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/ReceiverStage.h"
#include "workbench/receiver/SymbolTiming.h"

#include <memory>

/// Resamples to ReceiverSettings::samplesPerSymbol, so that the middle of each symbol is a sample,
/// see SymbolTiming, with the clock of the demodulated samples if there are any. Samples are held
/// back for some 500 symbols until the clock is known. Without timing recovery there are no
/// symbols. With one sample a symbol, each sample is a symbol.
class TimingRecovery : public ReceiverStage
{
public:
    BasebandFormat configure(const ReceiverSettings& settings,
                             const BasebandFormat& format) override;
    void process(BasebandBlock& block) override;
    void finish(BasebandBlock& block) override;
    void reset() override;
    StageReport report() const override;

private:
    void follow(BasebandBlock& output);
    void follow(const SymbolKnot& knot, BasebandBlock& output);
    void measure(const SymbolKnot& knot, BasebandBlock& output);
    void addSymbol(double position, std::size_t sample, std::int64_t number, SymbolState state,
                   BasebandBlock& output);
    void interpolate(double first, double step, std::size_t count, BasebandBlock& output);
    void dropUsed(double position);

    bool m_isOn = false;
    bool m_isDemodulated = false;
    bool m_isReal = false;
    bool m_isOffset = false;   // Q comes half a symbol after I
    bool m_isOneEach = false;  // one sample a symbol
    double m_sampleRate = 1.0; // of the input...
    double m_perSymbol = 1.0;  // ...and its samples of a symbol
    double m_timeOffset = 0.0;
    std::unique_ptr<SymbolTiming> m_timing;
    std::unique_ptr<SymbolTiming> m_fresh; // what it starts as
    // Between the samples that are used: few are enough after a matched filter.
    std::size_t m_step = 1;
    std::size_t m_skipCount = 0;
    BasebandBlock m_waiting;  // samples from...
    std::int64_t m_first = 0; // ...this position on
    bool m_isEnding = false;  // no samples follow those that wait
    std::optional<SymbolKnot> m_knot;
    std::int64_t m_next = 0;  // instant, in samples of the output
    std::int64_t m_count = 0; // samples put out
    double m_error = 0.0;     // mean square of the clock's steps from knot to knot, symbols
};
