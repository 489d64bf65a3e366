// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/measure/Measurement.h"

#include <complex>

/// Fills in one part after the other.
class Measurement::Maker
{
public:
    Maker(Measurement& result, const std::vector<SignalBlockPtr>& blocks, double from, double to,
          const Setup& setup)
        : m_result(result)
        , m_blocks(blocks)
        , m_from(from)
        , m_to(to)
        , m_setup(setup)
        , m_gate(blocks, from, to)
    {}

    void make();

private:
    /// The good symbols of a gate, and those that are not.
    struct Gate
    {
        Gate(const std::vector<SignalBlockPtr>& blocks, double from, double to);

        struct Member
        {
            Symbol symbol;
            double gain;
            bool startsRun;
        };
        std::vector<Member> good;
        std::int64_t all = 0, edges = 0, unlocked = 0;
    };

    void describe();
    void measureTime();
    void measureEye();
    void measureFrequency();
    void measureConstellation();
    void measureCarrier();
    void measureClock();
    void sayStages();
    void sayWhatIsLeftOut();
    std::vector<std::complex<double>> points() const;
    void level(std::vector<std::complex<double>>& points,
               const std::vector<std::complex<double>>& ideal) const;
    void miss(const char* path, const QString& reason);
    QString whySymbolsMiss() const;

    Measurement& m_result;
    const std::vector<SignalBlockPtr>& m_blocks;
    double m_from;
    double m_to;
    const Setup& m_setup;
    Gate m_gate;
};
