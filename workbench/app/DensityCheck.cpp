// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/app/DensityCheck.h"

#include "density/MaskTest.h"
#include "workbench/feed/DensityFeed.h"

#include <QJsonArray>

namespace {

using Figure = density::Figure;
using Verdict = density::MaskTest::Verdict;

density::Counter::Settings settings()
{
    density::Counter::Settings settings;
    settings.shape->sampleCount = static_cast<int>(DensityFeed::traceLength);
    settings.size = {1, 1}; // nothing is looked at
    return settings;
}

QJsonObject json(const Figure& figure)
{
    if (!figure.isGiven())
        return {{"value", QJsonValue()}, {"reason", density::textOf(figure.reason)}};
    return {{"value", figure.value},
            {"low", figure.low},
            {"high", figure.high},
            {"count", static_cast<double>(figure.count)}};
}

QJsonObject json(const density::EyeFigures::Eye& eye)
{
    return {{"q", json(eye.q)},
            {"error_rate", json(eye.errorRate)},
            {"height", json(eye.height)},
            {"inner_height", json(eye.innerHeight)},
            {"width", json(eye.width)},
            {"total_jitter", json(eye.totalJitter)},
            {"jitter_rms", json(eye.jitter.rms)},
            {"jitter_pp", json(eye.jitter.peakToPeak)},
            {"random_jitter", json(eye.jitter.random)},
            {"deterministic_jitter", json(eye.jitter.deterministic)}};
}

} // namespace

DensityCheck::DensityCheck(const std::optional<density::Mask>& mask, const SignalFormat& format,
                           double from, double to, double bandwidth)
    : m_mask(mask)
    , m_from(from)
    , m_to(to)
    , m_counter(settings())
    , m_cutter(
          format, bandwidth, DensityFeed::perSymbol,
          [this](const SymbolCutter::Place& place) { take(place); },
          [this](const Symbol& symbol, bool isTorn) {
              m_leftOut += isTorn && symbol.time >= m_from && symbol.time < m_to ? 1 : 0;
          })
{}

void DensityCheck::take(const SymbolCutter::Place& place)
{
    if (place.symbol.time < m_from || place.symbol.time >= m_to)
        return;
    if (!place.isWhole) {
        ++m_leftOut;
        return;
    }
    const std::vector<double>& trace = m_cutter.trace();
    const std::vector<float> single(trace.begin(), trace.end());
    m_counter.add(single.data(), single.size(), m_nextSymbol++);
    if (m_mask && !m_isStarted && m_counter.kept().count() == m_counter.kept().capacity())
        startTest();
}

// Finds levels and instant in what came, and tests it.
void DensityCheck::startTest()
{
    m_isStarted = true;
    const density::TraceShape shape = *m_counter.settings().shape;
    density::Withheld reason;
    const auto place = density::MaskTest::Place::of(
        *m_mask, density::EyeFigures::of(m_counter.kept(), shape), &reason);
    if (place)
        m_counter.setMaskTest(std::make_unique<density::MaskTest>(*m_mask, shape, place->instant,
                                                                  place->low, place->high));
    else
        m_reason = density::textOf(reason);
}

void DensityCheck::finish()
{
    m_cutter.finish();
    if (m_mask && !m_isStarted)
        startTest();
}

bool DensityCheck::hasPassed() const
{
    return !m_mask ||
           (m_counter.maskTest() && m_counter.maskTest()->result().verdict == Verdict::Pass);
}

QJsonObject DensityCheck::mask() const
{
    density::MaskTest::Result result;
    if (m_counter.maskTest())
        result = m_counter.maskTest()->result();
    QString reason = m_reason;
    if (result.verdict == Verdict::Running && reason.isEmpty())
        reason = tr("There are fewer symbols than the %1 of its limit.").arg(m_mask->symbolCount);
    QJsonArray byPolygon;
    for (const std::int64_t hits : result.byPolygon)
        byPolygon.append(static_cast<double>(hits));
    return {{"name", m_mask->name},
            {"verdict", hasPassed()                       ? "pass"
                        : result.verdict == Verdict::Fail ? "fail"
                                                          : "incomplete"},
            {"hits", static_cast<double>(result.hitCount)},
            {"symbols", static_cast<double>(result.symbolCount)},
            {"by_polygon", byPolygon},
            {"left_out", static_cast<double>(m_leftOut)},
            {"reason", reason.isEmpty() ? QJsonValue() : QJsonValue(reason)}};
}

QJsonObject DensityCheck::figures() const
{
    const auto figures = density::EyeFigures::of(m_counter.kept(), *m_counter.settings().shape);
    QJsonArray levels, eyes;
    for (const density::EyeFigures::Level& level : figures.levels)
        levels.append(QJsonObject{{"mean", json(level.spread.mean)},
                                  {"sigma", json(level.spread.sigma)},
                                  {"share", level.share}});
    for (const density::EyeFigures::Eye& eye : figures.eyes)
        eyes.append(json(eye));
    const QString reason = density::textOf(figures.reason);
    return {{"symbols", static_cast<double>(m_counter.allSymbols())},
            {"left_out", static_cast<double>(m_leftOut)},
            {"figures_of", static_cast<double>(m_counter.kept().count())},
            {"probability", figures.probability},
            {"instant", figures.instant},
            {"levels", levels},
            {"eyes", eyes},
            {"reason", reason.isEmpty() ? QJsonValue() : QJsonValue(reason)}};
}
