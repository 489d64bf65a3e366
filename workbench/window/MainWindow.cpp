// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/MainWindow.h"
#include "workbench/sources/LiveAddress.h"

#include "views/VCGLEyeDiagram.h"
#include "views/VCGLIQDiagram.h"
#include "views/VCGLTimeDiagram.h"
#include "workbench/feed/Measuring.h"
#include "workbench/player/Hints.h"
#include "workbench/window/Appearance.h"
#include "workbench/window/NoticeBar.h"
#include "workbench/window/Overlay.h"
#include "workbench/window/Progress.h"
#include "workbench/window/SchemeChoice.h"
#include "workbench/window/StatusFields.h"
#include "workbench/window/density/Densities.h"
#include "workbench/window/dialogs/ExportDialog.h"
#include "workbench/window/dialogs/InfoDialog.h"
#include "workbench/window/dialogs/Opening.h"
#include "workbench/window/menus/DensityMenu.h"
#include "workbench/window/menus/FileMenu.h"
#include "workbench/window/menus/HelpMenu.h"
#include "workbench/window/menus/MenuEntries.h"
#include "workbench/window/menus/PlaybackControls.h"
#include "workbench/window/menus/ViewMenu.h"
#include "workbench/window/panels/ParameterDock.h"
#include "workbench/window/panels/ParameterPanel.h"
#include "workbench/window/panels/RefusedInput.h"
#include "workbench/window/panes/Readings.h"
#include "workbench/window/panes/ViewBindings.h"
#include "workbench/window/panes/ViewPanes.h"

#include <QApplication>
#include <QDropEvent>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QToolBar>
#include <QUrl>
#include <QVBoxLayout>
#include <QWindow>

namespace {

constexpr int statusPeriodMs = 150; // at most, where no picture comes
constexpr int statusSlackMs = 60;
// At every other update of the status, so that figures can be read.
constexpr int readingsPeriodMs = 190;

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

MainWindow::MainWindow(SchemeChoice& scheme)
    : m_scheme(scheme)
    , m_notice(new NoticeBar(this))
    , m_progress(new Progress(this))
    , m_panes(new ViewPanes(this))
    , m_timeView(m_panes->add<VCGLTimeDiagram>("time", tr("&Time diagram")))
    , m_eyeView(m_panes->add<VCGLEyeDiagram>("eye", tr("&Eye diagram")))
    , m_iqView(m_panes->add("iq", tr("&IQ diagram"), &VCGLIQDiagram::RenderInProportion))
    , m_status(new StatusFields(this))
    , m_parameters(new ParameterDock(m_player, this))
    , m_file(new FileMenu(*this))
    , m_opening(new Opening(*m_progress, this))
    , m_playback(new PlaybackControls(*this, m_player, *m_panes))
    , m_view(new ViewMenu(*this, m_player, *m_panes, *m_parameters))
    , m_densities(new Densities(*this, m_player, *m_panes, *m_timeView, *m_parameters))
    , m_states(*m_panes)
    , m_levels(feed(), *m_timeView, *m_eyeView, *m_iqView)
    , m_units(*m_timeView, *m_eyeView)
    , m_readings(new Readings(*m_panes, this))
    , m_measuring(new Measuring(this))
    , m_export(*m_panes, feed(), *m_eyeView, *m_iqView)
{
    new refusedInput::Watch(this);
    setMinimumSize(640, 400);
    setAcceptDrops(true);
    setStatusBar(m_status);
    appearance::apply(*this);
    buildViews();
    buildMenus();
    buildToolBar();
    addDockWidget(Qt::RightDockWidgetArea, m_parameters);
    connectPlayer();
    m_parameters->connectTo(m_scheme);
    m_statusTimer.setInterval(statusPeriodMs);
    connect(&m_statusTimer, &QTimer::timeout, this, &MainWindow::refreshStatus);
    menus::keepKeys(*this);
    m_timeView->setFocus();
}

MainWindow::~MainWindow() = default;

void MainWindow::buildViews()
{
    viewBindings::bind(*m_timeView);
    viewBindings::bind(*m_eyeView);
    viewBindings::bind(*m_iqView);
    for (const ViewPanes::Pane& pane : m_panes->panes())
        pane.canvas->installEventFilter(this);
    for (std::size_t k = 0; k < m_panes->panes().size(); ++k) {
        QMenu* menu = m_panes->panes()[k].menu;
        menu->addSeparator();
        connect(menu->addAction(tr("E&xport...")), &QAction::triggered, this,
                [this, k] { exportView(k); });
    }
    m_panes->restore();

    auto* center = new QWidget(this);
    auto* column = new QVBoxLayout(center);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_panes);
    const int captionHeight = m_timeView->GetPlotRect(m_timeView->sizeHint()).top();
    new Overlay(*m_panes, captionHeight, {m_notice, m_progress});
    setCentralWidget(center);
}

