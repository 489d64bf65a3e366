// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/window/density/DensityPane.h"
#include "workbench/window/density/DensityReadings.h"
#include "workbench/window/density/EyeFiguring.h"

#include <QElapsedTimer>
#include <QObject>

class DensityMenu;
class Player;
class QMainWindow;
class TimeMark;
class VCGLTimeDiagram;
class WayBack;

/// The densities of the window, with all that belongs to them: their menu, what they measure, and
/// the way back from a click to the signal.
class Densities : public QObject
{
    Q_OBJECT
public:
    /// @param panes  time, eye and IQ, in this order. All outlive it.
    Densities(QMainWindow& window, Player& player, ViewPanes& panes, VCGLTimeDiagram& time);
    ~Densities() override;

    DensityMenu& menu() { return *m_menu; }
    DensityPane& eye() { return *m_eye; }
    DensityPane& iq() { return *m_iq; }
    WayBack& wayBack() { return *m_wayBack; }
    TimeMark& timeMark() { return *m_mark; }
    /// Shows the same units as the diagrams.
    void refresh();
    /// Switches them as they were left.
    void restore();
    /// Waits until they show and measure all that was played.
    void settle();

signals:
    /// One of them was switched, and its diagram is to show what is there, or needs nothing.
    void switched(DensityPane& pane);

private:
    void connectPane(DensityPane& pane);
    void show(DensityPane& pane);
    void showFigured();
    void showPoints();
    void forget(const DensityPane& pane);
    void switchWanted();
    void keep();
    void fitIdeal();

    Player& m_player;
    ViewPanes& m_panes;
    EyeFiguring* m_figuring;
    DensityPane* m_eye;
    DensityPane* m_iq;
    DensityMenu* m_menu;
    TimeMark* m_mark;
    WayBack* m_wayBack;
    DensityReadings m_readings;
    EyeFiguredPtr m_figured;    // null: nothing yet
    std::size_t m_lines = 1;    // of its table
    std::int64_t m_idealAt = 0; // symbols from which on the ideal points are fitted again
};
