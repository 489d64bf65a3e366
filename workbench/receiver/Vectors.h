// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstring>

/// Compiles a function for processors with wider vectors, too; which of them runs is settled when
/// the program starts. All give the same numbers: what is added to what stands in the code, and
/// multiplications are never fused with additions. The programs that watch memory and threads
/// cannot do with the choice.
#if defined(__GNUC__) && !defined(__clang__) && defined(__x86_64__) &&                             \
    !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
#define ORVANE_WIDEST __attribute__((target_clones("avx512f", "avx2", "default")))
#else
#define ORVANE_WIDEST
#endif

/// Puts a function into those that call it, for their processor: by itself it would be compiled for
/// any.
#define ORVANE_WITHIN [[gnu::always_inline]] inline

/// Writes the steps of the loop that follows out one after the other: what it works on can then
/// stay in the processor.
#if defined(__clang__)
#define ORVANE_UNROLLED _Pragma("unroll")
#else
#define ORVANE_UNROLLED _Pragma("GCC unroll 8")
#endif

/// Numbers that are added and multiplied at once, as many of them as the processor can.
using Floats = float __attribute__((vector_size(64)));
using Doubles = double __attribute__((vector_size(64)));
constexpr std::size_t floatsWidth = 16;
constexpr std::size_t doublesWidth = 8;

// By reference: how such vectors are returned differs between processors.
template<class Vector, class Number>
ORVANE_WITHIN void load(const Number* from, Vector& vector)
{
    std::memcpy(&vector, from, sizeof vector);
}
template<class Vector, class Number>
ORVANE_WITHIN void store(const Vector& vector, Number* to)
{
    std::memcpy(to, &vector, sizeof vector);
}
