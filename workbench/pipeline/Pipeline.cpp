// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/pipeline/Pipeline.h"

#include "workbench/sources/Trouble.h"

#include <algorithm>
#include <new>
#include <utility>

namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

constexpr double blockSeconds = 0.01;
constexpr double minBlock = 256.0; // samples: slow signals are not read one by one
constexpr double maxBlock = 16384.0;
constexpr std::size_t inputBlocks = 2; // of a recording that wait to be received
constexpr double liveSeconds = 0.5;    // that may wait of a live signal
constexpr double maxLive = 4e6;        // samples of them
constexpr std::size_t roomPart = 4;    // of them, that wait when no more are left out
constexpr double paceTolerance = 1.02; // by which a device's clock may be faster than ours
constexpr double burstSeconds = 0.25;  // that may come at once
constexpr auto longTime = std::chrono::hours(1);

/// Holds a live signal back to its rate. What comes late need not be made up for later.
class Pace
{
public:
    explicit Pace(double sampleRate)
        : m_sampleRate(sampleRate)
    {}
    /// How long to wait after so many samples more, s; 0 or less: not at all.
    double early(std::size_t count)
    {
        const Seconds elapsed = Clock::now() - m_start;
        m_taken = std::max(m_taken + static_cast<double>(count) / m_sampleRate,
                           paceTolerance * elapsed.count());
        return m_taken / paceTolerance - elapsed.count() - burstSeconds;
    }

private:
    double m_sampleRate;
    Clock::time_point m_start = Clock::now();
    double m_taken = 0.0; // s of signal
};

std::size_t lengthOf(double samples, double least, double most)
{
    return static_cast<std::size_t>(std::clamp(samples, least, most));
}

} // namespace

Pipeline::Pipeline(std::unique_ptr<SignalSource> source, const ChannelChoice& channel,
                   const ReceiverSettings& settings)
    : m_source(std::move(source))
    , m_facts(m_source->facts())
    , m_blockLength(lengthOf(blockSeconds * m_facts.sampleRate, minBlock, maxBlock))
{
    m_inputLimit = m_facts.isLive ? lengthOf(liveSeconds * m_facts.sampleRate, 1.0, maxLive)
                                  : inputBlocks * m_blockLength;
    m_input.setLimit(m_inputLimit);
    m_output.setLimit(m_blockLength);
    build(channel, settings);
    start();
}

Pipeline::~Pipeline() { stop(); }

std::optional<std::int64_t> Pipeline::sampleCount() const
{
    const std::int64_t count = m_sampleCount;
    return count < 0 ? std::nullopt : std::optional(count);
}

QString Pipeline::trouble() const
{
    return m_lacksMemory ? Trouble::noMemory() : m_source->trouble();
}

double Pipeline::leftOutPart() const
{
    const auto leftOut = static_cast<double>(m_leftOutCount);
    return leftOut > 0.0 ? leftOut / (leftOut + static_cast<double>(m_takenCount)) : 0.0;
}

void Pipeline::build(const ChannelChoice& channel, const ReceiverSettings& settings)
{
    m_receiver = std::make_unique<Receiver>(m_facts, channel, settings);
    m_format = m_receiver->format();
}

void Pipeline::start()
{
    m_sampleCount = m_source->sampleCount().value_or(-1);
    m_isStopping = false;
    m_isLeavingOut = false;
    countAnew();
    m_lacksMemory = false;
    m_input.open();
    m_output.open();
    m_reading = thread(&Pipeline::read, &Pipeline::endInput);
    m_receiving = thread(&Pipeline::receive, &Pipeline::endOutput);
}

/// @param end  what is done instead of the rest of the work where there is no memory for that.
std::thread Pipeline::thread(void (Pipeline::*work)(), void (Pipeline::*end)())
{
    return std::thread([this, work, end] {
        try {
            (this->*work)();
        } catch (const std::bad_alloc&) {
            m_lacksMemory = true;
            (this->*end)();
        }
    });
}

void Pipeline::endInput() { m_input.finish(); }

void Pipeline::endOutput()
{
    m_input.close(); // or the reading waits for room
    m_output.finish();
}

