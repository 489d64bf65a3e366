// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/ChannelChoice.h"

#include <cstdint>

class SignalSource;

/// Where a recording has most signal: the start of the stretch of a length whose samples deviate
/// most from their mean. A recording that is longer than some million samples is looked at in
/// pieces all over it, so a burst shorter than a five hundredth of it may be missed.
/// @param source   of known sampleCount; moves back to where it was.
/// @param channel  which the source has.
/// @param length   samples, > 0; 0 comes back for a source that is not longer.
std::int64_t strongestStretch(SignalSource& source, const ChannelChoice& channel,
                              std::int64_t length);
