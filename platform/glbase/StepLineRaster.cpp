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
#include <utility>

/// Where a step line puts its levels, in device pixels. The pen is a rectangle of whole pixels.
struct DeviceRaster::StepMap
{
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
        const std::uint64_t levelCount = line.Levels().size();
        wholeLevels = levelCount / columnCount;
        restLevels = levelCount % columnCount;

        const double width = std::max(1, line.LineStyle().Width());
        penWidth = truncateSaturated<int>(width * x.factor + 0.5, 1);
        penHeight =
            std::min<std::int64_t>(truncateSaturated<int>(width * y.factor + 0.5, 1), bottom - top);
    }

    double RowOf(int level) const
    {
        const std::int64_t rise = bottom - top - penHeight;
        const std::int64_t height = (level * rise + 127) / 255; // to the nearest row
        return static_cast<double>(top + rise - height);
    }
};

/// The levels that are held when columns end, a column after the other: a division for each would
/// cost more than all else.
class DeviceRaster::StepWalk
{
public:
    StepWalk(const StepMap& map, std::int64_t column)
        : m_map(map)
        , m_column(column)
    {
        const auto done = static_cast<std::uint64_t>(
            std::clamp<std::int64_t>(column + 1 - map.left, 0, map.right - map.left));
        const std::uint64_t parts = done * map.restLevels;
        const std::uint64_t rest = (parts + map.columnCount - 1) / map.columnCount;
        m_reached = done * map.wholeLevels + rest;
        m_partsLeft = rest * map.columnCount - parts;
    }
    std::size_t Level() const { return std::max<std::size_t>(m_reached, 1) - 1; }
    void Next()
    {
        ++m_column;
        if (m_column < m_map.left || m_column >= m_map.right)
            return;
        m_reached += m_map.wholeLevels;
        if (m_partsLeft < m_map.restLevels) {
            ++m_reached;
            m_partsLeft += m_map.columnCount;
        }
        m_partsLeft -= m_map.restLevels;
    }

private:
    const StepMap& m_map;
    std::int64_t m_column;
    std::size_t m_reached;     ///< Levels that have begun.
    std::uint64_t m_partsLeft; ///< Of the last of them; a level has as many as there are columns.
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
    // Shown in a column are the levels that the pen reaches at any of its positions that cover the
    // column, from the level that is held before the first of them.
    StepWalk before(map, columns.first - map.penWidth);
    StepWalk after(map, columns.first);
    std::pair<std::size_t, std::size_t> shown{1, 0};
    Span stroke{0, 0};
    const auto nextStroke = [&] {
        if (shown.first != before.Level() || shown.second != after.Level()) {
            shown = {before.Level(), after.Level()};
            const auto levels = line.ExtremesOf(shown.first, shown.second + 1);
            stroke = {visibleRow(map.RowOf(levels.max)),
                      visibleRow(map.RowOf(levels.min) + static_cast<double>(map.penHeight))};
        }
        before.Next();
        after.Next();
        return stroke;
    };
    if (m_pixels) {
        m_strokesLeft = columns.first;
        constexpr int aheadColumns = 8;
        // Fewer lie in the processor's caches anyway.
        constexpr std::size_t many = std::size_t{1} << 15U;
        const bool isLong = line.Levels().size() > many;
        StepWalk ahead(map, columns.first + aheadColumns);
        for (int column = columns.first; column < columns.last; ++column) {
            if (isLong)
                line.Expect(ahead.Level());
            ahead.Next();
            const Span next = nextStroke();
            m_pixels->strokes.push_back({next.first, next.last});
        }
        return;
    }
    const auto put = [this](const Span& run, const Span& rows) { AddDeviceRect(run, rows); };
    StrokeRuns<Span, decltype(put)> runs(put, columns.first);
    for (int column = columns.first; column < columns.last; ++column)
        runs.Next(column, nextStroke());
    runs.Next(columns.last, {0, 0});
}
