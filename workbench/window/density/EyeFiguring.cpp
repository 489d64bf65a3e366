// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/density/EyeFiguring.h"

#include "density/Spread.h"

#include <chrono>
#include <optional>

namespace {

constexpr int rest = 4; // times as long as the work took

} // namespace

EyeFiguring::EyeFiguring(QObject* parent)
    : QObject(parent)
{
    m_rest.setSingleShot(true);
    connect(&m_rest, &QTimer::timeout, this, &EyeFiguring::askNext);
}

EyeFiguring::Request EyeFiguring::requestOf(density::Counter& counter, int run)
{
    const density::KeptSignal& kept = counter.kept();
    return {std::make_shared<density::KeptSignal>(kept.newest(kept.count())),
            *counter.settings().shape, counter.allSymbols(), counter.leftOut().tornTraces, run};
}

void EyeFiguring::request(density::DensityPlot& plot)
{
    m_next = &plot;
    askNext();
}

void EyeFiguring::askNext()
{
    if (!m_next || m_isAsked || m_work.isRunning() || m_rest.isActive())
        return;
    m_isAsked = true;
    // The plot's thread ends before this object, whose pane holds the plot.
    m_next->counting().order([this, run = m_run](density::Counter& counter) {
        const Request request = requestOf(counter, run);
        QMetaObject::invokeMethod(
            this, [this, request] { start(request); }, Qt::QueuedConnection);
    });
    m_next = nullptr;
}

void EyeFiguring::start(const Request& request)
{
    using Clock = std::chrono::steady_clock;
    if (request.run != m_run)
        return;
    m_isAsked = false;
    m_work.start([this, request](const auto&) {
        const Clock::time_point start = Clock::now();
        const EyeFiguredPtr result = request.measure();
        const auto pause =
            std::chrono::ceil<std::chrono::milliseconds>(rest * (Clock::now() - start));
        return [this, result, pause, run = request.run] {
            m_rest.start(pause);
            if (run == m_run)
                emit figured(result);
        };
    });
}

EyeFiguredPtr EyeFiguring::of(density::DensityPlot& plot)
{
    std::optional<Request> request;
    plot.counting().order(
        [&request](density::Counter& counter) { request = requestOf(counter, 0); });
    plot.counting().wait();
    return request && request->kept->count() > 0 ? request->measure() : nullptr;
}

void EyeFiguring::cancel()
{
    ++m_run;
    m_next = nullptr;
    m_isAsked = false;
}

EyeFiguredPtr EyeFiguring::Request::measure() const
{
    auto result = std::make_shared<EyeFigured>();
    result->figures = density::EyeFigures::of(*kept, shape);
    result->shape = shape;
    result->keptCount = static_cast<std::int64_t>(kept->count());
    result->allSymbols = allSymbols;
    result->leftOut = leftOut;
    using Band = density::Band;
    const double instant = result->figures.instant;
    const double halfStep = 0.5 / shape.samplesPerSymbol();
    result->levels = valuesAlong(
        *kept, shape, {Band::Direction::Vertical, instant - halfStep, instant + halfStep});
    for (std::size_t k = 0; k + 1 < result->figures.levels.size(); ++k) {
        const double middle = 0.5 * (result->figures.levels[k].spread.mean.value +
                                     result->figures.levels[k + 1].spread.mean.value);
        result->crossings.push_back(
            valuesAlong(*kept, shape, {Band::Direction::Horizontal, middle, middle}));
    }
    return result;
}
