// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/pipeline/Background.h"
#include "workbench/receiver/SymbolRateEstimate.h"

#include <QObject>

#include <cstdint>
#include <vector>

class SignalFeed;

/// Estimates the symbol rate of what a feed plays, on a thread of its own: about where it plays,
/// and where that is not sure elsewhere in the recording.
class SymbolRateSearch : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    /// Takes samples of the feed's source and starts; what was searched for before is given up.
    /// @param feed  has a source that is not live, and lives until it was given up or found.
    void start(SignalFeed& feed);
    /// Gives up; nothing is found then.
    void cancel() { m_work.giveUp(); }

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
    Background m_work;
};
