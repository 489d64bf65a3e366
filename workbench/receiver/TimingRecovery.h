// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/ReceiverStage.h"
#include "workbench/receiver/SymbolTiming.h"

#include <memory>

/// Puts the middle of each symbol on a sample, see SymbolTiming, of what was demodulated where
/// something was. Samples are held back until the clock is known, some 500 symbols.
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
    void interpolate(double position, BasebandBlock& output) const;
    void dropUsed(double position);

    bool m_isOn = false;
    bool m_isDemodulated = false;
    std::unique_ptr<SymbolTiming> m_timing;
    std::size_t m_step = 1; // of the samples that it takes: half do after a matched filter
    std::size_t m_skipCount = 0;
    BasebandBlock m_waiting;  // samples from...
    std::int64_t m_first = 0; // ...this position on
    std::optional<SymbolKnot> m_knot;
    std::int64_t m_next = 0; // instant, in samples of the output
    double m_error = 0.0;    // mean square of what the clock moves from knot to knot, symbols
};
