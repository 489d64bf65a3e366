// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/measure/Regression.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr std::size_t batchCount = 16; // of a stretch
constexpr std::size_t leastBatch = 4;  // points in a batch; fewer points count one by one
constexpr std::size_t leastKept = 64;  // of a stretch

} // namespace

void Regression::startStretch()
{
    if (m_stretches.empty() || !m_stretches.back().empty())
        m_stretches.emplace_back();
    m_inLast = m_each;
}

void Regression::add(double time, double value, double weight)
{
    if (m_stretches.empty())
        startStretch();
    ++m_count;
    auto& points = m_stretches.back();
    if (m_inLast < m_each) {
        points.back() = mean(points.back(), {time, value, weight});
        ++m_inLast;
        return;
    }
    points.push_back({time, value, weight});
    m_inLast = 1;
    if (++m_kept > m_mostKept)
        thin();
}

Regression::Point Regression::mean(const Point& a, const Point& b)
{
    const double part = b.weight / (a.weight + b.weight);
    return {a.time + part * (b.time - a.time), a.value + part * (b.value - a.value),
            a.weight + b.weight};
}

/// Joins neighbours in pairs where more than a few points are left.
void Regression::thin()
{
    m_kept = 0;
    for (auto& points : m_stretches) {
        if (points.size() >= 2 * leastKept) {
            for (std::size_t k = 0; k < points.size() / 2; ++k)
                points[k] = mean(points[2 * k], points[2 * k + 1]);
            if (points.size() % 2 > 0)
                points[points.size() / 2] = points.back();
            points.resize((points.size() + 1) / 2);
        }
        m_kept += points.size();
    }
    // With many short stretches, few points are joined.
    m_mostKept = std::max(m_mostKept, 2 * m_kept);
    m_each *= 2;
    m_inLast = m_each;
}

std::optional<Regression::Slope> Regression::slope() const
{
    struct Means
    {
        double time = 0.0, value = 0.0, weight = 0.0;
    };
    const auto meansOf = [](const Point* first, const Point* last) {
        // Relative to the first point, as times and values may be far from 0.
        Means means;
        for (const Point* point = first; point != last; ++point) {
            means.weight += point->weight;
            means.time += point->weight * (point->time - first->time);
            means.value += point->weight * (point->value - first->value);
        }
        means.time = first->time + means.time / means.weight;
        means.value = first->value + means.value / means.weight;
        return means;
    };
    double crossed = 0.0, square = 0.0;
    std::vector<Means> centres;
    for (const auto& points : m_stretches) {
        if (points.empty())
            continue;
        const Means mean = meansOf(points.data(), points.data() + points.size());
        for (const Point& point : points) {
            const double x = point.time - mean.time;
            crossed += point.weight * x * (point.value - mean.value);
            square += point.weight * x * x;
        }
    }
    if (!(square > 0.0))
        return std::nullopt;
    Slope result;
    result.value = crossed / square;
    double scatter = 0.0, batches = 0.0, moments = 0.0;
    for (const auto& points : m_stretches) {
        if (points.size() < 2)
            continue;
        const std::size_t count = points.size() / leastBatch >= batchCount
                                      ? batchCount
                                      : std::max<std::size_t>(points.size() / leastBatch, 2);
        const std::size_t used = points.size() < 4 * leastBatch ? points.size() : count;
        const Means mean = meansOf(points.data(), points.data() + points.size());
        for (std::size_t k = 0; k < used; ++k) {
            const Means batch = meansOf(points.data() + k * points.size() / used,
                                        points.data() + (k + 1) * points.size() / used);
            const double x = batch.time - mean.time;
            const double rest = batch.value - mean.value - result.value * x;
            scatter += batch.weight * rest * rest;
            moments += batch.weight * x * x;
            batches += 1.0;
        }
        batches -= 1.0; // its start was fitted
    }
    batches -= 1.0; // and so was the slope
    if (batches >= 1.0 && moments > 0.0)
        result.deviation = std::sqrt(scatter / batches / moments);
    return result;
}

/// Variance of single points around a line, from the differences of neighbours.
double Regression::scatterAbout(double slope) const
{
    double sum = 0.0, count = 1.0;
    for (const auto& points : m_stretches) {
        for (std::size_t k = 1; k < points.size(); ++k) {
            const double rest = points[k].value - points[k - 1].value -
                                slope * (points[k].time - points[k - 1].time);
            sum += 0.5 * rest * rest;
            count += 1.0;
        }
    }
    return std::sqrt(sum / count);
}

void Regression::join(double ambiguity)
{
    constexpr double sure = 1.0 / 16.0;  // of the ambiguity
    constexpr double clear = 1.0 / 32.0; // likewise: standard deviation of a step from line to line
    constexpr std::size_t leastAbout = 32, mostAbout = 1024;
    const auto first = slope();
    if (!first || !first->deviation || m_stretches.size() < 2)
        return;
    // Single neighbours are noisy: so many points on either side give the ends of the lines.
    const double part = scatterAbout(first->value) / (clear * ambiguity);
    const auto about = static_cast<std::size_t>(
        std::clamp(2.0 * part * part, double{leastAbout}, double{mostAbout}));
    std::vector<std::vector<Point>> joined;
    for (auto& points : m_stretches) {
        if (points.empty())
            continue;
        if (joined.empty()) {
            joined.push_back(std::move(points));
            continue;
        }
        const Point& last = joined.back().back();
        const double gap = points.front().time - last.time;
        const auto restOf = [&](const Point* begin, std::size_t count) {
            double sum = 0.0;
            for (std::size_t k = 0; k < count; ++k)
                sum += begin[k].value - first->value * (begin[k].time - last.time);
            return sum / static_cast<double>(count);
        };
        const std::size_t before = std::min(about, joined.back().size());
        const std::size_t after = std::min(about, points.size());
        const double step = restOf(points.data(), after) -
                            restOf(joined.back().data() + joined.back().size() - before, before);
        const double turns = std::round(step / ambiguity);
        const bool isSure = *first->deviation * gap < sure * ambiguity &&
                            std::abs(step - turns * ambiguity) < 2.0 * sure * ambiguity;
        if (!isSure) {
            joined.push_back(std::move(points));
            continue;
        }
        for (Point point : points) {
            point.value -= turns * ambiguity;
            joined.back().push_back(point);
        }
    }
    m_stretches = std::move(joined);
}
