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

/// Brings what a producer thread makes into lists of the value tree, which belong to the GUI
/// thread: once a frame, what has come since the last one is written into the lists, block after
/// block, and the trigger is set once.
///
/// Blocks that come while too much waits are left out as a whole, and counted; those that wait keep
/// their order. A list or a trigger that is not in the tree when a frame is due is passed over.
///
/// Made, set up and destroyed on the GUI thread, with an event loop running there. End the producer
/// before it is destroyed.
class ORVANE_PLATFORM_API ListFeed : public QObject
{
    Q_OBJECT
public:
    /// As many values of each list as are made together: one column a list.
    using Block = std::vector<std::vector<double>>;

    /// @param lists    paths of values of type ValueList<double>.
    /// @param trigger  path of a Value<bool>, which is set to true.
    ListFeed(const QStringList& lists, const QString& trigger, QObject* parent = nullptr);

    /// Values of all columns that may wait; one more block may exceed it. 1,000,000 at first.
    void setCapacity(std::size_t values) { m_queue.setLimit(values); }
    /// Frames a second at most; 30 at first.
    void setFrameRate(double hertz) { m_frameRate = hertz; }

    /// From any thread: hands a block over. False where it was left out. A block with fewer columns
    /// than there are lists leaves the other lists empty; further columns are ignored.
    bool push(Block block);
    /// From any thread: blocks that were left out until now.
    std::int64_t leftOutCount() const { return m_leftOut; }

private slots:
    void deliver();

private:
    const QStringList m_lists;
    const QString m_trigger;
    Handover<Block> m_queue;
    std::atomic<std::int64_t> m_leftOut{0};
    std::atomic<bool> m_isCalled{false}; // deliver is, and has not run
    double m_frameRate = 30.0;
    QTimer m_timer;
    QElapsedTimer m_sinceFrame;
};

} // namespace values
