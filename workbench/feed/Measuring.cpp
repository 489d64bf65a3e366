// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/Measuring.h"

#include "workbench/feed/Gate.h"

#include <chrono>
#include <utility>

namespace {

constexpr int rest = 4; // times as long as the work took

} // namespace

Measuring::Measuring(QObject* parent)
    : QObject(parent)
{
    m_rest.setSingleShot(true);
    connect(&m_rest, &QTimer::timeout, this, &Measuring::startNext);
}

Measurement Measuring::Request::measure() const { return Measurement::of(blocks, from, to, setup); }

Measurement Measuring::of(const Gate& gate, const Measurement::Setup& setup)
{
    return Request{gate.blocks(), gate.begin(), gate.end(), setup, 0}.measure();
}

void Measuring::request(const Gate& gate, const Measurement::Setup& setup)
{
    m_next = Request{gate.blocks(), gate.begin(), gate.end(), setup, m_run};
    startNext();
}

// A running measurement is not given up, because it cannot be ended: another one beside it would
// take a second core.
void Measuring::cancel()
{
    m_next.reset();
    ++m_run;
}

void Measuring::startNext()
{
    using Clock = std::chrono::steady_clock;
    if (!m_next || m_work.isRunning() || m_rest.isActive())
        return;
    m_work.start([this, request = *std::exchange(m_next, std::nullopt)](const auto&) {
        const Clock::time_point start = Clock::now();
        const Measurement measurement = request.measure();
        const auto pause =
            std::chrono::ceil<std::chrono::milliseconds>(rest * (Clock::now() - start));
        return [this, measurement, pause, run = request.run] {
            m_rest.start(pause);
            if (run == m_run)
                emit measured(measurement);
        };
    });
}
