// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/LiquidHandle.h"
#include "workbench/receiver/ReceiverStage.h"

struct agc_crcf_s;

/// Brings I and Q to a mean power of 1, unless something was demodulated from them: at once where
/// the signal grows, slowly where it fades. Silence, samples that are 0, does not count.
class GainControl : public ReceiverStage
{
public:
    GainControl();

    BasebandFormat configure(const ReceiverSettings& settings,
                             const BasebandFormat& format) override;
    void process(BasebandBlock& block) override;
    void finish(BasebandBlock& block) override;
    void reset() override;
    StageReport report() const override;

private:
    void passOn(BasebandBlock& output);
    void settle(double energy, double squares);

    LiquidHandle<agc_crcf_s*> m_control;
    bool m_isOn = false;
    bool m_isFresh = true; // the level is taken at once, group by group, until it is steady
    std::size_t m_groupLength = 1;
    std::vector<std::complex<float>> m_group; // samples that wait until it is whole
};
