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

/// The way from a point of a density back to the signal: the newest symbols that passed there, and
/// the one of them that is shown, lit in the densities and marked in the time diagram. The signal
/// is paused for it, and a recording is moved there.
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

    /// Takes the symbols that passed somewhere, and shows the newest.
    /// @param what  was clicked, to be told.
    void take(DensityPane& pane, const QVector<qint64>& symbols, const QString& what);
    /// Forgets them.
    void clear();
    /// Shows one of them, or an older or newer one than is shown.
    void show(int index);
    void showNext() { show(m_index + 1); }
    void showPrevious() { show(m_index - 1); }
    /// The units of the time axis may have changed.
    void refresh();

    const std::vector<Stretch>& stretches() const { return m_stretches; }
    int index() const { return m_index; } ///< -1: none is shown
    const QString& what() const { return m_what; }
    /// What is shown, in one line: "3 of 17 at ...".
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
