// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/LiquidHandle.h"

#include <QStringList>

#include <complex>
#include <optional>
#include <vector>

struct modemcf_s;

/// The linear modulations that are received; the first five are built in as signals, too.
enum class ModulationKind { Bpsk, Qpsk, Psk8, Qam16, Qam64, Oqpsk, Pi4Dqpsk };

namespace modulationKinds {

constexpr int builtInCount = 5;

/// Name as it is shown.
QString name(ModulationKind kind);
/// Names of the first ones, or of all, in order.
QStringList names(int count = 7);
/// The modulation of a name, in capital or small letters; none for other texts.
std::optional<ModulationKind> named(const QString& name);
/// Maps bits to points, and points to bits.
LiquidHandle<modemcf_s*> modem(ModulationKind kind);
/// The points, with a mean power of 1.
std::vector<std::complex<double>> points(ModulationKind kind);

} // namespace modulationKinds
