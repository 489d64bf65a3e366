// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/DensityPlot.h"
#include "workbench/feed/DensityFeed.h"
#include "workbench/window/panes/ViewPanes.h"

#include <QObject>
#include <QPointer>

#include <memory>

class Player;
class SignalFeed;

/// The density of the eye or of the constellation. While it is on, it takes the place of the
/// diagram and counts the symbols of the gate and all that are played.
class DensityPane : public QObject
{
    Q_OBJECT
public:
    using Kind = density::DensityPlot::Kind;

    /// @param index  of the pane.
    DensityPane(Kind kind, ViewPanes& panes, std::size_t index, Player& player, QObject* parent);
    ~DensityPane() override;

    Kind kind() const { return m_kind; }
    /// The switch, a button of the caption bar.
    QAction& switching() { return *m_switching; }
    void setOn(bool on);
    bool isOn() const { return m_plot != nullptr; }
    /// Null while it is off.
    density::DensityPlot* plot() const { return m_plot; }
    std::size_t index() const { return m_index; }
    /// Sets the table below the density, which is deleted when the density is switched off.
    void setReadings(ReadingTable* readings);
    ReadingTable* readings() const { return m_readings; }
    /// Shows or hides cursors. The arrow keys move them while the plot has the focus.
    void showCursors(bool show);
    /// Waits until all that was played is shown.
    void settle();
    DensityFeed::Kind feedKind() const;

    /// @param variants  of what is told of it beside the title, the longest first; at least one.
    void setMode(const QStringList& variants);

signals:
    /// It was switched by the user, or by setOn.
    void switched(bool on);
    /// All symbols were forgotten, or the plot is a new one.
    void restarted();
    /// As of the plot.
    void updated();
    void passed(const QVector<qint64>& symbols, const QPointF& place);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void switchOn();
    void switchOff();
    void restart();
    /// The counts in a format of a file, by its ending; empty where there are none.
    QByteArray exported(const QString& ending) const;
    class FoundHome;
    DensityFeed::Sink sink();
    void takeHome();

    const Kind m_kind;
    ViewPanes& m_panes;
    const std::size_t m_index;
    Player& m_player;
    SignalFeed& m_feed;
    QAction* m_switching;
    std::shared_ptr<FoundHome> m_home; // that is not set yet
    QPointer<density::DensityPlot> m_plot;
    ReadingTable* m_readings = nullptr;
    ViewPanes::Cover m_cover; // while it is on
    bool m_hasCursors = false;
};
