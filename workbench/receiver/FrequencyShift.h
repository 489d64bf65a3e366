// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/ReceiverStage.h"
#include "workbench/receiver/Rotation.h"

/// Adds to every frequency of the signal.
class FrequencyShift : public ReceiverStage
{
public:
    BasebandFormat configure(const ReceiverSettings& settings,
                             const BasebandFormat& format) override;
    void process(BasebandBlock& block) override;
    void reset() override;
    StageReport report() const override { return {StageReport::Stage::Shift, m_isOn, {}, {}}; }

private:
    bool m_isOn = false;
    double m_step = 0.0; // cycles a sample
    Rotation m_rotation;
    std::int64_t m_count = 0; // samples since the start
};
