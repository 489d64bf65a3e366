// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/FirFilter.h"
#include "workbench/receiver/ReceiverStage.h"

#include <optional>

/// Low-pass that passes the channel and attenuates its neighbours by 60 dB. Without delay: as many
/// samples come out as go in.
class ChannelFilter : public ReceiverStage
{
public:
    BasebandFormat configure(const ReceiverSettings& settings,
                             const BasebandFormat& format) override;
    void process(BasebandBlock& block) override;
    void finish(BasebandBlock& block) override;
    void reset() override;
    StageReport report() const override
    {
        return {StageReport::Stage::Channel, m_filter.has_value(), {}, {}};
    }

private:
    std::optional<FirFilter> m_filter;
    std::size_t m_delay = 0; // samples
    std::size_t m_skipped = 0;
};
