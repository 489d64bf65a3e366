// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/FrequencyEstimate.h"
#include "workbench/receiver/ReceiverStage.h"
#include "workbench/receiver/Rotation.h"

#include <memory>

/// Removes the carrier's frequency before the matched filter, which would cut into a band that is
/// off its own. While told to search it estimates the frequency from windows of samples; otherwise
/// it keeps the last one.
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

    /// Sets whether to search, because the carrier is not followed yet or was lost.
    void setSearching(bool isSearching) { m_isSearching = isSearching; }
    /// Phase that was taken off, rad, not wrapped, at a time in s since the start of the run.
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

    std::vector<std::complex<float>> finely(std::size_t count) const;
    void estimate(std::size_t count);
    void passOn(std::size_t count, std::vector<std::complex<float>>& output);
    void turn(std::complex<float>* samples, std::size_t count);

    bool m_isOn = false;
    bool m_isSearching = true;
    double m_sampleRate = 1.0;
    double m_symbolRate = 1.0;
    double m_timeOffset = 0.0;
    std::size_t m_perSymbol = 1;
    std::unique_ptr<FrequencyEstimate> m_estimate;
    FrequencyEstimate::Result m_found;
    std::vector<std::complex<float>> m_waiting;
    std::int64_t m_position = 0; // of the first sample that waits
    std::vector<Part> m_parts;
    Rotation m_rotation; // of the last one
};
