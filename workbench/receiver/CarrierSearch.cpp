// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/CarrierSearch.h"

#include "workbench/receiver/SpectralPeak.h"
#include "workbench/sources/Constants.h"

namespace {

constexpr std::size_t padding = 4;   // against the window
constexpr double significance = 7.0; // beyond the highest of as many lines of noise

} // namespace

std::optional<CarrierSearch::Line>
CarrierSearch::lineOf(const std::vector<std::complex<double>>& symbols, double range)
{
    std::size_t size = 64;
    while (size < symbols.size() * padding)
        size *= 2;
    std::vector<std::complex<double>> spectrum = symbols;
    spectrum.resize(size);
    double energy = 0.0;
    for (const auto& symbol : symbols)
        energy += std::norm(symbol);
    m_transforms.forward(spectrum);
    std::vector<double> powers(size);
    const auto reach = static_cast<std::size_t>(range * static_cast<double>(size));
    for (std::size_t bin = 0; bin < size; ++bin) {
        if (bin <= reach || bin >= size - reach)
            powers[bin] = std::norm(spectrum[bin]);
    }
    const SpectralPeak peak = SpectralPeak::of(powers);
    const double lines = static_cast<double>(symbols.size()) * 2.0 * range;
    if (!(peak.strength > (std::log(lines) + significance) * energy))
        return std::nullopt;
    const double turn = std::remainder(2.0 * pi * peak.place / static_cast<double>(size), 2.0 * pi);
    std::complex<double> sum = 0.0;
    for (std::size_t k = 0; k < symbols.size(); ++k)
        sum += symbols[k] * std::polar(1.0, -turn * static_cast<double>(k));
    return Line{turn, std::arg(sum)};
}
