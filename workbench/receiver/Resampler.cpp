// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/Resampler.h"

#include "workbench/receiver/SampledSignal.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double sameRate = 1e-9;

} // namespace

BasebandFormat Resampler::configure(const ReceiverSettings& settings, const BasebandFormat& format)
{
    m_interpolation.reset();
    if (!settings.symbolRate)
        return format;
    m_isDemodulated = format.isDemodulated;
    BasebandFormat result = format;
    if (std::abs(*settings.symbolRate / format.sampleRate - 1.0) < sameRate) {
        result.samplesPerSymbol = 1.0;
        return result;
    }
    constexpr double few = ReceiverSettings::fewSamplesPerSymbol;
    const bool areEnough =
        settings.isNarrow() && format.sampleRate <= (1.0 + sameRate) * few * *settings.symbolRate;
    result.samplesPerSymbol = areEnough ? few : ReceiverSettings::samplesPerSymbol;
    result.sampleRate = *settings.symbolRate * result.samplesPerSymbol;
    m_ratio = result.sampleRate / format.sampleRate;
    if (std::abs(m_ratio - 1.0) >= sameRate)
        m_interpolation.emplace(std::min(m_ratio, 1.0));
    reset();
    return result;
}

/// Samples of the output from those of the input that wait; then those are forgotten that no later
/// ones need.
template<class Sample>
void Resampler::run(std::vector<Sample>& line, std::vector<Sample>& samples,
                    std::size_t count) const
{
    samples.resize(count);
    const double first = static_cast<double>(m_given) / m_ratio - static_cast<double>(m_first);
    m_interpolation->fill(line.data(), first, 1.0 / m_ratio, count, samples.data());
    const double next = static_cast<double>(m_given + static_cast<std::int64_t>(count)) / m_ratio;
    const auto needed = static_cast<std::int64_t>(next) - m_first -
                        static_cast<std::int64_t>(m_interpolation->length());
    line.erase(line.begin(), line.begin() + std::clamp<std::int64_t>(
                                                needed, 0, static_cast<std::int64_t>(line.size())));
}

/// Puts out what lies up to a sample of the input.
void Resampler::run(BasebandBlock& block, std::int64_t last)
{
    appendSamples(m_line.samples, block.samples.data(), block.samples.size());
    m_line.demodulated.insert(m_line.demodulated.end(), block.demodulated.begin(),
                              block.demodulated.end());
    const auto end = static_cast<std::int64_t>(std::floor(static_cast<double>(last) * m_ratio)) + 1;
    const auto count = static_cast<std::size_t>(std::max<std::int64_t>(end - m_given, 0));
    const auto before = static_cast<std::int64_t>(m_line.samples.size());
    run(m_line.samples, block.samples, count);
    if (m_isDemodulated)
        run(m_line.demodulated, block.demodulated, count);
    m_first += before - static_cast<std::int64_t>(m_line.samples.size());
    m_given += static_cast<std::int64_t>(count);
}

void Resampler::process(BasebandBlock& block)
{
    if (!m_interpolation || block.samples.empty())
        return;
    m_taken += static_cast<std::int64_t>(block.samples.size());
    run(block, m_taken - static_cast<std::int64_t>(m_interpolation->length()) - 1);
}

void Resampler::finish(BasebandBlock& block)
{
    if (!m_interpolation)
        return;
    BasebandBlock rest; // silence comes after the end
    rest.samples.resize(m_interpolation->length() + 1);
    if (m_isDemodulated)
        rest.demodulated.resize(rest.samples.size());
    run(rest, m_taken - 1);
    block.append(rest);
}

void Resampler::reset()
{
    m_line = {};
    m_taken = m_given = 0;
    if (!m_interpolation)
        return;
    // Silence comes before the start.
    m_line.samples.resize(m_interpolation->length());
    if (m_isDemodulated)
        m_line.demodulated.resize(m_interpolation->length());
    m_first = -static_cast<std::int64_t>(m_interpolation->length());
}
