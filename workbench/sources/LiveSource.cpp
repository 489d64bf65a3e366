// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/LiveSource.h"

#include "workbench/sources/PlainText.h"

#include <algorithm>
#include <thread>

LiveSource::LiveSource(const QString& name, const SampleFormat& format, double sampleRate)
    : m_format(format)
{
    m_facts.name = plainText(name);
    m_facts.sampleRate = sampleRate;
    m_facts.isComplex = format.isComplex;
    m_facts.isLive = true;
}

LiveSource::~LiveSource() = default;

std::size_t LiveSource::sampleSize() const
{
    return m_format.byteCount() * static_cast<std::size_t>(m_format.valueCount());
}

std::int64_t LiveSource::silentSeconds() const
{
    return std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - m_lastArrival).count();
}

std::optional<Message> LiveSource::amiss() const
{
    const std::int64_t seconds = m_canReceive ? silentSeconds() : 0;
    if (seconds <= 0)
        return std::nullopt;
    return tr("no samples for %1 s: waiting").arg(seconds);
}

std::size_t LiveSource::read(std::vector<double>& block, std::size_t count)
{
    const std::size_t samples = await(count);
    block.resize(samples * static_cast<std::size_t>(m_format.valueCount()));
    m_format.convert(m_bytes.data() + m_used, block.size(), block.data());
    use(samples);
    return samples;
}

std::size_t LiveSource::discard(std::size_t count)
{
    const std::size_t samples = await(count);
    use(samples);
    return samples;
}

/// Receives when no sample is there. Returns how many are there then, at most count.
std::size_t LiveSource::await(std::size_t count)
{
    const std::size_t size = sampleSize();
    if (remainder() < size && m_canReceive) {
        m_bytes.erase(m_bytes.begin(), m_bytes.begin() + static_cast<std::ptrdiff_t>(m_used));
        m_used = 0;
        m_canReceive = receive(m_bytes);
        if (remainder() >= size)
            m_lastArrival = Clock::now();
        else if (m_canReceive) // not every device waits as long as it should
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        m_trouble.say(amiss());
    }
    return std::min(remainder() / size, count);
}

void LiveSource::use(std::size_t samples)
{
    m_used += samples * sampleSize();
    m_position += static_cast<std::int64_t>(samples);
    m_hasEnded = !m_canReceive && remainder() < sampleSize();
}
