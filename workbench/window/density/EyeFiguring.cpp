// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/density/EyeFiguring.h"

#include "density/DensityPlot.h"
#include "density/Spread.h"

#include <utility>

namespace {

constexpr auto longTime = std::chrono::hours(1);
constexpr int rest = 4; // times as long as the work took

} // namespace

EyeFiguring::EyeFiguring(QObject* parent)
    : QObject(parent)
{
    m_thread = std::thread([this] { run(); });
}

EyeFiguring::~EyeFiguring()
{
    m_isStopping = true;
    m_requests.close();
    m_thread.join();
}

EyeFiguring::Request EyeFiguring::requestOf(density::Counter& counter, int run)
{
    const density::KeptSignal& kept = counter.kept();
    // What was left out, the home knows without its counts being copied: it is not asked often.
    return {std::make_shared<density::KeptSignal>(kept.newest(kept.count())),
            *counter.settings().shape, counter.allSymbols(),
            counter.homeSnapshot()->leftOut.tornTraces, run};
}

void EyeFiguring::request(density::DensityPlot& plot)
{
    if (m_isBusy.exchange(true))
        return;
    // The plot's thread ends before this object, whose pane holds the plot.
    plot.counting().order([this, run = m_run](density::Counter& counter) {
        m_requests.tryPush(requestOf(counter, run), 1);
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
    m_isBusy = false;
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

void EyeFiguring::run()
{
    using Clock = std::chrono::steady_clock;
    while (!m_isStopping) {
        const auto request = m_requests.pop(longTime);
        if (!request)
            continue;
        const Clock::time_point start = Clock::now();
        const EyeFiguredPtr result = request->measure();
        const auto tell = [this, result, run = request->run] {
            if (run == m_run)
                emit figured(result);
        };
        QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
        const Clock::time_point end = Clock::now();
        const Clock::time_point next = end + rest * (end - start);
        while (!m_isStopping && Clock::now() < next)
            std::this_thread::sleep_for(
                std::min<Clock::duration>(std::chrono::milliseconds(20), next - Clock::now()));
        m_isBusy = false;
    }
}
