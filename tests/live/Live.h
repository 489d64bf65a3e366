// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/RecordingOpener.h"

#include <gmock/gmock.h>

#include <chrono>
#include <functional>

inline Result<Recording> openLive(const QString& address, const char* format, double sampleRate)
{
    Recording::Options options;
    options.format = SampleFormat::parse(format);
    if (sampleRate > 0.0)
        options.sampleRate = sampleRate;
    return RecordingOpener::open(address, options);
}

struct Live : testing::Test
{
    /// Reads on until something holds; fails where it does not for half a minute.
    /// @param step  done before each read.
    void readUntil(
        const std::function<bool()>& holds, const std::function<void()>& step = [] {})
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        std::vector<double> block;
        while (!holds()) {
            ASSERT_LT(std::chrono::steady_clock::now(), end) << qPrintable(trouble());
            step();
            source->read(block, 1000);
            all.insert(all.end(), block.begin(), block.end());
        }
    }
    QString trouble() const { return source->trouble().value_or(Message()).sentence; }
    bool says(const char* text) const { return trouble().contains(text); }

    std::unique_ptr<SignalSource> source;
    std::vector<double> all; // what was read
};
