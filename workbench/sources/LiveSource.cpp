// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/LiveSource.h"

#include "workbench/sources/SoapySource.h"
#include "workbench/sources/StreamSource.h"
#include "workbench/sources/ZmqSource.h"

#include <algorithm>

namespace {

constexpr auto silence = std::chrono::seconds(1); // that is worth telling

} // namespace

bool LiveSource::isAddress(const QString& address)
{
    return address == QLatin1String("-") || address.startsWith(QLatin1String("zmq://")) ||
           address.startsWith(QLatin1String("soapy://"));
}

void LiveSource::open(Recording& recording, const QString& address,
                      const Recording::Options& options)
{
    if (address.startsWith(QLatin1String("soapy://")))
        SoapySource::open(recording, address, options);
    else if (!options.sampleRate || !options.format)
        recording.why = tr("a stream does not say what its samples are; give --format, such as "
                           "cf32, and --sample-rate");
    else if (address == QLatin1String("-"))
        recording.source = std::make_unique<StreamSource>(0, *options.format, *options.sampleRate);
    else
        ZmqSource::open(recording, address, options);
}

LiveSource::LiveSource(const QString& name, const SampleFormat& format, double sampleRate)
    : m_name(name)
    , m_format(format)
    , m_sampleRate(sampleRate)
    , m_lastTime(std::chrono::steady_clock::now())
{}

LiveSource::~LiveSource() = default;

std::size_t LiveSource::read(std::vector<double>& block, std::size_t count)
{
    block.clear();
    if (count == 0)
        return 0;
    const std::size_t size = sampleSize();
    if (m_bytes.size() < size && !m_hasEnded)
        receive(m_bytes, count * size);
    const std::size_t got = std::min(m_bytes.size() / size, count);
    const auto now = std::chrono::steady_clock::now();
    m_lastTime = got > 0 ? now : m_lastTime;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isSilent = got == 0 && now - m_lastTime >= silence;
    }
    block.resize(got * valuesPerSample());
    m_format.convert(m_bytes.data(), block.size(), block.data());
    m_bytes.erase(m_bytes.begin(), m_bytes.begin() + static_cast<std::ptrdiff_t>(got * size));
    m_position += static_cast<std::int64_t>(got);
    return got;
}

bool LiveSource::seek(std::int64_t) { return false; }

QString LiveSource::trouble() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_trouble.isEmpty() && m_isSilent)
        return tr("no samples come from %1; waiting").arg(peer());
    return m_trouble;
}

std::int64_t LiveSource::lostBlockCount() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_lostCount;
}

void LiveSource::setTrouble(const QString& trouble)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_trouble = trouble;
}

void LiveSource::countLost(std::int64_t blocks)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_lostCount += blocks;
}
