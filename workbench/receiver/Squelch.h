// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/ReceiverStage.h"

/// Silences the channel while its level is below a threshold: what is silenced is exactly 0. It
/// opens with 8 symbols, or a millisecond where the symbol rate is not known, whose mean power
/// reaches the threshold, and closes with as many that are 3 dB below it.
class Squelch : public ReceiverStage
{
public:
    BasebandFormat configure(const ReceiverSettings& settings,
                             const BasebandFormat& format) override;
    void process(BasebandBlock& block) override;
    void finish(BasebandBlock& block) override;
    void reset() override;
    StageReport report() const override;

private:
    void passOn(BasebandBlock& output);

    bool m_isOn = false;
    float m_threshold = 0.0F; // power
    std::size_t m_groupLength = 1;
    std::vector<std::complex<float>> m_group; // samples that wait until it is whole
    float m_power = 0.0F;                     // mean of the last one
    bool m_isOpen = false;
};
