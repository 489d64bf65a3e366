// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/SignalBlock.h"
#include "workbench/sources/SignalFacts.h"

#include <utility>
#include <vector>

/// Turns samples into blocks; Receiver chooses the path.
class SignalPath
{
public:
    virtual ~SignalPath() = default;

    const SignalFormat& format() const { return m_format; }
    /// Takes samples that follow those of the last call, or the first ones after reset.
    virtual void process(const std::vector<double>& values, std::vector<SignalBlock>& blocks) = 0;
    /// Ends the signal: appends the samples that were held back.
    virtual void finish(std::vector<SignalBlock>& blocks) = 0;
    /// Starts anew at a sample of the input.
    /// @param goesOn  whether it is a later sample of the same signal: then results that missing
    ///                samples do not affect, such as a DC offset, are kept.
    virtual void reset(std::int64_t position, bool goesOn) = 0;
    /// Takes a block that nobody needs any more: later ones use its memory.
    void reuse(SignalBlock block)
    {
        if (m_spare.size() < mostSpare)
            m_spare.push_back(std::move(block));
    }

protected:
    explicit SignalPath(const SignalFacts& input)
        : m_input(input)
    {}
    /// A block like a new one, but for its samples and pairs: they may be there, with any value.
    SignalBlock makeBlock()
    {
        SignalBlock block;
        if (m_spare.empty())
            return block;
        SignalBlock& spare = m_spare.back();
        block.samples.swap(spare.samples);
        block.i.swap(spare.i);
        block.q.swap(spare.q);
        block.symbols.swap(spare.symbols);
        block.symbols.clear();
        m_spare.pop_back();
        return block;
    }
    /// Appends a block that follows the last one, but for the first one since m_isAfterGap was set.
    void append(SignalBlock block, std::vector<SignalBlock>& blocks)
    {
        block.isAfterGap = std::exchange(m_isAfterGap, false);
        blocks.push_back(std::move(block));
    }

    const SignalFacts m_input;
    SignalFormat m_format; ///< of what comes out
    bool m_isAfterGap = true;

private:
    static constexpr std::size_t mostSpare = 16;
    std::vector<SignalBlock> m_spare;
};
