// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/LowPass.h"

#include <algorithm>
#include <cmath>
#include <complex>

#include <liquid/liquid.h>

namespace {

constexpr unsigned order = 4;
// liquid's Bessel low-pass of this order is 3 dB down at this part of the frequency it is given.
constexpr double besselCorner = 0.9597;
constexpr double highestCorner = 0.45; // as given to liquid
constexpr double largest = 1e6;        // full scale is 1: what is far beyond is no signal

} // namespace

struct LowPass::Filter
{
    explicit Filter(double corner)
        : handle(iirfilt_rrrf_create_prototype(LIQUID_IIRDES_BESSEL, LIQUID_IIRDES_LOWPASS,
                                               LIQUID_IIRDES_SOS, order, static_cast<float>(corner),
                                               0.0F, 1.0F, 60.0F))
    {}
    ~Filter() { iirfilt_rrrf_destroy(handle); }
    Filter(const Filter&) = delete;
    Filter& operator=(const Filter&) = delete;

    iirfilt_rrrf handle;
};

LowPass::LowPass(double corner)
{
    corner = std::min(corner / besselCorner, highestCorner);
    m_filter = std::make_unique<Filter>(corner);
    m_settleLength = static_cast<int>(std::ceil(8.0 / corner));
    double power = 0.0;
    for (int i = 0; i < m_settleLength; ++i) {
        const double response = run(i == 0 ? 1.0 : 0.0);
        power += response * response;
        m_delay += i * response;
    }
    m_noiseGain = std::sqrt(power);
    iirfilt_rrrf_reset(m_filter->handle);
}

LowPass::~LowPass() = default;

double LowPass::run(double input)
{
    const double sample = std::isfinite(input) ? std::clamp(input, -largest, largest) : 0.0;
    float output = 0.0F;
    iirfilt_rrrf_execute(m_filter->handle, static_cast<float>(sample), &output);
    return output;
}
