// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/measure/EyeTraces.h"
#include "workbench/measure/LevelReadings.h"
#include "workbench/measure/Measurement.h"
#include "workbench/measure/SymbolMeter.h"

#include <map>

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
    void addSamples(const SignalBlock& block);
    void addReports(const SignalBlock& block);

    void describe();
    void measureTime();
    void measureEye();
    void measureFrequency();
    void sayStages();
    void sayWhatIsLeftOut();

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
    SymbolMeter m_symbols;
    std::map<int, QString> m_states; // of stages
};
