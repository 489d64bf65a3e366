// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/Measuring.h"

#include "workbench/feed/Gate.h"

namespace {

constexpr auto longTime = std::chrono::hours(1);
constexpr int rest = 4; // times as long as the work took

} // namespace

Measuring::Measuring(QObject* parent)
    : QObject(parent)
{
    m_thread = std::thread([this] { run(); });
}

Measuring::~Measuring()
{
    m_isStopping = true;
    m_requests.close();
    m_thread.join();
}

Measurement Measuring::Request::measure() const { return Measurement::of(blocks, from, to, setup); }

Measurement Measuring::of(const Gate& gate, const Measurement::Setup& setup)
{
    return Request{gate.blocks(), gate.begin(), gate.end(), setup, 0}.measure();
}

void Measuring::request(const Gate& gate, const Measurement::Setup& setup)
{
    m_requests.clear();
    m_requests.tryPush({gate.blocks(), gate.begin(), gate.end(), setup, m_run}, 1);
}

void Measuring::cancel()
{
    m_requests.clear();
    ++m_run;
}

void Measuring::run()
{
    using Clock = std::chrono::steady_clock;
    while (!m_isStopping) {
        const auto request = m_requests.pop(longTime);
        if (!request)
            continue;
        const Clock::time_point start = Clock::now();
        const Measurement measurement = request->measure();
        const auto tell = [this, measurement, run = request->run] {
            if (run == m_run)
                emit measured(measurement);
        };
        QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
        const Clock::time_point end = Clock::now();
        const Clock::time_point next = end + rest * (end - start);
        while (!m_isStopping && Clock::now() < next)
            std::this_thread::sleep_for(
                std::min<Clock::duration>(std::chrono::milliseconds(20), next - Clock::now()));
    }
}
