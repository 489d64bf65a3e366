// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/Gate.h"

#include <algorithm>
#include <cmath>

namespace {

double timeOf(const BlockPart& part, std::size_t sample, double sampleRate)
{
    return part.block->time + static_cast<double>(part.first + sample) / sampleRate;
}

/// The part as a block of its own.
SignalBlockPtr cutOut(const BlockPart& part, double sampleRate, bool isAfterGap)
{
    const SignalBlock& whole = *part.block;
    if (part.count == whole.count() && isAfterGap == whole.isAfterGap)
        return part.block;
    auto block = std::make_shared<SignalBlock>();
    block->position = part.position();
    block->time = whole.time + static_cast<double>(part.first) / sampleRate;
    block->isAfterGap = isAfterGap;
    const auto copy = [&part](const auto& from, auto& to) {
        if (from.empty())
            return;
        const auto first = from.begin() + static_cast<std::ptrdiff_t>(part.first);
        to.assign(first, first + static_cast<std::ptrdiff_t>(part.count));
    };
    copy(whole.samples, block->samples);
    copy(whole.i, block->i);
    copy(whole.q, block->q);
    copy(whole.isQuiet, block->isQuiet);
    block->gain = whole.gain;
    const auto [first, last] = part.symbols();
    block->symbols.assign(first, last);
    const double end = block->time + static_cast<double>(part.count) / sampleRate;
    std::copy_if(
        whole.clock.begin(), whole.clock.end(), std::back_inserter(block->clock),
        [&](const ClockPoint& point) { return point.time >= block->time && point.time < end; });
    block->reports = whole.reports;
    return block;
}

/// The samples of a part from a position on.
BlockPart after(const BlockPart& part, std::int64_t position)
{
    const auto known = std::min(part.count, static_cast<std::size_t>(position - part.position()));
    return {part.block, part.first + known, part.count - known};
}

} // namespace

void Gate::open(double sampleRate)
{
    m_isFixed = false;
    reopen(sampleRate);
}

void Gate::reopen(double sampleRate)
{
    m_sampleRate = sampleRate;
    clear();
}

void Gate::follow(std::size_t count, std::optional<std::int64_t> length)
{
    m_isFixed = false;
    m_most = std::min(count, maxSampleCount);
    if (length) // a signal that starts over is not measured twice
        m_most = std::min(m_most, static_cast<std::size_t>(std::max<std::int64_t>(*length, 1)));
    trim();
}

void Gate::fix(double from, double to)
{
    m_isFixed = true;
    m_from = from;
    m_to = to;
    m_most = maxSampleCount;
    std::deque<BlockPart> before;
    before.swap(m_parts);
    m_count = 0;
    for (const BlockPart& part : before)
        append(within(part));
}

/// The first sample at or after a time, of a block, before or behind it.
double Gate::indexOf(double time, const SignalBlock& block) const
{
    return std::ceil((time - block.time) * m_sampleRate - 1e-3);
}

BlockPart Gate::within(const BlockPart& part) const
{
    if (!m_isFixed)
        return part;
    const auto clamped = [&part](double index) {
        return static_cast<std::size_t>(std::clamp(index, static_cast<double>(part.first),
                                                   static_cast<double>(part.first + part.count)));
    };
    const std::size_t first = clamped(indexOf(m_from, *part.block));
    return {part.block, first, std::max(clamped(indexOf(m_to, *part.block)), first) - first};
}

bool Gate::endsWith(const BlockPart& part) const
{
    return m_isFixed && indexOf(m_to, *part.block) <= static_cast<double>(part.first + part.count);
}

BlockPart Gate::take(const BlockPart& part)
{
    BlockPart taken = within(part);
    if (m_isFixed && !m_parts.empty() && taken.count > 0) {
        if (taken.position() < m_parts.front().position())
            clear(); // of later samples: all of them come again
        else if (taken.position() < m_parts.back().end())
            taken = after(taken, m_parts.back().end());
    }
    append(taken);
    trim();
    return taken;
}

void Gate::append(const BlockPart& part)
{
    if (part.count == 0)
        return;
    m_count += part.count;
    if (!m_parts.empty() && m_parts.back().block == part.block &&
        m_parts.back().first + m_parts.back().count == part.first)
        m_parts.back().count += part.count;
    else
        m_parts.push_back(part);
}

void Gate::trim()
{
    while (m_count > m_most) {
        BlockPart& oldest = m_parts.front();
        const std::size_t surplus = std::min(m_count - m_most, oldest.count);
        oldest.first += surplus;
        oldest.count -= surplus;
        m_count -= surplus;
        if (oldest.count == 0)
            m_parts.pop_front();
    }
}

void Gate::clear()
{
    m_parts.clear();
    m_count = 0;
}

std::vector<SignalBlockPtr> Gate::blocks() const
{
    std::vector<SignalBlockPtr> blocks;
    for (std::size_t k = 0; k < m_parts.size(); ++k) {
        const BlockPart& part = m_parts[k];
        const BlockPart& before = m_parts[k == 0 ? 0 : k - 1];
        const bool follows = k > 0 && before.end() == part.position();
        const bool isGap = !follows || (part.first == 0 && part.block->isAfterGap);
        blocks.push_back(m_isFixed ? part.block : cutOut(part, m_sampleRate, isGap));
    }
    std::stable_sort(
        blocks.begin(), blocks.end(),
        [](const SignalBlockPtr& a, const SignalBlockPtr& b) { return a->position < b->position; });
    return blocks;
}

double Gate::begin() const
{
    if (m_parts.empty())
        return 0.0;
    double time = timeOf(m_parts.front(), 0, m_sampleRate);
    for (const BlockPart& part : m_parts)
        time = std::min(time, timeOf(part, 0, m_sampleRate));
    // The time that was set is less than one sample before the first sample.
    return m_isFixed ? std::max(m_from, time - 1.0 / m_sampleRate) : time;
}

double Gate::end() const
{
    double time = 0.0;
    for (const BlockPart& part : m_parts)
        time = std::max(time, timeOf(part, part.count, m_sampleRate));
    return m_isFixed ? std::min(m_to, time) : time;
}

std::vector<double> Gate::samples() const
{
    std::vector<double> samples;
    samples.reserve(m_count);
    for (const BlockPart& part : m_parts) {
        const auto first = part.block->samples.begin() + static_cast<std::ptrdiff_t>(part.first);
        samples.insert(samples.end(), first, first + static_cast<std::ptrdiff_t>(part.count));
    }
    return samples;
}

// A burst that is shown was received, whatever came after it.
std::vector<StageReport> Gate::reports() const
{
    std::vector<StageReport> result;
    for (auto part = m_parts.rbegin(); part != m_parts.rend(); ++part) {
        const std::vector<StageReport>& reports = part->block->reports;
        if (result.empty())
            result = reports;
        for (std::size_t k = 0; k < std::min(result.size(), reports.size()); ++k) {
            const bool isSearching = result[k].isLocked && !*result[k].isLocked;
            if (isSearching && reports[k].isLocked.value_or(false))
                result[k] = reports[k];
        }
    }
    return result;
}
