// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/measure/ConstellationReadings.h"
#include "workbench/measure/EyeTraces.h"
#include "workbench/measure/LevelReadings.h"
#include "workbench/measure/Measurement.h"
#include "workbench/measure/Regression.h"

#include <complex>
#include <map>
#include <set>

/// Measures a gate of any length block by block: keeps sums, some hundred thousand traces of the
/// eye, spread evenly, and as many of the newest symbols.
class Measurement::Maker
{
public:
    /// @param from,to  s in the input; samples outside do not count.
    Maker(double from, double to, const Setup& setup);

    /// Takes the next block, in order; there may be gaps.
    void add(const SignalBlock& block);
    /// Ends the gate, and returns its figures.
    Measurement finish();

private:
    /// A good symbol of the gate.
    struct Member
    {
        Symbol symbol;
        double gain;
        bool startsRun;
    };

    void addSamples(const SignalBlock& block);
    void addSymbols(const SignalBlock& block);
    void addClock(const SignalBlock& block);
    void addReports(const SignalBlock& block);
    void digest(std::size_t count);
    void addCarrier(const std::vector<std::complex<double>>& points, double evm);

    void describe();
    void measureTime();
    void measureEye();
    void measureFrequency();
    void measureConstellation();
    void measureCarrier();
    void measureClock();
    void sayStages();
    void sayWhatIsLeftOut();
    QString whyNoConstellation() const;
    bool hasCarrier() const;
    std::vector<std::complex<double>> pointsOf(std::size_t count) const;
    void level(std::vector<std::complex<double>>& points,
               const std::vector<std::complex<double>>& ideal) const;
    void miss(const char* path, const QString& reason);
    QString whySymbolsMiss() const;

    Measurement m_result;
    const double m_from;
    const double m_to;
    const Setup m_setup;

    double m_first; // s, of the first block
    double m_last;
    LevelMeter m_time;
    bool m_isTorn = true; // before the next sample
    EyeTraceCutter m_eye;
    std::int64_t m_skippedTraces = 0;
    std::map<int, QString> m_states; // of stages
    std::set<double> m_aliasDistances;

    std::vector<Member> m_good; // that are not measured yet
    bool m_follows = false;     // the next symbol follows a good symbol without a gap
    std::int64_t m_all = 0, m_goodCount = 0, m_edges = 0, m_unlocked = 0;
    std::optional<ConstellationReadings> m_constellation;
    Regression m_carrier;
    double m_lastPhase = 0.0;
    Regression m_clock;
    std::optional<ClockPoint> m_clockPoint; // the last one
};
