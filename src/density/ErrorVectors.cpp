// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/ErrorVectors.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace density {

namespace {

std::vector<double> joined(const std::vector<double>& blocks)
{
    std::vector<double> pairs;
    for (std::size_t k = 0; k + 1 < blocks.size(); k += 2)
        pairs.push_back(blocks[k] + blocks[k + 1]);
    return pairs;
}

} // namespace

ErrorVectors::ErrorVectors(const std::vector<std::complex<double>>& ideal)
{
    for (const std::complex<double>& point : ideal) {
        if (std::isfinite(point.real()) && std::isfinite(point.imag()) &&
            m_ideal.size() < mostPoints)
            m_ideal.push_back(point);
    }
    m_sums.resize(m_ideal.size());
}

void ErrorVectors::add(float i, float q)
{
    if (m_ideal.empty() || !std::isfinite(i) || !std::isfinite(q))
        return;
    const std::complex<double> symbol(static_cast<double>(i), static_cast<double>(q));
    std::size_t nearest = 0;
    double distance = std::norm(symbol - m_ideal[0]);
    for (std::size_t k = 1; k < m_ideal.size(); ++k) {
        const double other = std::norm(symbol - m_ideal[k]);
        if (other < distance) {
            distance = other;
            nearest = k;
        }
    }
    Sums& sums = m_sums[nearest];
    ++sums.count;
    sums.error += symbol - m_ideal[nearest];
    sums.squares += distance;
    addToBlock(distance);
}

void ErrorVectors::addToBlock(double square)
{
    m_begunSquares += square;
    if (++m_begun < m_blockLength)
        return;
    m_blocks.push_back(std::exchange(m_begunSquares, 0.0));
    m_begun = 0;
    if (m_blocks.size() == mostBlocks) {
        m_blocks = joined(m_blocks);
        m_blockLength *= 2;
    }
}

void ErrorVectors::clear()
{
    m_sums.assign(m_ideal.size(), Sums());
    m_blocks.clear();
    m_blockLength = 1;
    m_begun = 0;
    m_begunSquares = 0.0;
}

// Of the mean power, relative to it.
double ErrorVectors::deviation(double power, double count) const
{
    constexpr std::size_t leastBlocks = 16; // fewer tell their own deviation badly
    double variance = 1.0 / count;
    auto length = static_cast<double>(m_blockLength);
    for (std::vector<double> blocks = m_blocks; blocks.size() >= leastBlocks;
         blocks = joined(blocks), length *= 2.0) {
        const auto n = static_cast<double>(blocks.size());
        double squares = 0.0;
        for (const double sum : blocks)
            squares += std::pow(sum / length / power - 1.0, 2.0);
        variance = std::max(variance, squares / n / (n - 1.0));
    }
    return std::sqrt(variance);
}

ErrorVectors::Figures ErrorVectors::figures() const
{
    Figures result;
    std::int64_t count = 0;
    double errors = 0.0, references = 0.0;
    for (std::size_t k = 0; k < m_ideal.size(); ++k) {
        count += m_sums[k].count;
        errors += m_sums[k].squares;
        references += static_cast<double>(m_sums[k].count) * std::norm(m_ideal[k]);
    }
    const Withheld reason = m_ideal.empty()                        ? Withheld::NoReference
                            : count < least || !(references > 0.0) ? Withheld::TooFew
                                                                   : Withheld::No;
    result.evm = result.mer = Figure::none(reason, count);
    if (reason != Withheld::No)
        return result;
    const auto all = static_cast<double>(count);
    const double power = errors / all;
    const double deviation = power > 0.0 ? this->deviation(power, all) : 0.0;
    const auto evmOf = [&](double square, std::int64_t n, double relative) {
        const double evm = 100.0 * std::sqrt(square / (references / all));
        return Figure::of(evm, 0.5 * evm * relative, n);
    };
    result.evm = evmOf(power, count, deviation);
    if (errors > 0.0)
        result.mer = Figure::of(10.0 * std::log10(references / errors),
                                10.0 / std::log(10.0) * deviation, count);
    else
        result.mer = Figure::none(Withheld::TooFew, count);
    // Neighbours in a cluster are farther apart than those of all symbols, and less alike.
    const double alike = all * deviation * deviation - 1.0;
    for (std::size_t k = 0; k < m_ideal.size(); ++k) {
        const Sums& sums = m_sums[k];
        const auto n = static_cast<double>(sums.count);
        Cluster cluster;
        cluster.ideal = m_ideal[k];
        cluster.evm = Figure::none(Withheld::TooFew, sums.count);
        if (sums.count >= least) {
            cluster.error = sums.error / n;
            cluster.evm = evmOf(sums.squares / n, sums.count,
                                std::sqrt((1.0 + std::max(alike, 0.0) * n / all) / n));
        }
        result.clusters.push_back(cluster);
    }
    return result;
}

} // namespace density
