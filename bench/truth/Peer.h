// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LinearSignal.h"

#include <QString>

#include <memory>

/// Another receiver of linear modulation, made of a library's own loops.
class Peer
{
public:
    struct Symbol
    {
        Complex value;
        double position; ///< samples of the signal, to a symbol or so
        double phase;    ///< rad, that was taken off
    };

    virtual ~Peer() = default;
    /// With its version.
    virtual QString name() const = 0;
    /// Bandwidths of loops are as the library counts them.
    /// @param kind     what is told of the signal: modulation, roll-off, samples a symbol, level.
    /// @param carrier  cycles a sample, taken off before the matched filter.
    /// @return the symbols that each of the carrier's loops gives.
    virtual std::vector<std::vector<Symbol>> receive(const Signal& signal, const LinearSignal& kind,
                                                     double carrier, double timingLoop,
                                                     const std::vector<double>& carrierLoops) = 0;

protected:
    /// By which symbols are multiplied so that points have mean power 1.
    static double levelOf(const std::vector<Complex>& symbols, const LinearSignal& kind);
};

/// Objects of liquid-dsp: nco, msresamp, symsync, nco with pll, modem.
std::unique_ptr<Peer> liquidPeer();
/// Blocks of GNU Radio: rotator, pfb_clock_sync, constellation_receiver. None where it is missing.
std::unique_ptr<Peer> gnuRadioPeer();
