// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/density/DensityPane.h"

#include "density/DensityExport.h"
#include "workbench/player/Player.h"
#include "workbench/receiver/Decisions.h"
#include "workbench/window/density/HomeFinder.h"
#include "workbench/window/menus/Icons.h"

#include <QAction>
#include <QKeyEvent>

#include <complex>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

namespace {

using Points = std::vector<std::complex<double>>;

/// Lays the ideal points on those that came, turned and scaled as these are: again whenever there
/// are twice as many symbols, as long as all are kept and none is lost by it.
class IdealFinder
{
public:
    explicit IdealFinder(Points ideal)
        : m_ideal(std::move(ideal))
    {}
    /// @param batch  I, Q, I, Q...
    /// @return where they lie now; none: where they lay.
    std::optional<Points> take(const std::vector<float>& batch)
    {
        if (m_ideal.empty() || m_next > most)
            return std::nullopt;
        for (std::size_t k = 0; k + 1 < batch.size(); k += 2)
            add({static_cast<double>(batch[k]), static_cast<double>(batch[k + 1])});
        const auto gain = m_seen >= m_next ? Decisions(m_ideal).gainOf(m_points) : std::nullopt;
        if (!gain)
            return std::nullopt;
        m_next = 2 * m_seen;
        Points laid;
        laid.reserve(m_ideal.size());
        for (const std::complex<double>& point : m_ideal)
            laid.push_back(*gain * point);
        return laid;
    }

private:
    /// Of more than are needed some are left, evenly over all: a carrier's phase wanders.
    void add(const std::complex<double>& point)
    {
        if (m_seen++ % m_every != 0)
            return;
        m_points.push_back(point);
        if (m_points.size() < mostPoints)
            return;
        for (std::size_t k = 0; 2 * k < m_points.size(); ++k)
            m_points[k] = m_points[2 * k];
        m_points.resize(m_points.size() / 2);
        m_every *= 2;
    }

    static constexpr auto most = static_cast<std::int64_t>(density::Counter::leastKept);
    static constexpr std::size_t mostPoints = 8192;
    Points m_ideal;
    Points m_points;
    std::int64_t m_every = 1;
    std::int64_t m_seen = 0;
    std::int64_t m_next = 64;
};

} // namespace

/// From the feed's thread to the window's.
class DensityPane::FoundHome
{
public:
    void set(const density::Window& home)
    {
        const std::lock_guard lock(m_mutex);
        m_home = home;
    }
    std::optional<density::Window> take()
    {
        const std::lock_guard lock(m_mutex);
        return std::exchange(m_home, std::nullopt);
    }

private:
    std::mutex m_mutex;
    std::optional<density::Window> m_home;
};

DensityPane::DensityPane(Kind kind, ViewPanes& panes, std::size_t index, Player& player,
                         QObject* parent)
    : QObject(parent)
    , m_kind(kind)
    , m_panes(panes)
    , m_index(index)
    , m_player(player)
    , m_feed(player.feed())
    , m_switching(new QAction(signIcon(Sign::Density),
                              kind == Kind::Eye ? tr("Density of the &eye") : tr("Density of &IQ"),
                              this))
{
    m_cover.render = [this](QPainter& painter, const QSize& size) {
        m_plot->renderPicture(painter, size);
    };
    m_cover.data = [this](const QString& ending) { return exported(ending); };
    m_switching->setCheckable(true);
    m_switching->setToolTip(tr("Density: counts how often all symbols passed where (D)"));
    panes.panes().at(index).view->focusProxy()->addAction(m_switching);
    connect(m_switching, &QAction::triggered, this, &DensityPane::setOn);
    connect(&m_feed, &SignalFeed::countingRestarted, this, &DensityPane::restart);
    connect(&m_feed, &SignalFeed::played, this, &DensityPane::takeHome);
}

DensityPane::~DensityPane()
{
    if (isOn())
        switchOff();
}

DensityFeed::Kind DensityPane::feedKind() const
{
    return m_kind == Kind::Eye ? DensityFeed::Kind::Traces : DensityFeed::Kind::Points;
}

