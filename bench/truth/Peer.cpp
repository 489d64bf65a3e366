// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "Peer.h"

double Peer::levelOf(const std::vector<Complex>& symbols, const LinearSignal& kind)
{
    double power = 0.0;
    for (const Complex& symbol : symbols)
        power += std::norm(symbol) / static_cast<double>(symbols.size());
    return std::sqrt((1.0 + std::pow(10.0, -kind.esN0 / 10.0)) / power);
}
