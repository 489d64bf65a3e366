// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/Rotation.h"

#include "workbench/receiver/ComplexProduct.h"
#include "workbench/receiver/FastFunctions.h"
#include "workbench/sources/Constants.h"

#include <algorithm>
#include <cmath>

namespace {

std::complex<float> turnBy(double cycles)
{
    return std::complex<float>(std::polar(1.0, 2.0 * pi * (cycles - std::floor(cycles))));
}

/// Turns samples by products of turns and another one.
ORVANE_WIDEST void turnAll(float* __restrict samples, const float* __restrict turns,
                           std::size_t count, float real, float imaginary)
{
    for (std::size_t k = 0; k < count; ++k) {
        const float cosine = real * turns[2 * k] - imaginary * turns[2 * k + 1];
        const float sine = real * turns[2 * k + 1] + imaginary * turns[2 * k];
        const float i = samples[2 * k];
        const float q = samples[2 * k + 1];
        samples[2 * k] = i * cosine - q * sine;
        samples[2 * k + 1] = i * sine + q * cosine;
    }
}

/// Sines and cosines of angles.
ORVANE_WIDEST void findTurns(const double* angles, std::size_t count, float* real, float* imaginary)
{
    for (std::size_t k = 0; k < count; ++k)
        fast::turnBy(angles[k], real[k], imaginary[k]);
}

/// Turns samples, each a step further than the one before.
ORVANE_WITHIN void turnOn(std::complex<float>* samples, std::size_t count,
                          const std::complex<float>& turn, const std::complex<float>& step)
{
    constexpr std::size_t together = 4; // which do not wait for one another
    const std::complex<float> twice = product(step, step);
    const std::complex<float> on = product(twice, twice);
    const std::complex<float> next = product(turn, step);
    std::complex<float> turns[together] = {turn, next, product(turn, twice), product(next, twice)};
    std::size_t first = 0;
    for (; first + together <= count; first += together) {
        for (std::size_t k = 0; k < together; ++k) {
            samples[first + k] = product(samples[first + k], turns[k]);
            turns[k] = product(turns[k], on);
        }
    }
    for (std::size_t k = 0; first + k < count; ++k)
        samples[first + k] = product(samples[first + k], turns[k]);
}

constexpr std::size_t groups = 64;  // for which turns are found at once
constexpr std::size_t together = 8; // samples of a group that is turned at once

struct Turns
{
    float real[groups], imaginary[groups];
};

/// As many turns again as are known: those turned by as many steps, which is doubled then.
template<std::size_t known>
ORVANE_WITHIN void doubleTurns(float* reals, float* imaginaries, float& real, float& imaginary)
{
    for (std::size_t k = 0; k < known; ++k) {
        reals[known + k] = reals[k] * real - imaginaries[k] * imaginary;
        imaginaries[known + k] = reals[k] * imaginary + imaginaries[k] * real;
    }
    const float twice = real * real - imaginary * imaginary;
    imaginary *= 2.0F * real;
    real = twice;
}

/// Turns groups of as many samples as are turned at once.
ORVANE_WIDEST void turnWhole(float* samples, std::size_t count, const Turns& turns,
                             const Turns& steps)
{
    for (std::size_t group = 0; group < count; ++group, samples += 2 * together) {
        float reals[together] = {turns.real[group]};
        float imaginaries[together] = {turns.imaginary[group]};
        float real = steps.real[group];
        float imaginary = steps.imaginary[group];
        doubleTurns<1>(reals, imaginaries, real, imaginary);
        doubleTurns<2>(reals, imaginaries, real, imaginary);
        doubleTurns<4>(reals, imaginaries, real, imaginary);
        for (std::size_t k = 0; k < together; ++k) {
            const float i = samples[2 * k];
            const float q = samples[2 * k + 1];
            samples[2 * k] = i * reals[k] - q * imaginaries[k];
            samples[2 * k + 1] = i * imaginaries[k] + q * reals[k];
        }
    }
}

} // namespace

Rotation::Rotation(double step)
    : m_step(step)
{
    for (std::size_t k = 0; k < length; ++k)
        m_turns.push_back(turnBy(step * static_cast<double>(k)));
}

void Rotation::turn(std::complex<float>* samples, std::size_t count, double cycles) const
{
    for (std::size_t first = 0; first < count; first += length) {
        const std::complex<float> start = turnBy(cycles + m_step * static_cast<double>(first));
        const std::size_t end = std::min(first + length, count);
        turnAll(reinterpret_cast<float*>(samples + first),
                reinterpret_cast<const float*>(m_turns.data()), end - first, start.real(),
                start.imag());
    }
}

void turnGroups(std::complex<float>* samples, std::size_t count, std::size_t length,
                const std::vector<double>& phases, const std::vector<double>& steps)
{
    Turns turns, turnsOn;
    const std::size_t wholeCount = length == together ? count / together : 0;
    for (std::size_t first = 0; first < phases.size(); first += groups) {
        const std::size_t here = std::min(phases.size() - first, groups);
        findTurns(&phases[first], here, turns.real, turns.imaginary);
        findTurns(&steps[first], here, turnsOn.real, turnsOn.imaginary);
        const std::size_t whole = std::min(wholeCount - std::min(first, wholeCount), here);
        turnWhole(reinterpret_cast<float*>(samples + std::min(first * length, count)), whole, turns,
                  turnsOn);
        for (std::size_t k = whole; k < here; ++k) {
            const std::size_t begin = std::min((first + k) * length, count);
            turnOn(samples + begin, std::min(length, count - begin),
                   {turns.real[k], turns.imaginary[k]}, {turnsOn.real[k], turnsOn.imaginary[k]});
        }
    }
}
