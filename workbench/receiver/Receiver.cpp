// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/Receiver.h"

#include "workbench/receiver/PlainPath.h"
#include "workbench/receiver/ReceivedPath.h"

Receiver::Receiver(const SignalFacts& input, const ChannelChoice& channel,
                   const ReceiverSettings& settings)
    : m_input(input)
{
    ReceiverSettings used = settings;
    if (used.isOn && !used.symbolRate)
        used.symbolRate = input.symbolRate;
    // A source that knows its symbols needs no receiver.
    if (used.isOn && !input.firstSymbol && used.check(input.sampleRate))
        m_path = std::make_unique<ReceivedPath>(input, channel, used);
    else
        m_path = std::make_unique<PlainPath>(input, channel, settings);
}

Receiver::~Receiver() = default;

const SignalFormat& Receiver::format() const { return m_path->format(); }

double Receiver::ratio() const { return format().sampleRate / m_input.sampleRate; }

void Receiver::process(std::int64_t position, const std::vector<double>& values,
                       std::vector<SignalBlock>& blocks)
{
    if (!m_isStarted || position != m_next) {
        const bool goesOn = m_isStarted && position > m_next;
        finish(blocks);
        m_path->reset(position, goesOn);
        m_isStarted = true;
    }
    m_path->process(values, blocks);
    m_next = position + static_cast<std::int64_t>(values.size() /
                                                  static_cast<std::size_t>(m_input.valueCount()));
}

void Receiver::finish(std::vector<SignalBlock>& blocks)
{
    if (m_isStarted)
        m_path->finish(blocks);
    m_isStarted = false;
}

void Receiver::reset() { m_isStarted = false; }

void Receiver::reuse(SignalBlock block) { m_path->reuse(std::move(block)); }
