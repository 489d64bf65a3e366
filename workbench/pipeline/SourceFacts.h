// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/Receiver.h"

/// What a source says of itself, copied while nobody reads it: what a receiver has to know, and
/// more; each as in SignalSource.
struct SourceFacts : Receiver::Input
{
    static SourceFacts of(const SignalSource& source);

    QString name;
    int channelCount = 1;
    bool isLive = false;
    std::optional<std::int64_t> sampleCount; ///< as it was known then
    std::optional<double> frameLength;
};
