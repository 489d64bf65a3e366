// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/EdgeBands.h"
#include "workbench/receiver/TurnSearch.h"

#include <complex>
#include <cstdint>
#include <optional>
#include <vector>

/// A knot of the time scale of the symbols: between two knots, symbols are evenly spaced.
struct SymbolKnot
{
    double position; ///< samples
    double symbol;   ///< symbols; whole in the middle of each
    /// The same, from one block of symbols alone; none when no block was measured.
    std::optional<double> measured = {};
    bool isLocked = false; ///< whether there is a clock, rather than noise, around it
};

/// Recovers the symbol clock of a signal whose symbol rate is known to half a percent.
///
/// The band around half the symbol rate is multiplied by the conjugate of the band around minus
/// half the symbol rate (of a real signal its own conjugate). This gives a line at the symbol rate
/// for any data and any carrier phase (Oerder and Meyr, "Digital filter and square timing
/// recovery", IEEE Trans. Commun. 36(5), 1988; a narrow band keeps the pattern noise of the data
/// off the line: Franks and Bubrouski, ibid. 22(7), 1974). The line is measured in blocks of 16
/// symbols. The blocks around each one give the frequency of the line, at which their sum is
/// largest, and then its phase. Unlike a control loop this needs no time to lock, which bursts do
/// not leave, and it looks ahead: knots lag by 16 blocks.
class SymbolTiming
{
public:
    /// Range of the samples per symbol.
    static constexpr double minSamplesPerSymbol = 2.0;
    static constexpr double maxSamplesPerSymbol = 4096.0;
    /// Largest part by which the true symbol rate may differ.
    static constexpr double tolerance = 0.006;

    /// @param samplesPerSymbol  from minSamplesPerSymbol to maxSamplesPerSymbol.
    /// @param isOffset  Q of complex samples comes half a symbol after I, or before it. Then the
    ///                  lines of both in the envelope cancel, but those in the square do not, and
    ///                  half the phase between them is that of the clock.
    explicit SymbolTiming(double samplesPerSymbol, bool isOffset = false);

    /// Takes the next sample, the first one at position 0. NaN and infinity are ignored. All
    /// samples must be real, or all complex.
    void push(double sample);
    /// The next samples, of those in memory each a step after the one before.
    void push(const std::complex<float>* samples, std::size_t count, std::size_t step);
    /// Ends the signal: the clock is found up to the last sample.
    void finish();
    /// Relative deviation of the symbol rate from the nominal one.
    double rateError() const { return m_slope * m_samplesPerSymbol - 1.0; }

    /// The knots found since the last call, in order; the first knot of all is at position 0.
    std::vector<SymbolKnot> takeKnots();

private:
    using Complex = std::complex<double>;

    void add(std::complex<float> sample);
    void takeBands();
    void take(const EdgeBands::Output* bands, std::size_t count);
    void closeBlock();
    void addLine(Complex line);
    void settle(std::int64_t block);
    void fillTurns(double turn);
    double agreementOf(std::size_t index) const;
    double agreeingPower(std::size_t begin, std::size_t end) const;
    bool isLockedAt(std::int64_t block);
    bool areLocked(const std::vector<Complex>& lines, const std::vector<double>& powers,
                   std::size_t here) const;
    static bool isOfBurst(const std::vector<Complex>& lines, std::size_t here);
    /// Of the first block that is held.
    std::int64_t oldest() const { return m_blockCount - static_cast<std::int64_t>(m_lines.size()); }
    double centerOf(std::int64_t block) const;

    double m_samplesPerSymbol;
    double m_turnsPerSymbol; // of the line
    EdgeBands m_bands;
    Complex m_sum = 0.0; // of the open block
    Complex m_upperSquares = 0.0;
    Complex m_lowerSquares = 0.0;
    double m_power = 0.0;
    // Of the newest blocks, from the one on that so many others precede:
    std::size_t m_passed = 0;
    std::vector<Complex> m_lines;     // against their power...
    std::vector<double> m_powers;     // ...and this power
    std::vector<double> m_agreements; // see agreementOf
    // Of those that tell the frequency at a block, weighted by power and agreement:
    std::vector<double> m_weightedI, m_weightedQ;
    TurnSearch m_search;
    std::vector<Complex> m_turns; // of the blocks about one, as the frequency there has them
    std::vector<Complex> m_nearLines;
    std::vector<double> m_nearPowers;
    double m_blockEnd; // of the open block, samples
    std::int64_t m_blockCount = 0;
    std::int64_t m_settledCount = 0;
    double m_phase = 0.0; // rad, of the last settled block
    double m_slope = 0.0; // symbols a sample, there
    bool m_isReal = true;
    bool m_isLocked = false; // about the last settled block
    std::vector<SymbolKnot> m_knots;
};
