// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/ChannelChoice.h"

#include <cstdint>

class SignalSource;

/// Start of the stretch of a length in which a recording has most signal: its samples deviate most
/// from their mean. A recording of more than some million samples is examined in pieces spread over
/// it, so that a burst shorter than a five hundredth of it may be missed.
/// @param source   with a known sampleCount; it is moved back to its position.
/// @param channel  which the source has.
/// @param length   samples, > 0. A source that is not longer gives 0.
std::int64_t strongestStretch(SignalSource& source, const ChannelChoice& channel,
                              std::int64_t length);
