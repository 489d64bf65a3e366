// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

/// Finds the characters of an asynchronous serial line, which may be out of step with one another:
/// a start bit, some bits, and at least one stop bit, which is of the level that the line rests at.
///
/// Two levels are told apart over 256 symbols. An edge is where a straight line between samples
/// crosses their middle, and goes on to leave a hysteresis about it. Both levels are tried as that
/// at rest; the one counts with which more characters come out right and longer rests are found.
class CharacterClock
{
public:
    static constexpr int minBits = 5;
    static constexpr int maxBits = 9; ///< with parity
    /// Largest part by which the true symbol rate may differ.
    static constexpr double tolerance = 0.03;

    struct Edge
    {
        double position; ///< samples
        bool isRising;
    };
    struct Character
    {
        /// Where a symbol's middle is, samples: of the start bit 0, of the first stop bit bits + 1.
        double middle(int symbol) const { return start + (symbol + 0.5) * period; }

        double start;  ///< the start edge, samples
        double period; ///< of a symbol, samples, as newer characters up to this one have it
        /// The stop bit is right, edges are between symbols, and so it was of most of the newest
        /// characters.
        bool isGood;
        std::vector<Edge> edges; ///< from the start edge to that before the stop bit
    };

    /// @param samplesPerSymbol  at least 2. From 4 on, edges are told well.
    /// @param bits  between start and stop bit, minBits to maxBits.
    CharacterClock(double samplesPerSymbol, int bits);

    /// The next sample, the first one at position 0. NaN and infinity count as the one before.
    void push(double sample);
    /// No more samples come. A character that is not complete is none.
    void finish();
    /// Those found since the last call, in order.
    std::vector<Character> takeCharacters();
    /// Before this position no more are found, nor symbols of them.
    std::int64_t known() const { return m_known; }

private:
    struct Levels
    {
        double low, high;
    };
    /// Takes edges for characters, of a line that rests at one of the levels.
    struct Decoder
    {
        void scan(const std::vector<Edge>& edges, double end, int bits,
                  std::vector<Character>& characters);
        bool isRight(const Character& character, int bits) const;
        void follow(const Character& character);

        bool restsHigh;
        double nominal;                  // samples of a symbol
        double period = nominal;         // as measured...
        double square = 1.0;             // ...from sums over edges of one direction, with...
        double crossed = nominal;        // ...those of former characters ever less
        double from = 0.0;               // where the next start edge may be
        std::optional<double> open = {}; // start edge of a character that goes on
        double trust = 0.5;              // part of the newest characters that are right
        double score = 0.0;
    };

    void work(std::size_t count);
    std::optional<Levels> levels();
    void findEdges(const Levels& levels, std::size_t count);

    int m_bits;
    std::size_t m_length; // samples that are worked on at a time...
    std::size_t m_margin; // ...and those after them that the levels are told by, too
    std::vector<double> m_samples;
    std::int64_t m_first = 0; // position of the first of them
    std::vector<Edge> m_edges;
    std::optional<Levels> m_levels;
    double m_distance = 0.0; // of levels that count
    int m_side = 0;          // of the middle the signal is on; 0: not known
    double m_before = 0.0;   // the sample before, against the levels
    std::optional<double> m_crossing;
    Decoder m_decoders[2];
    std::size_t m_used = 0; // decoder
    double m_last = 0.0;    // symbol of those found
    std::int64_t m_known = 0;
    std::vector<Character> m_characters;
};
