// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/MainWindow.h"

#include "iq/GLIQDiagram.h"
#include "platform/gui/ColorSet.h"
#include "views/VCGLEyeDiagram.h"
#include "views/VCGLIQDiagram.h"
#include "views/VCGLTimeDiagram.h"
#include "workbench/window/Appearance.h"
#include "workbench/window/Icons.h"
#include "workbench/window/InfoDialog.h"
#include "workbench/window/NoticeBar.h"
#include "workbench/window/ParameterPanel.h"
#include "workbench/window/StatusFields.h"
#include "workbench/window/ViewPanes.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDockWidget>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QScrollArea>
#include <QSettings>
#include <QToolBar>
#include <QUrl>
#include <QVBoxLayout>

namespace {

const QString geometryKey = QStringLiteral("Window/Geometry");
const QString panesKey = QStringLiteral("Window/Panes");

constexpr int statusPeriodMs = 200;
constexpr double speeds[] = {0.1, 0.2, 0.5, 1.0, 2.0, 5.0, 10.0};
constexpr double demoSpan = 80.0; // symbols
constexpr double fullScale = 1.1; // a little more than the largest level

// Usual endings.
constexpr const char* recordingPatterns =
    " (*.wav *.w64 *.rf64 *.flac *.aif *.aiff *.aifc *.au *.snd *.caf *.ogg *.oga *.opus *.mp3"
    " *.mat *.voc *.wv *.sd2 *.svx *.nist *.sph *.xi *.htk *.avr *.paf *.pvf"
    " *.sigmf *.sigmf-meta *.sigmf-data *.cu8 *.cs8 *.cs16 *.cf32 *.fc32 *.iq *.s16 *.f32 *.csv "
    "*.tsv *.txt)";

QMenu* menuOf(VCGLIQDiagram& view)
{
    for (const auto& widget : view.Widgets()) {
        if (auto* diagram = dynamic_cast<GLIQDiagram*>(widget.get()))
            return diagram->getContextMenu(nullptr, nullptr, 0);
    }
    return nullptr;
}

/// First local file of a drag, empty when there is none.
QString droppedFile(const QMimeData* data)
{
    for (const QUrl& url : data->urls()) {
        if (url.isLocalFile())
            return url.toLocalFile();
    }
    return QString();
}

} // namespace

MainWindow::MainWindow()
    : m_notice(new NoticeBar(this))
    , m_panes(new ViewPanes(this))
    , m_timeView(m_panes->add<VCGLTimeDiagram>("time", tr("&Time diagram")))
    , m_eyeView(m_panes->add<VCGLEyeDiagram>("eye", tr("&Eye diagram")))
    // The axes of its own auto scaling would not have the same scale.
    , m_iqView(m_panes->add<VCGLIQDiagram>("iq", tr("&IQ diagram"), menuOf,
                                           [this] { m_feed.iq().fit(); }))
    , m_status(new StatusFields(this))
    , m_panel(new ParameterPanel(this))
    , m_speed(new QComboBox(this))
{
    setMinimumSize(640, 400);
    setAcceptDrops(true);
    setStatusBar(m_status);
    appearance::apply(*this);
    bindTimeView();
    bindEyeView();
    bindIqView();
    buildViews();
    buildActions();
    buildToolBar();
    buildDock();
    connect(&m_feed, &SignalFeed::playingChanged, this, &MainWindow::showPlaying);
    m_statusTimer.setInterval(statusPeriodMs);
    connect(&m_statusTimer, &QTimer::timeout, this, &MainWindow::refreshStatus);
    m_timeView->setFocus();
}

MainWindow::~MainWindow() = default;

void MainWindow::bindTimeView()
{
    m_timeView->SetData1_ValuePath(TimeValues::samplesPath);
    m_timeView->SetBaudrateData_ValuePath(TimeValues::markersPath);
    m_timeView->SetBaudrate_ValuePath(TimeValues::baudratePath);
    m_timeView->SetXAxisMin_ValuePath(TimeValues::xMinPath);
    m_timeView->SetXAxisMax_ValuePath(TimeValues::xMaxPath);
    m_timeView->SetYAxisMin_ValuePath(TimeValues::yMinPath);
    m_timeView->SetYAxisMax_ValuePath(TimeValues::yMaxPath);
    m_timeView->SetHasChangedTrigger_ValuePath(TimeValues::triggerPath);
}

