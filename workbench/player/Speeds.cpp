// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/player/Speeds.h"

#include "workbench/pipeline/Transport.h"
#include "workbench/player/Units.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace {

constexpr double usualLowest = 0.1;
constexpr double leastSeconds = 10.0; // that a signal lasts at the lowest speed
constexpr double shortLength = 1.0;   // s

struct Step
{
    int power; // of ten
    int index; // of 1, 2 and 5

    double value() const
    {
        constexpr double mantissas[] = {1.0, 2.0, 5.0};
        const double power10 = std::pow(10.0, std::abs(power));
        return power < 0 ? mantissas[index] / power10 : mantissas[index] * power10;
    }
    Step next() const { return index == 2 ? Step{power + 1, 0} : Step{power, index + 1}; }
};

/// The largest step up to a speed.
Step below(double speed)
{
    Step step{static_cast<int>(std::floor(std::log10(speed))) - 1, 0};
    while (step.next().value() <= speed)
        step = step.next();
    return step;
}

} // namespace

std::vector<double> speeds::of(std::optional<double> length)
{
    const double lowest = std::min(length.value_or(HUGE_VAL) / leastSeconds, usualLowest);
    std::vector<double> speeds;
    for (Step step = below(std::max(lowest, Transport::minSpeed));
         step.value() <= Transport::maxSpeed; step = step.next())
        speeds.push_back(step.value());
    speeds.push_back(Transport::fastest);
    return speeds;
}

bool speeds::isShort(std::optional<double> length) { return length && *length < shortLength; }

QString speeds::text(double speed)
{
    if (speed == Transport::fastest)
        return QCoreApplication::translate("PlaybackControls", "Fastest");
    return speed < usualLowest ? units::duration(speed) + QStringLiteral("/s")
                               : QCoreApplication::translate("PlaybackControls", "%1x").arg(speed);
}
