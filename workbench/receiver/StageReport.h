// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <vector>

/// State of a stage of a receiver.
struct StageReport
{
    enum class Stage {
        Shift,
        Channel,
        Squelch,
        Demodulator,
        Resampler,
        Gain,
        MatchedFilter,
        Timing,
        Carrier
    };
    enum class Quantity {
        Level,           ///< dB of full scale, r.m.s. before the gain control
        SymbolRateError, ///< parts per million of the nominal one
        TimingError,     ///< r.m.s., symbol periods
        CarrierOffset,   ///< Hz
        PhaseError,      ///< r.m.s., degrees
        AliasDistance    ///< Hz, to another carrier that fits nearly as well
    };
    struct Reading
    {
        Quantity quantity;
        double value;
    };

    Stage stage = Stage::Shift;
    bool isOn = false;
    std::optional<bool>
        isLocked; ///< of a squelch: whether it is open; none: the stage does not lock to anything
    std::vector<Reading> readings;
};
