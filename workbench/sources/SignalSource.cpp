// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/SignalSource.h"

SignalSource::~SignalSource() = default;

bool SignalSource::isComplex() const { return false; }

std::optional<double> SignalSource::symbolRate() const { return std::nullopt; }

std::optional<double> SignalSource::firstSymbol() const { return std::nullopt; }

std::optional<double> SignalSource::frameLength() const { return std::nullopt; }