void DensityPane::setOn(bool on)
{
    m_switching->setChecked(on);
    if (on == isOn())
        return;
    const bool hadFocus = m_panes.focused() == m_index;
    if (on)
        switchOn();
    else
        switchOff();
    const ViewPanes::Pane& pane = m_panes.panes().at(m_index);
    if (hadFocus)
        (on ? m_plot.data() : static_cast<QWidget*>(pane.view))->setFocus();
    emit switched(on);
}

void DensityPane::switchOn()
{
    density::Counter::Settings settings;
    settings.shape->sampleCount = static_cast<int>(DensityFeed::traceLength);
    m_plot = new density::DensityPlot(m_kind, settings);
    m_plot->setMinimumSize(0, 0); // the view has the size
    m_plot->setAccessibleName(m_switching->text().remove(QLatin1Char('&')));
    m_plot->installEventFilter(this);
    connect(m_plot, &density::DensityPlot::updated, this, &DensityPane::updated);
    connect(m_plot, &density::DensityPlot::passed, this, &DensityPane::passed);
    m_plot->showCursors(m_hasCursors);
    m_cover.widget = m_plot;
    m_panes.setCover(m_index, &m_cover, nullptr);
    m_feed.countWith(feedKind(), sink());
}

void DensityPane::switchOff()
{
    m_feed.countWith(feedKind(), nullptr); // the feed's thread uses the plot
    m_panes.setCover(m_index, nullptr, nullptr);
    m_readings = nullptr;
    delete m_plot;
}

void DensityPane::restart()
{
    if (!m_plot)
        return;
    m_plot->clear();
    m_plot->setLitSymbol(std::nullopt);
    m_feed.countWith(feedKind(), sink()); // which finds another home
    emit restarted();
}

/// Counts on the plot's thread; ideal points are set there, too, before what they were found from.
DensityFeed::Sink DensityPane::sink()
{
    const std::size_t length = m_plot->sampleCount();
    m_home = std::make_shared<FoundHome>();
    const auto modulation = m_player.setup().modulation;
    const bool hasIdeal = modulation && m_kind == Kind::Constellation;
    m_plot->setIdeal({});
    return [this, counting = &m_plot->counting(), length, home = m_home,
            homes = HomeFinder(m_kind == Kind::Eye),
            ideals = IdealFinder(hasIdeal ? modulationKinds::points(*modulation) : Points())](
               DensityFeed::Batch batch, bool mayWait) mutable {
        const auto count = static_cast<std::int64_t>(batch.samples.size() / length);
        if (const auto found = homes.take(batch.samples, count)) {
            home->set(*found);
            QMetaObject::invokeMethod(this, &DensityPane::takeHome, Qt::QueuedConnection);
        }
        if (const auto ideal = ideals.take(batch.samples))
            counting->order([ideal](density::Counter& counter) { counter.setIdeal(*ideal); });
        density::CountingThread::Block block{std::move(batch.samples), batch.firstSymbol,
                                             batch.torn};
        if (mayWait)
            counting->push(std::move(block));
        else
            counting->tryPush(std::move(block));
    };
}

/// As soon as it is found, while all symbols are kept: counting them anew loses none.
void DensityPane::takeHome()
{
    const auto home = m_home && m_plot ? m_home->take() : std::nullopt;
    if (home)
        m_plot->setHome(*home);
}

void DensityPane::setReadings(ReadingTable* readings)
{
    m_readings = readings;
    m_panes.setCover(m_index, &m_cover, readings);
}

void DensityPane::setMode(const QStringList& variants)
{
    m_cover.mode = variants;
    if (isOn())
        m_panes.setMode(m_index, {});
}

void DensityPane::showCursors(bool show)
{
    m_hasCursors = show;
    if (m_plot)
        m_plot->showCursors(show);
}

void DensityPane::settle()
{
    if (!m_plot)
        return;
    m_feed.waitForCounted();
    takeHome();
    m_plot->settle();
}

QByteArray DensityPane::exported(const QString& ending) const
{
    const density::SnapshotPtr snapshot = m_plot->snapshot();
    if (!snapshot || snapshot->symbolCount == 0)
        return QByteArray();
    return ending == QLatin1String("npy") ? density::toNpy(*snapshot) : density::toCsv(*snapshot);
}

// Keys of the plot that would be the window's.
bool DensityPane::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        const bool isMove =
            key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Up || key == Qt::Key_Down;
        if (isMove && m_hasCursors)
            event->accept();
    }
    return QObject::eventFilter(watched, event);
}
