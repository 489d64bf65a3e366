// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/measure/MeasurementMaker.h"

#include "workbench/measure/EyeReadings.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {

constexpr double percent = 0.01;
constexpr std::size_t mostTraces = 200000; // 100 MB

} // namespace

Measurement::Maker::Maker(double from, double to, const Setup& setup)
    : m_from(from)
    , m_to(to)
    , m_setup(setup)
    , m_first(std::numeric_limits<double>::infinity())
    , m_last(-m_first)
    , m_eye(from, to, m_setup.format, setup.eyeBandwidth, mostTraces)
    , m_symbols(from, to, setup)
{}

void Measurement::Maker::add(const SignalBlock& block)
{
    m_first = std::min(m_first, block.time);
    m_last = std::max(m_last,
                      block.time + static_cast<double>(block.count()) / m_setup.format.sampleRate);
    addSamples(block);
    m_eye.add(block);
    m_symbols.add(block);
    addReports(block);
}

/// Samples within the gate, with NaN at gaps.
void Measurement::Maker::addSamples(const SignalBlock& block)
{
    const auto count = static_cast<double>(block.count());
    const auto index = [&](double time) {
        return static_cast<std::size_t>(std::clamp(
            std::ceil((time - block.time) * m_setup.format.sampleRate - 1e-6), 0.0, count));
    };
    const auto tear = [&] {
        if (!std::exchange(m_isTorn, true))
            m_time.add(std::numeric_limits<double>::quiet_NaN());
    };
    if (block.isAfterGap)
        tear();
    for (std::size_t k = index(m_from); k < index(m_to); ++k) {
        if (!block.isQuiet.empty() && block.isQuiet[k]) {
            ++m_result.leftOut.samples;
            tear();
            continue;
        }
        m_time.add(block.samples[k]);
        m_isTorn = false;
    }
}

void Measurement::Maker::addReports(const SignalBlock& block)
{
    for (const StageReport& report : block.reports) {
        QString& state = m_states[static_cast<int>(report.stage)];
        const bool isSquelch = report.stage == StageReport::Stage::Squelch;
        if (!report.isOn)
            state = QStringLiteral("off");
        else if (!report.isLocked)
            state = QStringLiteral("on");
        else if (*report.isLocked) // reported at any time in the gate
            state = isSquelch ? QStringLiteral("open") : QStringLiteral("locked");
        else if (state.isEmpty())
            state = isSquelch ? QStringLiteral("closed") : QStringLiteral("searching");
    }
}

Measurement Measurement::Maker::finish()
{
    describe();
    measureTime();
    measureEye();
    measureFrequency();
    m_symbols.finish(m_result);
    sayStages();
    sayWhatIsLeftOut();
    return std::move(m_result);
}

void Measurement::Maker::describe()
{
    m_result.start = std::max(m_from, std::isfinite(m_first) ? m_first : m_from);
    m_result.stop =
        std::max(std::min(m_to, std::isfinite(m_last) ? m_last : m_result.start), m_result.start);
    m_result.sampleRate = m_setup.sampleRate;
    m_result.symbolRate.value = m_setup.symbolRate;
    m_result.symbolRate.deviation = m_setup.symbolRateDeviation;
    m_result.symbolRate.confidence = m_setup.confidence;
    m_result.symbolRate.origin = m_setup.origin;
    if (!m_setup.symbolRate)
        m_result.miss("symbol_rate", tr("the symbol rate is not known"));
    if (!m_setup.symbolRateDeviation)
        m_result.miss("symbol_rate.deviation", m_setup.origin == Origin::Estimated
                                                   ? tr("there are too few symbols")
                                                   : tr("the symbol rate was not estimated"));
    if (!m_setup.confidence)
        m_result.miss("symbol_rate.confidence", tr("the symbol rate was not estimated"));
}

void Measurement::Maker::measureTime()
{
    const auto readings = m_time.readings(m_setup.format.sampleRate);
    if (!readings) {
        m_result.miss("time", tr("there are no samples"));
        return;
    }
    Time& time = m_result.time;
    time.mean = readings->mean;
    time.minimum = readings->lowest;
    time.maximum = readings->highest;
    time.peakToPeak = readings->peakToPeak();
    time.rms = readings->rms;
    time.rmsAc = readings->acRms;
    time.frequency = readings->frequency;
    if (!time.frequency)
        m_result.miss("time.frequency", tr("the signal is not periodic, or not for three periods"));
}