void MainWindow::bindEyeView()
{
    m_eyeView->SetData1_ValuePath(EyeValues::samplesPath);
    m_eyeView->SetBaudrateData_ValuePath(EyeValues::markersPath);
    m_eyeView->SetYAxisMin_ValuePath(EyeValues::yMinPath);
    m_eyeView->SetYAxisMax_ValuePath(EyeValues::yMaxPath);
    m_eyeView->SetHasChangedTrigger_ValuePath(EyeValues::triggerPath);
}

void MainWindow::bindIqView()
{
    m_iqView->SetData1_ValuePath(IqValues::iPath);
    m_iqView->SetData2_ValuePath(IqValues::qPath);
    m_iqView->SetXAxisMin_ValuePath(IqValues::xMinPath);
    m_iqView->SetXAxisMax_ValuePath(IqValues::xMaxPath);
    m_iqView->SetYAxisMin_ValuePath(IqValues::yMinPath);
    m_iqView->SetYAxisMax_ValuePath(IqValues::yMaxPath);
    m_iqView->SetHasChangedTrigger_ValuePath(IqValues::triggerPath);
}

void MainWindow::buildViews()
{
    for (const ViewPanes::Pane& pane : m_panes->panes())
        pane.canvas->installEventFilter(this);
    m_panes->restore();
    connect(m_panes, &ViewPanes::paused, &m_feed, &SignalFeed::pause);
    connect(m_panes, &ViewPanes::resumed, &m_feed, &SignalFeed::play);
    connect(&m_feed, &SignalFeed::signalSeen, m_panes, &ViewPanes::autoScale);

    auto* center = new QWidget(this);
    auto* column = new QVBoxLayout(center);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_notice);
    column->addWidget(m_panes, 1);
    setCentralWidget(center);
}

void MainWindow::buildActions()
{
    const auto add = [this](QMenu* menu, const QString& text, const QKeySequence& shortcut) {
        QAction* action = menu->addAction(text);
        action->setShortcut(shortcut);
        addAction(action); // its shortcut works without the menu bar, too
        return action;
    };
    QMenu* file = menuBar()->addMenu(tr("&File"));
    m_open = add(file, tr("&Open recording..."), QKeySequence::Open);
    connect(m_open, &QAction::triggered, this, &MainWindow::chooseFile);
    QAction* builtIn = add(file, tr("&Built-in signal"), Qt::CTRL + Qt::Key_B);
    connect(builtIn, &QAction::triggered, this, [this] {
        openBuiltIn(m_builtIn);
        m_feed.play();
    });
    QMenu* demos = file->addMenu(tr("&Modulated signal"));
    for (const QString& name : ModulationSettings::names()) {
        connect(demos->addAction(name), &QAction::triggered, this, [this, name] {
            ModulationSettings settings;
            settings.scheme =
                static_cast<ModulationSettings::Scheme>(ModulationSettings::names().indexOf(name));
            openDemo(settings);
            m_feed.play();
        });
    }
    QAction* information = add(file, tr("&Information..."), Qt::CTRL + Qt::Key_I);
    connect(information, &QAction::triggered, this, [this] {
        const QStringList lines = Recording::describe(*m_feed.input()) + m_details;
        (new InfoDialog(lines, this))->open();
    });
    file->addSeparator();
    QAction* quit = add(file, tr("&Quit"), Qt::CTRL + Qt::Key_Q);
    connect(quit, &QAction::triggered, this, &QWidget::close);

    QMenu* playback = menuBar()->addMenu(tr("&Playback"));
    m_playPause = add(playback, tr("&Play"), Qt::Key_P);
    connect(m_playPause, &QAction::triggered, this, [this] { setPaused(m_feed.isPlaying()); });
    m_toStart = add(playback, tr("From the &start"), Qt::Key_Home);
    connect(m_toStart, &QAction::triggered, &m_feed, &SignalFeed::rewind);
    m_repeat = add(playback, tr("&Repeat"), Qt::Key_R);
    m_repeat->setCheckable(true);
    m_repeat->setChecked(m_feed.repeat());
    connect(m_repeat, &QAction::toggled, &m_feed, &SignalFeed::setRepeat);

    QMenu* view = menuBar()->addMenu(tr("&View"));
    m_autoScale = add(view, tr("&Auto scale"), Qt::Key_A);
    connect(m_autoScale, &QAction::triggered, this, [this] { m_feed.setWatching(true); });
    QAction* full = add(view, tr("&Full scale"), Qt::Key_F);
    connect(full, &QAction::triggered, this, &MainWindow::showFullScale);
    view->addSeparator();
    for (const ViewPanes::Pane& pane : m_panes->panes()) {
        view->addAction(pane.showing);
        addAction(pane.showing);
    }
    view->addSeparator();
    for (const ViewPanes::Pane& pane : m_panes->panes()) {
        const QString title = pane.showing->text().remove(QLatin1Char('&'));
        view->addMenu(tr("%1 setup").arg(title))->addActions(pane.menu->actions());
    }
    view->addSeparator();
    m_showPanel = add(view, tr("&Parameters"), Qt::Key_F9);
    QAction* fullScreen = add(view, tr("F&ull screen"), Qt::Key_F11);
    connect(fullScreen, &QAction::triggered, this,
            [this] { setWindowState(windowState() ^ Qt::WindowFullScreen); });

    m_open->setIcon(signIcon(Sign::Open));
    m_toStart->setIcon(signIcon(Sign::ToStart));
    m_repeat->setIcon(signIcon(Sign::Repeat));
    m_autoScale->setIcon(signIcon(Sign::AutoScale));
    m_playPause->setIcon(signIcon(Sign::Play));
}

