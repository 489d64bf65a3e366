// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/measure/SymbolMeter.h"

#include "workbench/measure/CarrierPhases.h"
#include "workbench/receiver/Decisions.h"
#include "workbench/receiver/ModulationTable.h"
#include "workbench/sources/Constants.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double percent = 0.01;
constexpr std::size_t leastClockPoints = 4;
constexpr std::size_t levelSymbols = 256;                 // in which the level may change
constexpr std::size_t mostSymbols = std::size_t{1} << 19; // that share one gain

} // namespace

SymbolMeter::SymbolMeter(double from, double to, const Measurement::Setup& setup)
    : m_from(from)
    , m_to(to)
    , m_setup(setup)
{}

void SymbolMeter::add(const SignalBlock& block)
{
    addSymbols(block);
    addClock(block);
    for (const StageReport& report : block.reports) {
        for (const StageReport::Reading& reading : report.readings) {
            if (reading.quantity == StageReport::Quantity::AliasDistance && reading.value > 0.0)
                m_aliasDistances.insert(reading.value);
        }
    }
}

void SymbolMeter::finish(Measurement& result)
{
    digest(m_good.size());
    measureConstellation(result);
    measureCarrier(result);
    measureClock(result);
}

void SymbolMeter::addSymbols(const SignalBlock& block)
{
    m_follows = m_follows && !block.isAfterGap;
    for (const Symbol& symbol : block.symbols) {
        if (symbol.time < m_from || symbol.time >= m_to)
            continue;
        ++m_all;
        m_edges += symbol.state == SymbolState::Edge ? 1 : 0;
        m_unlocked += symbol.state == SymbolState::Unlocked ? 1 : 0;
        const bool isGood = symbol.state == SymbolState::Good;
        if (isGood)
            m_good.push_back({symbol, block.gain, !m_follows});
        m_goodCount += isGood ? 1 : 0;
        m_follows = isGood;
    }
    // Keeps enough symbols to measure the rest as well.
    if (m_good.size() >= 2 * mostSymbols)
        digest(mostSymbols);
}

QString SymbolMeter::whyMissing() const
{
    if (!m_setup.symbolRate)
        return tr("the symbol rate is not known");
    if (m_setup.format.samplesPerSymbol == 0.0)
        return tr("the symbols' clock is not looked for");
    if (m_all == 0)
        return tr("there are no symbols");
    if (m_goodCount == 0)
        return tr("the receiver is not locked");
    return QString();
}

/// Figures of the first good symbols.
std::vector<std::complex<double>> SymbolMeter::pointsOf(std::size_t count) const
{
    std::vector<std::complex<double>> result;
    for (std::size_t k = 0; k < count; ++k) {
        // Bursts may be of different levels.
        const Symbol& symbol = m_good[k].symbol;
        const double level = symbol.level > 0.0 ? symbol.level : m_good[k].gain;
        result.push_back(std::complex<double>(symbol.value) / level);
    }
    return result;
}

/// Measures the first good symbols together, and drops them.
void SymbolMeter::digest(std::size_t count)
{
    if (count > 0 && whyNoConstellation().isEmpty()) {
        const auto& ideal = modulations::of(*m_setup.modulation).points;
        const std::vector<std::complex<double>> points = pointsOf(count);
        std::vector<std::complex<double>> levelled = points;
        level(levelled, ideal);
        std::vector<double> i, q;
        for (const auto& point : levelled) {
            i.push_back(point.real());
            q.push_back(point.imag());
        }
        const auto readings = ConstellationReadings::of(i, q, ideal, m_setup.format.fittedPart);
        if (readings && m_constellation)
            m_constellation->join(*readings);
        else if (readings)
            m_constellation = readings;
        if (hasCarrier())
            addCarrier(points, readings ? percent * readings->evmRms : 0.0);
    }
    m_good.erase(m_good.begin(), m_good.begin() + static_cast<std::ptrdiff_t>(count));
}

/// Removes changes of the level over hundreds of symbols.
void SymbolMeter::level(std::vector<std::complex<double>>& points,
                        const std::vector<std::complex<double>>& ideal) const
{
    const std::size_t parts = points.size() / levelSymbols;
    if (parts < 2)
        return;
    const Decisions decisions(ideal);
    const auto whole = decisions.gainOf(points);
    if (!whole)
        return;
    std::vector<double> gains;
    for (std::size_t part = 0; part < parts; ++part) {
        const std::size_t first = part * points.size() / parts;
        const std::size_t last = (part + 1) * points.size() / parts;
        gains.push_back(decisions.gainOf(&points[first], last - first, *whole));
    }
    for (std::size_t k = 0; k < points.size(); ++k) {
        const double place =
            std::clamp((static_cast<double>(k) + 0.5) * static_cast<double>(parts) /
                               static_cast<double>(points.size()) -
                           0.5,
                       0.0, static_cast<double>(parts - 1));
        const auto part = std::min(static_cast<std::size_t>(place), parts - 2);
        const double rest = place - static_cast<double>(part);
        points[k] /= gains[part] + rest * (gains[part + 1] - gains[part]);
    }
}

QString SymbolMeter::whyNoConstellation() const
{
    QString why = whyMissing();
    if (why.isEmpty() && !m_setup.format.hasDecisions)
        why = tr("the symbols are not those of a constellation");
    if (why.isEmpty() && !m_setup.modulation)
        why = tr("the modulation is not known");
    return why;
}

