// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/ErrorVectors.h"

#include <cmath>

namespace density {

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
}

void ErrorVectors::clear() { m_sums.assign(m_ideal.size(), Sums()); }

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
    const auto evmOf = [&](double power, std::int64_t n) {
        const double evm = 100.0 * std::sqrt(power / (references / static_cast<double>(count)));
        return Figure::of(evm, 0.5 * evm / std::sqrt(static_cast<double>(n)), n);
    };
    result.evm = evmOf(errors / static_cast<double>(count), count);
    if (errors > 0.0)
        result.mer =
            Figure::of(10.0 * std::log10(references / errors),
                       10.0 / std::log(10.0) / std::sqrt(static_cast<double>(count)), count);
    else
        result.mer = Figure::none(Withheld::TooFew, count);
    for (std::size_t k = 0; k < m_ideal.size(); ++k) {
        const Sums& sums = m_sums[k];
        const auto n = static_cast<double>(sums.count);
        Cluster cluster;
        cluster.ideal = m_ideal[k];
        cluster.evm = Figure::none(Withheld::TooFew, sums.count);
        if (sums.count >= least) {
            cluster.error = sums.error / n;
            cluster.evm = evmOf(sums.squares / n, sums.count);
        }
        result.clusters.push_back(cluster);
    }
    return result;
}

} // namespace density
