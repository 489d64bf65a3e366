// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/ReceiverStage.h"
#include "workbench/sources/LiquidHandle.h"

struct nco_crcf_s;

/// Adds to every frequency of the signal.
class FrequencyShift : public ReceiverStage
{
public:
    FrequencyShift();

    BasebandFormat configure(const ReceiverSettings& settings,
                             const BasebandFormat& format) override;
    void process(BasebandBlock& block) override;
    void reset() override;
    StageReport report() const override { return {StageReport::Stage::Shift, m_isOn, {}, {}}; }

private:
    LiquidHandle<nco_crcf_s*> m_oscillator;
    bool m_isOn = false;
};
