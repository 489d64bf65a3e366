// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// How DeviceRaster draws step lines.
#include "platform/base/Saturate.h"
#include "platform/glbase/DeviceRaster.h"
#include "platform/glbase/GLStepLine.h"
#include "platform/glbase/PixelTarget.h"
#include "platform/glbase/StrokeRuns.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

/// Where a step line puts its levels, in device pixels. The pen is a rectangle of whole pixels.
struct DeviceRaster::StepMap
{
    std::uint64_t levelCount;
    std::uint64_t columnCount;
    std::uint64_t wholeLevels; ///< Of each column, and what is left over for all of them.
    std::uint64_t restLevels;
    std::int64_t left;
    std::int64_t right;
    std::int64_t top;
    std::int64_t bottom;
    std::int64_t penWidth;
    std::int64_t penHeight;

    StepMap(const GLStepLine& line, const Scale& x, const Scale& y)
        : levelCount(line.Levels().size())
    {
        // Beyond all that a picture can hold, so that products of columns stay inside 64 bits.
        static constexpr double farthest = 4294967296.0; // 2^32
        const auto edge = [](const Scale& scale, double logical) {
            const double device = scale.Edge(logical);
            return std::isnan(device)
                       ? 0
                       : static_cast<std::int64_t>(std::clamp(device, -farthest, farthest));
        };
        const QRect& dest = line.DestRect();
        left = edge(x, dest.left());
        right = std::max(edge(x, dest.right() + 1.0), left + 1);
        top = edge(y, dest.top());
        bottom = std::max(edge(y, dest.bottom() + 1.0), top + 1);
        columnCount = static_cast<std::uint64_t>(right - left);
        wholeLevels = levelCount / columnCount;
        restLevels = levelCount % columnCount;

        const double width = std::max(1, line.LineStyle().Width());
        penWidth = truncateSaturated<int>(width * x.factor + 0.5, 1);
        penHeight =
            std::min<std::int64_t>(truncateSaturated<int>(width * y.factor + 0.5, 1), bottom - top);
    }

    /// The level that is held when a column ends.
    std::size_t LevelAfter(std::int64_t column) const
    {
        if (column < left)
            return 0;
        const auto done = std::min(static_cast<std::uint64_t>(column + 1 - left), columnCount);
        const std::uint64_t reached =
            done * wholeLevels + (done * restLevels + columnCount - 1) / columnCount;
        return std::min(reached, levelCount) - 1;
    }
    /// The levels that show in a column: those that the pen reaches at any of its positions that
    /// cover the column, from the level that is held before the first of them.
    GLStepLine::Extremes LevelsIn(std::int64_t column, const GLStepLine& line) const
    {
        return line.ExtremesOf(LevelAfter(column - penWidth), LevelAfter(column) + 1);
    }
    double RowOf(int level) const
    {
        const std::int64_t rise = bottom - top - penHeight;
        const std::int64_t height = (level * rise + 127) / 255; // to the nearest row
        return static_cast<double>(top + rise - height);
    }
};

void DeviceRaster::AddStepLine(const GLStepLine& line)
{
    const QRect& dest = line.DestRect();
    if (line.Levels().empty() || dest.isEmpty() || line.LineStyle().Style() == lsNone)
        return;

    const StepMap map(line, m_x, m_y);
    const auto visibleRow = [this](double row) {
        return truncateSaturated<int>(row, m_y.visible.first, m_y.visible.last);
    };
    const Span columns = m_x.VisibleSpan(dest.left(), dest.right() + 1.0);
    const auto strokeIn = [&](int column) {
        const auto levels = map.LevelsIn(column, line);
        return Span{visibleRow(map.RowOf(levels.max)),
                    visibleRow(map.RowOf(levels.min) + static_cast<double>(map.penHeight))};
    };
    if (m_pixels) {
        m_strokesLeft = columns.first;
        constexpr int ahead = 8; // columns
        // Fewer lie in the processor's caches anyway.
        constexpr std::size_t many = std::size_t{1} << 15U;
        const bool isLong = line.Levels().size() > many;
        for (int column = columns.first; column < columns.last; ++column) {
            if (isLong)
                line.Expect(map.LevelAfter(column + ahead));
            const Span stroke = strokeIn(column);
            m_pixels->strokes.push_back({stroke.first, stroke.last});
        }
        return;
    }
    const auto put = [this](const Span& run, const Span& rows) { AddDeviceRect(run, rows); };
    StrokeRuns<Span, decltype(put)> runs(put, columns.first);
    for (int column = columns.first; column < columns.last; ++column)
        runs.Next(column, strokeIn(column));
    runs.Next(columns.last, {0, 0});
}
