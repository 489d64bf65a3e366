// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/Recording.h"

#include <gmock/gmock.h>

#include <chrono>
#include <functional>

inline Recording openLive(const QString& address, const char* format, double sampleRate)
{
    Recording::Options options;
    options.format = SampleFormat::parse(format);
    if (sampleRate > 0.0)
        options.sampleRate = sampleRate;
    return Recording::open(address, options);
}

/// Reads on until something holds; fails where it does not for half a minute.
/// @param all   what was read.
/// @param step  done before each read.
inline void readUntil(
    SignalSource& source, std::vector<double>& all, const std::function<bool()>& holds,
    const std::function<void()>& step = [] {})
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    std::vector<double> block;
    while (!holds()) {
        ASSERT_LT(std::chrono::steady_clock::now(), end) << qPrintable(source.trouble());
        step();
        source.read(block, 1000);
        all.insert(all.end(), block.begin(), block.end());
    }
}

inline bool says(const SignalSource& source, const char* text)
{
    return source.trouble().contains(text);
}
