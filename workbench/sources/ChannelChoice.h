// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <complex>
#include <optional>

/// Which of a source's values is shown: one of them, or one less another, such as of the two wires
/// of a differential line. Values are counted from 0: where complex, 0 is I of the first channel
/// and 1 its Q.
struct ChannelChoice
{
    static constexpr int maxChannel = 1024; ///< that a text may name

    ChannelChoice(int value = 0)
        : value(value)
    {}
    /// @param subtracted  another value; none where negative.
    ChannelChoice(int value, int subtracted)
        : value(value)
        , subtracted(subtracted)
    {}
    /// Reads "1" or "1-2", as people count; none of anything else.
    static std::optional<ChannelChoice> parse(const QString& text);

    bool isDifference() const { return subtracted >= 0; }
    /// The larger of the two.
    int last() const { return value > subtracted ? value : subtracted; }
    /// @param values  of one sample, as many as last() says at least.
    double of(const double* values) const
    {
        return isDifference() ? values[this->value] - values[subtracted] : values[this->value];
    }
    /// I and Q of the channel that the value is of, where samples are complex.
    std::complex<double> pairOf(const double* values) const
    {
        const int i = value / 2 * 2;
        return {values[i], values[i + 1]};
    }
    bool operator==(const ChannelChoice& other) const
    {
        return value == other.value && subtracted == other.subtracted;
    }

    int value;
    int subtracted = -1;
};
