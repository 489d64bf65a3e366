// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/ReceiverSource.h"

#include <cmath>
#include <limits>

namespace {

constexpr std::size_t blockLength = 8192; // samples of the input read at a time
constexpr double longestSeconds = 0.02;   // of signal in one: what is slow is not waited for
constexpr double noSample = std::numeric_limits<double>::quiet_NaN();

} // namespace

ReceiverSource::ReceiverSource(std::unique_ptr<SignalSource> input, const ChannelChoice& channel,
                               const ReceiverSettings& settings)
    : m_input(std::move(input))
    , m_channel(channel)
{
    m_chain.configure(settings, m_input->sampleRate());
    m_reports = m_chain.reports();
}

ReceiverSource::~ReceiverSource() = default;

std::unique_ptr<SignalSource> ReceiverSource::takeInput() { return std::move(m_input); }

std::vector<StageReport> ReceiverSource::reports() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_reports;
}

std::optional<int> ReceiverSource::constellationChannel() const
{
    return isComplex() ? std::nullopt : std::optional<int>(1);
}

std::optional<std::int64_t> ReceiverSource::sampleCount() const
{
    const auto count = m_input->sampleCount();
    if (!count)
        return std::nullopt;
    return static_cast<std::int64_t>(std::ceil(static_cast<double>(*count) * ratio()));
}

std::optional<double> ReceiverSource::firstSymbol() const
{
    return m_chain.format().hasSymbolClock ? std::optional<double>(0.0) : std::nullopt;
}

std::size_t ReceiverSource::read(std::vector<double>& block, std::size_t count)
{
    block.clear();
    while (available() == 0 && readOn()) {
    }
    const std::size_t step = std::min(count, available());
    const auto first = m_ahead.begin() + static_cast<std::ptrdiff_t>(m_used);
    block.assign(first, first + static_cast<std::ptrdiff_t>(step * valuesPerSample()));
    m_used += step * valuesPerSample();
    m_position += static_cast<std::int64_t>(step);
    return step;
}

/// Receives the next samples; false where there are none now.
bool ReceiverSource::readOn()
{
    if (m_isFinished)
        return false;
    const auto least = static_cast<std::size_t>(m_input->sampleRate() * longestSeconds) + 1;
    const std::size_t got = m_input->read(m_block, std::min(blockLength, least));
    BasebandBlock block;
    if (got > 0) {
        const std::size_t width = m_block.size() / got;
        const bool isComplex = m_input->isComplex();
        const auto pair = static_cast<std::size_t>(m_channel.value / 2 * 2);
        for (std::size_t k = 0; k + width <= m_block.size(); k += width) {
            const double i = isComplex ? m_block[k + pair] : m_channel.of(&m_block[k]);
            const double q = isComplex ? m_block[k + pair + 1] : 0.0;
            block.samples.emplace_back(static_cast<float>(i), static_cast<float>(q));
        }
        m_chain.process(block);
    } else if (m_input->hasEnded()) {
        m_chain.finish(block);
        m_isFinished = true;
    } else {
        return false;
    }
    take(block);
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_reports = m_chain.reports();
    return true;
}

void ReceiverSource::take(const BasebandBlock& block)
{
    m_ahead.erase(m_ahead.begin(), m_ahead.begin() + static_cast<std::ptrdiff_t>(m_used));
    m_used = 0;
    const bool hasSquelch = m_chain.settings().squelch.has_value();
    const auto add = [this, hasSquelch](float value, bool isSilent) {
        m_ahead.push_back(hasSquelch && isSilent ? noSample : double{value});
    };
    for (std::size_t k = 0; k < block.samples.size(); ++k) {
        if (!isComplex())
            add(block.demodulated[k], block.demodulated[k] == 0.0F);
        const bool isSilent = block.samples[k] == 0.0F;
        add(block.samples[k].real(), isSilent);
        add(block.samples[k].imag(), isSilent);
    }
}

bool ReceiverSource::seek(std::int64_t position)
{
    if (position < 0 || !m_input->seek(std::llround(static_cast<double>(position) / ratio())))
        return false;
    m_chain.reset();
    m_ahead.clear();
    m_used = 0;
    m_isFinished = false;
    // Symbols lie on whole multiples.
    constexpr std::int64_t symbol = ReceiverSettings::samplesPerSymbol;
    m_position = firstSymbol() ? (position + symbol - 1) / symbol * symbol : position;
    return true;
}
