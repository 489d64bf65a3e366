// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <vector>

namespace density {

/// What a picture shows: a part of the plane of time and level, or of I and Q. Time is in symbols,
/// 0 at the middle of a trace; level, I and Q are in the signal's unit.
struct Window
{
    double left = -1.0;
    double right = 1.0;
    double bottom = -1.0;
    double top = 1.0;

    double width() const { return right - left; }
    double height() const { return top - bottom; }
    /// Whether it can be divided into cells: finite, right of left, top above bottom, and each
    /// extent at least 1e-9 of its distance from 0, so that double precision can tell cells apart.
    bool isUsable() const { return isUsable(left, right) && isUsable(bottom, top); }
    bool operator==(const Window& other) const
    {
        return left == other.left && right == other.right && bottom == other.bottom &&
               top == other.top;
    }
    bool operator!=(const Window& other) const { return !(*this == other); }

private:
    static bool isUsable(double start, double stop)
    {
        const double extent = stop - start;
        return std::isfinite(extent) && extent > 1e-30 && extent < 1e30 &&
               extent > 1e-9 * std::fmax(std::abs(start), std::abs(stop));
    }
};

/// Cells of a picture; cell 0 of a row is at the left, row 0 at the bottom.
struct GridSize
{
    static constexpr int most = 8192; ///< columns, and rows

    int columns = 800;
    int rows = 600;

    bool isUsable() const { return columns >= 1 && columns <= most && rows >= 1 && rows <= most; }
    std::size_t cellCount() const
    {
        return static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows);
    }
    bool operator==(const GridSize& other) const
    {
        return columns == other.columns && rows == other.rows;
    }
};

/// What all traces of an eye have in common: so many samples, evenly over so many symbols, the
/// first at -symbolCount / 2 and the last at symbolCount / 2.
struct TraceShape
{
    static constexpr int mostSamples = 1024;

    int sampleCount = 33;
    double symbolCount = 2.0;

    bool isUsable() const
    {
        return sampleCount >= 2 && sampleCount <= mostSamples && symbolCount >= 1e-3 &&
               symbolCount <= 1e3;
    }
    double samplesPerSymbol() const { return (sampleCount - 1) / symbolCount; }
    /// Symbols from the middle of the trace to a sample.
    double timeOf(int sample) const
    {
        return symbolCount * (static_cast<double>(sample) / (sampleCount - 1) - 0.5);
    }
    bool operator==(const TraceShape& other) const
    {
        return sampleCount == other.sampleCount && symbolCount == other.symbolCount;
    }
};

/// Unit of times.
enum class TimeUnit { Symbols, Seconds };

/// How long a symbol stays in the picture.
struct Persistence
{
    enum class Kind {
        Infinite, ///< for good
        Newest,   ///< while it is one of the newest `symbols`, at most those kept raw
        Fading    ///< for good, but it counts half after each `symbols` that followed it
    };
    Kind kind = Kind::Infinite;
    double symbols = 0.0; ///< at least 1; ignored when infinite

    bool operator==(const Persistence& other) const
    {
        return kind == other.kind && symbols == other.symbols;
    }
};

/// Symbols and samples that are not in pictures and figures.
struct LeftOut
{
    std::int64_t badSamples = 0; ///< NaN or infinite, also once made single-precision; the rest of
                                 ///< their trace counts
    std::int64_t tornTraces = 0; ///< of another number of samples, or without a good one

    bool operator==(const LeftOut& other) const
    {
        return badSamples == other.badSamples && tornTraces == other.tornTraces;
    }
};

/// Counts at one moment. It never changes, so that threads can share it.
struct Snapshot
{
    Window window;
    GridSize size;
    /// How many traces or points touched each cell, row by row from the bottom, each from the left.
    /// Whole numbers, exact to 2^53; of a fading picture, weights of up to 1 each.
    std::vector<double> counts;
    std::int64_t symbolCount = 0; ///< in the picture, inside the window or not
    std::int64_t allSymbols = 0;  ///< since the last clear
    LeftOut leftOut;              ///< likewise

    double at(int column, int row) const
    {
        return counts[static_cast<std::size_t>(row) * static_cast<std::size_t>(size.columns) +
                      static_cast<std::size_t>(column)];
    }
};
using SnapshotPtr = std::shared_ptr<const Snapshot>;

} // namespace density
