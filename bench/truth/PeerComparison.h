// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Case.h"
#include "Peer.h"

#include <QJsonObject>

/// MER, carrier and clock of a signal, as a receiver found them.
struct PeerFigures
{
    double mer = 0.0;     ///< dB
    double carrier = 0.0; ///< symbol rates
    double clock = 0.0;   ///< ppm
};

/// How far receivers are from the truth of a case, r.m.s. of all trials.
struct PeerRow
{
    QString name;
    PeerFigures truth;
    PeerFigures ours;
    std::vector<PeerFigures> peers;
};

/// @param trials    the signals of all trials.
/// @param measured  what the program says of them.
/// @param peers     as they are; each is told the carrier to 1/100 of a symbol rate and the level.
///                  Its loops first run over the record at wide bandwidths to find what is left of
///                  the carrier, then twice at narrow ones; what they give from the second quarter
///                  of the second time on is measured. Of twelve pairs of bandwidths each figure
///                  takes the pair that brings it nearest to the truth.
PeerRow comparePeers(const Case& one, const std::vector<Signal>& trials,
                     const std::vector<QJsonObject>& measured,
                     const std::vector<std::unique_ptr<Peer>>& peers);

/// A table a figure. What is nearest to the truth is bold.
QString peersAsMarkdown(const std::vector<PeerRow>& rows, const QStringList& names);
/// The figures of a row in which a peer is nearer to the truth.
QString behind(const PeerRow& row, const QStringList& names);
