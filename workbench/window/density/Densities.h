// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/window/density/DensityPane.h"
#include "workbench/window/density/DensityReadings.h"
#include "workbench/window/density/EyeFiguring.h"

#include <QElapsedTimer>
#include <QObject>

class DensityMenu;
class MaskChoice;
class MaskMenu;
class ParameterDock;
class Player;
class QMainWindow;
class TimeMark;
class VCGLTimeDiagram;
class WayBack;

/// The densities of the window and what belongs to them: their menu, their figures, and the way
/// back from a click to the signal.
class Densities : public QObject
{
    Q_OBJECT
public:
    /// @param panes  time, eye and IQ, in this order. All outlive it.
    Densities(QMainWindow& window, Player& player, ViewPanes& panes, VCGLTimeDiagram& time,
              ParameterDock& dock);
    ~Densities() override;

    DensityMenu& menu() { return *m_menu; }
    DensityPane& eye() { return *m_eye; }
    DensityPane& iq() { return *m_iq; }
    WayBack& wayBack() { return *m_wayBack; }
    MaskChoice& masks() { return *m_masks; }
    TimeMark& timeMark() { return *m_mark; }
    /// Shows the units that the diagrams show.
    void refresh();
    /// Switches the densities on or off as the user left them.
    void restore();
    /// Shows all symbols that are kept.
    void autoScale();
    /// Waits until all that was played is shown and measured.
    void settle();

signals:
    /// A density was switched: its diagram has to show the signal, or nothing any more.
    void switched(DensityPane& pane);
    /// Something cannot be done.
    /// @param why  a sentence for the user.
    void refused(const QString& why);

private:
    void connectPane(DensityPane& pane);
    void show(DensityPane& pane);
    void showFigured();
    void showPoints();
    void forget(const DensityPane& pane);
    void switchWanted();
    void keep();
    void connectMenu();
    void showMask();
    void showModes();
    void showHits();

    Player& m_player;
    ViewPanes& m_panes;
    EyeFiguring* m_figuring;
    DensityPane* m_eye;
    DensityPane* m_iq;
    MaskChoice* m_masks;
    MaskMenu* m_maskMenu;
    DensityMenu* m_menu;
    TimeMark* m_mark;
    WayBack* m_wayBack;
    ParameterDock& m_dock;
    DensityReadings m_readings;
    std::optional<double> m_symbolSeconds; // where times are in seconds
    EyeFiguredPtr m_figured;               // null: nothing yet
    std::size_t m_lines = 1;               // of its table
};
