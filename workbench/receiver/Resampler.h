// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/ReceiverStage.h"
#include "workbench/sources/LiquidHandle.h"

struct msresamp_crcf_s;
struct msresamp_rrrf_s;

/// Brings the signal to a whole number of samples per symbol. It delays by less than a sample, of
/// which the format tells.
class Resampler : public ReceiverStage
{
public:
    BasebandFormat configure(const ReceiverSettings& settings,
                             const BasebandFormat& format) override;
    void process(BasebandBlock& block) override;
    void finish(BasebandBlock& block) override;
    void reset() override;
    StageReport report() const override
    {
        return {StageReport::Stage::Resampler, m_complex != nullptr, {}, {}};
    }

private:
    double measuredDelay();
    void run(const BasebandBlock& block);

    LiquidHandle<msresamp_crcf_s*> m_complex{nullptr, nullptr};
    LiquidHandle<msresamp_rrrf_s*> m_real{nullptr, nullptr};
    bool m_isDemodulated = false;
    double m_ratio = 1.0;
    double m_delay = 0.0;     // samples of the output
    std::size_t m_toSkip = 0; // of them
    double m_taken = 0.0;     // samples of the input
    double m_given = 0.0;     // of the output
    BasebandBlock m_output;
};