void SymbolMeter::measureConstellation(Measurement& result) const
{
    Measurement::Constellation& constellation = result.constellation;
    if (m_setup.modulation)
        constellation.modulation = modulationKinds::name(*m_setup.modulation);
    else
        result.miss("constellation.modulation", tr("the modulation is not known"));
    if (const QString why = whyNoConstellation(); !why.isEmpty()) {
        result.miss("constellation", why);
        return;
    }
    constellation.symbols = m_goodCount;
    if (!m_constellation) {
        result.miss("constellation", tr("there are too few symbols"));
        return;
    }
    const ConstellationReadings& readings = *m_constellation;
    constellation.evmRms = percent * readings.evmRms;
    constellation.evmPeak = percent * readings.evmPeak;
    constellation.mer = readings.mer;
    constellation.offset = readings.originOffset;
    constellation.imbalance = readings.imbalance;
    constellation.quadrature = readings.quadratureError;
    if (!readings.imbalance)
        result.miss("constellation.imbalance_db", tr("the modulation has one axis only"));
    if (!readings.quadratureError)
        result.miss("constellation.quadrature_deg", tr("the modulation has one axis only"));
}

bool SymbolMeter::hasCarrier() const
{
    return m_setup.modulation && m_setup.format.hasDecisions && m_setup.hasCarrierRecovery;
}

/// Takes the carrier's phases of the first good symbols.
/// @param evm  of their points.
void SymbolMeter::addCarrier(const std::vector<std::complex<double>>& points, double evm)
{
    const auto& modulation = modulations::of(*m_setup.modulation);
    const Decisions decisions(modulation.points);
    const auto gain = decisions.gainOf(points);
    if (!gain)
        return;
    std::vector<CarrierPhases::Symbol> symbols;
    for (std::size_t k = 0; k < points.size(); ++k) {
        const double phase = m_good[k].symbol.phase;
        // A carrier that was found anew starts at another phase.
        const bool isStart = m_good[k].startsRun || std::abs(phase - m_lastPhase) > pi;
        symbols.push_back({phase, points[k] / *gain, isStart});
        m_lastPhase = phase;
    }
    // I and Q of offset symbols belong to two instants; a turn mixes them with values between
    // symbols.
    const double noise = 0.5 * evm * evm * decisions.power();
    const auto phases = CarrierPhases(decisions, noise, modulation.isOffset).of(symbols);
    for (std::size_t k = 0; k < phases.size(); ++k) {
        if (symbols[k].isStart)
            m_carrier.startStretch();
        m_carrier.add(m_good[k].symbol.time, phases[k].value, phases[k].weight);
    }
}

void SymbolMeter::measureCarrier(Measurement& result)
{
    Measurement::Carrier& carrier = result.carrier;
    if (!hasCarrier()) {
        result.miss("carrier", tr("the receiver recovers no carrier"));
        return;
    }
    m_carrier.join(2.0 * pi / modulations::of(*m_setup.modulation).power);
    const auto slope = m_carrier.slope();
    if (!slope) {
        result.miss("carrier", tr("there are too few symbols"));
        return;
    }
    carrier.offset = slope->value / (2.0 * pi);
    if (slope->deviation)
        carrier.deviation = *slope->deviation / (2.0 * pi);
    else
        result.miss("carrier.deviation", tr("there are too few symbols"));
    for (const double distance : m_aliasDistances)
        result.notes +=
            tr("the carrier may also be %1 Hz beside it: the spectrum fits both").arg(distance);
}

void SymbolMeter::addClock(const SignalBlock& block)
{
    if (!m_setup.symbolRate)
        return;
    for (const ClockPoint& point : block.clock) {
        if (point.time < m_from || point.time >= m_to)
            continue;
        const double symbols = m_clockPoint ? point.symbol - m_clockPoint->symbol : 0.0;
        const double expected =
            m_clockPoint ? (point.time - m_clockPoint->time) * *m_setup.symbolRate : 0.0;
        if (!m_clockPoint || symbols <= 0.0 || std::abs(symbols - expected) > 0.5)
            m_clock.startStretch();
        m_clockPoint = point;
        m_clock.add(point.time, point.symbol);
    }
}

void SymbolMeter::measureClock(Measurement& result) const
{
    Measurement::Clock& clock = result.clock;
    if (!m_setup.symbolRate || m_setup.format.samplesPerSymbol <= 1.0) {
        result.miss("clock", whyMissing().isEmpty() ? tr("the symbols' clock is not looked for")
                                                    : whyMissing());
        return;
    }
    const auto slope = m_clock.slope();
    if (!slope || m_clock.count() < leastClockPoints) {
        result.miss("clock", tr("there are too few symbols"));
        return;
    }
    constexpr double million = 1e6;
    if (m_setup.origin == Measurement::Origin::Estimated) { // then this is the symbol rate
        result.symbolRate.value = slope->value;
        result.symbolRate.deviation = slope->deviation;
        result.reasons.remove(QStringLiteral("symbol_rate.deviation"));
        result.miss("clock", tr("the symbol rate was estimated: there is none to compare with"));
        return;
    }
    clock.offset = million * (slope->value / *m_setup.symbolRate - 1.0);
    if (slope->deviation)
        clock.deviation = million * *slope->deviation / *m_setup.symbolRate;
    else
        result.miss("clock.deviation_ppm", tr("there are too few symbols"));
}
