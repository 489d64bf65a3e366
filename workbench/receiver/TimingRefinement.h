// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/Decisions.h"
#include "workbench/receiver/ModulationTable.h"
#include "workbench/receiver/ReceiverStage.h"

#include <optional>
#include <vector>

/// Moves the instants of decision to where the symbols come closest to their points.
///
/// What a symbol is off its point tells by how much it was taken too early or too late, once the
/// slope of the signal there is known; data make no noise of their own in it (decision-directed
/// minimum mean square error timing: Kobayashi, "Simultaneous adaptive estimation and decision
/// algorithm for carrier modulated data transmission systems", IEEE Trans. Commun. 19(3), 1971).
/// Where the pulse is known, the slope itself tells more, up to what can be told at all: at the
/// right instant it is that of the neighbours' pulses (maximum likelihood: Meyr, Moeneclaey,
/// Fechtel, "Digital Communication Receivers", 1998, chapter 5). A straight line through the groups
/// of symbols about each tells the instant.
class TimingRefinement : public ReceiverStage
{
public:
    BasebandFormat configure(const ReceiverSettings& settings,
                             const BasebandFormat& format) override;
    void process(BasebandBlock& block) override;
    void finish(BasebandBlock& block) override;
    void reset() override;
    StageReport report() const override { return {StageReport::Stage::Timing, m_isOn, {}, {}}; }

    /// See SignalFormat: an instant for as many symbols as tell it, of two numbers each.
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
        double early;  ///< sum by which its symbols were taken too early, weighted...
        double weight; ///< ...with these
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
    std::vector<double> m_slopes;       // of the pulse 1, 2... symbols on; none where not known...
    double m_curvature = 0.0;           // ...and how it is bent down in its middle
    BasebandBlock m_waiting;            // from a symbol that was put out on, after the first
    std::vector<Complex> m_sent;        // its symbols, as they were decided...
    std::vector<std::size_t> m_decided; // ...and how many were up to each, one after the other
    std::size_t m_head = 0;             // symbols of it that were put out
    std::size_t m_grouped = 0;          // symbols of it that are in groups
    std::int64_t m_number = 0;          // of the first that waits, in the run
    std::vector<Group> m_groups;        // the newest
};
