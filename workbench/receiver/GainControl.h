// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/LiquidHandle.h"
#include "workbench/receiver/ReceiverStage.h"

struct agc_crcf_s;

/// Brings I and Q to a mean power of 1, unless something was demodulated from them.
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
    LiquidHandle<agc_crcf_s*> m_control;
    bool m_isOn = false;
};
