// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/SymbolRateEstimate.h"

#include <QObject>

#include <atomic>
#include <thread>

class SignalFeed;

/// Estimates the symbol rate of what a feed plays, about where it plays, on a thread of its own.
class SymbolRateSearch : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;
    ~SymbolRateSearch() override;

    /// Takes samples of the feed's source and starts; what was searched for before is given up.
    /// @param feed  has a source that is not live.
    void start(SignalFeed& feed);
    /// Gives up; nothing is found then.
    void cancel();

signals:
    void found(const SymbolRateEstimate& estimate);

private:
    std::thread m_thread;
    std::atomic<bool> m_isCanceled{false};
};
