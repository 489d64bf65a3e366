// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/ReceiverStage.h"

#include "workbench/receiver/SampledSignal.h"

ReceiverStage::~ReceiverStage() = default;

void ReceiverStage::finish(BasebandBlock&) {}

void BasebandBlock::append(const BasebandBlock& other)
{
    appendSamples(samples, other.samples.data(), other.samples.size());
    demodulated.insert(demodulated.end(), other.demodulated.begin(), other.demodulated.end());
    symbols.insert(symbols.end(), other.symbols.begin(), other.symbols.end());
    clock.insert(clock.end(), other.clock.begin(), other.clock.end());
}

void BasebandBlock::clear()
{
    samples.clear();
    demodulated.clear();
    symbols.clear();
    clock.clear();
}
