// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// What a gate's symbols measure: constellation, carrier and clock.
#include "workbench/measure/CarrierPhases.h"
#include "workbench/measure/ConstellationReadings.h"
#include "workbench/measure/MeasurementMaker.h"
#include "workbench/measure/Regression.h"
#include "workbench/receiver/Decisions.h"
#include "workbench/receiver/ModulationTable.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr double percent = 0.01;
constexpr std::size_t leastClockPoints = 4;
constexpr std::size_t levelSymbols = 256; // in which the level may change

} // namespace

std::vector<std::complex<double>> Measurement::Maker::points() const
{
    std::vector<std::complex<double>> result;
    for (const Gate::Member& member : m_gate.good) {
        // Bursts may be of different levels.
        const double level = member.symbol.level > 0.0 ? member.symbol.level : member.gain;
        result.push_back(std::complex<double>(member.symbol.value) / level);
    }
    return result;
}

/// Takes out what the level changes in hundreds of symbols.
void Measurement::Maker::level(std::vector<std::complex<double>>& points,
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

void Measurement::Maker::measureConstellation()
{
    Constellation& constellation = m_result.constellation;
    QString why = whySymbolsMiss();
    if (why.isEmpty() && !m_setup.format.hasDecisions)
        why = tr("the symbols are not those of a constellation");
    if (m_setup.modulation)
        constellation.modulation = QString::fromLatin1(modulations::of(*m_setup.modulation).name);
    if (why.isEmpty() && !m_setup.modulation)
        why = tr("the modulation is not known");
    if (!m_setup.modulation)
        miss("constellation.modulation", tr("the modulation is not known"));
    if (!why.isEmpty()) {
        miss("constellation", why);
        return;
    }
    const auto& ideal = modulations::of(*m_setup.modulation).points;
    std::vector<std::complex<double>> all = points();
    level(all, ideal);
    constellation.symbols = static_cast<std::int64_t>(all.size());
    std::vector<double> i, q;
    for (const auto& point : all) {
        i.push_back(point.real());
        q.push_back(point.imag());
    }
    const auto readings = ConstellationReadings::of(i, q, ideal, m_setup.format.fittedPart);
    if (!readings) {
        miss("constellation", tr("there are too few symbols"));
        return;
    }
    constellation.evmRms = percent * readings->evmRms;
    constellation.evmPeak = percent * readings->evmPeak;
    constellation.mer = readings->mer;
    constellation.offset = readings->originOffset;
    constellation.imbalance = readings->imbalance;
    constellation.quadrature = readings->quadratureError;
    if (!readings->imbalance)
        miss("constellation.imbalance_db", tr("the modulation has one axis only"));
    if (!readings->quadratureError)
        miss("constellation.quadrature_deg", tr("the modulation has one axis only"));
}

void Measurement::Maker::measureCarrier()
{
    Carrier& carrier = m_result.carrier;
    if (!m_setup.modulation || !m_setup.format.hasDecisions || !m_setup.hasCarrierRecovery) {
        miss("carrier", tr("the receiver recovers no carrier"));
        return;
    }
    const Decisions decisions(modulations::of(*m_setup.modulation).points);
    const std::vector<std::complex<double>> all = points();
    const auto gain = decisions.gainOf(all);
    if (!gain) {
        miss("carrier", tr("there are too few symbols"));
        return;
    }
    const auto& modulation = modulations::of(*m_setup.modulation);
    std::vector<CarrierPhases::Symbol> symbols;
    double last = 0.0;
    for (std::size_t k = 0; k < all.size(); ++k) {
        const double phase = m_gate.good[k].symbol.phase;
        // A carrier that was found anew has another start.
        const bool isStart = m_gate.good[k].startsRun || std::abs(phase - last) > pi;
        symbols.push_back({phase, all[k] / *gain, isStart});
        last = phase;
    }
    // Of offset symbols I and Q are of two instants, which a turn mixes with what is between.
    const double noise = 0.5 * std::pow(m_result.constellation.evmRms.value_or(0.0), 2.0);
    const auto phases = CarrierPhases(decisions, noise, modulation.isOffset).of(symbols);
    Regression line;
    for (std::size_t k = 0; k < all.size(); ++k) {
        if (symbols[k].isStart)
            line.startStretch();
        line.add(m_gate.good[k].symbol.time, phases[k].value, phases[k].weight);
    }
    line.join(2.0 * pi / modulation.power);
    const auto slope = line.slope();
    if (!slope) {
        miss("carrier", tr("there are too few symbols"));
        return;
    }
    carrier.offset = slope->value / (2.0 * pi);
    if (slope->deviation)
        carrier.deviation = *slope->deviation / (2.0 * pi);
    else
        miss("carrier.deviation", tr("there are too few symbols"));
    for (const SignalBlockPtr& block : m_blocks) {
        for (const StageReport& report : block->reports) {
            for (const StageReport::Reading& reading : report.readings) {
                if (reading.quantity == StageReport::Quantity::AliasDistance &&
                    reading.value > 0.0) {
                    const QString note =
                        tr("the carrier may also be %1 Hz beside it: the spectrum fits both")
                            .arg(reading.value);
                    if (!m_result.notes.contains(note))
                        m_result.notes += note;
                }
            }
        }
    }
}

void Measurement::Maker::measureClock()
{
    Clock& clock = m_result.clock;
    if (!m_setup.symbolRate || m_setup.format.samplesPerSymbol <= 1.0) {
        miss("clock", whySymbolsMiss().isEmpty() ? tr("the symbols' clock is not looked for")
                                                 : whySymbolsMiss());
        return;
    }
    Regression line;
    const ClockPoint* before = nullptr;
    for (const SignalBlockPtr& block : m_blocks) {
        for (const ClockPoint& point : block->clock) {
            if (point.time < m_from || point.time >= m_to)
                continue;
            const double symbols = before ? point.symbol - before->symbol : 0.0;
            const double expected =
                before ? (point.time - before->time) * *m_setup.symbolRate : 0.0;
            if (!before || symbols <= 0.0 || std::abs(symbols - expected) > 0.5)
                line.startStretch();
            before = &point;
            line.add(point.time, point.symbol);
        }
    }
    const auto slope = line.slope();
    if (!slope || line.count() < leastClockPoints) {
        miss("clock", tr("there are too few symbols"));
        return;
    }
    constexpr double million = 1e6;
    if (m_setup.origin == Origin::Estimated) { // what it measures is the symbol rate
        m_result.symbolRate.value = slope->value;
        m_result.symbolRate.deviation = slope->deviation;
        m_result.reasons.remove(QStringLiteral("symbol_rate.deviation"));
        miss("clock", tr("the symbol rate was estimated: there is none to compare with"));
        return;
    }
    clock.offset = million * (slope->value / *m_setup.symbolRate - 1.0);
    if (slope->deviation)
        clock.deviation = million * *slope->deviation / *m_setup.symbolRate;
    else
        miss("clock.deviation_ppm", tr("there are too few symbols"));
}
