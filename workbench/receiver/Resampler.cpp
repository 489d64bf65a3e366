// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/Resampler.h"

#include <algorithm>
#include <cmath>

#include <liquid/liquid.h>

namespace {

constexpr float stopBand = 80.0F; // dB
constexpr double sameRate = 1e-9;

} // namespace

BasebandFormat Resampler::configure(const ReceiverSettings& settings, const BasebandFormat& format)
{
    m_complex.reset();
    m_real.reset();
    if (!settings.symbolRate)
        return format;
    m_isDemodulated = format.isDemodulated;
    BasebandFormat result = format;
    if (std::abs(*settings.symbolRate / format.sampleRate - 1.0) < sameRate) {
        result.samplesPerSymbol = 1.0;
        return result;
    }
    result.samplesPerSymbol = ReceiverSettings::samplesPerSymbol;
    result.sampleRate = *settings.symbolRate * result.samplesPerSymbol;
    m_ratio = result.sampleRate / format.sampleRate;
    const auto ratio = static_cast<float>(m_ratio);
    m_complex = {msresamp_crcf_create(ratio, stopBand), msresamp_crcf_destroy};
    m_real = {msresamp_rrrf_create(ratio, stopBand), msresamp_rrrf_destroy};
    m_delay = measuredDelay();
    reset();
    result.timeOffset += (std::floor(m_delay) - m_delay) / result.sampleRate;
    return result;
}

/// The centre of what comes out for a single sample.
double Resampler::measuredDelay()
{
    constexpr double reach = 64.0; // output samples; filters of all stages are shorter
    const auto count = static_cast<unsigned>(std::ceil(reach / std::min(m_ratio, 1.0)));
    std::vector<float> impulse(count);
    impulse[0] = 1.0F;
    std::vector<float> response(static_cast<std::size_t>(2.0 * std::ceil(m_ratio * count) + 64.0));
    unsigned written = 0;
    msresamp_rrrf_execute(m_real.get(), impulse.data(), count, response.data(), &written);
    double sum = 0.0, moment = 0.0;
    for (unsigned k = 0; k < written; ++k) {
        sum += double{response[k]};
        moment += k * double{response[k]};
    }
    return std::abs(sum) > 1e-12 ? std::max(moment / sum, 0.0) : 0.0;
}

void Resampler::run(const BasebandBlock& block)
{
    const auto count = static_cast<unsigned>(block.samples.size());
    // What the stages of a resampler hold back may come at once.
    const auto most = static_cast<std::size_t>(2.0 * std::ceil(m_ratio * count) + 64.0);
    unsigned written = 0;
    m_output.samples.resize(most);
    msresamp_crcf_execute(m_complex.get(), const_cast<std::complex<float>*>(block.samples.data()),
                          count, m_output.samples.data(), &written);
    m_output.samples.resize(written);
    m_output.demodulated.clear();
    if (!block.demodulated.empty()) {
        m_output.demodulated.resize(most);
        msresamp_rrrf_execute(m_real.get(), const_cast<float*>(block.demodulated.data()), count,
                              m_output.demodulated.data(), &written);
        m_output.demodulated.resize(written);
    }
    const auto leave = [](auto& values, std::size_t skipped) {
        values.erase(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(
                                                          std::min(skipped, values.size())));
    };
    const std::size_t skipped = std::min(m_toSkip, m_output.samples.size());
    leave(m_output.samples, skipped);
    leave(m_output.demodulated, skipped);
    m_toSkip -= skipped;
}

void Resampler::process(BasebandBlock& block)
{
    if (!m_complex || block.samples.empty())
        return;
    m_taken += static_cast<double>(block.samples.size());
    run(block);
    m_given += static_cast<double>(m_output.samples.size());
    block.samples.swap(m_output.samples);
    block.demodulated.swap(m_output.demodulated);
}

void Resampler::finish(BasebandBlock& block)
{
    if (!m_complex)
        return;
    const auto missing =
        static_cast<std::size_t>(std::max(std::round(m_taken * m_ratio) - m_given, 0.0));
    BasebandBlock silence;
    silence.samples.resize(static_cast<std::size_t>(
        std::ceil((static_cast<double>(missing + m_toSkip) + 2.0) / m_ratio)));
    if (m_isDemodulated)
        silence.demodulated.resize(silence.samples.size());
    run(silence);
    m_output.samples.resize(std::min(missing, m_output.samples.size()));
    m_output.demodulated.resize(std::min(missing, m_output.demodulated.size()));
    block.append(m_output);
}

void Resampler::reset()
{
    m_toSkip = static_cast<std::size_t>(m_delay);
    m_taken = 0.0;
    m_given = 0.0;
    if (!m_complex)
        return;
    msresamp_crcf_reset(m_complex.get());
    msresamp_rrrf_reset(m_real.get());
}
