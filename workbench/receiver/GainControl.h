// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/LiquidHandle.h"
#include "workbench/receiver/ReceiverStage.h"

struct agc_crcf_s;

/// Brings I and Q to a mean power of 1, unless something was demodulated from them: at once where
/// the signal grows, slowly where it fades.
class GainControl : public ReceiverStage
{
public:
    GainControl();

    BasebandFormat configure(const ReceiverSettings& settings,
                             const BasebandFormat& format) override;
    void process(BasebandBlock& block) override;
    void reset() override;
    StageReport report() const override;

private:
    void closeGroup();

    LiquidHandle<agc_crcf_s*> m_control;
    bool m_isOn = false;
    bool m_isNew = true; // its level is not known
    std::size_t m_groupLength = 1;
    std::size_t m_count = 0; // samples of the open group, and their energy before the control
    double m_energy = 0.0;
};
