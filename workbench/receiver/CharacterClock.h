// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

/// Finds the characters of an asynchronous serial line, which may be out of step with one another:
/// a start bit, some bits, and at least one stop bit at the level of the resting line.
///
/// Two levels are told apart over 256 symbols. An edge is where a straight line between samples
/// crosses their middle, if the signal then leaves a hysteresis around it. Both levels are tried as
/// that of the resting line; the one with more correct characters and longer rests is taken.
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
        /// Position of the middle of a symbol, samples: 0 is the start bit, bits + 1 the first stop
        /// bit.
        double middle(int symbol) const { return start + (symbol + 0.5) * period; }

        double start;  ///< the start edge, samples
        double period; ///< of a symbol, samples, measured over this and recent characters
        /// Whether the stop bit is right and edges are between symbols, here and in most of the
        /// recent characters.
        bool isGood;
        std::vector<Edge> edges; ///< from the start edge to that before the stop bit
    };

    /// @param samplesPerSymbol  at least 2; from 4 on, edges are measured well.
    /// @param bits  between start and stop bit, minBits to maxBits.
    CharacterClock(double samplesPerSymbol, int bits);

    /// Takes the next sample, the first one at position 0. NaN and infinity count as the sample
    /// before.
    void push(double sample);
    /// Ends the signal. An incomplete character does not count.
    void finish();
    /// The characters found since the last call, in order.
    std::vector<Character> takeCharacters();
    /// No more characters, or symbols of them, are found before this position.
    std::int64_t known() const { return m_known; }

private:
    struct Levels
    {
        double low, high;
    };
    /// Decodes edges into characters, for a line that rests at one of the levels.
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
        double crossed = nominal;        // ...those of former characters, which count less and less
        double from = 0.0;               // earliest position of the next start edge
        std::optional<double> open = {}; // start edge of the open character
        double trust = 0.5;              // part of the newest characters that are right
        double score = 0.0;
    };

    void work(std::size_t count);
    std::optional<Levels> levels();
    void findEdges(const Levels& levels, std::size_t count);

    int m_bits;
    std::size_t m_length; // samples that are processed at a time...
    std::size_t m_margin; // ...and samples after them that also tell the levels
    std::vector<double> m_samples;
    std::int64_t m_first = 0; // position of the first of them
    std::vector<Edge> m_edges;
    std::optional<Levels> m_levels;
    double m_distance = 0.0; // of levels that count
    int m_side = 0;          // side of the middle on which the signal is; 0: not known
    double m_before = 0.0;   // the sample before, against the levels
    std::optional<double> m_crossing;
    Decoder m_decoders[2];
    std::size_t m_used = 0; // the decoder whose characters count
    double m_last = 0.0;    // symbol of those found
    std::int64_t m_known = 0;
    std::vector<Character> m_characters;
};
