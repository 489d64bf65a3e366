// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/ReceiverStage.h"

#include <memory>
#include <vector>

/// A receiver: its stages one after the other.
class ReceiverChain
{
public:
    ReceiverChain();
    ~ReceiverChain();

    /// Prepares all stages and starts anew. Settings with a flaw are treated like none at all.
    /// @param sampleRate  Hz, of the samples that go in.
    void configure(const ReceiverSettings& settings, double sampleRate);
    const ReceiverSettings& settings() const { return m_settings; }
    /// Of the samples that come out.
    const BasebandFormat& format() const { return m_format; }

    /// Replaces a block by what comes out. What is not finite counts as 0.
    void process(BasebandBlock& block);
    /// No more samples come: gives those that were held back.
    void finish(BasebandBlock& block);
    void reset();
    /// In the order of the stages.
    std::vector<StageReport> reports() const;

private:
    ReceiverSettings m_settings;
    BasebandFormat m_format;
    std::vector<std::unique_ptr<ReceiverStage>> m_stages;
};
