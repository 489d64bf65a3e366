// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Case.h"
#include "Peer.h"

/// How far ours is from the truth, and another receiver, over the same trials.
struct PairedErrors
{
    enum class Verdict {
        Nearer,    ///< ours is nearer by more than two standard errors
        AsNear,    ///< ours is farther by less than the margin, two standard errors added
        Undecided, ///< neither this...
        Farther    ///< ...nor that: ours is farther by more than the margin and two standard errors
    };

    double peer = 0.0;          ///< mean magnitude of its errors...
    bool isLimited = false;     ///< ...some of which are larger than counts
    double difference = 0.0;    ///< mean of ours less the peer's, trial by trial...
    double standardError = 0.0; ///< ...and the deviation of this mean
    Verdict verdict = Verdict::Undecided;
};

/// A figure of a case.
struct PeerRow
{
    QString name;
    int figure = 0; ///< 0 to 2: MER, carrier, clock
    double ours = 0.0;
    double margin = 0.0; ///< a tenth of what chance leaves at least
    std::vector<PairedErrors> peers;
};

/// Compares what a program measures with what other receivers find.
class PeerComparison
{
public:
    /// @param program     the workbench.
    /// @param folder      for the signals.
    /// @param trialCount  trials that are judged; the peers' loops are chosen on others.
    PeerComparison(const QString& program, const QString& folder, int trialCount);

    QStringList peerNames() const;
    /// Of a case that other receivers can be told of. From trial to trial its carrier and its clock
    /// differ as its phases do: by up to 1/200 of the symbol rate, 100 ppm, a turn, a symbol.
    /// Peers are told the carrier to the nearest 1/100 of the symbol rate, and the level.
    /// @return none where a signal cannot be written.
    std::vector<PeerRow> compare(const Case& one);

private:
    QString m_program;
    QString m_folder;
    int m_trialCount;
    std::vector<std::unique_ptr<Peer>> m_peers;
};

/// A table a figure, and counts of verdicts.
QString peersAsMarkdown(const std::vector<PeerRow>& rows, const QStringList& peerNames);
/// A line for each peer that is nearer.
QString farther(const std::vector<PeerRow>& rows, const QStringList& peerNames);
