// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/LowPass.h"

#include "workbench/sources/Constants.h"

#include <algorithm>
#include <cmath>
#include <complex>

#include <liquid/liquid.h>

namespace {

constexpr unsigned order = 4;
// The prototype is 3 dB down at this part of its frequency.
constexpr double besselCorner = 0.9597;
constexpr double highestCorner = 0.45; // of the prototype
constexpr double lowestCorner = 1e-6;  // below, double precision does not keep the gain at rest
constexpr double largest = 1e6;        // full scale is 1: far beyond it is no signal

} // namespace

// In double precision, other than the library's own filters: low corners have poles so near to 1
// that single precision moves them.
LowPass::LowPass(double corner)
{
    corner = std::clamp(corner / besselCorner, lowestCorner, highestCorner);
    std::complex<float> zeros[order], poles[order], gain;
    bessel_azpkf(order, zeros, poles, &gain);
    // Bilinear transform. Of each pair one pole is as good as the other.
    const double warped = std::tan(pi * corner);
    auto section = m_sections.begin();
    for (const std::complex<float> analog : poles) {
        if (analog.imag() <= 0.0F || section == m_sections.end())
            continue;
        const std::complex<double> step = warped * std::complex<double>(analog);
        const std::complex<double> pole = (1.0 + step) / (1.0 - step);
        *section++ = {-2.0 * pole.real(), std::norm(pole),
                      std::norm(2.0 * step / (1.0 - step)) / 4};
    }

    m_settleLength = static_cast<int>(std::ceil(8.0 / corner));
    double power = 0.0;
    for (int i = 0; i < m_settleLength; ++i) {
        const double response = run(i == 0 ? 1.0 : 0.0);
        power += response * response;
        m_delay += i * response;
    }
    m_noiseGain = std::sqrt(power);
    for (Section& used : m_sections)
        used.first = used.second = 0.0;
}

double LowPass::run(double input)
{
    double sample = std::isfinite(input) ? std::clamp(input, -largest, largest) : 0.0;
    for (Section& section : m_sections) {
        const double next =
            section.gain * sample - section.a1 * section.first - section.a2 * section.second;
        sample = next + 2.0 * section.first + section.second;
        section.second = section.first;
        section.first = next;
    }
    return sample;
}
