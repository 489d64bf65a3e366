// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/measure/ConstellationReadings.h"
#include "workbench/measure/Measurement.h"
#include "workbench/measure/Regression.h"

#include <complex>
#include <set>

/// Measures the symbols of a gate block by block: constellation, carrier and clock. Keeps sums, and
/// up to a million of the newest symbols.
class SymbolMeter
{
    Q_DECLARE_TR_FUNCTIONS(Measurement) // whose reasons it gives
public:
    /// @param from,to  s in the input; symbols outside do not count.
    SymbolMeter(double from, double to, const Measurement::Setup& setup);

    /// Takes the next block, in order; there may be gaps.
    void add(const SignalBlock& block);
    /// Ends the gate, and writes its figures, or why there are none.
    /// @param result  a measurement whose symbol rate stands, which is refined here.
    void finish(Measurement& result);

    /// Why there is no symbol to be measured; empty where there is one.
    QString whyMissing() const;
    /// Symbols that were not measured: at the ends of bursts, and while the receiver was not
    /// locked.
    std::int64_t edgeCount() const { return m_edges; }
    std::int64_t unlockedCount() const { return m_unlocked; }

private:
    /// A good symbol of the gate.
    struct Member
    {
        Symbol symbol;
        double gain;
        bool startsRun;
    };

    void addSymbols(const SignalBlock& block);
    void addClock(const SignalBlock& block);
    void digest(std::size_t count);
    void addCarrier(const std::vector<std::complex<double>>& points, double evm);

    void measureConstellation(Measurement& result) const;
    void measureCarrier(Measurement& result);
    void measureClock(Measurement& result) const;
    QString whyNoConstellation() const;
    bool hasCarrier() const;
    std::vector<std::complex<double>> pointsOf(std::size_t count) const;
    void level(std::vector<std::complex<double>>& points,
               const std::vector<std::complex<double>>& ideal) const;

    const double m_from;
    const double m_to;
    const Measurement::Setup m_setup;

    std::vector<Member> m_good; // that are not measured yet
    bool m_follows = false;     // the next symbol follows a good symbol without a gap
    std::int64_t m_all = 0, m_goodCount = 0, m_edges = 0, m_unlocked = 0;
    std::optional<ConstellationReadings> m_constellation;
    Regression m_carrier;
    double m_lastPhase = 0.0;
    std::set<double> m_aliasDistances;
    Regression m_clock;
    std::optional<ClockPoint> m_clockPoint; // the last one
};
