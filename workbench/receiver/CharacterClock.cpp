// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/CharacterClock.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double workSymbols = 256.0;
constexpr double hysteresis = 0.25; // of half the levels' distance, about the middle
// Distance of two levels against the deviation about them: noise has 2.65, edges that last a whole
// symbol, as of a sine, leave 4.1.
constexpr double leastDistance = 3.3;
constexpr double leastPart = 0.5;     // of the former distance: less is hum at rest...
constexpr double forget = 0.9;        // ...unless it lasts: part of the distance that is kept
constexpr double mostRest = 0.75;     // of the levels' distance: what noise at rest may span
constexpr double mostOff = 0.35;      // symbols, by which an edge may miss its place
constexpr double memory = 1.0 / 64.0; // of the period, characters
constexpr double trustPart = 1.0 / 8.0;
constexpr double leastTrust = 0.5;
constexpr double mostSample = 1e6; // full scale is 1: far beyond it is no signal

} // namespace

CharacterClock::CharacterClock(double samplesPerSymbol, int bits)
    : m_bits(bits)
    , m_length(static_cast<std::size_t>(workSymbols * samplesPerSymbol))
    , m_margin(static_cast<std::size_t>((bits + 3) * samplesPerSymbol))
    , m_decoders{{true, samplesPerSymbol}, {false, samplesPerSymbol}}
{}

void CharacterClock::push(double sample)
{
    if (!std::isfinite(sample))
        sample = m_samples.empty() ? 0.0 : m_samples.back();
    m_samples.push_back(std::clamp(sample, -mostSample, mostSample));
    if (m_samples.size() >= m_length + m_margin)
        work(m_length);
}

void CharacterClock::finish()
{
    work(m_samples.size());
    m_known = m_first;
}

std::vector<CharacterClock::Character> CharacterClock::takeCharacters()
{
    return std::exchange(m_characters, {});
}

/// Finds the characters that end within the first samples, and drops these samples.
void CharacterClock::work(std::size_t count)
{
    if (const auto found = levels()) {
        findEdges(*found, count);
    } else {
        m_side = 0;
        m_crossing.reset();
        m_edges.clear();
    }
    m_first += static_cast<std::int64_t>(count);
    m_samples.erase(m_samples.begin(), m_samples.begin() + static_cast<std::ptrdiff_t>(count));
    const auto end = static_cast<double>(m_first);
    std::vector<Character> found[2];
    double needed = end;
    for (std::size_t k = 0; k < 2; ++k) {
        m_decoders[k].scan(m_edges, end, m_bits, found[k]);
        needed = std::min(needed, m_decoders[k].open.value_or(end));
    }
    if (m_decoders[1 - m_used].score > m_decoders[m_used].score)
        m_used = 1 - m_used;
    for (Character& character : found[m_used]) {
        if (character.start < m_last) // overlaps one that the other decoder found
            continue;
        m_last = character.middle(m_bits + 1);
        m_characters.push_back(std::move(character));
    }
    m_known = static_cast<std::int64_t>(std::floor(needed));
    // The last edge tells how long the line has rested.
    const auto used = std::find_if(m_edges.begin(), m_edges.end(),
                                   [needed](const Edge& edge) { return edge.position >= needed; });
    if (used - m_edges.begin() > 1)
        m_edges.erase(m_edges.begin(), used - 1);
}

/// The two levels of the samples; none when they are noise.
std::optional<CharacterClock::Levels> CharacterClock::levels()
{
    if (m_samples.empty())
        return std::nullopt;
    std::vector<double> sorted = m_samples;
    const auto [lowest, highest] = std::minmax_element(sorted.begin(), sorted.end());
    const double range = *highest - *lowest;
    double middle = *lowest + 0.5 * range;
    const double offset = middle; // taken off, as squares are rounded
    double distance = 0.0, variance = 0.0;
    constexpr int mostTries = 30;
    for (int k = 0; k < mostTries && range > 0.0;
         ++k) { // means of both sides, until these do not change
        double sums[2] = {}, squares[2] = {}, counts[2] = {};
        for (const double sample : sorted) {
            const std::size_t side = sample > middle ? 1 : 0;
            sums[side] += sample - offset;
            squares[side] += (sample - offset) * (sample - offset);
            counts[side] += 1.0;
        }
        const double low = sums[0] / counts[0], high = sums[1] / counts[1];
        distance = high - low;
        variance =
            (squares[0] - sums[0] * low + squares[1] - sums[1] * high) / (counts[0] + counts[1]);
        const double next = offset + 0.5 * (low + high);
        if (std::abs(next - middle) < 1e-6 * range)
            break;
        middle = next;
    }
    const bool areTwo = distance > leastDistance * std::sqrt(std::max(variance, 0.0));
    if (areTwo && distance >= leastPart * m_distance) {
        // Medians ignore the edges, of which the rarer level has more.
        const auto above = std::partition(sorted.begin(), sorted.end(),
                                          [middle](double sample) { return sample <= middle; });
        const auto median = [](auto first, auto last) {
            std::nth_element(first, first + (last - first) / 2, last);
            return *(first + (last - first) / 2);
        };
        m_levels = {median(sorted.begin(), above), median(above, sorted.end())};
        m_distance = m_levels->high - m_levels->low;
        return m_levels;
    }
    if (areTwo)
        m_distance *= forget;
    if (!m_levels || (!areTwo && range > mostRest * (m_levels->high - m_levels->low)))
        return std::nullopt;
    return m_levels;
}

