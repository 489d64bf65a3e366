// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/Recording.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <vector>

/// Opens a live signal of real samples of 16 bits.
inline Recording openLive(const QString& address, const char* format = "rs16",
                          std::optional<double> sampleRate = 1000.0)
{
    Recording::Options options;
    options.format = SampleFormat::parse(QString::fromLatin1(format));
    options.sampleRate = sampleRate;
    return Recording::open(address, options);
}

/// Reads on until something holds; false where it does not for half a minute.
/// @param all   what was read.
/// @param step  done before each read.
inline bool readUntil(
    SignalSource& source, std::vector<double>& all, const std::function<bool()>& holds,
    const std::function<void()>& step = [] {})
{
    using Clock = std::chrono::steady_clock;
    const Clock::time_point end = Clock::now() + std::chrono::seconds(30);
    std::vector<double> block;
    while (!holds()) {
        if (Clock::now() > end) {
            ADD_FAILURE() << "waited in vain; trouble: " << qPrintable(source.trouble());
            return false;
        }
        step();
        source.read(block, 1000);
        all.insert(all.end(), block.begin(), block.end());
    }
    return true;
}

inline bool says(const SignalSource& source, const char* text)
{
    return source.trouble().contains(QString::fromLatin1(text));
}
