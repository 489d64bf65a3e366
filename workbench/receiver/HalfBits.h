// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/SampledSignal.h"

#include <cstddef>

/// Finds out whether a clock is that of half bits.
///
/// The two halves of a bit of a Manchester code are opposite, whatever the data; the second half of
/// a return-to-zero bit has one level. Halves of two different bits show neither. Random data show
/// it in most of the signal; frames and idle lines may interrupt it.
struct HalfBits
{
    /// How bits become symbols.
    enum class Code {
        Plain,       ///< one symbol each, as far as the signal shows
        Manchester,  ///< two opposite half bits
        ReturnToZero ///< a pulse in the first half, and rest in the second
    };

    /// @param start, length of the part to examine, within the signal, which is finite.
    /// @param rate  of the supposed halves, Bd; needs two samples each.
    /// @return Plain when they are no halves, and for fewer than 48 bits.
    static Code codeOf(const SampledSignal& signal, std::size_t start, std::size_t length,
                       double rate);
};