void MainWindow::buildMenus()
{
    for (QMenu* menu :
         std::initializer_list<QMenu*>{m_file, m_playback, m_view, &m_densities->menu()})
        menuBar()->addMenu(menu);
    menuBar()->addMenu(new HelpMenu(*this));
    connect(m_file, &FileMenu::fileChosen, m_opening, &Opening::ask);
    connect(m_file, &FileMenu::recentChosen, m_opening, &Opening::openAgain);
    connect(m_file, &FileMenu::streamChosen, m_opening, &Opening::open);
    connect(m_opening, &Opening::done, this, &MainWindow::takeOrSay);
    connect(m_file, &FileMenu::builtInChosen, this, [this] {
        m_player.openBuiltIn(m_player.builtIn());
        feed().transport().play();
    });
    connect(m_file, &FileMenu::demoChosen, this, [this](ModulationKind kind) {
        ModulationSettings settings = m_player.demo();
        settings.modulation = kind;
        m_player.openDemo(settings);
        feed().transport().play();
    });
    connect(m_file, &FileMenu::exportWanted, this, [this] { exportView(m_panes->focused()); });
    connect(m_file, &FileMenu::informationWanted, this,
            [this] { (new InfoDialog(m_player.information(), this))->open(); });
}

void MainWindow::buildToolBar()
{
    QToolBar* bar = addToolBar(tr("Tool bar"));
    bar->setObjectName(QStringLiteral("ToolBar"));
    bar->setMovable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    bar->setIconSize(QSize(18, 18));
    bar->addAction(&m_file->openAction());
    bar->addSeparator();
    m_playback->addTo(*bar);
    bar->addSeparator();
    bar->addAction(&m_view->autoScaleAction());
}

void MainWindow::connectPlayer()
{
    connect(&m_player, &Player::opened, this, &MainWindow::showSource);
    connect(&m_player, &Player::changed, this, &MainWindow::refresh);
    connect(&m_player, &Player::clockChanged, this, [this] { sayNotices({}); });
    connect(&feed().transport(), &Transport::playingChanged, this, &MainWindow::showPlaying);
    // A paused view keeps its picture, because it takes no new data.
    connect(&feed(), &SignalFeed::timeCleared, m_timeView, [this] {
        if (!m_timeView->IsPaused())
            m_timeView->Clear();
    });
    connect(&feed(), &SignalFeed::symbolsCleared, m_eyeView, [this] {
        if (!m_eyeView->IsPaused())
            m_eyeView->Clear();
        if (!m_iqView->IsPaused())
            m_iqView->Clear();
    });
    connect(&feed(), &SignalFeed::played, this, &MainWindow::refreshWithPicture,
            Qt::QueuedConnection);
    connect(m_measuring, &Measuring::measured, m_readings, &Readings::show);
    connect(m_densities, &Densities::switched, this, &MainWindow::showSwitched);
    connect(m_densities, &Densities::refused, m_notice, &NoticeBar::say);
    connect(&m_view->autoScaleAction(), &QAction::triggered, m_densities, &Densities::autoScale);
}

/// A diagram takes nothing while its density is shown, and all that is there afterwards.
void MainWindow::showSwitched(const DensityPane& pane)
{
    const auto show = [this, &pane](auto& view) {
        if (pane.isOn())
            return viewBindings::release(view);
        view.Clear();
        viewBindings::bind(view);
        emit m_player.lookChanged();
    };
    if (pane.kind() == DensityPane::Kind::Eye)
        show(*m_eyeView);
    else
        show(*m_iqView);
    refreshStatus();
}

/// Shows the notices of the recording, and of its eye.
void MainWindow::sayNotices(QStringList notices)
{
    if (const auto eye = m_player.checkEye(); !eye)
        notices += Hints::text(eye.error());
    if (notices.isEmpty())
        m_notice->hide();
    else
        m_notice->say(feed().source().name + QStringLiteral(": ") +
                      notices.join(QStringLiteral(".\n")));
}

void MainWindow::showSource(const QStringList& notices)
{
    const SignalFacts& source = feed().source();
    setWindowTitle(tr("%1 - Orvane workbench").arg(source.name));
    m_states.restart();
    m_measuring->cancel();
    m_readings->show(Measurement());
    QTimer::singleShot(PaneStates::timeoutMs + 1, this, &MainWindow::refreshStatus);
    m_panes->showWhilePaused([this] { feed().showNothing(); });
    m_status->setSource(source.name);
    sayNotices(notices);
    refresh();
}