void Pipeline::stop()
{
    m_isStopping = true;
    m_input.close();
    m_output.close();
    m_reading.join();
    m_receiving.join();
}

void Pipeline::configure(const ChannelChoice& channel, const ReceiverSettings& settings)
{
    stop();
    build(channel, settings);
    start();
}

void Pipeline::change(const std::function<void(SignalSource&)>& work)
{
    stop();
    work(*m_source);
    m_receiver->reset();
    start();
}

bool Pipeline::seek(std::int64_t position)
{
    if (m_facts.isLive)
        return false;
    stop();
    const bool canSeek = m_source->seek(position);
    m_receiver->reset();
    start();
    return canSeek;
}

void Pipeline::setDiscarding(bool discarding)
{
    m_isDiscarding = discarding;
    if (discarding) {
        m_input.clear();
        m_output.clear();
    } else {
        countAnew();
    }
}

void Pipeline::countAnew()
{
    m_gapCount = 0;
    m_takenCount = 0;
    m_leftOutCount = 0;
}

void Pipeline::read()
{
    Pace pace(m_facts.sampleRate);
    std::int64_t expected = m_source->position();
    while (!m_isStopping && !m_lacksMemory) {
        Input input{0, {}};
        const bool isWanted = !m_facts.isLive || hasRoom();
        const std::size_t count = isWanted ? m_source->read(input.values, m_blockLength)
                                           : m_source->discard(m_blockLength);
        m_sampleCount = m_source->sampleCount().value_or(-1);
        if (count > 0) {
            input.position = m_source->position() - static_cast<std::int64_t>(count);
            const std::int64_t lost =
                input.position - std::exchange(expected, m_source->position());
            hand(std::move(input), count, lost);
        }
        if (count == 0 && m_source->hasEnded())
            break;
        if (!m_facts.isLive)
            continue;
        const Clock::time_point end =
            Clock::now() + std::chrono::duration_cast<Clock::duration>(Seconds(pace.early(count)));
        while (!m_isStopping && Clock::now() < end) {
            constexpr std::chrono::milliseconds slice(5);
            std::this_thread::sleep_for(std::min<Clock::duration>(slice, end - Clock::now()));
        }
    }
    m_input.finish();
}

/// Whether the next block of a live signal can be received.
bool Pipeline::hasRoom()
{
    if (m_isDiscarding)
        return false;
    const std::size_t waiting = m_input.waiting();
    const bool wasLeavingOut = m_isLeavingOut;
    m_isLeavingOut = waiting >= (wasLeavingOut ? m_inputLimit / roomPart + 1 : m_inputLimit);
    m_gapCount += m_isLeavingOut && !wasLeavingOut ? 1 : 0;
    return !m_isLeavingOut;
}

/// @param lost  samples just before it.
void Pipeline::hand(Input input, std::size_t count, std::int64_t lost)
{
    const bool hasValues = !input.values.empty();
    if (m_facts.isLive && !m_isDiscarding) {
        m_gapCount += lost > 0 ? 1 : 0;
        m_leftOutCount += lost;
        (hasValues ? m_takenCount : m_leftOutCount) += static_cast<std::int64_t>(count);
    }
    if (hasValues)
        m_input.push(std::move(input), count);
}

void Pipeline::receive()
{
    std::vector<SignalBlock> blocks;
    while (!m_input.hasEnded()) {
        const auto input = m_input.pop(longTime);
        if (m_isStopping)
            return;
        if (!input)
            continue;
        m_receiver->process(input->position, input->values, blocks);
        if (!pass(blocks))
            return;
    }
    m_receiver->finish(blocks);
    if (pass(blocks))
        m_output.finish();
}

bool Pipeline::pass(std::vector<SignalBlock>& blocks)
{
    bool isOpen = true;
    for (SignalBlock& block : blocks) {
        const std::size_t count = block.count();
        if (count > 0 && !m_isDiscarding)
            isOpen = m_output.push(std::make_shared<SignalBlock>(std::move(block)), count);
    }
    blocks.clear();
    return isOpen;
}

SignalBlockPtr Pipeline::take(std::chrono::milliseconds patience)
{
    return m_output.pop(patience).value_or(nullptr);
}
