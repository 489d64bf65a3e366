// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/ReceiverChain.h"

#include "workbench/receiver/CarrierRecovery.h"
#include "workbench/receiver/ChannelFilter.h"
#include "workbench/receiver/Demodulator.h"
#include "workbench/receiver/FrequencyShift.h"
#include "workbench/receiver/GainControl.h"
#include "workbench/receiver/MatchedFilter.h"
#include "workbench/receiver/Resampler.h"
#include "workbench/receiver/Squelch.h"
#include "workbench/receiver/TimingRecovery.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr float largest = 1e6F; // full scale is 1

float usable(float value)
{
    return std::isfinite(value) ? std::clamp(value, -largest, largest) : 0.0F;
}

} // namespace

ReceiverChain::ReceiverChain()
{
    m_stages.push_back(std::make_unique<FrequencyShift>());
    m_stages.push_back(std::make_unique<ChannelFilter>());
    m_stages.push_back(std::make_unique<Squelch>());
    m_stages.push_back(std::make_unique<Demodulator>());
    m_stages.push_back(std::make_unique<Resampler>());
    m_stages.push_back(std::make_unique<GainControl>());
    m_stages.push_back(std::make_unique<MatchedFilter>());
    m_stages.push_back(std::make_unique<TimingRecovery>());
    m_stages.push_back(std::make_unique<CarrierRecovery>());
}

ReceiverChain::~ReceiverChain() = default;

void ReceiverChain::configure(const ReceiverSettings& settings, double sampleRate)
{
    m_settings = settings;
    if (!m_settings.flaw(sampleRate).isEmpty())
        m_settings = ReceiverSettings();
    m_format = BasebandFormat();
    m_format.sampleRate = sampleRate;
    if (!m_settings.isOn)
        return;
    for (const auto& stage : m_stages)
        m_format = stage->configure(m_settings, m_format);
}

void ReceiverChain::process(BasebandBlock& block)
{
    for (std::complex<float>& sample : block.samples)
        sample = {usable(sample.real()), usable(sample.imag())};
    for (const auto& stage : m_stages) {
        if (m_settings.isOn)
            stage->process(block);
    }
}

void ReceiverChain::finish(BasebandBlock& block)
{
    for (const auto& stage : m_stages) {
        if (!m_settings.isOn)
            return;
        BasebandBlock tail;
        stage->process(block);
        stage->finish(tail);
        block.samples.insert(block.samples.end(), tail.samples.begin(), tail.samples.end());
        block.demodulated.insert(block.demodulated.end(), tail.demodulated.begin(),
                                 tail.demodulated.end());
    }
}

void ReceiverChain::reset()
{
    for (const auto& stage : m_stages)
        stage->reset();
}

std::vector<StageReport> ReceiverChain::reports() const
{
    std::vector<StageReport> reports;
    for (const auto& stage : m_stages)
        reports.push_back(m_settings.isOn ? stage->report() : StageReport());
    return reports;
}
