// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/CarrierLoop.h"

#include "workbench/receiver/ComplexProduct.h"
#include "workbench/receiver/FastFunctions.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr std::size_t together = CarrierLoop::together;
constexpr double mostAmplitude = 1.6; // larger amplitudes count as this
constexpr double startQuality = 0.6;
constexpr double damping = 0.707;
constexpr double smallAngle = 0.05; // rad, for which powers up to the fifth give ten digits
constexpr float leastPower = 1e-30F;
constexpr double farthest = 1e15; // whose square, over the least noise, single numbers can hold

/// Also of what is no number.
float limited(double value)
{
    return static_cast<float>(std::max(-farthest, std::min(farthest, value)));
}

/// A turn by an angle, most often a small one.
ORVANE_WITHIN std::complex<double> turnBy(double angle)
{
    if (std::abs(angle) > smallAngle)
        return std::polar(1.0, angle);
    const double x = angle * angle; // constants are multiplied, which is faster
    return {1.0 - x * (0.5 - x * (1.0 / 24)), angle - angle * x * (1.0 / 6 - x * (1.0 / 120))};
}

/// Angles of numbers, and cosines of a multiple of them, a power of 2; that of 0 is 1.
ORVANE_WIDEST void findAngles(const float* i, const float* q, unsigned multiple, float* angles,
                              float* cosines)
{
    float sines[together];
    for (std::size_t k = 0; k < together; ++k) {
        angles[k] = fast::angleOf(i[k], q[k]);
        const float power = i[k] * i[k] + q[k] * q[k];
        const float scale = 1.0F / std::sqrt(std::max(power, leastPower));
        cosines[k] = power > leastPower ? i[k] * scale : 1.0F;
        sines[k] = q[k] * scale;
    }
    for (; multiple > 1; multiple /= 2) {
        for (std::size_t k = 0; k < together; ++k) {
            const float cosine = cosines[k] * cosines[k] - sines[k] * sines[k];
            sines[k] *= 2.0F * cosines[k];
            cosines[k] = cosine;
        }
    }
}

} // namespace

CarrierLoop::CarrierLoop(const Modulation& modulation)
    : m_modulation(&modulation)
    , m_decisions(modulation.points)
    , m_lock(modulation)
    , m_smoothing(0.5 / static_cast<double>(modulation.reach))
{
    // Gardner, "Phaselock Techniques": a loop of second order from its noise bandwidth.
    const double theta = modulation.loopBandwidth / (damping + 0.25 / damping);
    const double scale = 1.0 + 2.0 * damping * theta + theta * theta;
    m_phaseStep = 4.0 * damping * theta / scale;
    m_frequencyStep = 4.0 * theta * theta / scale;
    for (const Complex& point : modulation.points)
        m_fourthPower +=
            point * point * point * point / static_cast<double>(modulation.points.size());
}

void CarrierLoop::start(double phase, double frequency, double amplitude)
{
    m_phase = phase;
    m_frequency = frequency;
    m_amplitude = amplitude;
    m_quality = startQuality;
    m_coasted = 0;
    m_isTracking = true;
}

void CarrierLoop::follow(const Input* inputs, std::size_t count, TrackedPhases& tracked)
{
    run(inputs, count);
    findAngles(m_followed.turnedI.data(), m_followed.turnedQ.data(),
               m_modulation->isOffset ? 4 : m_modulation->power, m_followed.errors.data(),
               m_followed.qualities.data());
    if (m_modulation->hasAmplitudes)
        judgeAmplitudes();
    add(count, tracked);
}

