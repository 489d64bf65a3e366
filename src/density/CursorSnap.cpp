// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/CursorSnap.h"

#include <algorithm>
#include <cmath>

namespace density {

namespace {

void order(std::vector<double>& places)
{
    std::sort(places.begin(), places.end());
    places.erase(std::unique(places.begin(), places.end()), places.end());
}

} // namespace

CursorSnap CursorSnap::of(const EyeFigures& figures)
{
    CursorSnap snap;
    if (figures.reason != Withheld::No)
        return snap;
    snap.x.push_back(figures.instant);
    for (const EyeFigures::Level& level : figures.levels)
        snap.y.push_back(level.spread.mean.value);
    for (std::size_t k = 0; k < figures.eyes.size(); ++k) {
        snap.y.push_back(0.5 * (snap.y[k] + snap.y[k + 1]));
        if (!figures.eyes[k].jitter.rms.isGiven())
            continue;
        const double crossing = figures.eyes[k].jitter.mean;
        snap.x.push_back(crossing);
        snap.x.push_back(crossing + 1.0);
    }
    order(snap.x);
    order(snap.y);
    return snap;
}

CursorSnap CursorSnap::of(const ErrorVectors::Figures& figures)
{
    CursorSnap snap;
    for (const ErrorVectors::Cluster& cluster : figures.clusters) {
        if (!cluster.evm.isGiven())
            continue;
        snap.x.push_back(cluster.ideal.real() + cluster.error.real());
        snap.y.push_back(cluster.ideal.imag() + cluster.error.imag());
    }
    order(snap.x);
    order(snap.y);
    return snap;
}

std::optional<double> CursorSnap::nearest(const std::vector<double>& places, double to,
                                          double reach)
{
    std::optional<double> found;
    for (const double place : places) {
        const double away = std::abs(place - to);
        if (away <= reach) {
            found = place;
            reach = away;
        }
    }
    return found;
}

std::optional<double> CursorSnap::next(const std::vector<double>& places, double from,
                                       bool isUpward)
{
    if (places.empty())
        return std::nullopt;
    if (isUpward) {
        const auto above = std::upper_bound(places.begin(), places.end(), from);
        return above == places.end() ? places.front() : *above;
    }
    const auto below = std::lower_bound(places.begin(), places.end(), from);
    return below == places.begin() ? places.back() : *std::prev(below);
}

} // namespace density
