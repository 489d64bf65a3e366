// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/SignalBlock.h"

#include <mutex>
#include <optional>

/// Blocks that nobody needs any more. Their memory is used again: memory that is asked for anew has
/// to be cleared, and is not near the processor. Any thread may call any operation.
class SpareBlocks : public std::enable_shared_from_this<SpareBlocks>
{
public:
    SpareBlocks();

    /// Shares a block, which becomes a spare one once nobody holds it. This must be shared itself.
    SignalBlockPtr share(SignalBlock block);
    /// Takes a spare block; none when there is none.
    std::optional<SignalBlock> take();

private:
    void add(SignalBlock block);

    std::mutex m_mutex;
    std::vector<SignalBlock> m_blocks;
};
