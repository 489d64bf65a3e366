// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/PlainPath.h"

#include "workbench/receiver/Interpolation.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double sameRate = 1e-9;

void keepNewest(std::vector<double>& kept, const std::vector<double>& values)
{
    kept.insert(kept.end(), values.begin(), values.end());
    const auto most = static_cast<std::size_t>(2 * Interpolation::reach);
    if (kept.size() > most)
        kept.erase(kept.begin(), kept.end() - static_cast<std::ptrdiff_t>(most));
}

} // namespace

PlainPath::PlainPath(const SignalFacts& input, const ChannelChoice& channel,
                     const ReceiverSettings& settings)
    : SignalPath(input)
    , m_channel(channel)
    , m_first(static_cast<std::size_t>(channel.value & ~1))
    , m_hasQ(m_first + 1 < static_cast<std::size_t>(input.valueCount()))
    , m_bits(settings.characterBits.value_or(0))
{
    const auto& symbolRate = settings.symbolRate;
    m_format.sampleRate = input.sampleRate;
    m_format.hasQ = m_hasQ;
    const bool isKnown = !symbolRate && input.symbolRate && input.firstSymbol;
    const auto rate = symbolRate ? symbolRate : input.symbolRate;
    if (rate && *rate > 0.0) {
        const double perSymbol = input.sampleRate / *rate;
        const bool isSlow = perSymbol >= 1.0 - sameRate; // no more symbols than samples
        if (isKnown)
            m_clock = isSlow ? Clock::Known : Clock::None;
        else if (std::abs(perSymbol - 1.0) < sameRate)
            m_clock = Clock::EachSample;
        else if (perSymbol >= SymbolTiming::minSamplesPerSymbol &&
                 perSymbol <= SymbolTiming::maxSamplesPerSymbol)
            m_clock = m_bits > 0 ? Clock::Characters : Clock::Recovered;
        if (m_clock != Clock::None)
            m_format.samplesPerSymbol = perSymbol;
    }
    m_firstSymbol = isKnown ? *input.firstSymbol : 0.0;
    m_format.hasCharacters = m_clock == Clock::Characters;
    m_format.hasDecisions = m_clock != Clock::None && m_input.isComplex;
    PlainPath::reset(0, false);
}

void PlainPath::reset(std::int64_t position, bool /*goesOn*/)
{
    m_start = m_known = position;
    m_waiting = {};
    m_waiting.position = position;
    for (auto& before : m_before)
        before.clear();
    m_knot.reset();
    m_timing.reset();
    if (m_clock == Clock::Recovered)
        m_timing = std::make_unique<SymbolTiming>(m_format.samplesPerSymbol);
    m_characters.reset();
    if (m_clock == Clock::Characters)
        m_characters = std::make_unique<CharacterClock>(m_format.samplesPerSymbol, m_bits);
    // The first symbol whose middle is here or later.
    m_nextSymbol = 0.0;
    if (m_clock == Clock::Known)
        m_nextSymbol = std::max(
            std::ceil((static_cast<double>(position) - m_firstSymbol) / m_format.samplesPerSymbol),
            0.0);
    m_isAfterGap = true;
}

void PlainPath::process(const std::vector<double>& values, std::vector<SignalBlock>& blocks)
{
    add(values);
    findSymbols(false);
    passOn(m_known, blocks);
}

void PlainPath::finish(std::vector<SignalBlock>& blocks)
{
    if (m_timing)
        m_timing->finish();
    if (m_characters)
        m_characters->finish();
    findSymbols(true);
    passOn(m_waiting.end(), blocks);
}

void PlainPath::add(const std::vector<double>& values)
{
    const auto width = static_cast<std::size_t>(m_input.valueCount());
    for (std::size_t k = 0; k + width <= values.size(); k += width) {
        m_waiting.samples.push_back(m_channel.of(&values[k]));
        m_waiting.i.push_back(values[k + m_first]);
        if (m_hasQ)
            m_waiting.q.push_back(values[k + m_first + 1]);
        if (m_timing)
            m_timing->push(m_waiting.samples.back());
        if (m_characters)
            m_characters->push(m_waiting.samples.back());
    }
}

void PlainPath::findSymbols(bool isEnd)
{
    if (m_clock == Clock::Recovered) {
        findRecovered();
        return;
    }
    if (m_clock == Clock::Characters) {
        findCharacters();
        return;
    }
    // A symbol between samples needs the samples after it, even across the end of a block.
    const bool isBetween = m_clock == Clock::Known && !isEnd;
    const std::int64_t end = m_waiting.end() - (isBetween ? Interpolation::reach : 0);
    m_known = std::max(m_known, end);
    if (m_clock == Clock::EachSample) {
        for (auto position = static_cast<std::int64_t>(m_waiting.position); position < end;
             ++position)
            addSymbol(static_cast<double>(position), SymbolState::Good);
    } else if (m_clock == Clock::Known) {
        for (;; ++m_nextSymbol) {
            const double position = m_firstSymbol + m_nextSymbol * m_format.samplesPerSymbol;
            if (position >= static_cast<double>(end))
                return;
            addSymbol(position, SymbolState::Good);
        }
    }
}