/// The loop itself. Within some symbols the amplitude counts as it was before them, and each turn
/// is made of the one before it.
void CarrierLoop::run(const Input* inputs, std::size_t count)
{
    const bool isOffset = m_modulation->isOffset;
    const auto stepAfter = [inputs](std::size_t k) { // of the phase that was taken off
        return inputs[k + 1].taken - inputs[k].taken;
    };
    const double usual = m_frequency - (count > 1 ? stepAfter(0) : 0.0);
    const Complex usualTurn = turnBy(-usual);
    Complex turn = std::polar(1.0 / m_amplitude, inputs[0].taken - m_phase);
    for (std::size_t k = 0; k < count; ++k) {
        const Complex middle = product(inputs[k].sample, turn);
        const Complex later = isOffset ? product(inputs[k].later, turn) : middle;
        const Complex symbol(middle.real(), later.imag());
        const Complex ideal = m_decisions.nearest(symbol);
        const Complex turned = product(symbol, std::conj(ideal)); // by what the symbol is off
        const double size = std::norm(ideal);
        const double power = std::norm(symbol);
        m_symbols[k] = {m_phase, 0.0, size, 0.0, 0.0, power};
        double driven = turned.imag();
        if (isOffset) { // the values half a symbol away tell by how much they leak in
            const double weight = middle.imag() * middle.imag() + later.real() * later.real();
            driven = (symbol.imag() - ideal.imag()) * later.real() -
                     (symbol.real() - ideal.real()) * middle.imag();
            m_symbols[k].weight = weight;
            m_symbols[k].error = driven / std::max(weight, 0.1);
        }
        driven = std::clamp(driven, -1.0, 1.0);
        m_followed.i[k] = limited(symbol.real());
        m_followed.q[k] = limited(symbol.imag());
        m_followed.turnedI[k] = limited(turned.real());
        m_followed.turnedQ[k] = limited(turned.imag());
        m_followed.areHeard[k] = TrackedPhases::isHeard(power);
        if (m_followed.areHeard[k]) // stretches between bursts tell nothing
            m_amplitude *= 1.0 + 0.25 * m_smoothing * std::clamp(turned.real() - size, -1.0, 1.0);
        const double step = m_frequency + m_phaseStep * driven;
        if (k + 1 < count)
            turn = product(product(turn, usualTurn), turnBy(usual - (step - stepAfter(k))));
        m_phase += step;
        m_frequency += m_frequencyStep * driven;
        m_states[k] = {m_frequency, m_amplitude};
    }
}

/// Of amplitudes, the fourth power tells: noise leaves its mean as it is, and one that turns has
/// none.
void CarrierLoop::judgeAmplitudes()
{
    const double scale = 1.0 / std::norm(m_fourthPower);
    for (std::size_t k = 0; k < together; ++k) {
        const Complex symbol(double{m_followed.i[k]}, double{m_followed.q[k]});
        const double power = std::max(std::norm(symbol), 1e-12);
        const Complex square =
            product(symbol, symbol) * std::min(1.0, mostAmplitude * mostAmplitude / power);
        const Complex fourth = product(product(square, square), std::conj(m_fourthPower));
        m_followed.qualities[k] = static_cast<float>(fourth.real() * scale);
    }
}

/// Adds symbols up to the one where decisions were no better than guesses.
void CarrierLoop::add(std::size_t count, TrackedPhases& tracked)
{
    float evidence[together];
    m_lock.evidence(m_followed.i.data(), m_followed.q.data(), m_followed.areHeard.data(), count,
                    evidence);
    const double smoothing = (m_modulation->hasAmplitudes ? 0.25 : 1.0) * m_smoothing;
    for (std::size_t k = 0; k < count; ++k) {
        TrackedPhases::Symbol& symbol = m_symbols[k];
        symbol.quality = double{m_followed.qualities[k]};
        if (!m_modulation->isOffset)
            symbol.error = double{m_followed.errors[k]};
        if (m_followed.areHeard[k])
            symbol.evidence = double{evidence[k]};
    }
    std::size_t k = 0;
    for (; k < count && m_isTracking; ++k) {
        const bool isHeard = m_followed.areHeard[k];
        const TrackedPhases::Symbol& symbol = m_symbols[k];
        m_coasted = isHeard ? 0 : m_coasted + 1;
        m_quality += isHeard ? smoothing * (symbol.quality - m_quality) : 0.0;
        m_isTracking = m_quality >= m_modulation->lockQuality && m_coasted < m_modulation->window;
    }
    tracked.add(m_symbols.data(), k);
    m_frequency = m_states[k - 1].frequency; // one at least was added
    m_amplitude = m_states[k - 1].amplitude;
}
