// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/Rotation.h"

#include "workbench/receiver/ComplexProduct.h"
#include "workbench/sources/Constants.h"

#include <algorithm>
#include <cmath>

namespace {

std::complex<float> turnBy(double cycles)
{
    return std::complex<float>(std::polar(1.0, 2.0 * pi * (cycles - std::floor(cycles))));
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
        for (std::size_t k = first; k < end; ++k)
            samples[k] = product(samples[k], product(start, m_turns[k - first]));
    }
}
