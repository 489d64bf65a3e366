// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "receiver/SentSignal.h"

/// Characters of random bits on a line that rests at a level, after random gaps; edges last half a
/// symbol. Every `broken`-th, if any, has a wrong stop bit.
struct SerialLine
{
    double rest, active, noise;
    int bits = 8;
    double clock = 0.01; // part by which symbols come faster
    std::size_t broken = 0, count = 600;
    double symbolRate = 4100.0; // nominal

    Samples samples() const
    {
        Random random(11);
        const double length = sampleRate / symbolRate / (1.0 + clock);
        std::vector<std::pair<double, double>> edges; // time and step
        double time = 60.0, level = rest;
        const auto send = [&](double next) {
            if (next != level)
                edges.emplace_back(time, next - level);
            level = next;
            time += 1.0;
        };
        for (std::size_t k = 1; k <= count; ++k) {
            send(active);
            for (int bit = 0; bit < bits; ++bit)
                send(random.below(2) ? active : rest);
            send(broken > 0 && k % broken == 0 ? active : rest);
            send(rest);
            time += 0.01 * random.below(400);
        }
        Samples result;
        double passed = rest;
        auto next = edges.begin();
        for (double n = 0.0; n < (time + 60.0) * length; n += 1.0) {
            for (; next != edges.end() && next->first + 0.5 < n / length; ++next)
                passed += next->second;
            double value = passed + noise * random.noise();
            for (auto edge = next; edge != edges.end() && edge->first - 0.5 < n / length; ++edge)
                value +=
                    edge->second * 0.5 *
                    (1.0 + std::sin(2.0 * pi * std::clamp(n / length - edge->first, -0.25, 0.25)));
            result.push_back(value);
        }
        return result;
    }
};
