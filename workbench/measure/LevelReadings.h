// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/measure/Statistics.h"

#include <optional>
#include <vector>

/// Figures of the samples of a real signal. NaN and infinity do not count.
struct LevelReadings
{
    /// @param sampleRate  Hz, > 0.
    /// @return none when there are no finite samples.
    static std::optional<LevelReadings> of(const double* samples, std::size_t count,
                                           double sampleRate);

    double mean = 0.0;
    double lowest = 0.0;
    double highest = 0.0;
    double rms = 0.0;   ///< of all, mean included
    double acRms = 0.0; ///< about the mean
    /// Hz, of a periodic signal: whole periods between rising crossings, interpolated between
    /// samples, of the middle between its two levels (mid reference level, IEEE Std 181). The
    /// levels are the means of the samples above and below it, so that pulses may be short and
    /// clicks do not count. A crossing counts when the signal goes from a fifth of the levels'
    /// distance below to as much above. None when the periods differ by more than a tenth (r.m.s.)
    /// or are fewer than three.
    std::optional<double> frequency;

    double peakToPeak() const { return highest - lowest; }
};

/// The same figures for any number of samples that come one by one.
class LevelMeter
{
public:
    /// Largest number of samples, the first ones, in which the two levels are searched for.
    static constexpr std::size_t mostForLevels = std::size_t{1} << 22;

    void add(double sample);
    bool isEmpty() const { return m_all.count() == 0; }
    std::optional<LevelReadings> readings(double sampleRate) const;

private:
    struct Levels
    {
        double middle() const { return 0.5 * (low + high); }
        double distance() const { return high - low; }

        double low = 0.0;
        double high = 0.0;
    };
    /// Rising crossings of the middle of two levels.
    class Periods
    {
    public:
        explicit Periods(const Levels& levels);
        void add(double sample);
        std::optional<double> frequency(double sampleRate) const;

    private:
        double m_middle;
        double m_threshold;
        double m_place = 0.0; // samples so far
        double m_before;      // the sample before; not finite: none
        double m_crossing = 0.0;
        bool m_isBelow = false;       // the signal has been far enough below
        std::optional<double> m_last; // last crossing, samples
        Statistics m_periods;
    };

    Levels levelsFrom(double start) const;
    std::vector<Periods> periods() const;

    Statistics m_all;
    std::vector<double> m_first; // first samples, until there are enough to find...
    Statistics m_ofFirst;
    std::vector<Periods> m_periods; // ...their levels, the likelier ones first
};
