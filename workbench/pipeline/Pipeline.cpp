// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/pipeline/Pipeline.h"

#include "workbench/sources/Trouble.h"

#include <algorithm>
#include <new>
#include <utility>

namespace {

constexpr double blockSeconds = 0.01;
constexpr double minBlock = 256.0; // samples: slow signals are not read sample by sample
constexpr double maxBlock = 16384.0;
constexpr std::size_t inputBlocks = 16; // of a recording that may wait to be received...
constexpr std::size_t fewBlocks = 4;    // ...and with which more are read, as waking costs much
constexpr auto longTime = std::chrono::hours(1);

} // namespace

Pipeline::Pipeline(std::unique_ptr<SignalSource> source, const ChannelChoice& channel,
                   const ReceiverSettings& settings)
    : m_source(std::move(source))
    , m_facts(m_source->facts())
    , m_intake(m_facts.sampleRate)
    , m_blockLength(static_cast<std::size_t>(
          std::clamp(blockSeconds * m_facts.sampleRate, minBlock, maxBlock)))
{
    if (m_facts.isLive)
        m_input.setLimit(m_intake.limit());
    else
        m_input.setLimit(inputBlocks * m_blockLength, fewBlocks * m_blockLength);
    m_usedValues.setLimit(inputBlocks);
    setQueueLength(m_blockLength);
    build(channel, settings);
    start();
}

Pipeline::~Pipeline() { stop(); }

void Pipeline::setQueueLength(std::size_t samples)
{
    // A recording is received in few runs, as waking a thread costs much.
    if (m_facts.isLive)
        m_output.setLimit(samples);
    else
        m_output.setLimit(samples, samples / 2);
}

std::optional<double> Pipeline::length() const
{
    const std::int64_t count = m_sampleCount;
    return count < 0 ? std::nullopt
                     : std::optional(static_cast<double>(count) / m_facts.sampleRate);
}

std::optional<Message> Pipeline::trouble() const
{
    return m_lacksMemory ? Trouble::noMemory() : m_source->trouble();
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
    m_intake.start();
    m_lacksMemory = false;
    m_input.open();
    m_output.open();
    m_reading = thread(&Pipeline::read, &Pipeline::endInput);
    m_receiving = thread(&Pipeline::receive, &Pipeline::endOutput);
}

/// @param end  done instead of the rest of the work when there is not enough memory.
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
    m_input.close(); // or the reading thread would wait for room
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
        m_intake.countAnew();
    }
}

void Pipeline::read()
{
    std::int64_t expected = m_source->position();
    while (!m_isStopping && !m_lacksMemory) {
        Input input{0, {}};
        const bool isWanted =
            !m_facts.isLive || (!m_isDiscarding && m_intake.hasRoom(m_input.waiting()));
        if (isWanted)
            input.values =
                m_usedValues.pop(std::chrono::milliseconds(0)).value_or(std::vector<double>());
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
        if (m_facts.isLive)
            m_intake.holdBack(count, m_isStopping);
    }
    m_input.finish();
}

/// @param lost  number of samples that were lost just before it.
void Pipeline::hand(Input input, std::size_t count, std::int64_t lost)
{
    const bool hasValues = !input.values.empty();
    if (m_facts.isLive && !m_isDiscarding)
        m_intake.count(count, hasValues, lost);
    if (hasValues)
        m_input.push(std::move(input), count);
}

void Pipeline::receive()
{
    std::vector<SignalBlock> blocks;
    while (!m_input.hasEnded()) {
        auto input = m_input.pop(longTime);
        if (m_isStopping)
            return;
        if (!input)
            continue;
        while (std::optional<SignalBlock> spare = m_spare->take())
            m_receiver->reuse(std::move(*spare));
        m_receiver->process(input->position, input->values, blocks);
        m_usedValues.tryPush(std::move(input->values), 1);
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
            isOpen = m_output.push(m_spare->share(std::move(block)), count);
    }
    blocks.clear();
    return isOpen;
}
