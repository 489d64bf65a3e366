// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Plays small signals, and changes everything that can be changed of them, in any order.
#include "AnySettings.h"
#include "workbench/feed/SignalFeed.h"

#include <QCoreApplication>

#include <functional>

namespace {

constexpr int mostSteps = 60;

/// A signal of any kind whose samples are few numbers over and over.
class AnySource : public SignalSource
{
public:
    explicit AnySource(Bytes& input)
        : m_isLive(input.below(4) == 0)
    {
        m_facts.isLive = m_isLive;
        m_facts.isComplex = input.flag();
        m_canSeek = input.below(8) > 0;
        m_knowsCount = input.flag();
        m_facts.channelCount = static_cast<int>(1 + input.below(3));
        m_count = 1 + input.take<std::uint16_t>() % 30000;
        m_mostRead = input.oneOf({std::size_t{1} << 20, std::size_t{777}, std::size_t{5}});
        m_facts.sampleRate = m_isLive ? 1e9 : anyRate(input); // what is live is held back to it
        if (input.flag())
            m_facts.symbolRate = m_facts.sampleRate / anySamplesPerSymbol(input);
        if (m_facts.symbolRate && input.below(4) == 0)
            m_facts.firstSymbol = 0.5 * input.below(200);
        if (input.below(4) == 0)
            m_facts.frameLength = 1.0 + 0.25 * input.take<std::uint16_t>();
        for (double& value : m_values)
            value = input.number();
    }
    std::optional<std::int64_t> sampleCount() const override
    {
        return m_knowsCount && !m_isLive ? std::optional(m_count) : std::nullopt;
    }
    bool hasEnded() const override { return !m_isLive || m_position >= m_count; }
    std::int64_t position() const override { return m_position; }
    std::size_t read(std::vector<double>& block, std::size_t count) override
    {
        const std::int64_t left = std::max<std::int64_t>(m_count - m_position, 0);
        count = std::min({count, m_mostRead, static_cast<std::size_t>(left)});
        block.resize(count * static_cast<std::size_t>(m_facts.valueCount()));
        for (double& value : block)
            value = m_values[m_nextValue++ % std::size(m_values)];
        m_position += static_cast<std::int64_t>(count);
        return count;
    }
    bool seek(std::int64_t position) override
    {
        const bool isPossible = m_canSeek && !m_isLive && position >= 0 && position <= m_count;
        m_position = isPossible ? position : m_position;
        return isPossible;
    }

private:
    const bool m_isLive;
    bool m_canSeek, m_knowsCount;
    std::int64_t m_count;
    std::size_t m_mostRead;
    double m_values[7] = {};
    std::size_t m_nextValue = 0;
    std::int64_t m_position = 0;
};

double time(Bytes& input, const SignalFeed& feed)
{
    return input.flag() ? input.number() : input.take<std::int16_t>() / feed.source().sampleRate;
}

void play(Bytes& input, SignalFeed& feed, std::int64_t& elapsed)
{
    Transport& transport = feed.transport();
    const auto advance = [&] {
        elapsed += input.take<std::uint16_t>() % 500;
        transport.advance(elapsed);
    };
    const std::function<void()> ways[] = {
        [&] {
            transport.play();
            elapsed = 0;
        },
        [&] { transport.pause(); },
        [&] { transport.seek(time(input, feed)); },
        [&] { transport.setSpeed(input.flag() ? Transport::fastest : input.number()); },
        [&] { transport.setRepeat(input.flag()); },
        [&] { // as the options have it: how long, not until when
            if (const double seconds = std::abs(time(input, feed)); seconds < 1e12)
                transport.playThrough(seconds);
        },
        advance,
        advance};
    input.oneOf(ways)();
}

void change(Bytes& input, SignalFeed& feed)
{
    const double number = input.number();
    const double plain = std::isnan(number) ? 0.0 : number;
    const auto rate = [&] { return input.flag() ? std::optional(anyRate(input)) : std::nullopt; };
    const std::function<void()> ways[] = {
        [&] { feed.setReceiver(anySettings(input, feed.source().sampleRate)); },
        [&] { feed.setChannel(anyChannel(input, 8)); },
        [&] { feed.setSymbolRate(rate()); },
        [&] { feed.setSpan(plain); },
        [&] {
            if (const double from = time(input, feed), to = time(input, feed);
                std::isfinite(from) && std::isfinite(to))
                feed.fixGate(from, to);
        },
        [&] { feed.releaseGate(); },
        [&] {
            feed.fitLevels();
            feed.time().followLevels(0.0);
            feed.eye().followLevels(0.0);
            feed.iq().followLevels(0.0);
        },
        [&] { feed.showGate(); },
        [&] { feed.changeSource([&](SignalSource& source) { source.seek(input.below(200)); }); },
        [&] { feed.eye().setSymbolCount(static_cast<int>(input.take<std::int32_t>())); },
        [&] { feed.eye().setBandwidth(plain); },
        [&] { feed.iq().setTrajectory(input.flag()); },
        [&] { feed.showNothing(); },
        [&] {
            auto source = std::make_unique<AnySource>(input);
            feed.open(std::move(source), 0, rate());
        }};
    input.oneOf(ways)();
}

void check(const SignalFeed& feed)
{
    const Gate& gate = feed.gate();
    std::size_t count = 0;
    for (const BlockPart& part : gate.parts()) {
        require(part.count > 0 && part.first + part.count <= part.block->count(), "a part");
        count += part.count;
    }
    require(count == gate.sampleCount() && count <= Gate::maxSampleCount, "the gate");
    std::size_t inBlocks = 0;
    for (const SignalBlockPtr& block : gate.blocks())
        inBlocks += block->count();
    require(gate.isFixed() ? inBlocks >= count : inBlocks == count, "the gate's blocks");
    const Transport& transport = feed.transport();
    require(std::isfinite(transport.time()) && transport.position() >= 0, "the present time");
    require(transport.periodLength() > 0.0 &&
                transport.periodLength() <= Transport::maxPeriodLength,
            "a period");
    require(std::isfinite(feed.span()) && feed.segmentLength() >= 1.0, "what is shown");
    feed.reports();
    feed.leftOutPart();
}

} // namespace

void attackFeed(Bytes& input)
{
    static int count = 1;
    static char* name[] = {const_cast<char*>("fuzz")};
    static const QCoreApplication* application = // for timers
        QCoreApplication::instance() ? nullptr : new QCoreApplication(count, name);
    static_cast<void>(application);
    SignalFeed feed;
    feed.open(std::make_unique<AnySource>(input), 0, std::nullopt);
    std::int64_t elapsed = 0;
    for (int step = 0; step < mostSteps && !input.isEmpty(); ++step) {
        if (input.flag())
            play(input, feed, elapsed);
        else
            change(input, feed);
        check(feed);
    }
}
