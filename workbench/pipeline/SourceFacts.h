// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/SignalSource.h"

/// What a source says of itself, copied while nobody reads it; each as in SignalSource.
struct SourceFacts
{
    static SourceFacts of(const SignalSource& source);

    QString name;
    double sampleRate = 1.0;
    int channelCount = 1;
    int valueCount = 1;
    bool isComplex = false;
    bool isLive = false;
    std::optional<std::int64_t> sampleCount; ///< as it was known then
    std::optional<double> symbolRate;
    std::optional<double> firstSymbol;
    std::optional<double> frameLength;
};
