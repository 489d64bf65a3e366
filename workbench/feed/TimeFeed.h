// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/feed/Decimation.h"
#include "workbench/feed/LevelRange.h"
#include "workbench/feed/Segments.h"
#include "workbench/feed/TimeScale.h"
#include "workbench/feed/TimeValues.h"
#include "workbench/pipeline/Transport.h"

#include <cmath>
#include <deque>

/// Writes the samples that are played into the values of a time view: in segments, decimated when
/// there are far more samples than pixels. Of a segment much longer than what is shown, the newest
/// samples are written: those before them would be hidden until the next segment comes.
class TimeFeed
{
public:
    /// Starts with a new signal.
    /// @param frameLength  as in SignalSource, in samples of the signal.
    void open(const TimeScale& scale, std::optional<double> frameLength);
    /// Sets the shown time, s; clamped to what can be shown.
    /// @param periodLength  samples that come at a time.
    void setSpan(double seconds, double periodLength);
    double span() const { return m_span; }
    /// Sets whether the axis counts symbols if they are known; true at first. Set the span again
    /// afterwards.
    void setCountingSymbols(bool wanted) { m_countsSymbols = wanted; }
    bool countsSymbols() const { return m_countsSymbols; }
    const TimeScale& scale() const { return m_scale; }
    /// Number of samples of a segment.
    double segmentLength() const;
    /// Sets how far back the axis reaches, such as after a zoom; in its unit, not positive.
    /// @return whether samples that it shows now were not written; writeAgain writes them.
    bool reachBack(double start);
    /// Writes the newest samples again; the views must be empty.
    void writeAgain();

    /// Number of samples missing to the end of the open segment, or of the next one when none is
    /// open, for which it looks ahead. 0: not known yet.
    std::size_t openCount(Transport& transport);
    /// Takes samples that are played, at most as many as are missing.
    void take(const BlockPart& part);
    /// Writes the samples that were taken since the last call.
    void notify();
    /// The next samples do not follow those that were taken.
    void restart();
    /// Writes these samples only; the views must be empty.
    /// @param position  of the first one.
    void show(std::int64_t position, const std::vector<double>& samples);

    void setLevels(double lowest, double highest);
    /// Fits the axis to the shown levels, and follows them.
    void fitLevels() { m_levels.follow(); }
    /// @param elapsed  s since the last call.
    void followLevels(double elapsed);
    const LevelRange& levels() const { return m_levels; }

private:
    /// Consecutive samples.
    struct Stretch
    {
        double count;
        LevelExtremes levels;
        BlockPart part; // without a block once the levels are known
    };

    void begin(std::size_t count);
    double shownCount() const;
    void remember(const BlockPart& part);
    void forget();
    void addAll(std::int64_t position, const std::vector<double>& samples);
    void add(const double* samples, std::size_t count);
    void noteLevels(const Stretch& stretch);
    void findLevels();

    TimeValues m_values;
    TimeScale m_scale;
    Segments m_segments;
    Decimation m_decimation;
    double m_span = 1.0;
    bool m_countsSymbols = true;
    LevelRange m_levels{0.05};
    std::deque<Stretch> m_shown;      // the newest, at most as many as are shown
    double m_shownCount = 0.0;        // samples of them
    std::deque<BlockPart> m_newest;   // parts, some of whose samples may not have been written...
    double m_newestCount = 0.0;       // ...samples of them...
    double m_written = HUGE_VAL;      // ...and how many of each segment were, at least
    double m_reach = 0.0;             // samples, as far as the axis reaches back
    std::size_t m_open = 0;           // samples missing to the end of the segment...
    std::size_t m_hidden = 0;         // ...of which so many are not written
    double m_marker = 0.0;            // of the next sample
    std::vector<double> m_window;     // in which the end of a segment is searched for
    std::vector<double> m_newSamples; // to be decimated
    std::vector<double> m_newMarkers;
    std::vector<double> m_samples; // of the next notification
    std::vector<double> m_markers;
};