void CharacterClock::findEdges(const Levels& levels, std::size_t count)
{
    const double middle = 0.5 * (levels.low + levels.high);
    const double half = 0.5 * (levels.high - levels.low);
    for (std::size_t k = 0; k < count; ++k) {
        const double value = (m_samples[k] - middle) / half;
        const auto position = static_cast<double>(m_first) + static_cast<double>(k);
        if (m_side * m_before >= 0.0 && m_side * value < 0.0)
            m_crossing = position - value / (value - m_before);
        if (std::abs(value) > hysteresis) {
            const int side = value > 0.0 ? 1 : -1;
            if (side == -m_side && m_crossing)
                m_edges.push_back({*m_crossing, side > 0});
            m_side = side;
        }
        m_before = value;
    }
}

/// Takes the characters that end before a position.
void CharacterClock::Decoder::scan(const std::vector<Edge>& edges, double end, int bits,
                                   std::vector<Character>& characters)
{
    constexpr double scoreMemory = 0.5;
    score *= scoreMemory;
    open.reset();
    const auto starts = [this](const Edge& edge) {
        return edge.position >= from && edge.isRising != restsHigh;
    };
    for (auto edge = edges.begin();;) {
        edge = std::find_if(edge, edges.end(), starts);
        if (edge == edges.end())
            return;
        const double start = edge->position;
        const double stop = start + (bits + 1.5) * period;
        if (stop + 0.5 * period > end) {
            open = start;
            return;
        }
        Character character{start, period, false, {*edge}};
        for (auto next = edge + 1; next != edges.end() && next->position < stop; ++next)
            character.edges.push_back(*next);
        if (character.edges.size() > 1 && character.edges[1].position < start + 0.5 * period) {
            from = character.edges[1].position; // a glitch
            continue;
        }
        from = stop;
        const bool isRight = this->isRight(character, bits);
        const bool hasRested =
            edge != edges.begin() && start - (edge - 1)->position > (bits + 2) * period;
        score += (isRight ? 1.0 : -1.0) + (hasRested ? 1.0 : 0.0);
        trust += trustPart * ((isRight ? 1.0 : 0.0) - trust);
        if (isRight)
            follow(character);
        character.period = period;
        character.isGood = isRight && trust >= leastTrust;
        characters.push_back(std::move(character));
    }
}

bool CharacterClock::Decoder::isRight(const Character& character, int bits) const
{
    double before = -1.0;
    for (const Edge& edge : character.edges) {
        const double place = (edge.position - character.start) / period;
        const double whole = std::round(place);
        if (std::abs(place - whole) > mostOff || whole <= before || whole > bits + 1)
            return false;
        before = whole;
    }
    return character.edges.back().isRising == restsHigh;
}

/// Measures the period from rising and falling edges separately, because a wrong middle of the
/// levels shifts them against one another.
void CharacterClock::Decoder::follow(const Character& character)
{
    square *= 1.0 - memory;
    crossed *= 1.0 - memory;
    for (const bool isRising : {false, true}) {
        double count = 0.0, places = 0.0, times = 0.0, squares = 0.0, products = 0.0;
        for (const Edge& edge : character.edges) {
            if (edge.isRising != isRising)
                continue;
            const double time = edge.position - character.start;
            const double place = std::round(time / period);
            count += 1.0;
            places += place;
            times += time;
            squares += place * place;
            products += place * time;
        }
        if (count > 1.0) {
            square += squares - places * places / count;
            crossed += products - places * times / count;
        }
    }
    period = std::clamp(crossed / square, nominal * (1.0 - tolerance), nominal * (1.0 + tolerance));
}