// Escape comes here when the widget with the focus, such as a view with a ruler, does not use it. A
// shortcut would take the key away from that widget.
void MainWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier)
        leaveWhatIsOnTop();
    else
        QMainWindow::keyPressEvent(event);
}

void MainWindow::leaveWhatIsOnTop()
{
    if (m_progress->isVisible())
        m_progress->cancel();
    else if (m_notice->isVisible())
        m_notice->hide();
    else
        setWindowState(windowState() & ~Qt::WindowFullScreen);
}

void MainWindow::refresh()
{
    m_playback->refresh();
    m_view->refresh(feed());
    m_densities->refresh();
    if (feed().isOpen())
        m_parameters->panel().show(m_player);
    m_parameters->showReceiver();
    m_units.show(feed());
    m_readings->setUnits(feed().levelUnit(), feed().scale());
    refreshStatus();
}

void MainWindow::measure()
{
    m_measuring->cancel();
    m_readings->show(Measuring::of(feed().gate(), m_player.setup()));
    m_densities->settle();
}

void MainWindow::refreshStatus()
{
    m_playback->refreshTime();
    m_states.refresh(feed());
    m_levels.follow();
    if (!feed().transport().isPlaying() || !m_readingsClock.isValid() ||
        m_readingsClock.hasExpired(readingsPeriodMs)) {
        m_readingsClock.start();
        m_measuring->request(feed().gate(), m_player.setup());
        m_parameters->showReports();
    }
    m_status->setTrouble(feed().hasEnded() ? Message(tr("the stream has ended"))
                                           : feed().trouble());
    m_status->setSampleRate(feed().format().sampleRate, feed().source().sampleRate);
    m_status->setLeftOut(feed().source().isLive ? std::optional(feed().leftOutPart())
                                                : std::nullopt,
                         feed().gapCount());
    // The frame rate is a mean over a second, so that it can be read.
    if (!feed().transport().isPlaying()) {
        m_status->setFrameRate(std::nullopt);
    } else if (m_frameClock.elapsed() >= 1000) {
        m_status->setFrameRate(m_frameCount * 1000.0 / static_cast<double>(m_frameClock.restart()));
        m_frameCount = 0;
    }
}

/// Together with a picture, the window is brought to the screen once for both.
void MainWindow::refreshWithPicture()
{
    if (!m_statusTimer.isActive() || m_statusTimer.remainingTime() > statusSlackMs)
        return;
    m_statusTimer.start();
    refreshStatus();
}

void MainWindow::showPlaying(bool playing)
{
    if (playing) {
        m_frameClock.start();
        m_frameCount = 0;
        m_statusTimer.start();
    } else {
        m_statusTimer.stop();
        refreshStatus();
    }
}

void MainWindow::takeOrSay(const QString& address, Result<Recording>& recording)
{
    const auto opened = std::move(recording).and_then(
        [this](Recording&& taken) { return m_player.open(std::move(taken), 0, std::nullopt); });
    if (opened) {
        m_file->remember(address);
        feed().transport().play();
        return;
    }
    m_notice->say(tr("%1: %2").arg(LiveAddress::title(address), Hints::text(opened.error())));
    if (!QFileInfo::exists(address))
        m_file->forget(address);
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_panes->firstShown().canvas && event->type() == QEvent::Paint)
        ++m_frameCount;
    if (watched == m_timeView && event->type() == QEvent::Paint)
        feed().reachBack(m_timeView->GetXAxisRange().first);
    if (watched == m_iqView && event->type() == QEvent::Resize)
        QTimer::singleShot(0, this, &MainWindow::fitIqAxes); // when the plot has its new size
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    connect(windowHandle(), &QWindow::screenChanged, this, &MainWindow::growToMinimum,
            static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::UniqueConnection));
}

// On a screen of another scale a window may keep its size in device pixels, and be too small.
void MainWindow::growToMinimum() { resize(size().expandedTo(minimumSize())); }

void MainWindow::exportView(std::size_t index)
{
    (new ExportDialog(m_export, *m_panes, index, this))->open();
}

void MainWindow::fitIqAxes()
{
    const QSize plot = m_iqView->GetPlotRect().size();
    if (!plot.isEmpty())
        feed().iq().setAspect(static_cast<double>(plot.width()) / plot.height());
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (!droppedFile(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event)
{
    event->acceptProposedAction();
    m_opening->ask(droppedFile(event->mimeData()));
}

void MainWindow::applyColors()
{
    appearance::apply(*this);
    m_scheme.noticeColors();
}

// A change of the ColorSet repaints every widget: here the window learns of it.
void MainWindow::paintEvent(QPaintEvent* event)
{
    QMainWindow::paintEvent(event);
    if (appearance::isApplied())
        return;
    QTimer::singleShot(0, this, &MainWindow::applyColors);
}
