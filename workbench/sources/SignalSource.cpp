// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/SignalSource.h"

SignalSource::~SignalSource() = default;

bool SignalSource::hasEnded() const { return true; }

std::optional<Message> SignalSource::trouble() const { return std::nullopt; }

bool SignalSource::hasFailed() const { return false; }

std::size_t SignalSource::discard(std::size_t count)
{
    std::vector<double> block;
    return read(block, count);
}
