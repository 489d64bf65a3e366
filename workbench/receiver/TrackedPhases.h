// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <vector>

/// Symbols that a carrier's loop went through, of which one after the other is looked at again once
/// those after it are known: what the loop lags and shakes is taken out by a straight line through
/// the phases of as many before as after (Moeneclaey and de Jonghe, IEEE Trans. Commun. 42(2),
/// 1994, on feed-forward phase estimation).
class TrackedPhases
{
public:
    struct Symbol
    {
        double phase;    ///< of the loop, rad
        double error;    ///< of the symbol against it, rad
        double weight;   ///< how much that counts
        double quality;  ///< 1: on the point; 0: as good as a guess
        double evidence; ///< logarithm of the ratio of likelihoods that the carrier is held
        double power;    ///< against that of the points
    };
    struct Smoothed
    {
        double phase, slope, quality; ///< rad, rad a symbol, mean
    };

    /// @param reach     symbols that smooth a phase, on either side.
    /// @param isUneven  points have several amplitudes.
    void configure(std::size_t reach, bool isUneven);
    void clear();

    /// How much louder than silence a symbol is that can be followed.
    static bool isHeard(double power);
    void add(const Symbol& symbol);
    /// Symbols from the one that is looked at on.
    std::size_t count() const { return m_symbols.size() - m_here; }
    /// Looks at the next one.
    void advance();

    // Of the symbol that is looked at; there is one.
    const Symbol& symbol() const { return m_symbols[m_here]; }
    /// The line through those about it, there.
    Smoothed smoothed(double usualSlope) const;
    /// Whether the symbols about it are much weaker than those of a burst are, or there are none.
    bool isFaint() const;
    /// Whether its carrier is held rather than lost: of the two states that follow one another, the
    /// likelier (forward and backward, Rabiner, Proc. IEEE 77(2), 1989).
    bool isHeld() const;

private:
    std::size_t m_reach = 1;
    int m_about = 1; // symbols on either side that tell the level
    std::vector<Symbol> m_symbols;
    std::size_t m_here = 0; // the one that is looked at...
    std::size_t m_past = 0; // ...and how many before it still count
    double m_odds = 0.0;    // logarithm: that the carrier was held up to the symbol
    // Beside the symbols, for sums over many of them; 0 where a symbol is not heard:
    std::vector<double> m_angles; // phase and error
    std::vector<double> m_weights;
    std::vector<double> m_qualities;
    std::vector<double> m_heard;     // 1, or 0
    std::vector<std::size_t> m_loud; // how many up to it, one after the other, are not faint
};
