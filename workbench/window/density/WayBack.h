// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QPointF>
#include <QVector>

#include <optional>
#include <vector>

class DensityPane;
class Player;
class TimeMark;
class ViewPanes;

/// The way from a point of a density back to the signal: a list of the newest symbols that passed
/// there. One of them is shown, lit in the densities and marked in the time diagram; for that the
/// signal is paused, and a recording is moved to the symbol.
class WayBack : public QObject
{
    Q_OBJECT
public:
    struct Stretch
    {
        qint64 symbol; ///< number
        double time;   ///< s, of its middle
    };

    /// @param panes  all outlive it.
    WayBack(Player& player, ViewPanes& views, std::vector<DensityPane*> panes, TimeMark& mark,
            QObject* parent);

    /// Takes a list of symbols, and shows the newest.
    /// @param what  the place that was clicked, in words.
    void take(DensityPane& pane, const QVector<qint64>& symbols, const QString& what);
    /// Forgets the list.
    void clear();
    /// Shows a symbol of the list; the next one is older.
    void show(int index);
    void showNext() { show(m_index + 1); }
    void showPrevious() { show(m_index - 1); }
    /// Takes over the units of the time axis, which may have changed.
    void refresh();

    const std::vector<Stretch>& stretches() const { return m_stretches; }
    int index() const { return m_index; } ///< -1: none is shown
    const QString& what() const { return m_what; }
    /// The symbol that is shown, in one line: "3 of 17 at ...".
    QString text() const;

signals:
    void changed();

private:
    void light(double time);
    void leave();

    Player& m_player;
    ViewPanes& m_views;
    std::vector<DensityPane*> m_panes;
    TimeMark& m_mark;
    std::vector<Stretch> m_stretches;
    int m_index = -1;
    QString m_what;
    bool m_isKept = true;    // what is shown is there over time, too
    double m_period = 0.0;   // of a symbol, s
    double m_shownEnd = 0.0; // s, of the last sample that the time diagram shows
    bool m_isMoving = false;
};
