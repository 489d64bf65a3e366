// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Peer.h"

#include <vector>

/// MER, carrier and clock of a signal, as a receiver found them; infinite where it did not.
struct PeerFigures
{
    double mer = LinearSignal::none;     ///< dB
    double carrier = LinearSignal::none; ///< symbol rates
    double clock = LinearSignal::none;   ///< ppm
};

/// A signal and what is known of it.
struct PeerTrial
{
    LinearSignal sent;
    Signal signal;
};

/// By how much figures miss the truth of a trial. The MER of a signal without noise may be above
/// its goal.
PeerFigures errorsOf(const PeerFigures& found, const LinearSignal& sent);

/// The deviations that chance leaves any estimate.
PeerFigures boundsOf(const LinearSignal& kind);

/// As how much an error counts at most: ten times the least of the receivers' medians, or of the
/// bound if it is larger. A mean would else be that of the one trial that went astray most.
double mostOf(const std::vector<std::vector<double>>& errorsOfReceivers, double bound);
double meanOf(const std::vector<double>& errors, double most);

/// A peer whose loops are chosen on trials of a case, for each figure by itself, so that it can be
/// judged on others.
class TunedPeer
{
public:
    /// @param carrier  symbol rates, what is known of it beforehand.
    TunedPeer(Peer& peer, double carrier, const std::vector<PeerTrial>& training);

    PeerFigures measure(const PeerTrial& trial) const;

private:
    struct Loops
    {
        double timing;
        double carrier;
    };
    std::vector<PeerFigures> figuresOf(const PeerTrial& trial,
                                       const std::vector<Loops>& loops) const;

    Peer& m_peer;
    double m_carrier;
    std::vector<Loops> m_loops; // a pair for each figure
};