void MainWindow::buildToolBar()
{
    QToolBar* bar = addToolBar(tr("Tool bar"));
    bar->setMovable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    bar->setIconSize(QSize(18, 18));
    bar->addAction(m_open);
    bar->addSeparator();
    bar->addAction(m_toStart);
    bar->addAction(m_playPause);
    bar->addAction(m_repeat);
    bar->addWidget(m_speed);
    bar->addSeparator();
    bar->addAction(m_autoScale);
    for (const double speed : speeds)
        m_speed->addItem(tr("%1x").arg(speed), speed);
    m_speed->setToolTip(tr("Seconds of signal played in a second"));
    m_speed->setAccessibleName(tr("Speed"));
    connect(m_speed, QOverload<int>::of(&QComboBox::activated), this, [this](int index) {
        m_feed.setSpeed(m_speed->itemData(index).toDouble());
        refresh();
    });
}

void MainWindow::buildDock()
{
    auto* scroll = new QScrollArea(this);
    scroll->setWidget(m_panel);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* dock = new QDockWidget(tr("Parameters"), this);
    dock->setObjectName(QStringLiteral("Parameters"));
    dock->setFeatures(QDockWidget::DockWidgetClosable);
    dock->setTitleBarWidget(new QWidget(dock)); // none: the sections have headings
    dock->setWidget(scroll);
    addDockWidget(Qt::RightDockWidgetArea, dock);
    m_showPanel->setCheckable(true);
    m_showPanel->setChecked(true);
    connect(m_showPanel, &QAction::toggled, dock, &QWidget::setVisible);

    connect(m_panel, &ParameterPanel::channelChosen, this, [this](int channel) {
        m_feed.setChannel(channel);
        refresh();
    });
    connect(m_panel, &ParameterPanel::spanChosen, this, [this](double seconds) {
        m_feed.setSpan(seconds);
        refresh();
    });
    connect(m_panel, &ParameterPanel::autoScaleWanted, m_autoScale, &QAction::trigger);
    connect(m_panel, &ParameterPanel::fullScaleWanted, this, &MainWindow::showFullScale);
    connect(m_panel, &ParameterPanel::noiseChosen, this, [this](double rms) {
        m_builtIn.noise = rms;
        m_feed.changeInput([rms](SignalSource& source) {
            if (auto* builtIn = dynamic_cast<NrzSource*>(&source))
                builtIn->setNoise(rms);
        });
    });
    connect(m_panel, &ParameterPanel::bandwidthChosen, this, [this](double part) {
        m_builtIn.bandwidth = part;
        m_feed.changeInput([part](SignalSource& source) {
            if (auto* builtIn = dynamic_cast<NrzSource*>(&source))
                builtIn->setBandwidth(part);
        });
    });
    connect(m_panel, &ParameterPanel::jitterChosen, this, [this](double rms) {
        m_builtIn.jitter = rms;
        m_feed.changeInput([rms](SignalSource& source) {
            if (auto* builtIn = dynamic_cast<NrzSource*>(&source))
                builtIn->setJitter(rms);
        });
    });
    connect(m_panel, &ParameterPanel::levelCountChosen, this, [this](int count) {
        m_builtIn.levelCount = count;
        restartBuiltIn();
    });
    connect(m_panel, &ParameterPanel::frameChosen, this, [this](int symbolCount) {
        m_builtIn.frameSymbolCount = symbolCount;
        restartBuiltIn();
    });
    connect(m_panel, &ParameterPanel::symbolRateChosen, this, &MainWindow::chooseSymbolRate);
    connect(m_panel, &ParameterPanel::eyeSymbolCountChosen, this, [this](int count) {
        m_feed.eye().setSymbolCount(count);
        refresh();
    });
    connect(m_panel, &ParameterPanel::eyeBandwidthChosen, this,
            [this](double bandwidth) { m_feed.eye().setBandwidth(bandwidth); });
    connect(m_panel, &ParameterPanel::darkSchemeChosen, this, [](bool dark) {
        ColorSet::Instance().SetScheme(dark ? ColorSet::Scheme::Dark : ColorSet::Scheme::Light);
        ColorSet::Instance().Save();
    });
}

