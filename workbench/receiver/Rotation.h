// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <complex>
#include <cstddef>
#include <cstdint>
#include <vector>

/// Moves samples in frequency: turns each on by as much more than the one before.
class Rotation
{
public:
    /// @param step  cycles a sample, finite.
    explicit Rotation(double step = 0.0);

    /// Turns samples in place, from a phase on.
    /// @param cycles  of the first one.
    void turn(std::complex<float>* samples, std::size_t count, double cycles) const;

private:
    static constexpr std::size_t length = 256; // samples from phase to phase: errors do not add up

    double m_step;
    std::vector<std::complex<float>> m_turns; // of as many samples against the first
};

/// Turns samples in place: groups of them from a phase on, each sample a step further than the one
/// before.
/// @param length  of a group, samples; of the last one fewer may be there.
/// @param phases, steps  of each group, rad and rad a sample.
void turnGroups(std::complex<float>* samples, std::size_t count, std::size_t length,
                const std::vector<double>& phases, const std::vector<double>& steps);
