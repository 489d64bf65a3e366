// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/measure/CarrierPhases.h"

#include "workbench/measure/LineSums.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double surelyApart = 9.0; // spacing of points relative to the noise on an axis
constexpr int rounds = 2;           // of approximation: the first leaves less than it removes
constexpr double nearEnough = 0.02; // rad, error of the phase at which symbols are decided
constexpr double leastReach = 32.0; // symbols on either side, as of a loop
constexpr double smallTurn = 0.02;  // rad, to find out how much of a turn shows
constexpr std::size_t triedSymbols = 4096;
constexpr double leastShown = 0.02; // of a turn: with less, symbols tell nothing

} // namespace

CarrierPhases::CarrierPhases(const Decisions& decisions, double noise, bool isCertain)
    : m_decisions(decisions)
    , m_noise(noise)
    , m_isCertain(isCertain || decisions.spacing() >= surelyApart * std::sqrt(noise))
{}

CarrierPhases::Turn CarrierPhases::turnOf(const Complex& point) const
{
    const Complex meant = m_decisions.expected(point, m_noise).ideal;
    return {(point * std::conj(meant)).imag(), std::norm(meant)};
}

/// Part of a small turn of all symbols that their errors show.
double CarrierPhases::shownPart(const std::vector<Symbol>& symbols) const
{
    const std::size_t every = symbols.size() / triedSymbols + 1;
    double rise = 0.0, weight = 0.0;
    for (std::size_t k = 0; k < symbols.size(); k += every) {
        const Complex& point = symbols[k].point;
        rise += turnOf(point * std::polar(1.0, smallTurn)).sine -
                turnOf(point * std::polar(1.0, -smallTurn)).sine;
        weight += turnOf(point).weight;
    }
    return std::max(rise / (2.0 * smallTurn * std::max(weight, 1e-9)), leastShown);
}

/// Evaluates symbols at the phase that enough of their neighbours give.
void CarrierPhases::comeNearer(std::vector<Symbol>& symbols, double shown) const
{
    // Each symbol gives its phase with the variance m_noise / (shown * power).
    const double count = m_noise / (shown * m_decisions.power() * nearEnough * nearEnough);
    const double reach = std::max(0.5 * count, leastReach);
    for (std::size_t first = 0; first < symbols.size();) {
        std::size_t end = first + 1;
        while (end < symbols.size() && !symbols[end].isStart)
            ++end;
        const double middle = 0.5 * static_cast<double>(end - first);
        std::vector<double> places, phases, weights;
        for (std::size_t k = first; k < end; ++k) {
            const Turn turn = turnOf(symbols[k].point);
            places.push_back(static_cast<double>(k - first) - middle);
            weights.push_back(std::max(turn.weight, 1e-9));
            phases.push_back(symbols[k].phase - symbols[first].phase +
                             turn.sine / (shown * weights.back()));
        }
        const std::vector<double> smoothed = slidingLine(places, phases, weights, reach);
        const double start = symbols[first].phase;
        for (std::size_t k = first; k < end; ++k) {
            const double nearer = start + smoothed[k - first];
            symbols[k].point *= std::polar(1.0, symbols[k].phase - nearer);
            symbols[k].phase = nearer;
        }
        first = end;
    }
}

std::vector<CarrierPhases::Phase> CarrierPhases::of(std::vector<Symbol> symbols) const
{
    std::vector<Phase> phases;
    if (m_isCertain) {
        for (const Symbol& symbol : symbols) {
            const Complex decided = m_decisions.nearest(symbol.point);
            phases.push_back({symbol.phase + std::arg(symbol.point * std::conj(decided)),
                              std::max(std::norm(decided), 1e-9)});
        }
        return phases;
    }
    for (int round = 0; round < rounds; ++round)
        comeNearer(symbols, shownPart(symbols));
    const double shown = shownPart(symbols);
    for (const Symbol& symbol : symbols) {
        const Turn turn = turnOf(symbol.point);
        const double weight = std::max(turn.weight, 1e-9);
        phases.push_back({symbol.phase + turn.sine / (shown * weight), weight});
    }
    return phases;
}
