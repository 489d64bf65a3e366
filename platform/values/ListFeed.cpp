// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/values/ListFeed.h"

#include "platform/values/Tree.h"
#include "platform/values/Values.h"

#include <QPointer>

#include <algorithm>
#include <cmath>
#include <utility>

namespace values {

ListFeed::ListFeed(const QStringList& lists, const QString& trigger, QObject* parent)
    : QObject(parent)
    , m_lists(lists)
    , m_trigger(trigger)
{
    constexpr std::size_t capacity = 1000000;
    m_queue.setLimit(capacity);
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &ListFeed::deliver);
}

bool ListFeed::push(Block block)
{
    std::size_t weight = 0;
    for (const auto& column : block)
        weight += column.size();
    const bool isTaken = m_queue.tryPush(std::move(block), weight);
    m_leftOut += isTaken ? 0 : 1;
    if (!m_isCalled.exchange(true))
        QMetaObject::invokeMethod(this, "deliver", Qt::QueuedConnection);
    return isTaken;
}

void ListFeed::deliver()
{
    const auto frameMs = static_cast<qint64>(std::clamp(1000.0 / m_frameRate, 0.0, 1e6));
    if (m_sinceFrame.isValid() && !m_sinceFrame.hasExpired(frameMs)) {
        m_timer.start(static_cast<int>(frameMs - m_sinceFrame.elapsed()));
        return;
    }
    m_sinceFrame.start();
    m_isCalled = false; // a later push schedules deliver again
    const QPointer<ListFeed> self(this);
    if (const std::int64_t count = m_leftOut; count != std::exchange(m_toldLeftOut, count))
        emit leftOut(count);
    if (!self) // a receiver destroyed it
        return;
    Block columns(static_cast<std::size_t>(m_lists.size()));
    bool isNew = false;
    while (auto block = m_queue.pop(std::chrono::milliseconds(0))) {
        isNew = true;
        for (std::size_t k = 0; k < std::min(columns.size(), block->size()); ++k)
            columns[k].insert(columns[k].end(), (*block)[k].begin(), (*block)[k].end());
    }
    if (!isNew)
        return;
    Tree& tree = Tree::Instance();
    for (std::size_t k = 0; k < columns.size(); ++k) {
        if (auto* list =
                dynamic_cast<ValueList<double>*>(tree.FindValue(m_lists[static_cast<int>(k)])))
            list->GetList().assign(columns[k].begin(), columns[k].end());
    }
    if (auto* trigger = dynamic_cast<Value<bool>*>(tree.FindValue(m_trigger)))
        trigger->SetValue(true); // last: an observer may destroy this
}

} // namespace values
