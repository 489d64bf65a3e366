// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <complex>
#include <optional>

/// The value of a source that is shown: one of them, or the difference of two, as of the two wires
/// of a differential line. Values are counted from 0; of a complex signal, 0 is I of the first
/// channel and 1 its Q.
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
    /// Reads "1" or "1-2", counted from 1; none for any other text.
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
