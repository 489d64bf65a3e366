// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/SymbolRateEstimate.h"

#include <QObject>

#include <atomic>
#include <cstdint>
#include <thread>
#include <vector>

class SignalFeed;

/// Estimates the symbol rate of what a feed plays, on a thread of its own: about where it plays,
/// and where that is not sure elsewhere in the recording.
class SymbolRateSearch : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;
    ~SymbolRateSearch() override;

    /// Takes samples of the feed's source and starts; what was searched for before is given up.
    /// @param feed  has a source that is not live, and lives until it was given up or found.
    void start(SignalFeed& feed);
    /// Gives up; nothing is found then.
    void cancel();

signals:
    void found(const SymbolRateEstimate& estimate);

private:
    using Stretches = std::vector<SymbolRateEstimate::Signal>;

    void look(Stretches stretches);
    void judge(const SymbolRateEstimate& estimate);
    Stretches elsewhere();

    SignalFeed* m_feed = nullptr;
    std::int64_t m_first = 0; // sample of where it plays
    bool m_isElsewhere = false;
    SymbolRateEstimate m_best;
    int m_run = 0; // what an earlier one found comes too late
    std::thread m_thread;
    std::atomic<bool> m_isCanceled{false};
};