bool MainWindow::open(Recording recording, int channel, std::optional<double> symbolRate,
                      QString& why)
{
    if (channel > recording.source->valueCount()) {
        why = tr("there is no channel %1; the recording has %2")
                  .arg(channel)
                  .arg(recording.source->valueCount());
        return false;
    }
    m_feed.open(std::move(recording.source), channel - 1, symbolRate);
    m_details = recording.details;
    showSource();
    sayNotices(recording.notices);
    return true;
}

void MainWindow::openBuiltIn(const NrzSettings& settings)
{
    m_builtIn = settings;
    m_feed.open(std::make_unique<NrzSource>(m_builtIn), 0, std::nullopt);
    m_details.clear();
    showSource();
}

void MainWindow::openDemo(const ModulationSettings& settings)
{
    m_feed.open(std::make_unique<ModulationSource>(settings), 0, std::nullopt);
    m_feed.setSpan(demoSpan / *m_feed.source()->symbolRate());
    showSource();
}

void MainWindow::restartBuiltIn()
{
    const bool wasPlaying = m_feed.isPlaying();
    openBuiltIn(m_builtIn);
    if (wasPlaying)
        m_feed.play();
}

void MainWindow::chooseSymbolRate(double symbolRate)
{
    if (dynamic_cast<const NrzSource*>(m_feed.input())) {
        m_builtIn.symbolRate = symbolRate;
        restartBuiltIn();
        return;
    }
    m_feed.setSymbolRate(symbolRate > 0.0 ? std::optional<double>(symbolRate) : std::nullopt);
    sayNotices({});
    refresh();
}

QString MainWindow::eyeNotice() const
{
    if (m_feed.eye().cut().clock != EyeCut::Clock::None)
        return QString();
    const TimeScale& scale = m_feed.scale();
    if (scale.unit != TimeScale::Unit::Symbol)
        return tr("the symbol rate is not known, so the eye is cut every %1 samples; give it by "
                  "--symbol-rate or beside the views")
            .arg(EyeCut::fixedLength);
    return tr("an eye takes %1 to %2 samples of a symbol; it is cut every %3 samples until another "
              "symbol rate is given")
        .arg(SymbolTiming::minSamplesPerSymbol)
        .arg(SymbolTiming::maxSamplesPerSymbol)
        .arg(EyeCut::fixedLength);
}

/// Says what is amiss with the recording, and with its eye.
void MainWindow::sayNotices(QStringList notices)
{
    if (const QString notice = eyeNotice(); !notice.isEmpty())
        notices += notice;
    if (notices.isEmpty())
        m_notice->hide();
    else
        m_notice->say(m_feed.source()->name() + QStringLiteral(": ") +
                      notices.join(QStringLiteral(".\n")));
}

