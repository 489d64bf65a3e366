// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/feed/Decimation.h"
#include "workbench/feed/LevelRange.h"
#include "workbench/feed/Segments.h"
#include "workbench/feed/TimeScale.h"
#include "workbench/feed/TimeValues.h"
#include "workbench/pipeline/Transport.h"

#include <deque>

/// Puts what is played into the values that a time view binds to: samples in segments, with far
/// fewer samples where there are far more than a view has pixels.
class TimeFeed
{
public:
    /// Starts anew with a signal.
    /// @param frameLength  as in SignalSource, in samples of the signal.
    void open(const TimeScale& scale, std::optional<double> frameLength);
    /// Time shown, s; clamped to what can be shown.
    /// @param periodLength  samples that come at a time.
    void setSpan(double seconds, double periodLength);
    double span() const { return m_span; }
    /// Whether the axis counts symbols where they are known; true at first. Set the span again.
    void setCountingSymbols(bool wanted) { m_countsSymbols = wanted; }
    bool countsSymbols() const { return m_countsSymbols; }
    const TimeScale& scale() const { return m_scale; }
    /// Samples of a segment.
    double segmentLength() const;

    /// Samples that are missing to the end of the open segment; looks ahead for the end of the next
    /// one where none is open. 0: that is not known yet.
    std::size_t openCount(Transport& transport);
    /// Takes samples that are played, at most as many as are missing.
    void take(const BlockPart& part);
    /// Puts out what was taken since the last call.
    void notify();
    /// The next samples do not follow those that were taken.
    void restart();
    /// Puts out these samples, and no others: the views were emptied before.
    /// @param position  of the first one.
    void show(std::int64_t position, const std::vector<double>& samples);

    void setLevels(double lowest, double highest);
    /// Fits the levels to those that are shown, and follows them.
    void fitLevels() { m_levels.follow(); }
    /// @param elapsed  s since the last call.
    void followLevels(double elapsed);
    const LevelRange& levels() const { return m_levels; }

private:
    /// Samples in a row.
    struct Stretch
    {
        double count;
        LevelExtremes levels;
    };

    void begin(std::size_t count);
    void add(const double* samples, std::size_t count);
    void noteLevels(const double* samples, std::size_t count);

    TimeValues m_values;
    TimeScale m_scale;
    Segments m_segments;
    Decimation m_decimation;
    double m_span = 1.0;
    bool m_countsSymbols = true;
    LevelRange m_levels{0.05};
    std::deque<Stretch> m_shown;      // the newest, no more than are shown
    double m_shownCount = 0.0;        // samples of them
    std::size_t m_open = 0;           // samples missing to the end of the segment
    double m_marker = 0.0;            // of the next sample
    std::vector<double> m_window;     // that is looked through for its end
    std::vector<double> m_newSamples; // to be thinned out
    std::vector<double> m_newMarkers;
    std::vector<double> m_samples; // of the next notification
    std::vector<double> m_markers;
};
