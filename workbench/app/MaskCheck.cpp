// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/app/MaskCheck.h"

#include "density/EyeFigures.h"
#include "density/MaskTest.h"

#include <QFile>
#include <QJsonArray>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int symbolCount = 2; // of a trace

EyeCut cutOf(const SignalFormat& format, double bandwidth)
{
    EyeCut cut;
    cut.samplesPerSymbol = format.samplesPerSymbol;
    cut.symbolCount = symbolCount;
    cut.bandwidth = bandwidth;
    return cut;
}

density::Counter::Settings settingsOf(const EyeCutter& cutter)
{
    density::Counter::Settings settings;
    settings.shape->sampleCount = static_cast<int>(cutter.traceLength());
    settings.shape->symbolCount = symbolCount;
    settings.size = {1, 1}; // nothing is looked at
    return settings;
}

} // namespace

Result<density::Mask> MaskCheck::read(const QString& file)
{
    constexpr qint64 largest = 1 << 20;
    QFile input(file);
    if (!input.open(QIODevice::ReadOnly))
        return failure(tr("cannot be read (%1)").arg(input.errorString()));
    QString error;
    const QByteArray text = input.read(largest + 1);
    if (text.size() > largest)
        return failure(tr("is too large for a mask"));
    const auto mask = density::Mask::fromJson(text, &error);
    if (!mask)
        return failure(tr("is no mask: %1").arg(error));
    return *mask;
}

MaskCheck::MaskCheck(const density::Mask& mask, const SignalFormat& format, double from, double to,
                     double bandwidth)
    : m_mask(mask)
    , m_format(format)
    , m_from(from)
    , m_to(to)
    , m_cutter(cutOf(format, bandwidth))
    , m_counter(settingsOf(m_cutter))
{}

void MaskCheck::add(const SignalBlock& block)
{
    const auto indexOf = [&](double time) {
        const double index = std::ceil((time - block.time) * m_format.sampleRate);
        return static_cast<std::size_t>(std::clamp(index, 0.0, static_cast<double>(block.count())));
    };
    BlockPart part;
    part.block = SignalBlockPtr(&block, [](const SignalBlock*) {}); // the caller's
    part.first = indexOf(m_from);
    part.count = indexOf(m_to) - std::min(part.first, indexOf(m_to));
    // Without symbols there are no traces.
    if (part.count == 0 || !(m_format.samplesPerSymbol > 0.0))
        return;
    m_cutter.push(part);
    std::vector<double> samples, markers;
    m_cutter.takeTraces(std::numeric_limits<std::size_t>::max(), samples, markers);
    const std::size_t length = m_cutter.traceLength();
    std::vector<float> trace(length);
    for (std::size_t k = 0; k + length <= samples.size(); k += length) {
        std::transform(samples.begin() + static_cast<std::ptrdiff_t>(k),
                       samples.begin() + static_cast<std::ptrdiff_t>(k + length), trace.begin(),
                       [](double sample) { return static_cast<float>(sample); });
        m_counter.add(trace.data(), length, m_nextSymbol++);
        if (!m_isStarted && m_counter.kept().count() == m_counter.kept().capacity())
            start();
    }
}

// Finds levels and instant in what came, and tests it.
void MaskCheck::start()
{
    m_isStarted = true;
    const auto figures = density::EyeFigures::of(m_counter.kept(), *m_counter.settings().shape);
    const bool isRelative = m_mask.levels == density::Mask::Levels::Relative;
    if (isRelative && figures.reason != density::Withheld::No) {
        m_reason = density::textOf(figures.reason);
        return;
    }
    const bool hasLevels = figures.levels.size() >= 2;
    m_counter.setMaskTest(std::make_unique<density::MaskTest>(
        m_mask, *m_counter.settings().shape, figures.instant,
        hasLevels ? figures.levels.front().spread.mean.value : 0.0,
        hasLevels ? figures.levels.back().spread.mean.value : 1.0));
}

QJsonObject MaskCheck::finish()
{
    using Verdict = density::MaskTest::Verdict;
    if (!m_isStarted)
        start();
    density::MaskTest::Result result;
    if (m_counter.maskTest())
        result = m_counter.maskTest()->result();
    m_hasPassed = result.verdict == Verdict::Pass;
    if (result.verdict == Verdict::Running && m_reason.isEmpty())
        m_reason = tr("There are fewer symbols than the %1 of its limit.").arg(m_mask.symbolCount);
    QJsonArray byPolygon;
    for (const std::int64_t hits : result.byPolygon)
        byPolygon.append(static_cast<double>(hits));
    return {{"name", m_mask.name},
            {"verdict", m_hasPassed                       ? "pass"
                        : result.verdict == Verdict::Fail ? "fail"
                                                          : "incomplete"},
            {"hits", static_cast<double>(result.hitCount)},
            {"symbols", static_cast<double>(result.symbolCount)},
            {"by_polygon", byPolygon},
            {"left_out", static_cast<double>(m_cutter.leftOutCount())},
            {"reason", m_reason.isEmpty() ? QJsonValue() : QJsonValue(m_reason)}};
}
