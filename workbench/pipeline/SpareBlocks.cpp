// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/pipeline/SpareBlocks.h"

namespace {

constexpr std::size_t mostBlocks = 16; // more are released

} // namespace

SpareBlocks::SpareBlocks() { m_blocks.reserve(mostBlocks); }

SignalBlockPtr SpareBlocks::share(SignalBlock block)
{
    const auto release = [spare = shared_from_this()](SignalBlock* released) {
        const std::unique_ptr<SignalBlock> owned(released);
        spare->add(std::move(*owned));
    };
    return {std::make_unique<SignalBlock>(std::move(block)).release(), release};
}

std::optional<SignalBlock> SpareBlocks::take()
{
    const std::lock_guard lock(m_mutex);
    if (m_blocks.empty())
        return std::nullopt;
    std::optional<SignalBlock> block(std::move(m_blocks.back()));
    m_blocks.pop_back();
    return block;
}

void SpareBlocks::add(SignalBlock block)
{
    const std::lock_guard lock(m_mutex);
    if (m_blocks.size() < mostBlocks)
        m_blocks.push_back(std::move(block));
}
