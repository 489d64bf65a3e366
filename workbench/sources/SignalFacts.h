// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <optional>

/// Facts about a signal, which do not change while it is read.
struct SignalFacts
{
    /// Real numbers of a sample: one for each channel, or two where complex.
    int valueCount() const { return channelCount * (isComplex ? 2 : 1); }

    QString name;            ///< for people: the name of a file or of a signal
    double sampleRate = 1.0; ///< Hz, > 0
    int channelCount = 1;    ///< 1 or more
    bool isComplex = false;  ///< samples are I + jQ
    /// Whether samples come from a device or a program at their own time: reading waits for them,
    /// at most a tenth of a second, and cannot go back.
    bool isLive = false;
    std::optional<double> symbolRate; ///< Bd, where known
    /// Position of the middle of symbol 0, in samples, with a fraction: that of symbol k is k
    /// symbol periods later. None where the symbol clock is not known exactly.
    std::optional<double> firstSymbol;
    /// Length of a frame in samples, at least 1, with a fraction: frame k starts at the first
    /// sample at or after k times this. None for a signal without known frames.
    std::optional<double> frameLength;
};
