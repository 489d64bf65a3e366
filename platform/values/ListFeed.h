// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"
#include "platform/values/Handover.h"

#include <QElapsedTimer>
#include <QObject>
#include <QStringList>
#include <QTimer>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace values {

/// Carries data of a producer thread into lists of the value tree, which belong to the GUI thread.
/// Once a frame it writes all blocks that arrived since the last frame into the lists, one after
/// the other, and sets the trigger once.
///
/// A block that arrives while the queue is full is dropped as a whole, and counted: push, the count
/// and a signal tell of it. A list or a trigger that is not in the tree when a frame is due is
/// skipped.
///
/// Create, set up and destroy it on the GUI thread, which needs a running event loop. Stop the
/// producer before you destroy it.
class ORVANE_PLATFORM_API ListFeed : public QObject
{
    Q_OBJECT
public:
    /// New values of all lists: one column a list, all of the same length. A shorter column lets
    /// the values of the next block follow at once, out of step with the other lists.
    using Block = std::vector<std::vector<double>>;

    /// @param lists    paths of values of type ValueList<double>.
    /// @param trigger  path of a Value<bool>, which is set to true.
    ListFeed(const QStringList& lists, const QString& trigger, QObject* parent = nullptr);

    /// Sets how many values may wait, all columns together; the last block may exceed it. 1,000,000
    /// at first.
    void setCapacity(std::size_t values) { m_queue.setLimit(values); }
    /// Sets the highest number of frames a second; 30 at first. A rate that is not positive is
    /// ignored, and so is NaN.
    void setFrameRate(double hertz) { m_frameRate = hertz > 0.0 ? hertz : m_frameRate; }

    /// Hands a block over, from any thread. Returns false when it was dropped. Lists without a
    /// column stay empty; columns without a list are ignored.
    bool push(Block block);
    /// Number of blocks dropped so far, from any thread.
    std::int64_t leftOutCount() const { return m_leftOut; }

signals:
    /// Blocks were dropped since the last frame; emitted on the GUI thread.
    /// @param count  number of blocks dropped so far.
    void leftOut(qint64 count);

private slots:
    void deliver();

private:
    const QStringList m_lists;
    const QString m_trigger;
    Handover<Block> m_queue;
    std::atomic<std::int64_t> m_leftOut{0};
    std::int64_t m_toldLeftOut = 0;      // by the signal
    std::atomic<bool> m_isCalled{false}; // deliver is scheduled
    double m_frameRate = 30.0;
    QTimer m_timer;
    QElapsedTimer m_sinceFrame;
};

} // namespace values
