// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/measure/EyeReadings.h"
#include "workbench/receiver/SignalBlock.h"

#include <cstdint>
#include <vector>

/// The traces of a stretch of signal that an eye is measured by: two symbols long, one for each
/// symbol whose instant of decision is in its middle, in the signal's own level.
struct EyeTraces
{
    static constexpr std::size_t perSymbol = 32; ///< samples
    static constexpr std::size_t length = 2 * perSymbol + 1;

    /// @param blocks     in order; traces do not span gaps, quiet samples, or symbols that are not
    ///                   good.
    /// @param from,to    s; symbols outside do not count.
    /// @param bandwidth  of a low-pass before, symbol rates; 0: none.
    /// @param most       traces; of more, every n-th is taken.
    static EyeTraces of(const std::vector<SignalBlockPtr>& blocks, double from, double to,
                        const SignalFormat& format, double bandwidth, std::size_t most);

    std::size_t count() const { return samples.size() / length; }

    std::vector<double> samples; ///< trace by trace
    /// Of each trace the sample of the signal that is nearest to its middle. Interpolation rings
    /// where a signal is not limited to half the sample rate, which its own samples do not.
    std::vector<double> nearest;
    /// Of each trace; none where the clock starts anew with each character.
    std::vector<EyeReadings::Instant> instants;
    std::int64_t skipped = 0; ///< traces that were not taken, of more than the most
};