void PlainPath::findRecovered()
{
    for (const SymbolKnot& knot : m_timing->takeKnots()) {
        if (!m_knot) {
            m_nextSymbol = std::ceil(knot.symbol);
        } else if (knot.position > m_knot->position && knot.symbol > m_knot->symbol) {
            const double perSample =
                (knot.symbol - m_knot->symbol) / (knot.position - m_knot->position);
            const bool isLocked = knot.isLocked && m_knot->isLocked;
            for (; m_nextSymbol < knot.symbol; ++m_nextSymbol)
                addSymbol(static_cast<double>(m_start) + m_knot->position +
                              (m_nextSymbol - m_knot->symbol) / perSample,
                          isLocked ? SymbolState::Good : SymbolState::Unlocked);
            if (knot.measured && knot.isLocked)
                m_waiting.clock.push_back(
                    {(static_cast<double>(m_start) + knot.position) / m_input.sampleRate,
                     *knot.measured});
            m_known = m_start + static_cast<std::int64_t>(std::floor(knot.position));
        } else {
            continue;
        }
        m_knot = knot;
    }
}

void PlainPath::findCharacters()
{
    for (const CharacterClock::Character& character : m_characters->takeCharacters()) {
        for (int symbol = 0; symbol < m_bits + 2; ++symbol) // with start and stop bit
            addSymbol(static_cast<double>(m_start) + character.middle(symbol),
                      character.isGood ? SymbolState::Good : SymbolState::Unlocked);
        if (character.isGood)
            measureClock(character);
    }
    m_known = m_start + m_characters->known();
}

/// Rising and falling edges count separately, because a wrong middle of the levels shifts them
/// against one another.
void PlainPath::measureClock(const CharacterClock::Character& character)
{
    constexpr double apart = 1000.0; // symbols, a distance that keeps both groups apart
    for (const bool isRising : {false, true}) {
        for (const CharacterClock::Edge& edge : character.edges) {
            if (edge.isRising == isRising)
                m_waiting.clock.push_back(
                    {(static_cast<double>(m_start) + edge.position) / m_input.sampleRate,
                     std::round((edge.position - character.start) / character.period) - 0.5 +
                         (isRising ? apart : 0.0)});
        }
    }
}

double PlainPath::pairAt(const std::vector<double>& values, double position) const
{
    const auto& before = m_before[&values == &m_waiting.q ? 1 : 0];
    const auto behind = static_cast<std::ptrdiff_t>(before.size());
    const auto count = static_cast<std::ptrdiff_t>(values.size());
    const auto value = [&](std::ptrdiff_t index) {
        index = std::clamp(index, -behind, count - 1);
        return index < 0 ? before[static_cast<std::size_t>(behind + index)]
                         : values[static_cast<std::size_t>(index)];
    };
    const double place = position - static_cast<double>(m_waiting.position);
    if (place == std::floor(place))
        return value(static_cast<std::ptrdiff_t>(place));
    return Interpolation::at(place, [&](std::ptrdiff_t index) { return value(index); });
}

void PlainPath::addSymbol(double position, SymbolState state)
{
    if (position < static_cast<double>(m_waiting.position))
        return;
    Symbol symbol;
    symbol.position = position;
    symbol.time = position / m_input.sampleRate;
    symbol.value = {static_cast<float>(pairAt(m_waiting.i, position)),
                    m_hasQ ? static_cast<float>(pairAt(m_waiting.q, position)) : 0.0F};
    symbol.state = state;
    m_waiting.symbols.push_back(symbol);
}

/// Passes on the samples before a position, with the symbols in them.
void PlainPath::passOn(std::int64_t end, std::vector<SignalBlock>& blocks)
{
    const auto count = static_cast<std::ptrdiff_t>(std::clamp<std::int64_t>(
        end - m_waiting.position, 0, m_waiting.end() - m_waiting.position));
    if (count == 0)
        return;
    SignalBlock block = makeBlock();
    block.position = m_waiting.position;
    block.time = static_cast<double>(block.position) / m_input.sampleRate;
    const auto move = [count](auto& from, auto& to) {
        const auto last = from.begin() + std::min(count, static_cast<std::ptrdiff_t>(from.size()));
        to.assign(from.begin(), last);
        from.erase(from.begin(), last);
    };
    move(m_waiting.samples, block.samples);
    move(m_waiting.i, block.i);
    move(m_waiting.q, block.q);
    const auto later =
        std::find_if(m_waiting.symbols.begin(), m_waiting.symbols.end(), [&](const Symbol& symbol) {
            return symbol.position >= static_cast<double>(block.end());
        });
    block.symbols.assign(m_waiting.symbols.begin(), later);
    m_waiting.symbols.erase(m_waiting.symbols.begin(), later);
    block.clock.swap(m_waiting.clock);
    keepNewest(m_before[0], block.i);
    keepNewest(m_before[1], block.q);
    m_waiting.position = block.end();
    append(std::move(block), blocks);
}
