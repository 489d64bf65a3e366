// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/measure/ConstellationReadings.h"
#include "workbench/measure/EyeReadings.h"
#include "workbench/measure/LevelReadings.h"
#include "workbench/receiver/ReceiverStage.h"

/// What is known of the signal just now: of its newest samples, traces and points, whatever the
/// views show of them. What is not known is none.
struct Measurements
{
    std::optional<LevelReadings> level; ///< of the samples shown, at most the newest 65536
    std::optional<EyeReadings> eye;     ///< of the newest traces, at most 1000
    std::optional<ConstellationReadings> constellation; ///< of the newest symbols, at most 2048
    bool hasTraces = false;  ///< whether they are enough; else there is no eye
    bool hasSymbols = false; ///< whether the points are symbols...
    bool hasModulation =
        false; ///< ...of a modulation that is known; else there is no constellation
    std::optional<double> carrierOffset;   ///< Hz, as the receiver has it
    std::optional<double> symbolRateError; ///< of the nominal rate, parts per million
};
