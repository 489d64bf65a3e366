// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/FrequencyEstimate.h"
#include "workbench/receiver/ReceiverStage.h"
#include "workbench/receiver/Rotation.h"

#include <memory>

/// Takes the carrier's frequency off before the matched filter, which would cut into a band that is
/// beside its own. It estimates the frequency from windows of samples while it is told to search,
/// else it keeps what it found.
class FrequencyCorrection : public ReceiverStage
{
public:
    static constexpr std::size_t windowSymbols = 1024;

    BasebandFormat configure(const ReceiverSettings& settings,
                             const BasebandFormat& format) override;
    void process(BasebandBlock& block) override;
    void finish(BasebandBlock& block) override;
    void reset() override;
    StageReport report() const override { return {StageReport::Stage::Resampler, false, {}, {}}; }

    /// Whether the carrier is not followed yet, or not any more.
    void setSearching(bool isSearching) { m_isSearching = isSearching; }
    /// Phase that was taken off, rad, at a time since the start of the run, s; runs on over turns.
    double phaseAt(double time) const;
    /// Whether another frequency fits nearly as well, and how far off that is, Hz.
    bool mayBeAlias() const { return m_found.mayBeAlias; }
    double aliasDistance() const { return m_found.aliasDistance * m_symbolRate; }

private:
    struct Part
    {
        std::int64_t first; ///< sample
        double phase;       ///< cycles, there
        double step;        ///< cycles a sample
    };

    void estimate(std::size_t count);
    void passOn(std::size_t count, std::vector<std::complex<float>>& output);

    bool m_isOn = false;
    bool m_isSearching = true;
    double m_sampleRate = 1.0;
    double m_symbolRate = 1.0;
    double m_timeOffset = 0.0;
    std::size_t m_perSymbol = 1;
    std::unique_ptr<FrequencyEstimate> m_estimate;
    FrequencyEstimate::Result m_found;
    std::vector<std::complex<float>> m_waiting;
    std::int64_t m_position = 0; // of the first that waits
    std::vector<Part> m_parts;
    Rotation m_rotation; // of the last one
};
