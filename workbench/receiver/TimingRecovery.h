// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/ReceiverStage.h"
#include "workbench/receiver/SymbolTiming.h"

#include <memory>

/// Puts the middle of each symbol on a sample, see SymbolTiming, of what was demodulated where
/// something was. Samples are held back until the clock is known, some 500 symbols. Without timing
/// recovery there are none. A sample of each symbol takes no timing: it is the symbol.
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
    bool m_isOffset = false;  // Q comes half a symbol after I
    bool m_isOneEach = false; // a sample of each symbol
    double m_sampleRate = 1.0;
    double m_timeOffset = 0.0;
    std::unique_ptr<SymbolTiming> m_timing;
    std::size_t m_step = 1; // of the samples that it takes: half do after a matched filter
    std::size_t m_skipCount = 0;
    BasebandBlock m_waiting;  // samples from...
    std::int64_t m_first = 0; // ...this position on
    bool m_isEnding = false;  // no samples come after those that wait
    std::optional<SymbolKnot> m_knot;
    std::int64_t m_next = 0;  // instant, in samples of the output
    std::int64_t m_count = 0; // samples put out
    double m_error = 0.0;     // mean square of what the clock moves from knot to knot, symbols
};
