// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/DensityTypes.h"
#include "density/KeptSignal.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <random>
#include <vector>

/// A signal of which all is known: random symbols on levels, straight edges of 0.4 symbols between
/// them that come late by jitter, and white noise on each sample.
struct Truth
{
    std::vector<double> levels{-1.0, 1.0};
    double noise = 0.0;          ///< deviation
    double random = 0.0;         ///< jitter, deviation, symbols
    double sine = 0.0;           ///< jitter, amplitude
    double dutyCycle = 0.0;      ///< by which rising edges are later than falling ones
    std::size_t count = 100'000; ///< symbols
    unsigned seed = 1;

    /// Traces of two symbols of 16 samples.
    density::KeptSignal make() const
    {
        constexpr std::size_t perSymbol = 16;
        std::mt19937 generator(seed);
        std::normal_distribution<double> gauss;
        std::vector<double> symbols, late;
        for (std::size_t k = 0; k < count + 2; ++k) {
            symbols.push_back(levels[generator() % levels.size()]);
            const bool isRising = k > 0 && symbols[k] > symbols[k - 1];
            // No whole number of symbols to a period of the sine.
            late.push_back(random * gauss(generator) +
                           sine * std::sin(0.1234567 * static_cast<double>(k)) +
                           dutyCycle * (isRising ? 0.5 : -0.5));
        }
        std::vector<float> signal;
        for (std::size_t k = 0; k < (count + 1) * perSymbol + 1; ++k) {
            const double time = static_cast<double>(k) / perSymbol; // 0: middle of the first symbol
            const auto symbol = static_cast<std::size_t>(time);
            const std::size_t next = std::min(symbol + 1, symbols.size() - 1);
            const double edge = static_cast<double>(symbol) + 0.5 + late[next];
            const double step = std::clamp((time - edge) / 0.4 + 0.5, 0.0, 1.0);
            const double level = symbols[symbol] + (symbols[next] - symbols[symbol]) * step;
            signal.push_back(static_cast<float>(level + noise * gauss(generator)));
        }
        density::KeptSignal kept(2 * perSymbol + 1, count);
        for (std::size_t k = 0; k < count; ++k)
            kept.add(&signal[k * perSymbol], static_cast<std::int64_t>(k + 1));
        return kept;
    }
};
