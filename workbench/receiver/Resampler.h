// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/LiquidHandle.h"
#include "workbench/receiver/ReceiverStage.h"

struct msresamp_crcf_s;
struct msresamp_rrrf_s;

/// Brings the signal to a whole number of samples per symbol.
class Resampler : public ReceiverStage
{
public:
    BasebandFormat configure(const ReceiverSettings& settings,
                             const BasebandFormat& format) override;
    void process(BasebandBlock& block) override;
    void reset() override;
    StageReport report() const override
    {
        return {StageReport::Stage::Resampler, m_complex != nullptr, {}, {}};
    }

private:
    LiquidHandle<msresamp_crcf_s*> m_complex{nullptr, nullptr};
    LiquidHandle<msresamp_rrrf_s*> m_real{nullptr, nullptr};
    double m_ratio = 1.0;
    BasebandBlock m_output;
};
