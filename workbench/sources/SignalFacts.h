// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <optional>

/// What a signal is. None of it changes while the signal is read.
struct SignalFacts
{
    /// Real numbers of a sample: one a channel, two where complex.
    int valueCount() const { return channelCount * (isComplex ? 2 : 1); }

    QString name;            ///< for people: a file's name, or what the signal is
    double sampleRate = 1.0; ///< Hz, > 0
    int channelCount = 1;    ///< 1 or more
    bool isComplex = false;  ///< samples are I + jQ
    /// Samples come when they come, from a device or a program: reading waits for them, at most a
    /// tenth of a second, and there is no going back.
    bool isLive = false;
    std::optional<double> symbolRate; ///< Bd, where known
    /// Where the middle of symbol 0 lies, samples, need not be whole: that of symbol k lies k
    /// symbol periods later. None where the symbols' clock is not known exactly.
    std::optional<double> firstSymbol;
    /// Samples of a frame, at least 1, need not be whole: frame k starts at the first sample that
    /// is not before k times this. None for a signal without known frames.
    std::optional<double> frameLength;
};
