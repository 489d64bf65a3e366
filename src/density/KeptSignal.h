// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundations/Export.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace density {

/// The newest traces or points as they came, in single precision: a ring in memory that grows up to
/// capacity * (4 * length + 8) bytes, which is 14 MB for 100,000 traces of 33 samples, and stays.
/// For one thread at a time.
class ORVANE_API KeptSignal
{
public:
    /// @param length    samples of each trace, or 2 of a point; at least 1.
    /// @param capacity  traces or points; at least 1.
    KeptSignal(std::size_t length, std::size_t capacity);

    /// Keeps a trace or point, in place of the oldest one when the capacity is reached.
    /// @param samples  as many as the length; copied.
    /// @param symbol   number in the signal.
    void add(const float* samples, std::int64_t symbol);
    void clear();

    std::size_t count() const { return m_symbols.size(); }
    std::size_t length() const { return m_length; }
    std::size_t capacity() const { return m_capacity; }
    ///@{
    /// Samples and number of a trace or point. The samples are valid until the next add.
    /// @param age  from 0, the newest, to count() - 1.
    const float* at(std::size_t age) const;
    std::int64_t symbolAt(std::size_t age) const;
    ///@}
    /// Copies of the newest ones, in the order in which they came.
    KeptSignal newest(std::size_t most) const;

private:
    std::size_t placeOf(std::size_t age) const;

    std::size_t m_length, m_capacity;
    std::size_t m_next = 0; // place of the next one, once the ring is full
    std::vector<float> m_samples;
    std::vector<std::int64_t> m_symbols;
};
using KeptSignalPtr = std::shared_ptr<const KeptSignal>;

} // namespace density
