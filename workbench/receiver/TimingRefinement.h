// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/Decisions.h"
#include "workbench/receiver/ModulationTable.h"
#include "workbench/receiver/ReceiverStage.h"

#include <optional>
#include <vector>

/// Moves the instants of decision so that symbols come closest to their points.
///
/// The distance of a symbol from its point tells how much too early or too late it was taken, once
/// the slope of the signal is known; data add no pattern noise (decision-directed minimum mean
/// square error timing: Kobayashi, "Simultaneous adaptive estimation and decision algorithm for
/// carrier modulated data transmission systems", IEEE Trans. Commun. 19(3), 1971). Where the pulse
/// is known, the slope itself tells more, up to the theoretical bound: at the right instant it is
/// the sum of the slopes of the neighbours' pulses (maximum likelihood: Meyr, Moeneclaey, Fechtel,
/// "Digital Communication Receivers", 1998, chapter 5). A straight line through the groups of
/// symbols around each symbol gives its instant.
class TimingRefinement : public ReceiverStage
{
public:
    BasebandFormat configure(const ReceiverSettings& settings,
                             const BasebandFormat& format) override;
    void process(BasebandBlock& block) override;
    void finish(BasebandBlock& block) override;
    void reset() override;
    StageReport report() const override { return {StageReport::Stage::Timing, m_isOn, {}, {}}; }

    /// See SignalFormat: each instant is fitted to so many symbols of two numbers each.
    double fittedPart() const;

private:
    using Complex = std::complex<double>;
    struct Slopes
    {
        Complex first, second; ///< derivatives, of a symbol period
    };
    struct Group
    {
        double place;  ///< middle, symbols of the run
        double early;  ///< weighted sum of how much its symbols were taken too early...
        double weight; ///< ...and the sum of the weights
        double line;   ///< what a line through the groups about it has here
    };

    void addGroup(std::size_t first, std::size_t count);
    void passOn(std::size_t count, BasebandBlock& output);
    double earlyAt(double place, std::size_t& after) const;
    void fitLines();
    double lineAt(std::size_t group) const;
    double turnAt(std::size_t symbol) const;
    Complex sampleAt(std::ptrdiff_t index) const;
    Slopes slopesAt(std::size_t symbol, std::ptrdiff_t offset) const;
    void decide();
    std::optional<Complex> expectedSlopeAt(std::size_t symbol) const;

    bool m_isOn = false;
    bool m_isOffset = false;
    std::size_t m_perSymbol = 1;
    double m_symbolRate = 1.0;
    std::vector<Decisions> m_decisions; // one, or none
    std::vector<double> m_slopes;  // of the pulse after 1, 2... symbols; empty when not known...
    double m_curvature = 0.0;      // ...and its curvature in the middle
    BasebandBlock m_waiting;       // from the last symbol that was put out on
    std::vector<Complex> m_points; // nearest to its symbols...
    std::vector<Complex> m_sent;   // ...and as these were sent...
    std::vector<std::size_t> m_decided; // ...and how many were up to each, one after the other
    std::size_t m_head = 0;             // its symbols that were put out
    std::size_t m_grouped = 0;          // its symbols that are in groups
    std::int64_t m_number = 0;          // of the first symbol that waits, in the run
    std::vector<Group> m_groups;        // the newest
};