void MainWindow::showSource()
{
    const SignalSource& source = *m_feed.source();
    std::optional<double> length;
    if (const auto count = source.sampleCount())
        length = static_cast<double>(*count) / source.sampleRate();
    setWindowTitle(tr("%1 - Orvane workbench").arg(source.name()));
    m_status->setSource(source.name(), source.sampleRate(), length);
    m_notice->hide();
    showFullScale(); // until there is a signal to fit the axis to
    refresh();
}

void MainWindow::showFullScale() { m_feed.setLevels(-fullScale, fullScale); }

void MainWindow::refresh()
{
    int index = m_speed->findData(m_feed.speed());
    if (index < 0) {
        index = m_speed->count();
        m_speed->addItem(tr("%1x").arg(m_feed.speed()), m_feed.speed());
    }
    m_speed->setCurrentIndex(index);
    if (m_feed.source())
        m_panel->show(m_feed);
    refreshStatus();
}

void MainWindow::refreshStatus()
{
    m_status->setPosition(static_cast<double>(m_feed.position()) / m_feed.scale().sampleRate);
    m_status->setDropCount(m_feed.dropCount());
    // A second smooths the frame rate enough to be read.
    if (!m_feed.isPlaying()) {
        m_status->setFrameRate(std::nullopt);
    } else if (m_frameClock.elapsed() >= 1000) {
        m_status->setFrameRate(m_frameCount * 1000.0 / static_cast<double>(m_frameClock.restart()));
        m_frameCount = 0;
    }
}

void MainWindow::showPlaying(bool playing)
{
    m_playPause->setText(playing ? tr("&Pause") : tr("&Play"));
    m_playPause->setIcon(signIcon(playing ? Sign::Pause : Sign::Play));
    if (playing) {
        m_frameClock.start();
        m_frameCount = 0;
        m_statusTimer.start();
    } else {
        m_statusTimer.stop();
        refreshStatus();
    }
    setPaused(!playing); // the views' buttons, where it was not one of them
}

void MainWindow::setPaused(bool paused) { m_panes->setPaused(paused); }

void MainWindow::chooseFile()
{
    const QString filters = tr("Recordings") + QLatin1String(recordingPatterns) +
                            QStringLiteral(";;") + tr("All files") + QStringLiteral(" (*)");
    const QString file =
        QFileDialog::getOpenFileName(this, tr("Open recording"), m_folder, filters);
    if (!file.isEmpty())
        openOrSay(file);
}

void MainWindow::openOrSay(const QString& fileName)
{
    m_folder = QFileInfo(fileName).absolutePath();
    Recording recording = Recording::open(fileName, {});
    QString why = recording.why;
    if (recording.source && open(std::move(recording), 1, std::nullopt, why))
        m_feed.play();
    else
        m_notice->say(tr("%1: %2").arg(fileName, why));
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_panes->firstShown().canvas && event->type() == QEvent::Paint)
        ++m_frameCount;
    if (watched == m_iqView && event->type() == QEvent::Resize)
        QTimer::singleShot(0, this, &MainWindow::fitIqAxes); // when its plot has its new size
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::fitIqAxes()
{
    const QSize plot = m_iqView->Widgets()[1]->rect().size();
    if (!plot.isEmpty())
        m_feed.iq().setAspect(static_cast<double>(plot.width()) / plot.height());
}

void MainWindow::restoreRoom()
{
    const QSettings settings(values::Persistant::StoreFile(), QSettings::IniFormat);
    restoreGeometry(settings.value(geometryKey).toByteArray());
    m_panes->setRoom(settings.value(panesKey).toList());
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    QSettings settings(values::Persistant::StoreFile(), QSettings::IniFormat);
    settings.setValue(geometryKey, saveGeometry());
    settings.setValue(panesKey, m_panes->room());
    QMainWindow::closeEvent(event);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (!droppedFile(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event)
{
    event->acceptProposedAction();
    openOrSay(droppedFile(event->mimeData()));
}

void MainWindow::applyColors()
{
    appearance::apply(*this);
    m_panel->showScheme();
}

// A change of the ColorSet repaints every widget: here the window learns of it.
void MainWindow::paintEvent(QPaintEvent* event)
{
    QMainWindow::paintEvent(event);
    if (appearance::isApplied())
        return;
    QTimer::singleShot(0, this, &MainWindow::applyColors);
}
