// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/LevelControl.h"

#include "workbench/receiver/Vectors.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double slowSymbols = 4096.0;
constexpr double slowSamples = 65536.0; // where the symbol rate is not known
constexpr double tolerance = 0.05;      // of the level, before the gain is changed
constexpr double leastPower = 1e-30;

ORVANE_WIDEST void scale(double* values, std::size_t count, double gain)
{
    for (std::size_t k = 0; k < count; ++k)
        values[k] *= gain;
}

} // namespace

void LevelControl::configure(bool isOn, double perSymbol)
{
    m_isOn = isOn;
    m_length = perSymbol > 0.0 ? slowSymbols * perSymbol : slowSamples;
    reset();
}

void LevelControl::reset()
{
    m_power = 0.0;
    m_count = 0.0;
    m_gain = 1.0;
    m_knowsSymbols = false;
}

void LevelControl::process(SignalBlock& block, double amplitude)
{
    if (!m_isOn)
        return;
    const auto count = static_cast<double>(block.count());
    double power = amplitude * amplitude;
    if (power > 0.0 && !m_knowsSymbols)
        m_count = 0.0; // the power before them does not count
    m_knowsSymbols = m_knowsSymbols || power > 0.0;
    if (!m_knowsSymbols) {
        for (std::size_t k = 0; k < block.count(); ++k) {
            const double q = block.q.empty() ? 0.0 : block.q[k];
            power += (block.i[k] * block.i[k] + q * q) / count;
        }
    }
    if (power > leastPower) {
        const bool isFirst = m_count == 0.0;
        m_count = std::min(m_count + count, m_length);
        m_power += count / m_count * (power - m_power);
        const double gain = 1.0 / std::sqrt(m_power);
        if (isFirst || std::abs(gain / m_gain - 1.0) > tolerance)
            m_gain = gain;
    }
    block.gain = m_gain;
    scale(block.i.data(), block.i.size(), m_gain);
    scale(block.q.data(), block.q.size(), m_gain);
    for (Symbol& symbol : block.symbols) {
        symbol.value *= static_cast<float>(m_gain);
        symbol.level *= m_gain;
    }
}

StageReport LevelControl::report() const
{
    StageReport report{StageReport::Stage::Gain, m_isOn, {}, {}};
    if (m_isOn && m_power > 0.0)
        report.readings = {{StageReport::Quantity::Level, 10.0 * std::log10(m_power)}};
    return report;
}
