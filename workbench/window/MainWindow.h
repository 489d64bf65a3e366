// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/feed/SignalFeed.h"
#include "workbench/sources/ModulationSource.h"
#include "workbench/sources/NrzSource.h"
#include "workbench/sources/Recording.h"

#include <QElapsedTimer>
#include <QMainWindow>
#include <QTimer>

#include <optional>

class NoticeBar;
class ParameterPanel;
class QComboBox;
class StatusFields;
class VCGLEyeDiagram;
class VCGLIQDiagram;
class VCGLTimeDiagram;
class ViewPanes;

/// The workbench: views of one signal, what can be set beside them, what plays below. Recordings
/// are opened from the menu or dropped on the window; what goes wrong is said in a bar above the
/// views, in one sentence.
///
/// The views' pause buttons, the tool bar and the feed stay in step: the signal stands still while
/// it is paused, and goes on where it stopped.
class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    MainWindow();
    ~MainWindow() override;

    /// Takes over a recording, not playing, and says what is amiss with it.
    /// @param recording   has a source.
    /// @param channel     from 1; where complex, 1 is I and 2 is Q.
    /// @param symbolRate  Bd; none: the time axis shows seconds or parts of them.
    /// @param why         when it cannot be shown: one sentence; the former signal stays.
    bool open(Recording recording, int channel, std::optional<double> symbolRate, QString& why);
    /// Opens the built-in signal, not playing.
    void openBuiltIn(const NrzSettings& settings = NrzSettings());
    /// Opens a built-in signal with a modulation, not playing.
    void openDemo(const ModulationSettings& settings);
    /// Why the eye is not that of the symbols, one sentence; empty when it is.
    QString eyeNotice() const;

    SignalFeed& feed() { return m_feed; }
    VCGLTimeDiagram& timeView() { return *m_timeView; }
    VCGLEyeDiagram& eyeView() { return *m_eyeView; }
    VCGLIQDiagram& iqView() { return *m_iqView; }
    ViewPanes& panes() { return *m_panes; }
    /// Shows span, speed and position as the feed has them.
    void refresh();
    /// Takes the place on the screen and shares it out as when a window was last closed.
    void restoreRoom();

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void buildViews();
    void buildActions();
    void buildToolBar();
    void buildDock();
    void bindTimeView();
    void bindEyeView();
    void bindIqView();
    void fitIqAxes();
    void showSource();
    void showFullScale();
    void refreshStatus();
    void showPlaying(bool playing);
    void applyColors();
    void chooseFile();
    void openOrSay(const QString& fileName);
    void restartBuiltIn();
    void chooseSymbolRate(double symbolRate);
    void sayNotices(QStringList notices);
    void setPaused(bool paused);

    SignalFeed m_feed;
    NrzSettings m_builtIn; // of the built-in signal, also while a recording plays
    QStringList m_details; // of the recording that plays
    QString m_folder;      // where the last recording was
    NoticeBar* m_notice;
    ViewPanes* m_panes;
    VCGLTimeDiagram* m_timeView;
    VCGLEyeDiagram* m_eyeView;
    VCGLIQDiagram* m_iqView;
    StatusFields* m_status;
    ParameterPanel* m_panel;
    QComboBox* m_speed;
    QAction* m_open;
    QAction* m_playPause;
    QAction* m_toStart;
    QAction* m_repeat;
    QAction* m_autoScale;
    QAction* m_showPanel;
    QTimer m_statusTimer;
    QElapsedTimer m_frameClock;
    int m_frameCount = 0; // pictures of the first view since m_frameClock started
};
