// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/NrzSource.h"

#include <cmath>

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr unsigned syncWord = 0xEB90;
// Two equal stages are together 3 dB down where each has fallen to the fourth root of 1/2.
const double stageWidening = 1.0 / std::sqrt(std::sqrt(2.0) - 1.0);

} // namespace

NrzSource::NrzSource(const NrzSettings& settings)
    : m_settings(settings)
    , m_noiseBits(settings.seed)
{
    prepareFilter();
}

NrzSource::~NrzSource() = default;

void NrzSource::setNoise(double rms)
{
    m_settings.noise = rms;
    prepareFilter();
}

void NrzSource::setBandwidth(double bandwidth)
{
    m_settings.bandwidth = bandwidth;
    prepareFilter();
}

// Two one-pole low-passes, y += (1 - p) (x - y). White noise of power 1 comes out of them with the
// power of their impulse response, (1 - p)^2 (n + 1) p^n: (1 - p)^4 (1 + p^2) / (1 - p^2)^3.
void NrzSource::prepareFilter()
{
    const double corner = m_settings.bandwidth * m_settings.symbolRate * stageWidening;
    m_pole = std::exp(-2.0 * pi * corner / m_settings.sampleRate);
    const double square = m_pole * m_pole;
    const double power = std::pow(1.0 - m_pole, 4.0) * (1.0 + square) / std::pow(1.0 - square, 3.0);
    m_noiseScale = m_settings.noise / std::sqrt(power);
}

QString NrzSource::name() const { return tr("Built-in NRZ signal"); }

std::optional<double> NrzSource::frameLength() const
{
    return m_settings.frameSymbolCount * m_settings.sampleRate / m_settings.symbolRate;
}

std::size_t NrzSource::read(std::vector<double>& block, std::size_t count)
{
    block.resize(count);
    for (double& sample : block) {
        const double input = levelAt(m_position++) + m_noiseScale * m_normal(m_noiseBits);
        m_first += (1.0 - m_pole) * (input - m_first);
        m_second += (1.0 - m_pole) * (m_first - m_second);
        sample = m_second;
    }
    return count;
}

bool NrzSource::seek(std::int64_t position)
{
    if (position < 0)
        return false;
    m_position = position;
    return true;
}

double NrzSource::levelAt(std::int64_t position)
{
    const auto symbol = static_cast<std::int64_t>(static_cast<double>(position) *
                                                  m_settings.symbolRate / m_settings.sampleRate);
    const std::int64_t frame = symbol / m_settings.frameSymbolCount;
    if (frame != m_frame) {
        m_frame = frame;
        m_levels.clear();
        std::mt19937 data(m_settings.seed + static_cast<std::uint32_t>(frame));
        for (int i = 0; i < m_settings.frameSymbolCount; ++i) {
            const bool one = i < syncSymbolCount ? (syncWord >> (syncSymbolCount - 1 - i) & 1U) != 0
                                                 : (data() >> 31U) != 0;
            m_levels.push_back(one ? 1.0 : -1.0);
        }
    }
    return m_levels[static_cast<std::size_t>(symbol % m_settings.frameSymbolCount)];
}
