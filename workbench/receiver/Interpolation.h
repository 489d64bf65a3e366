// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>
#include <complex>
#include <cstddef>
#include <vector>

/// The signal between its samples, as far as it is limited to less than half the sample rate or a
/// part of it: a sum of its neighbours, weighted with a windowed sine cardinal. Weights are known
/// at 128 phases between samples, of a narrower band at fewer; between these they go on evenly.
class Interpolation
{
public:
    static constexpr std::ptrdiff_t reach = 8; ///< samples on either side, of the whole band

    /// @param value  returns the sample of an index, which may lie outside of the signal by up to
    ///               reach.
    template<class Value>
    static auto at(double position, const Value& value)
    {
        const Interpolation& whole = ofWholeBand();
        const Phase phase = whole.phaseAt(position);
        const float* const weights = &whole.m_weights[phase.row * 2 * reach];
        const float* const slopes = &whole.m_slopes[phase.row * 2 * reach];
        auto sum = value(phase.before - reach + 1) * (weights[0] + phase.part * slopes[0]);
        for (std::ptrdiff_t k = 1; k < 2 * reach; ++k)
            sum += value(phase.before - reach + 1 + k) * (weights[k] + phase.part * slopes[k]);
        return sum;
    }
    static const Interpolation& ofWholeBand();

    /// @param band  part of half the sample rate that is kept, from 1e-4 to 1.
    explicit Interpolation(double band);
    /// Samples on either side of a place.
    std::size_t length() const { return m_length; }
    /// Interpolates at places that are a step, greater than 0, apart.
    /// @param samples  a whole length of them is there before the first place and after the last.
    void fill(const std::complex<float>* samples, double first, double step, std::size_t count,
              std::complex<float>* output) const;
    void fill(const float* samples, double first, double step, std::size_t count,
              float* output) const;

private:
    struct Phase
    {
        std::ptrdiff_t before; ///< sample
        std::size_t row;       ///< of the weights
        float part;            ///< of the step to the next row
    };
    Phase phaseAt(double position) const
    {
        const double before = std::floor(position);
        const double place = std::ldexp(position - before, m_phaseBits);
        const auto row = static_cast<std::size_t>(place); // rounding may make it the last one
        return {static_cast<std::ptrdiff_t>(before), row,
                static_cast<float>(place - std::floor(place))};
    }

    std::size_t m_length;
    int m_phaseBits = 2;          // 2 to this power is the number of phases
    std::vector<float> m_weights; // of the samples about each phase from 0 to 1...
    std::vector<float> m_slopes;  // ...and what they grow by to the next phase
    std::vector<float> m_twiceWeights, m_twiceSlopes; // each two times
};
