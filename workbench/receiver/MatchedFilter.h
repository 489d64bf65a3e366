// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/FirFilter.h"
#include "workbench/receiver/ReceiverStage.h"
#include "workbench/sources/LiquidHandle.h"

#include <optional>

struct firfilt_rrrf_s;

/// The measuring filter, see measuringFilter. It acts on the demodulated samples if there are any,
/// else on I and Q. Without delay: as many samples come out as go in, or every second one where few
/// of a symbol hold all of what passes.
class MatchedFilter : public ReceiverStage
{
public:
    BasebandFormat configure(const ReceiverSettings& settings,
                             const BasebandFormat& format) override;
    void process(BasebandBlock& block) override;
    void finish(BasebandBlock& block) override;
    void reset() override;
    StageReport report() const override
    {
        return {StageReport::Stage::MatchedFilter, m_complex || m_real, {}, {}};
    }

private:
    void skip(BasebandBlock& block);

    std::optional<FirFilter> m_complex;
    LiquidHandle<firfilt_rrrf_s*> m_real{nullptr, nullptr};
    std::size_t m_every = 1; // samples of the input for one of the output
    std::size_t m_delay = 0; // samples of the input
    std::size_t m_toSkip = 0;
    /// I and Q beside the filtered samples are delayed like them.
    std::vector<std::complex<float>> m_waiting;
};
