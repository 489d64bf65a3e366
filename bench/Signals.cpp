// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "Signals.h"

#include "platform/gui/ColorSet.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace {

constexpr int traceCount = drawn::eyeBufferSize / (drawn::eyeSamples + 1);

PeerSignal plain(PeerSignal::Kind kind, IColorBase::ECOLOR ground, IColorBase::ECOLOR groundEnd,
                 IColorBase::ECOLOR trace)
{
    const auto color = [](IColorBase::ECOLOR number) { return ColorSet::Instance()[number].rgb(); };
    PeerSignal signal;
    signal.kind = kind;
    signal.ground = color(ground);
    signal.groundEnd = color(groundEnd);
    signal.grid = color(IColorBase::colGrid);
    signal.trace = color(trace);
    return signal;
}

} // namespace

std::vector<double> drawn::square(std::size_t count)
{
    std::mt19937 generator(1);
    std::normal_distribution<double> normal(0.0, 0.2);
    std::vector<double> samples(count);
    for (std::size_t i = 0; i < count; ++i)
        samples[i] = (i / 10 % 2 ? 1.0 : -1.0) + normal(generator);
    return samples;
}

PeerSignal drawn::squareForPeers(std::size_t count, double yMax)
{
    PeerSignal signal = plain(PeerSignal::Kind::Series, IColorBase::colTimeBackground,
                              IColorBase::colTimeBackgroundEnd, IColorBase::colTimeTrace);
    signal.xMin = -static_cast<double>(recordCount * count);
    signal.xMax = 0.0;
    signal.yMin = -yMax;
    signal.yMax = yMax;
    PeerSignal::Trace trace; // one curve costs less than one of each data set
    const std::vector<double> samples = square(count);
    for (int record = 0; record < recordCount; ++record) {
        for (const double sample : samples) {
            trace.x.append(signal.xMin + trace.x.size());
            trace.y.append(sample);
        }
    }
    signal.traces = {trace};
    return signal;
}

std::vector<float> drawn::constellation(std::size_t pointCount)
{
    std::mt19937 generator(1);
    std::uniform_int_distribution<int> level(0, 3);
    std::normal_distribution<float> normal(0.0F, 0.03F);
    std::vector<float> samples(2 * pointCount);
    for (float& sample : samples)
        sample = static_cast<float>(level(generator)) * 0.5F - 0.75F + normal(generator);
    return samples;
}

PeerSignal drawn::constellationForPeers(std::size_t pointCount)
{
    PeerSignal signal = plain(PeerSignal::Kind::Points, IColorBase::colIQBackground,
                              IColorBase::colIQBackgroundEnd, IColorBase::colIQPoint);
    signal.xMin = -1.0;
    PeerSignal::Trace trace;
    const std::vector<float> samples = constellation(pointCount);
    for (int record = 0; record < recordCount; ++record) {
        for (std::size_t i = 1; i < samples.size(); i += 2) {
            trace.x.append(double{samples[i - 1]});
            trace.y.append(double{samples[i]});
        }
    }
    signal.traces = {trace};
    return signal;
}

std::vector<std::vector<double>> drawn::eye(Eye kind)
{
    // Two symbols a trace, a transition in the first quarter of each.
    constexpr int half = eyeSamples / 2;
    std::mt19937 random(1);
    std::normal_distribution<double> normal(0.0, kind == noise ? 0.4 : 0.02);
    std::vector<std::vector<double>> result(traceCount, std::vector<double>(eyeSamples));
    double level = 1.0;
    double next = 1.0;
    for (std::vector<double>& trace : result) {
        for (int i = 0; i < eyeSamples; ++i) {
            double value = 0.0;
            if (kind == twoLevels) {
                if (i % half == 0) {
                    level = next;
                    next = random() % 2 ? 0.7 : -0.7;
                }
                const double progress = std::min(1.0, 4.0 * (i % half) / half);
                value = level + (next - level) * 0.5 * (1.0 - std::cos(M_PI * progress));
            }
            trace[static_cast<std::size_t>(i)] = value + normal(random);
        }
    }
    return result;
}

PeerSignal drawn::eyeForPeers(Eye kind)
{
    PeerSignal signal = plain(PeerSignal::Kind::Traces, IColorBase::colEyeBackground,
                              IColorBase::colEyeBackgroundEnd, IColorBase::colEyeTrace);
    PeerSignal::Trace line;
    for (int i = 0; i < eyeSamples; ++i)
        line.x.append(i / (1.001 * (eyeSamples - 1)));
    for (const std::vector<double>& trace : eye(kind)) {
        line.y = QVector<double>(trace.begin(), trace.end());
        signal.traces.push_back(line);
    }
    return signal;
}
