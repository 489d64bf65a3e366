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

std::int64_t SignalSource::lostBlockCount() const { return 0; }

std::optional<int> SignalSource::constellationChannel() const { return std::nullopt; }
