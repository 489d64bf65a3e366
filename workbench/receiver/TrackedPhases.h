// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <vector>

/// Symbols that the loop of a carrier has tracked. Each is examined again once the symbols after it
/// are known: a straight line through the phases of as many symbols before as after removes the lag
/// and the jitter of the loop (Moeneclaey and de Jonghe, IEEE Trans. Commun. 42(2), 1994, on
/// feed-forward phase estimation).
class TrackedPhases
{
public:
    struct Symbol
    {
        double phase;    ///< of the loop, rad
        double error;    ///< of the symbol against it, rad
        double weight;   ///< of the error
        double quality;  ///< 1: on the point; 0: as good as a guess
        double evidence; ///< logarithm of the likelihood ratio that the carrier is held
        double power;    ///< relative to that of the points
    };
    struct Smoothed
    {
        double phase, slope, quality; ///< rad, rad a symbol, mean
    };
    /// Sums over symbols, of x from the middle one: of the weights with its powers 0 to 2, of the
    /// weighted angles with its powers 0 and 1, of the qualities, and of the symbols heard.
    struct Sums
    {
        double s0, s1, s2, e0, e1, quality, count;
    };

    /// @param reach     symbols over which a phase is smoothed, on either side.
    /// @param isUneven  points have several amplitudes.
    void configure(std::size_t reach, bool isUneven);
    void clear();

    /// Whether a symbol of a power, relative to that of the points, can be followed.
    static bool isHeard(double power);
    void add(const Symbol* symbols, std::size_t count);
    /// Number of symbols from the examined one on.
    std::size_t count() const { return m_symbols.size() - m_here; }
    /// Examines the next symbol.
    void advance();

    // The examined symbol; there must be one.
    const Symbol& symbol() const { return m_symbols[m_here]; }
    /// The line through the symbols around it, at its place.
    Smoothed smoothed(double usualSlope);
    /// Whether the symbols around it are much weaker than those of a burst, or there are none.
    bool isFaint() const;
    /// Whether its carrier is held rather than lost: the likelier state of a two-state Markov chain
    /// (forward-backward algorithm, Rabiner, Proc. IEEE 77(2), 1989).
    bool isHeld() const;

private:
    void moveSums();

    std::size_t m_reach = 1;
    int m_about = 1; // symbols on either side that give the level
    std::vector<Symbol> m_symbols;
    std::size_t m_here = 0; // the one that is looked at...
    std::size_t m_past = 0; // ...and how many before it still count
    double m_odds = 0.0;    // logarithm of the odds that the carrier was held up to the symbol
    // Beside the symbols, for sums over many of them; 0 where a symbol is not heard:
    std::vector<double> m_angles; // phase and error
    std::vector<double> m_weights;
    std::vector<double> m_qualities;
    std::vector<double> m_heard;     // 1, or 0
    std::vector<std::size_t> m_loud; // how many up to it, one after the other, are not faint
    // Of the symbols from one on up to another, about the one that was examined last:
    Sums m_sums = {};
    std::size_t m_sumsHere = 0, m_sumsFirst = 0, m_sumsEnd = 0;
    bool m_areSummed = false;
    std::size_t m_anewHere = 0; // where they were summed up anew
    double m_reference = 0.0;   // phase from which angles count
};
