// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/chart/ChartObjects.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace OndoChartDisplay {

/// An array of values that grows at its end.
template<typename Value>
class IDataArray
{
public:
    virtual ~IDataArray() = default;
    /// Appends values; in array mode 1 the oldest make room. Copies them; they may be null when
    /// the count is 0.
    virtual void Append(const Value* values, std::size_t count) = 0;
    /// Replaces the contents from index 0 and cuts the array to the count.
    virtual void Replace(const Value* values, std::size_t count) = 0;
};

/// An array of numbers, which may be NaN. The cost of appending a value does not depend on the
/// size.
class ORVANE_PLATFORM_API CDataArrayD : public CBaseObject, public IDataArray<double>
{
public:
    static constexpr const char* CLASS = "CDataArrayD";
    static constexpr int modeUnbounded = 0;
    static constexpr int modeKeepNewest = 1;

    /// Position of the contents in the stream of all values ever appended.
    struct State
    {
        std::uint64_t generation; ///< Changes when the contents change otherwise than by appending.
        std::uint64_t first;      ///< Position of the oldest value.
        std::uint64_t end;        ///< Position after the newest value.
        bool operator==(const State& other) const
        {
            return generation == other.generation && first == other.first && end == other.end;
        }
    };

    void Append(const double* values, std::size_t count) override;
    void Replace(const double* values, std::size_t count) override;

    /// In mode 1 the array keeps the newest values up to its capacity. Any other mode is unbounded.
    void SetMode(int mode);
    int GetMode() const { return m_mode; }
    /// Initially 0. Drops the oldest values that no longer have room.
    void SetCapacity(std::size_t capacity);
    std::size_t GetCapacity() const { return m_capacity; }

    std::size_t Size() const { return m_values.size(); }
    /// Value at an index, 0 the oldest; NaN beyond the end.
    double At(std::size_t index) const;
    /// Values that lie one after the other in memory.
    struct Stretch
    {
        const double* values;
        std::size_t count;
    };
    /// As many values from an index as lie together. The index must be below the size. Valid until
    /// the array changes.
    Stretch Part(std::size_t index) const;
    /// A copy, oldest first.
    std::vector<double> Values() const;
    State GetState() const;

private:
    void Straighten();
    void DropExcess();

    std::vector<double> m_values; // a ring where mode and capacity bound it
    std::size_t m_oldest = 0;
    int m_mode = modeUnbounded;
    std::size_t m_capacity = 0;
    std::uint64_t m_generation = 0;
    std::uint64_t m_end = 0;
};

} // namespace OndoChartDisplay
