// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "Random.h"

#include <cmath>

namespace {

std::mt19937_64 engineOf(const std::string& name, int trial)
{
    std::vector<std::uint32_t> words(name.begin(), name.end());
    words.push_back(static_cast<std::uint32_t>(trial));
    std::seed_seq seeds(words.begin(), words.end());
    return std::mt19937_64(seeds);
}

} // namespace

Random::Random(const std::string& name, int trial)
    : m_engine(engineOf(name, trial))
{}

int Random::below(int count) { return std::uniform_int_distribution<int>(0, count - 1)(m_engine); }

double Random::part() { return std::uniform_real_distribution<double>(0.0, 1.0)(m_engine); }

double Random::phase() { return 2.0 * pi * part(); }

double Random::gauss() { return m_normal(m_engine); }

std::vector<double> Random::noise(std::size_t count, double bandwidth)
{
    std::vector<double> taps = {1.0};
    if (bandwidth < 0.5) { // a sinc under a Hann window, 24 of its zeros on either side
        const int reach = static_cast<int>(std::ceil(12.0 / bandwidth));
        double energy = 0.0;
        taps.clear();
        for (int k = -reach; k <= reach; ++k) {
            const double x = 2.0 * pi * bandwidth * k;
            const double window = 0.5 + 0.5 * std::cos(pi * k / (reach + 1.0));
            taps.push_back(window * (k == 0 ? 1.0 : std::sin(x) / x));
            energy += taps.back() * taps.back();
        }
        for (double& tap : taps)
            tap /= std::sqrt(energy);
    }
    std::vector<double> white(count + taps.size());
    for (double& value : white)
        value = gauss();
    std::vector<double> noise(count, 0.0);
    for (std::size_t n = 0; n < count; ++n) {
        for (std::size_t k = 0; k < taps.size(); ++k)
            noise[n] += taps[k] * white[n + k];
    }
    return noise;
}
