// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/TurnSearch.h"

#include "workbench/receiver/Vectors.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr std::size_t tried = 5; // vectors of turns at once

/// Powers of the sums of lines that are turned back from block to block, for as many turns as there
/// are powers: whole vectors of them.
ORVANE_WIDEST void sumLines(const std::vector<double>& i, const std::vector<double>& q,
                            const std::vector<double>& cosines, const std::vector<double>& sines,
                            std::vector<double>& powers)
{
    // Horner's scheme. Many turns are tried side by side, as each step waits for the one before.
    for (std::size_t k = 0; k < powers.size(); k += tried * doublesWidth) {
        Doubles c[tried], d[tried], real[tried] = {}, imaginary[tried] = {};
        ORVANE_UNROLLED
        for (std::size_t n = 0; n < tried; ++n) {
            load(&cosines[k + n * doublesWidth], c[n]);
            load(&sines[k + n * doublesWidth], d[n]);
        }
        for (std::size_t line = 0; line < i.size(); ++line) {
            ORVANE_UNROLLED
            for (std::size_t n = 0; n < tried; ++n) {
                const Doubles turned = real[n] * c[n] - imaginary[n] * d[n];
                imaginary[n] = real[n] * d[n] + imaginary[n] * c[n] + q[line];
                real[n] = turned + i[line];
            }
        }
        ORVANE_UNROLLED
        for (std::size_t n = 0; n < tried; ++n)
            store(real[n] * real[n] + imaginary[n] * imaginary[n], &powers[k + n * doublesWidth]);
    }
}

} // namespace

TurnSearch::TurnSearch(double step, double range)
    : m_step(step)
{
    const int reach = static_cast<int>(std::ceil(range / step)) + 1;
    for (int k = -reach; k <= reach; ++k) {
        m_cosines.push_back(std::cos(k * step));
        m_sines.push_back(std::sin(k * step));
    }
    m_count = m_cosines.size();
    constexpr std::size_t together = tried * doublesWidth;
    const std::size_t whole = (m_count + together - 1) / together * together;
    m_cosines.resize(whole);
    m_sines.resize(whole);
    m_powers.resize(whole);
}

double TurnSearch::of(const std::vector<double>& i, const std::vector<double>& q)
{
    sumLines(i, q, m_cosines, m_sines, m_powers);
    const std::size_t middle = m_count / 2;
    std::size_t best = middle;
    for (std::size_t k = 1; k + 1 < m_count; ++k)
        best = m_powers[k] > m_powers[best] ? k : best;
    // The top of the parabola through the best one and its neighbours.
    const double left = std::sqrt(m_powers[best - 1]);
    const double right = std::sqrt(m_powers[best + 1]);
    const double curvature = left - 2.0 * std::sqrt(m_powers[best]) + right;
    const double offset = curvature < 0.0 ? 0.5 * (left - right) / curvature : 0.0;
    const double turns = static_cast<double>(best) - static_cast<double>(middle);
    return (turns + std::clamp(offset, -0.5, 0.5)) * m_step;
}
