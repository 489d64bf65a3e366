// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/EyeFeed.h"

#include <QCoreApplication>
#include <QSemaphore>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int maxWaitingCount = 4;
constexpr std::size_t keptSamples = 1000; // by an eye diagram that was not set up
constexpr std::size_t measuredTraces = 1000;
constexpr std::size_t newestTraces[] = {250, 80}; // fewer would make levels of noise
constexpr double margin = 0.05;                   // of the levels, above and below
constexpr std::size_t mostSamples = 10000;        // an eye diagram can be set to keep so many

} // namespace

EyeFeed::EyeFeed(QObject* parent)
    : QObject(parent)
{
    m_thread.setObjectName(QStringLiteral("Eye"));
    m_worker.moveToThread(&m_thread);
    m_thread.start();
    restart();
}

EyeFeed::~EyeFeed()
{
    m_thread.quit();
    m_thread.wait();
}

double EyeFeed::minSymbolRate(double sampleRate)
{
    return sampleRate / SymbolTiming::maxSamplesPerSymbol;
}

double EyeFeed::maxSymbolRate(double sampleRate)
{
    return sampleRate / SymbolTiming::minSamplesPerSymbol;
}

void EyeFeed::open(const SignalSource& source, std::optional<double> symbolRate)
{
    const bool isRecovered = symbolRate || !source.firstSymbol();
    if (!symbolRate)
        symbolRate = source.symbolRate();
    m_dropCount = 0;
    m_cut.clock = EyeCut::Clock::None;
    if (symbolRate && *symbolRate >= minSymbolRate(source.sampleRate()) &&
        *symbolRate <= maxSymbolRate(source.sampleRate())) {
        m_cut.clock = isRecovered ? EyeCut::Clock::Recovered : EyeCut::Clock::Known;
        m_cut.samplesPerSymbol = source.sampleRate() / *symbolRate;
        m_cut.firstSymbol = source.firstSymbol().value_or(0.0);
    }
    restart();
}

void EyeFeed::setSymbolCount(int count)
{
    m_cut.symbolCount = std::clamp(count, 1, EyeCut::maxSymbolCount);
    restart();
}

void EyeFeed::setBandwidth(double bandwidth)
{
    m_cut.bandwidth = std::clamp(bandwidth, 0.0, EyeCut::maxBandwidth);
    restart();
}

void EyeFeed::restart()
{
    ++m_run;
    m_measured.clear();
    m_waitingCount = 0;
    QMetaObject::invokeMethod(
        &m_worker, [this, cut = m_cut] { m_cutter = std::make_unique<EyeCutter>(cut); },
        Qt::QueuedConnection);
}

/// Lets the thread do something with the cutter, and notifies the traces that are there then.
template<class Work>
void EyeFeed::post(Work work)
{
    ++m_waitingCount;
    QMetaObject::invokeMethod(
        &m_worker,
        [this, work = std::move(work), run = m_run] {
            work(*m_cutter);
            std::vector<double> samples;
            std::vector<double> markers;
            m_cutter->takeTraces(mostSamples, samples, markers);
            const auto pass = [this, run, samples = std::move(samples),
                               markers = std::move(markers)] {
                if (run != m_run)
                    return;
                --m_waitingCount;
                if (!samples.empty())
                    notify(samples, markers);
            };
            QMetaObject::invokeMethod(this, pass, Qt::QueuedConnection);
        },
        Qt::QueuedConnection);
}

void EyeFeed::notify(const std::vector<double>& samples, const std::vector<double>& markers)
{
    m_traceLength = static_cast<std::size_t>(markers.front());
    m_measured.insert(m_measured.end(), samples.begin(), samples.end());
    const std::size_t most = measuredTraces * m_traceLength;
    if (m_measured.size() > most)
        m_measured.erase(m_measured.begin(), m_measured.end() - static_cast<std::ptrdiff_t>(most));
    m_values.notify(samples, markers);
}

bool EyeFeed::hasEnough() const
{
    return m_cut.clock != EyeCut::Clock::None && !m_measured.empty() &&
           m_measured.size() >= EyeReadings::minTraceCount * m_traceLength;
}

std::optional<EyeReadings> EyeFeed::measure() const
{
    if (!hasEnough())
        return std::nullopt;
    auto readings = EyeReadings::of(m_measured, m_traceLength, m_cut.symbolCount);
    for (const std::size_t count : newestTraces) { // a burst, amid noise
        const std::size_t size = count * m_traceLength;
        if (readings || m_measured.size() <= size)
            continue;
        const std::vector<double> newest(m_measured.end() - static_cast<std::ptrdiff_t>(size),
                                         m_measured.end());
        readings = EyeReadings::of(newest, m_traceLength, m_cut.symbolCount);
    }
    return readings;
}

void EyeFeed::fitLevels()
{
    double lowest = std::numeric_limits<double>::infinity();
    double highest = -lowest;
    const auto count = static_cast<std::ptrdiff_t>(std::min(m_measured.size(), keptSamples));
    std::for_each(m_measured.end() - count, m_measured.end(), [&](double sample) {
        lowest = std::min(lowest, std::isfinite(sample) ? sample : lowest);
        highest = std::max(highest, std::isfinite(sample) ? sample : highest);
    });
    if (lowest < highest)
        setLevels(lowest - margin * (highest - lowest), highest + margin * (highest - lowest));
}

void EyeFeed::take(std::int64_t position, std::vector<double> samples)
{
    if (m_waitingCount >= maxWaitingCount) {
        ++m_dropCount;
        return;
    }
    post([position, samples = std::move(samples)](EyeCutter& cutter) {
        cutter.push(position, samples);
    });
}

bool EyeFeed::makeRoom(std::chrono::milliseconds patience)
{
    if (m_waitingCount < maxWaitingCount)
        return true;
    const auto done = std::make_shared<QSemaphore>();
    QMetaObject::invokeMethod(
        &m_worker, [done] { done->release(); }, Qt::QueuedConnection);
    done->tryAcquire(1, static_cast<int>(patience.count()));
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
    return m_waitingCount < maxWaitingCount;
}

// Of a trace as long as all that a view keeps, nothing is drawn but the first sample.
void EyeFeed::showNothing()
{
    std::vector<double> samples(mostSamples, std::numeric_limits<double>::quiet_NaN());
    samples.front() = 0.0;
    std::vector<double> markers(mostSamples);
    markers.front() = static_cast<double>(mostSamples);
    m_values.notify(samples, markers);
}

void EyeFeed::settle()
{
    QMetaObject::invokeMethod(
        &m_worker, [] {}, Qt::BlockingQueuedConnection);
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
}

void EyeFeed::finish()
{
    post([](EyeCutter& cutter) { cutter.finish(); });
    settle();
}
