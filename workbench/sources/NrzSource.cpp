// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/NrzSource.h"

#include <algorithm>
#include <cmath>
#include <complex>

#include <liquid/liquid.h>

namespace {

constexpr unsigned syncWord = 0xEB90;
constexpr unsigned filterOrder = 4;
// liquid's Bessel low-pass of this order is 3 dB down at this part of the frequency it is given.
constexpr double besselCorner = 0.9597;
constexpr double highestCorner = 0.45; // of the sample rate
constexpr double maxShift = 0.45;      // symbols; edges stay in their order

} // namespace

/// The low-pass and what is known of it.
struct NrzSource::Filter
{
    explicit Filter(double corner)
        : handle(iirfilt_rrrf_create_prototype(LIQUID_IIRDES_BESSEL, LIQUID_IIRDES_LOWPASS,
                                               LIQUID_IIRDES_SOS, filterOrder,
                                               static_cast<float>(corner), 0.0F, 1.0F, 60.0F))
    {
        const auto length = static_cast<int>(std::ceil(8.0 / corner));
        double power = 0.0;
        for (int i = 0; i < length; ++i) {
            const double response = run(i == 0 ? 1.0 : 0.0);
            power += response * response;
            delay += i * response; // its gain at rest is 1
        }
        noiseGain = std::sqrt(power);
        settleLength = length;
        iirfilt_rrrf_reset(handle);
    }
    ~Filter() { iirfilt_rrrf_destroy(handle); }
    Filter(const Filter&) = delete;
    Filter& operator=(const Filter&) = delete;

    double run(double input)
    {
        float output = 0.0F;
        iirfilt_rrrf_execute(handle, static_cast<float>(input), &output);
        return output;
    }

    iirfilt_rrrf handle;
    double noiseGain = 1.0; // rms of white noise after it, relative to before
    double delay = 0.0;     // samples
    int settleLength = 0;   // samples after which a step has settled
};

NrzSource::NrzSource(const NrzSettings& settings)
    : m_settings(settings)
    , m_noiseBits(settings.seed)
{
    prepareFilter();
}

NrzSource::~NrzSource() = default;

void NrzSource::setNoise(double rms) { m_settings.noise = rms; }

void NrzSource::setJitter(double rms) { m_settings.jitter = rms; }

void NrzSource::setBandwidth(double bandwidth)
{
    m_settings.bandwidth = bandwidth;
    prepareFilter();
    const std::int64_t position = m_position; // the new filter takes over in full swing
    m_position = std::max<std::int64_t>(position - m_filter->settleLength, 0);
    while (m_position < position)
        m_filter->run(levelAt(m_position++));
}

void NrzSource::prepareFilter()
{
    const double corner =
        m_settings.bandwidth * m_settings.symbolRate / m_settings.sampleRate / besselCorner;
    m_filter = std::make_unique<Filter>(std::min(corner, highestCorner));
}

QString NrzSource::name() const { return tr("Built-in NRZ signal"); }

std::optional<double> NrzSource::firstSymbol() const
{
    // A sample is the mean of the level over the period that starts at it.
    return 0.5 * samplesPerSymbol() - 0.5 + m_filter->delay;
}

std::optional<double> NrzSource::frameLength() const
{
    return m_settings.frameSymbolCount * samplesPerSymbol();
}

std::size_t NrzSource::read(std::vector<double>& block, std::size_t count)
{
    block.resize(count);
    const double noise = m_settings.noise / m_filter->noiseGain;
    for (double& sample : block)
        sample = m_filter->run(levelAt(m_position++) + noise * m_normal(m_noiseBits));
    return count;
}

bool NrzSource::seek(std::int64_t position)
{
    if (position < 0)
        return false;
    m_position = position;
    return true;
}

/// The mean level from a position to the next: edges lie anywhere in between.
double NrzSource::levelAt(std::int64_t position)
{
    const double length = samplesPerSymbol();
    const auto first = static_cast<double>(position);
    const auto edge = [&](std::int64_t number) {
        const double shift = m_settings.jitter * symbolAt(number).shift;
        return (static_cast<double>(number) + std::clamp(shift, -maxShift, maxShift)) * length;
    };
    auto number = static_cast<std::int64_t>(first / length) - 1; // a late edge may leave it here
    double sum = 0.0;
    double start = first;
    while (start < first + 1.0) {
        const double end = std::clamp(edge(number + 1), start, first + 1.0);
        sum += symbolAt(number).level * (end - start);
        start = end;
        ++number;
    }
    return sum;
}

const NrzSource::Symbol& NrzSource::symbolAt(std::int64_t number)
{
    static constexpr Symbol rest{-1.0, 0.0}; // before the first one
    if (number < 0)
        return rest;
    const std::int64_t frame = number / m_settings.frameSymbolCount;
    Frame& cached = m_frames[frame & 1];
    if (cached.number != frame)
        fill(cached, frame);
    return cached.symbols[static_cast<std::size_t>(number % m_settings.frameSymbolCount)];
}

void NrzSource::fill(Frame& frame, std::int64_t number) const
{
    frame.number = number;
    frame.symbols.clear();
    std::mt19937 data(m_settings.seed + static_cast<std::uint32_t>(number));
    std::normal_distribution<double> normal;
    for (int i = 0; i < m_settings.frameSymbolCount; ++i) {
        const bool isSync = i < syncSymbolCount;
        const bool syncBit = isSync && (syncWord >> (syncSymbolCount - 1 - i) & 1U) != 0;
        const auto top = static_cast<unsigned>(m_settings.levelCount - 1);
        const auto random = static_cast<unsigned>(data() >> 16U) & top;
        const unsigned level = isSync ? (syncBit ? top : 0U) : random;
        frame.symbols.push_back({-1.0 + 2.0 * level / top, normal(data)});
    }
}
