// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/ViewFeeds.h"

#include <algorithm>
#include <cmath>

void ViewFeeds::open(const SignalFormat& format, const TimeScale& scale,
                     std::optional<double> frameLength)
{
    time.open(scale, frameLength);
    eye.open(format);
    iq.open(format);
}

void ViewFeeds::layOut(double sampleRate, std::optional<double> length)
{
    const double shown = std::ceil(time.span() * sampleRate);
    if (!gate.isFixed())
        gate.follow(static_cast<std::size_t>(shown),
                    length ? std::optional(std::llround(*length * sampleRate)) : std::nullopt);
    const double covered =
        gate.isFixed() ? (gate.fixedTo() - gate.fixedFrom()) * sampleRate : shown;
    eye.setGateLength(covered);
    iq.setGateLength(covered);
}

void ViewFeeds::take(const BlockPart& part)
{
    time.take(part);
    const BlockPart measured = gate.take(part);
    if (measured.count == 0)
        return;
    eye.take(measured);
    iq.take(measured);
}

void ViewFeeds::notify()
{
    time.notify();
    eye.notify();
    iq.notify();
}

void ViewFeeds::jump()
{
    time.restart();
    if (!gate.isFixed())
        gate.clear();
}

bool ViewFeeds::showsTimeOfGate(double sampleRate) const
{
    const auto shown = static_cast<std::size_t>(std::ceil(time.span() * sampleRate));
    return !gate.isFixed() && shown <= Gate::maxSampleCount;
}

void ViewFeeds::showGate(double sampleRate)
{
    if (showsTimeOfGate(sampleRate))
        time.show(gate.parts().front().position(), gate.samples());
    eye.show(gate.parts());
    iq.show(gate.parts());
}

void ViewFeeds::showNothing()
{
    time.show(0, {});
    eye.show({});
    iq.show({});
}

void ViewFeeds::setLevels(double lowest, double highest)
{
    time.setLevels(lowest, highest);
    eye.setLevels(lowest, highest);
    iq.setLevel(std::max(std::abs(lowest), std::abs(highest)));
}

void ViewFeeds::fitLevels()
{
    time.fitLevels();
    eye.fitLevels();
    iq.fitLevels();
}
