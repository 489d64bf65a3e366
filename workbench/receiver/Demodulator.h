// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/ReceiverStage.h"
#include "workbench/sources/LiquidHandle.h"

struct freqdem_s;

/// Computes the frequency of a signal, in symbol rates, or in sample rates where the symbol rate is
/// not known; or its magnitude.
class Demodulator : public ReceiverStage
{
public:
    Demodulator();

    BasebandFormat configure(const ReceiverSettings& settings,
                             const BasebandFormat& format) override;
    void process(BasebandBlock& block) override;
    void reset() override;
    StageReport report() const override
    {
        return {StageReport::Stage::Demodulator,
                m_demodulation != ReceiverSettings::Demodulation::Linear,
                {},
                {}};
    }

private:
    LiquidHandle<freqdem_s*> m_fm;
    ReceiverSettings::Demodulation m_demodulation = ReceiverSettings::Demodulation::Linear;
    float m_scale = 1.0F;
};
