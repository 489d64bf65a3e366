// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/player/Player.h"
#include "workbench/window/panes/AxisLabels.h"
#include "workbench/window/panes/LevelFollower.h"
#include "workbench/window/panes/PaneStates.h"
#include "workbench/window/panes/ViewExport.h"

#include <QElapsedTimer>
#include <QMainWindow>
#include <QTimer>

class Densities;
class DensityPane;
class FileMenu;
class NoticeBar;
class Opening;
class ParameterDock;
class PlaybackControls;
class Progress;
class SchemeChoice;
class Measuring;
class Readings;
class StatusFields;
class VCGLEyeDiagram;
class VCGLIQDiagram;
class VCGLTimeDiagram;
class ViewMenu;
class ViewPanes;

/// The workbench: views of one signal, with its settings beside them and the controls of playing
/// below. Recordings are opened from the menu or dropped on the window; problems are shown in a bar
/// above the views, in one sentence.
class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    /// @param scheme  of the colours; outlives the window.
    explicit MainWindow(SchemeChoice& scheme);
    ~MainWindow() override;

    Player& player() { return m_player; }
    SignalFeed& feed() { return m_player.feed(); }
    VCGLTimeDiagram& timeView() { return *m_timeView; }
    VCGLEyeDiagram& eyeView() { return *m_eyeView; }
    VCGLIQDiagram& iqView() { return *m_iqView; }
    ViewPanes& panes() { return *m_panes; }
    Densities& densities() { return *m_densities; }
    const ViewExport& exporter() const { return m_export; }
    /// Runs long operations.
    Progress& progress() { return *m_progress; }
    /// Measures the gate at once, and shows the figures.
    void measure();
    /// Updates all widgets from the feed.
    void refresh();
    /// Restores the settings of the window that was closed last, see Player::keep.
    void restoreParameters();
    /// Adds a recording that was opened from elsewhere to the recent ones.
    void remember(const QString& fileName);
    /// Restores place, size and layout of the window that was closed last.
    void restoreRoom();
    /// Saves all that the next start restores, as closing does.
    void keep();

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void buildViews();
    void buildMenus();
    void buildToolBar();
    void connectPlayer();
    void growToMinimum();
    void fitIqAxes();
    void showSwitched(const DensityPane& pane);
    void exportView(std::size_t index);
    void showSource(const QStringList& notices);
    void refreshStatus();
    void refreshWithPicture();
    void showPlaying(bool playing);
    void applyColors();
    void leaveWhatIsOnTop();
    void takeOrSay(const QString& address, Result<Recording>& recording);
    void sayNotices(QStringList notices);

    SchemeChoice& m_scheme;
    Player m_player;
    NoticeBar* m_notice;
    Progress* m_progress;
    ViewPanes* m_panes;
    VCGLTimeDiagram* m_timeView;
    VCGLEyeDiagram* m_eyeView;
    VCGLIQDiagram* m_iqView;
    StatusFields* m_status;
    ParameterDock* m_parameters;
    FileMenu* m_file;
    Opening* m_opening;
    PlaybackControls* m_playback;
    ViewMenu* m_view;
    Densities* m_densities;
    PaneStates m_states;
    LevelFollower m_levels;
    AxisUnits m_units;
    Readings* m_readings;
    Measuring* m_measuring;
    ViewExport m_export;
    QElapsedTimer m_readingsClock;
    QTimer m_statusTimer;
    QElapsedTimer m_frameClock;
    int m_frameCount = 0; // pictures of the first view since m_frameClock started
};
