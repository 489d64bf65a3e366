// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/Interpolation.h"
#include "workbench/receiver/ReceiverStage.h"

#include <optional>

/// Brings the signal to a whole number of samples per symbol. It does not delay.
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
        return {StageReport::Stage::Resampler, m_interpolation.has_value(), {}, {}};
    }

private:
    template<class Sample>
    void run(std::vector<Sample>& line, std::vector<Sample>& samples, std::size_t count) const;
    void run(BasebandBlock& block, std::int64_t last);

    std::optional<Interpolation> m_interpolation; // none: the rate is as it should be
    bool m_isDemodulated = false;
    double m_ratio = 1.0;
    BasebandBlock m_line;     // samples of the input from...
    std::int64_t m_first = 0; // ...this one on
    std::int64_t m_taken = 0; // output samples to skip
    std::int64_t m_given = 0; // of the output
};