void Measurement::Maker::measureEye()
{
    Eye& eye = m_result.eye;
    QString why = m_symbols.whyMissing();
    if (why.isEmpty() && m_setup.format.samplesPerSymbol == 1.0)
        why = tr("a sample of each symbol makes no eye");
    EyeTraces traces;
    std::optional<EyeReadings> readings;
    if (why.isEmpty()) {
        traces = m_eye.finish();
        m_skippedTraces = traces.skipped;
        eye.traces = static_cast<std::int64_t>(traces.count());
        if (traces.count() < EyeReadings::minTraceCount)
            why = tr("there are fewer than %1 traces").arg(EyeReadings::minTraceCount);
        else
            readings = EyeReadings::of(traces.samples, EyeTraces::length, 2, traces.nearest,
                                       traces.instants);
    }
    if (!readings) {
        m_result.miss("eye", why.isEmpty() ? tr("levels cannot be told apart") : why);
        return;
    }
    for (const EyeReadings::Eye& found : readings->eyes) {
        if (eye.levels.empty())
            eye.levels.push_back({found.lowLevel, found.lowSigma});
        eye.levels.push_back({found.highLevel, found.highSigma});
        EyeOpening opening;
        const auto part = [](const std::optional<double>& value) {
            return value ? std::optional<double>(percent * *value) : std::nullopt;
        };
        opening.height = found.height;
        opening.innerHeight = found.innerHeight;
        opening.opening = percent * found.opening;
        opening.width = found.width;
        opening.crossing = part(found.crossing);
        opening.crossingTime = found.crossingTime;
        opening.jitterRms = found.jitterRms;
        opening.jitterPeak = found.jitterPeak;
        opening.q = found.q;
        const QString path = QStringLiteral("eye.eyes.%1").arg(eye.eyes.size());
        if (!opening.width)
            m_result.reasons.insert(path, tr("too few transitions cross this eye"));
        eye.eyes.push_back(opening);
    }
    const EyeOpening& middle = eye.eyes[eye.eyes.size() / 2];
    if (middle.crossingTime)
        eye.instant = -*middle.crossingTime;
    else
        m_result.miss("eye.instant", tr("too few transitions cross the eye"));
}

void Measurement::Maker::measureFrequency()
{
    if (!m_setup.isFm) {
        m_result.miss("frequency_modulation", tr("the signal was not demodulated as FM"));
        return;
    }
    const auto& levels = m_result.eye.levels;
    if (levels.empty()) {
        m_result.miss("frequency_modulation", m_result.reasons.value(QStringLiteral("eye")));
        return;
    }
    Frequency& frequency = m_result.frequency;
    const double range = levels.back().mean - levels.front().mean;
    frequency.deviation = 0.5 * range;
    frequency.error = 0.5 * (levels.front().mean + levels.back().mean);
    // Modulation index: distance of neighbouring frequencies in symbol rates.
    frequency.index =
        range / static_cast<double>(levels.size() - 1) / m_setup.symbolRate.value_or(1.0);
}

void Measurement::Maker::sayStages()
{
    static const char* const names[] = {"shift",          "channel",   "squelch",
                                        "demodulator",    "resampler", "gain",
                                        "matched filter", "timing",    "carrier"};
    for (const auto& [stage, state] : m_states)
        m_result.stages.push_back({QString::fromLatin1(names[stage]), state});
}

void Measurement::Maker::sayWhatIsLeftOut()
{
    LeftOut& leftOut = m_result.leftOut;
    const std::int64_t edges = m_symbols.edgeCount();
    const std::int64_t unlocked = m_symbols.unlockedCount();
    leftOut.symbols = edges + unlocked;
    QStringList parts;
    if (leftOut.samples > 0)
        parts += tr("the squelch is closed");
    if (unlocked > 0)
        parts += tr("the receiver is not locked on %1 symbols").arg(unlocked);
    if (edges > 0)
        parts += tr("%1 symbols are at the ends of bursts").arg(edges);
    if (m_skippedTraces > 0) {
        const QString bound =
            tr("the eye is measured by %1 of %2 traces, in stretches spread evenly")
                .arg(m_result.eye.traces)
                .arg(m_result.eye.traces + m_skippedTraces);
        m_result.notes += bound;
        parts += bound;
    }
    leftOut.reason = parts.join(QStringLiteral(", "));
    if (parts.isEmpty())
        m_result.miss("left_out.reason", tr("nothing was left out"));
}

Measurement Measurement::of(const std::vector<SignalBlockPtr>& blocks, double from, double to,
                            const Setup& setup)
{
    Maker maker(from, to, setup);
    for (const SignalBlockPtr& block : blocks)
        maker.add(*block);
    return maker.finish();
}
