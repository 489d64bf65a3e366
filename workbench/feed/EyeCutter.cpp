// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/EyeCutter.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <limits>

#include <liquid/liquid.h>

namespace {

// A diagram keeps a number of samples: more of a trace leave fewer traces.
constexpr int usualTraceLength = 24;
constexpr int minSymbolLength = 8; // output samples; even, so that half a trace is whole
constexpr int phaseCount = 64;     // of the interpolation from sample to sample
constexpr int reach = 8;           // samples that it takes to either side
constexpr float stopBand = 60.0F;  // dB

int symbolLengthOf(const EyeCut& cut)
{
    if (cut.clock == EyeCut::Clock::None)
        return EyeCut::fixedLength;
    return std::max(usualTraceLength / cut.symbolCount / 2 * 2, minSymbolLength);
}

} // namespace

/// The samples of a run, and the signal in between.
struct EyeCutter::Interpolator
{
    Interpolator()
    {
        std::vector<float> taps(2 * reach * phaseCount + 1);
        liquid_firdes_kaiser(static_cast<unsigned>(taps.size()), 0.5F / phaseCount, stopBand, 0.0F,
                             taps.data());
        bank = firpfb_rrrf_create(phaseCount, taps.data(), static_cast<unsigned>(taps.size()));
    }
    ~Interpolator() { firpfb_rrrf_destroy(bank); }
    Interpolator(const Interpolator&) = delete;
    Interpolator& operator=(const Interpolator&) = delete;

    std::int64_t count() const { return used + static_cast<std::int64_t>(waiting.size()); }
    void push(const std::vector<double>& samples)
    {
        constexpr double largest = std::numeric_limits<float>::max();
        for (const double sample : samples)
            waiting.push_back(static_cast<float>(std::clamp(sample, -largest, largest)));
    }
    bool canTell(double position) const
    {
        return position >= reach && position < static_cast<double>(count() - reach);
    }
    /// Positions must not run backwards.
    double at(double position)
    {
        auto whole = static_cast<std::int64_t>(position);
        auto phase = static_cast<unsigned>(
            std::lround((position - static_cast<double>(whole)) * phaseCount));
        if (phase == phaseCount) {
            phase = 0;
            ++whole;
        }
        std::size_t taken = 0;
        while (used <= whole + reach && taken < waiting.size()) {
            firpfb_rrrf_push(bank, waiting[taken++]);
            ++used;
        }
        waiting.erase(waiting.begin(), waiting.begin() + static_cast<std::ptrdiff_t>(taken));
        float result = 0.0F;
        firpfb_rrrf_execute(bank, phase, &result);
        return result;
    }

    firpfb_rrrf bank = nullptr;
    std::int64_t used = 0; // samples in the bank
    std::deque<float> waiting;
};

EyeCutter::EyeCutter(const EyeCut& cut)
    : m_cut(cut)
    , m_symbolLength(symbolLengthOf(cut))
{
    if (m_cut.clock == EyeCut::Clock::None) { // traces as if they were symbols
        m_cut.samplesPerSymbol = m_symbolLength;
        m_cut.symbolCount = 1;
        m_cut.bandwidth = 0.0;
    }
    if (m_cut.bandwidth > 0.0)
        m_cut.firstSymbol += LowPass(m_cut.bandwidth / m_cut.samplesPerSymbol).delay();
    m_traceLength = static_cast<std::size_t>(m_cut.symbolCount * m_symbolLength) + 1;
}

EyeCutter::~EyeCutter() = default;

void EyeCutter::start(std::int64_t position)
{
    m_start = position;
    m_run = std::make_unique<Interpolator>();
    if (m_cut.bandwidth > 0.0)
        m_filter = std::make_unique<LowPass>(m_cut.bandwidth / m_cut.samplesPerSymbol);
    if (m_cut.clock == EyeCut::Clock::Recovered)
        m_timing = std::make_unique<SymbolTiming>(m_cut.samplesPerSymbol);
    m_knot.reset();
    m_open.clear();
}

void EyeCutter::push(std::int64_t position, const std::vector<double>& samples)
{
    if (!m_run || position != m_start + m_run->count()) {
        finish();
        start(position);
    }
    if (m_filter) {
        std::vector<double> filtered(samples.size());
        std::transform(samples.begin(), samples.end(), filtered.begin(), [this](double sample) {
            const double output = m_filter->run(sample);
            return std::isnan(sample) ? sample : output;
        });
        cut(filtered);
    } else {
        cut(samples);
    }
}

void EyeCutter::cut(const std::vector<double>& samples)
{
    m_run->push(samples);
    if (!m_timing) {
        follow({knownKnot(0.0), knownKnot(static_cast<double>(m_run->count() - reach))});
        return;
    }
    for (const double sample : samples)
        m_timing->push(sample);
    follow(m_timing->takeKnots());
}

void EyeCutter::finish()
{
    if (m_run && m_timing) {
        m_timing->finish();
        follow(m_timing->takeKnots());
    }
    m_timing.reset();
    m_run.reset();
}

SymbolKnot EyeCutter::knownKnot(double offset) const
{
    const double position = static_cast<double>(m_start) + offset;
    return {offset, (position - m_cut.firstSymbol) / m_cut.samplesPerSymbol};
}

void EyeCutter::follow(const std::vector<SymbolKnot>& knots)
{
    for (const SymbolKnot& knot : knots) {
        if (!m_knot)
            m_next = static_cast<std::int64_t>(std::ceil(knot.symbol * m_symbolLength));
        else if (knot.position > m_knot->position)
            follow(*m_knot, knot);
        else
            continue;
        m_knot = knot;
    }
}

void EyeCutter::follow(const SymbolKnot& from, const SymbolKnot& to)
{
    const double samplesPerSymbol = (to.position - from.position) / (to.symbol - from.symbol);
    for (;; ++m_next) {
        const double symbol = static_cast<double>(m_next) / m_symbolLength;
        if (symbol >= to.symbol)
            return;
        const double position = from.position + (symbol - from.symbol) * samplesPerSymbol;
        if (m_run->canTell(position))
            append(m_run->at(position));
    }
}

void EyeCutter::append(double sample)
{
    // The middle of a trace is an instant that is a whole multiple of its length: one of a symbol.
    const std::int64_t length = static_cast<std::int64_t>(m_traceLength) - 1;
    const bool isStart = (m_next + length / 2) % length == 0;
    if (m_open.empty() && !isStart)
        return;
    m_open.push_back(sample);
    if (m_open.size() < m_traceLength)
        return;
    // A trace with a gap would show none of the signal, but put out one that does.
    if (std::all_of(m_open.begin(), m_open.end(),
                    [](double value) { return std::isfinite(value); }))
        m_traces.insert(m_traces.end(), m_open.begin(), m_open.end());
    m_open.assign(1, sample);
}

void EyeCutter::takeTraces(std::size_t most, std::vector<double>& samples,
                           std::vector<double>& markers)
{
    const std::size_t kept = std::min(m_traces.size() / m_traceLength, most / m_traceLength + 1);
    samples.assign(m_traces.end() - static_cast<std::ptrdiff_t>(kept * m_traceLength),
                   m_traces.end());
    m_traces.clear();
    markers.assign(samples.size(), 0.0);
    for (std::size_t i = 0; i < markers.size(); i += m_traceLength)
        markers[i] = static_cast<double>(m_traceLength);
}
