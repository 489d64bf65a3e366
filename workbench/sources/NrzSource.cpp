// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/NrzSource.h"

#include "workbench/sources/LowPass.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr unsigned syncWord = 0xEB90;
constexpr double maxShift = 0.45; // symbols; edges stay in their order

} // namespace

NrzSource::NrzSource(const NrzSettings& settings)
    : m_settings(settings)
    , m_noiseBits(settings.seed)
{
    m_facts.name = tr("Built-in NRZ signal");
    m_facts.sampleRate = settings.sampleRate;
    m_facts.symbolRate = settings.symbolRate;
    m_facts.frameLength = settings.frameSymbolCount * samplesPerSymbol();
    prepareFilter();
}

NrzSource::~NrzSource() = default;

void NrzSource::setNoise(double rms) { m_settings.noise = rms; }

void NrzSource::setJitter(double rms) { m_settings.jitter = rms; }

void NrzSource::setBandwidth(double bandwidth)
{
    m_settings.bandwidth = bandwidth;
    prepareFilter();
    const std::int64_t position = m_position; // the new filter continues in its settled state
    m_position = std::max<std::int64_t>(position - m_filter->settleLength(), 0);
    while (m_position < position)
        m_filter->run(levelAt(m_position++));
}

void NrzSource::prepareFilter()
{
    m_filter = std::make_unique<LowPass>(m_settings.bandwidth * m_settings.symbolRate /
                                         m_settings.sampleRate);
    // A sample is the mean of the level over the period that starts at it.
    m_facts.firstSymbol = 0.5 * samplesPerSymbol() - 0.5 + m_filter->delay();
}

std::size_t NrzSource::read(std::vector<double>& block, std::size_t count)
{
    block.resize(count);
    const double noise = m_settings.noise / m_filter->noiseGain();
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
