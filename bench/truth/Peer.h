// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LinearSignal.h"

#include <QString>

#include <memory>

/// Another receiver of linear modulation, made of a library's own loops.
class Peer
{
public:
    struct Loops
    {
        double timing; ///< bandwidths, as the library counts them
        double carrier;
    };
    struct Symbol
    {
        Complex value;
        double position; ///< samples of the signal, from any start
        double phase;    ///< rad, that was taken off
    };

    virtual ~Peer() = default;
    /// With its version.
    virtual QString name() const = 0;
    /// @param kind     what is told of the signal: modulation, roll-off, samples a symbol, level.
    /// @param carrier  cycles a sample, taken off before the matched filter.
    virtual std::vector<Symbol> receive(const Signal& signal, const LinearSignal& kind,
                                        double carrier, const Loops& loops) = 0;

protected:
    /// By which symbols are multiplied so that points have mean power 1.
    static double levelOf(const std::vector<Complex>& symbols, const LinearSignal& kind);
};

/// Objects of liquid-dsp: nco, msresamp, symsync, nco with pll, modem.
std::unique_ptr<Peer> liquidPeer();
/// Blocks of GNU Radio: rotator, pfb_clock_sync, constellation_receiver. None where it is missing.
std::unique_ptr<Peer> gnuRadioPeer();
