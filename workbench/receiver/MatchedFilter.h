// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/LiquidHandle.h"
#include "workbench/receiver/ReceiverStage.h"

struct firfilt_crcf_s;
struct firfilt_rrrf_s;
struct firinterp_crcf_s;

/// The receiver's half of a raised cosine: a root raised cosine filter. It acts on what was
/// demodulated where something was, else on I and Q, which then get all the samples of a symbol.
class MatchedFilter : public ReceiverStage
{
public:
    BasebandFormat configure(const ReceiverSettings& settings,
                             const BasebandFormat& format) override;
    void process(BasebandBlock& block) override;
    void reset() override;
    StageReport report() const override
    {
        return {StageReport::Stage::MatchedFilter, m_complex || m_real, {}, {}};
    }

private:
    LiquidHandle<firfilt_crcf_s*> m_complex{nullptr, nullptr};
    LiquidHandle<firinterp_crcf_s*> m_doubling{nullptr, nullptr}; // of I and Q, after it
    LiquidHandle<firfilt_rrrf_s*> m_real{nullptr, nullptr};
    std::vector<std::complex<float>> m_output;
};
