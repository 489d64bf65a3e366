// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/SignalSource.h"

SignalSource::~SignalSource() = default;

bool SignalSource::isComplex() const { return false; }

std::optional<double> SignalSource::symbolRate() const { return std::nullopt; }

std::optional<double> SignalSource::firstSymbol() const { return std::nullopt; }

std::optional<double> SignalSource::frameLength() const { return std::nullopt; }

bool SignalSource::isLive() const { return false; }

bool SignalSource::hasEnded() const { return true; }

QString SignalSource::trouble() const { return QString(); }

bool SignalSource::hasFailed() const { return false; }

std::optional<int> SignalSource::constellationChannel() const { return std::nullopt; }

std::size_t SignalSource::discard(std::size_t count)
{
    std::vector<double> block;
    return read(block, count);
}
