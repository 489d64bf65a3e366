// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/EdgeBands.h"
#include "workbench/receiver/TurnSearch.h"

#include <complex>
#include <cstdint>
#include <optional>
#include <vector>

/// Where the symbols of a signal are: between two knots time runs evenly.
struct SymbolKnot
{
    double position; ///< samples
    double symbol;   ///< symbols; whole in the middle of each
    /// The same, of a block of symbols by itself; none where no block was measured.
    std::optional<double> measured = {};
    bool isLocked = false; ///< whether there is a clock, rather than noise, about it
};

/// Recovers the symbol clock of a signal whose symbol rate is known to half a percent.
///
/// A band around half the symbol rate is multiplied by the conjugate of the one around minus half
/// of it, for a real signal its own conjugate, which gives a line at the symbol rate whatever the
/// data and, of a complex signal, the carrier's phase (Oerder and Meyr, "Digital filter and square
/// timing recovery", IEEE Trans. Commun. 36(5), 1988; the band keeps the data's own noise off the
/// line: Franks and Bubrouski, ibid. 22(7), 1974). The line is taken in blocks of 16 symbols; the
/// blocks about each one give the line's frequency, where their sum is largest, and then its phase.
/// Unlike a control loop it needs no time to lock, which bursts do not give, and looks ahead: knots
/// lag 16 blocks behind.
class SymbolTiming
{
public:
    /// Shortest and longest symbols that can be dealt with, samples.
    static constexpr double minSamplesPerSymbol = 2.0;
    static constexpr double maxSamplesPerSymbol = 4096.0;
    /// Largest part by which the true symbol rate may differ.
    static constexpr double tolerance = 0.006;

    /// @param samplesPerSymbol  from minSamplesPerSymbol to maxSamplesPerSymbol.
    /// @param isOffset  of complex samples: Q comes half a symbol after I, or before it. The lines
    ///                  of both in the envelope then cancel; those of the square do not, and half
    ///                  the phase between them is that of the clock.
    explicit SymbolTiming(double samplesPerSymbol, bool isOffset = false);

    /// The next sample, the first one at position 0. NaN and infinity are ignored. All samples
    /// are real, or all are complex.
    void push(double sample);
    /// The next samples, of those in memory each a step after the one before.
    void push(const std::complex<float>* samples, std::size_t count, std::size_t step);
    /// No more samples come: the clock is given up to the last one.
    void finish();
    /// By what part the symbol rate is larger than the nominal one.
    double rateError() const { return m_slope * m_samplesPerSymbol - 1.0; }

    /// The knots that have been found since the last call, in order, the first one at position 0.
    std::vector<SymbolKnot> takeKnots();

private:
    using Complex = std::complex<double>;

    void add(std::complex<float> sample);
    void takeBands();
    void take(const EdgeBands::Output& bands);
    void closeBlock();
    void addLine(Complex line);
    void settle(std::int64_t block);
    double agreementOf(std::size_t index) const;
    double agreeingPower(std::size_t begin, std::size_t end) const;
    bool isLockedAt(std::int64_t block);
    bool areLocked(const std::vector<Complex>& lines, const std::vector<double>& powers,
                   std::size_t here) const;
    static bool isOfBurst(const std::vector<Complex>& lines, std::size_t here);
    double centerOf(std::int64_t block) const;

    double m_samplesPerSymbol;
    double m_turnsPerSymbol; // of the line
    EdgeBands m_bands;
    Complex m_sum = 0.0; // of the open block
    Complex m_upperSquares = 0.0;
    Complex m_lowerSquares = 0.0;
    double m_power = 0.0;
    // Of the newest blocks:
    std::vector<Complex> m_lines;     // against their power...
    std::vector<double> m_powers;     // ...which is this
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
