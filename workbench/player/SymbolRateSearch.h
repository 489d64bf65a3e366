// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/pipeline/Background.h"
#include "workbench/receiver/SymbolRateEstimate.h"

#include <QObject>

#include <cstdint>
#include <vector>

class SignalFeed;

/// Estimates the symbol rate of the signal of a feed on a thread of its own: around the present
/// time and, when that is not sure, elsewhere in the recording.
class SymbolRateSearch : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    /// Takes samples of the feed's source and starts; gives up an earlier search.
    /// @param feed  has a source that is not live, and must live until the search ends.
    void start(SignalFeed& feed);
    /// Gives up the search; found is not emitted.
    void cancel() { m_work.giveUp(); }

signals:
    void found(const SymbolRateEstimate& estimate);

private:
    using Stretches = std::vector<SymbolRateEstimate::Signal>;

    void look(Stretches stretches);
    void judge(const SymbolRateEstimate& estimate);
    Stretches elsewhere();

    SignalFeed* m_feed = nullptr;
    std::int64_t m_first = 0; // first sample around the present time
    bool m_isElsewhere = false;
    SymbolRateEstimate m_best;
    Background m_work;
};
