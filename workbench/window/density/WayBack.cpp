// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/density/WayBack.h"

#include "workbench/player/Player.h"
#include "workbench/window/density/DensityPane.h"
#include "workbench/window/density/TimeMark.h"

#include <QLocale>

#include <algorithm>

WayBack::WayBack(Player& player, ViewPanes& views, std::vector<DensityPane*> panes, TimeMark& mark,
                 QObject* parent)
    : QObject(parent)
    , m_player(player)
    , m_views(views)
    , m_panes(std::move(panes))
    , m_mark(mark)
{
    const Transport& transport = player.feed().transport();
    connect(&transport, &Transport::playingChanged, this, [this](bool playing) {
        if (playing)
            leave();
    });
    connect(&transport, &Transport::jumped, this, &WayBack::leave);
    for (DensityPane* pane : m_panes)
        connect(pane, &DensityPane::restarted, this, &WayBack::clear);
}

void WayBack::take(DensityPane& pane, const QVector<qint64>& symbols, const QString& what)
{
    const DensityFeed& feed = m_player.feed().counted(pane.feedKind());
    m_what = what;
    m_stretches.clear();
    m_index = -1;
    m_period = feed.period();
    for (const qint64 symbol : symbols) {
        if (const auto time = feed.timeOf(symbol))
            m_stretches.push_back({symbol, *time});
    }
    if (m_stretches.empty()) {
        leave();
        emit changed();
    } else {
        show(0);
    }
}

void WayBack::clear()
{
    m_what.clear();
    m_stretches.clear();
    leave();
    emit changed();
}

/// Nothing is marked any more: what plays goes on, or is elsewhere.
void WayBack::leave()
{
    if (m_isMoving)
        return;
    const bool wasShown = m_index >= 0;
    m_index = -1;
    m_mark.mark(std::nullopt);
    for (DensityPane* pane : m_panes) {
        if (pane->isOn())
            pane->plot()->setLitSymbol(std::nullopt);
    }
    if (wasShown)
        emit changed();
}

void WayBack::show(int index)
{
    if (index < 0 || index >= static_cast<int>(m_stretches.size()))
        return;
    SignalFeed& feed = m_player.feed();
    const double time = m_stretches[static_cast<std::size_t>(index)].time;
    m_isMoving = true;
    m_views.setPaused(true);
    feed.transport().pause();
    m_isKept = true;
    m_views.showWhilePaused([&] {
        if (feed.isSeekable()) {
            m_player.seek(time + 0.5 * feed.span()); // which is the middle of what is shown then
            m_shownEnd = feed.transport().time();
        } else {
            const auto end = feed.showAround(time);
            m_isKept = end.has_value();
            m_shownEnd = end.value_or(0.0);
        }
    });
    m_isMoving = false;
    m_index = index;
    light(time);
    refresh();
    emit changed();
}

/// In both densities, whichever was clicked.
void WayBack::light(double time)
{
    for (DensityPane* pane : m_panes) {
        if (pane->isOn())
            pane->plot()->setLitSymbol(m_player.feed().counted(pane->feedKind()).symbolAt(time));
    }
}

void WayBack::refresh()
{
    if (m_index < 0 || !m_isKept)
        return m_mark.mark(std::nullopt);
    const double unit = m_player.feed().scale().unitSeconds();
    const double middle = m_stretches[static_cast<std::size_t>(m_index)].time - m_shownEnd;
    m_mark.mark(std::pair((middle - m_period) / unit, (middle + m_period) / unit));
}

QString WayBack::text() const
{
    const auto counted = [](qint64 count) { return QLocale(QLocale::English).toString(count); };
    if (m_what.isEmpty())
        return QString();
    if (m_stretches.empty())
        return tr("nothing passed at %1").arg(m_what);
    if (m_index < 0)
        return tr("%1 passed at %2").arg(counted(static_cast<qint64>(m_stretches.size())), m_what);
    const Stretch& shown = m_stretches[static_cast<std::size_t>(m_index)];
    const QString text =
        tr("%1 of %2 at %3: symbol %4")
            .arg(counted(m_index + 1), counted(static_cast<qint64>(m_stretches.size())), m_what,
                 counted(shown.symbol));
    return m_isKept ? text : tr("%1, whose samples are not kept any more").arg(text);
}
