// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/DensityPlot.h"

#include "density/PlotState.h"

#include <QRunnable>

#include <algorithm>
#include <cmath>

namespace density {

namespace {

constexpr int framePeriodMs = 33;
constexpr int resizedMs = 150; // without another size, until it is counted in

Counter::Settings settingsFor(DensityPlot::Kind kind, Counter::Settings settings)
{
    if (kind == DensityPlot::Kind::Constellation) {
        settings.shape.reset();
        // Of equal scale: square.
        if (settings.size == GridSize())
            settings.size.columns = settings.size.rows;
    } else if (!settings.shape) {
        settings.shape = TraceShape();
    }
    return Counter(settings).settings();
}

} // namespace

DensityPlot::DensityPlot(Kind kind, const Counter::Settings& settings, QWidget* parent)
    : QWidget(parent)
    , d(std::make_unique<PlotState>(settingsFor(kind, settings)))
{
    d->followsSize = settings.size == GridSize();
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(200, 150);
    d->timer.setInterval(framePeriodMs);
    connect(&d->timer, &QTimer::timeout, this, &DensityPlot::ask);
    d->timer.start();
    d->resized.setSingleShot(true);
    d->resized.setInterval(resizedMs);
    connect(&d->resized, &QTimer::timeout, this, &DensityPlot::showZoom);
}

// First of all the threads, which tell this object.
DensityPlot::~DensityPlot()
{
    d->counting.reset();
    d->workers.waitForDone();
}

void DensityPlot::addData(const double* samples, std::size_t count, std::int64_t firstSymbol)
{
    std::vector<float> single(count);
    // What is too large for single precision becomes infinite, and is left out.
    std::transform(samples, samples + count, single.begin(), [](double sample) {
        return std::abs(sample) <= static_cast<double>(std::numeric_limits<float>::max())
                   ? static_cast<float>(sample)
                   : std::numeric_limits<float>::quiet_NaN();
    });
    addData(single.data(), count, firstSymbol);
}

void DensityPlot::addData(const float* samples, std::size_t count, std::int64_t firstSymbol)
{
    if (d->isPaused || count == 0)
        return;
    if (!d->hasHome) {
        if (const auto home = reachOf(d->shape, samples, count))
            setHome(*home);
    }
    CountingThread::Block block;
    block.samples.assign(samples, samples + count);
    block.firstSymbol = firstSymbol;
    d->counting->tryPush(std::move(block));
    d->isStale = true;
}

void DensityPlot::addTorn(std::int64_t count)
{
    if (d->isPaused)
        return;
    CountingThread::Block block;
    block.torn = count;
    d->counting->tryPush(std::move(block));
    d->isStale = true;
}

std::size_t DensityPlot::sampleCount() const
{
    return d->shape ? static_cast<std::size_t>(d->shape->sampleCount) : 2;
}

CountingThread& DensityPlot::counting()
{
    d->isFedElsewhere = true;
    return *d->counting;
}

void DensityPlot::clear()
{
    d->counting->clear();
    showZoom();
}

void DensityPlot::setHome(const Window& home)
{
    if (!home.isUsable())
        return;
    d->hasHome = true;
    d->view.setHome(home);
    fitCells(true);
    update();
}

void DensityPlot::autoScale()
{
    d->counting->order([this, shape = d->shape](Counter& counter) {
        const KeptSignal all = counter.kept().newest(counter.kept().count());
        const std::size_t samples = all.count() * all.length();
        const auto home =
            samples > 0 ? reachOf(shape, all.at(all.count() - 1), samples) : std::nullopt;
        if (home)
            QMetaObject::invokeMethod(
                this, [this, home] { setHome(*home); }, Qt::QueuedConnection);
    });
}

Window DensityPlot::window() const { return d->view.window(); }

void DensityPlot::setPersistence(const Persistence& persistence)
{
    d->counting->order([persistence](Counter& counter) { counter.setPersistence(persistence); });
    d->isStale = true;
}

void DensityPlot::setPaused(bool paused)
{
    if (paused == d->isPaused)
        return;
    d->isPaused = paused;
    update();
    emit pausedChanged(paused);
}

bool DensityPlot::isPaused() const { return d->isPaused; }

void DensityPlot::setSymbolRate(double symbolRate)
{
    d->symbolRate = std::isfinite(symbolRate) && symbolRate > 0.0 ? symbolRate : 0.0;
    update();
}

void DensityPlot::setTimeUnit(TimeUnit unit)
{
    d->timeUnit = unit;
    update();
}

void DensityPlot::setUnit(const QString& unit)
{
    d->unit = unit;
    update();
}

void DensityPlot::setColors(ColorScale scale, bool isLogarithmic)
{
    d->colors.scale = scale;
    d->colors.isLogarithmic = isLogarithmic;
    d->isStale = true;
    update();
}

void DensityPlot::showCursors(bool show)
{
    if (show && !d->cursors.isShown) {
        const Window shown = window();
        const auto between = [](double start, double stop, double part) {
            return start + part * (stop - start);
        };
        d->cursors.places = {
            between(shown.left, shown.right, 0.4), between(shown.left, shown.right, 0.6),
            between(shown.bottom, shown.top, 0.4), between(shown.bottom, shown.top, 0.6)};
    }
    d->cursors.isShown = show;
    if (show)
        findSnap();
    update();
}

std::array<double, 4> DensityPlot::cursorPlaces() const { return d->cursors.places; }

// Finds what cursors snap to, of an eye on a thread of its own.
void DensityPlot::findSnap()
{
    if (d->isSnapAsked || !d->data.snapshot)
        return;
    d->snapSymbols = d->data.snapshot->allSymbols;
    if (!d->shape) {
        d->snap = CursorSnap::of(d->data.errors);
        return;
    }
    constexpr std::size_t most = 20000; // is as much as a pixel needs
    d->isSnapAsked = true;
    copyTraces(most, [this, shape = *d->shape](const KeptSignalPtr& traces) {
        d->workers.start(QRunnable::create([this, shape, traces] {
            const CursorSnap found = CursorSnap::of(EyeFigures::of(*traces, shape));
            QMetaObject::invokeMethod(
                this,
                [this, found] {
                    d->isSnapAsked = false;
                    d->snap = found;
                },
                Qt::QueuedConnection);
        }));
    });
}

void DensityPlot::setMask(const std::optional<Mask>& mask, double instant, double low, double high)
{
    d->mask.reset();
    d->maskPolygons.clear();
    if (mask && d->shape) {
        const MaskTest test(*mask, *d->shape, instant, low, high);
        d->mask = PlacedMask{*mask, instant, low, high};
        d->maskPolygons = test.polygons();
        d->counting->order(
            [test](Counter& counter) { counter.setMaskTest(std::make_unique<MaskTest>(test)); });
    } else {
        d->counting->order([](Counter& counter) { counter.setMaskTest(nullptr); });
    }
    d->isStale = true;
    update();
}

void DensityPlot::setIdeal(const std::vector<std::complex<double>>& ideal)
{
    d->counting->order([ideal](Counter& counter) { counter.setIdeal(ideal); });
    d->isStale = true;
}

ErrorVectors::Figures DensityPlot::errorVectors() const { return d->data.errors; }

std::optional<MaskTest::Result> DensityPlot::maskResult() const { return d->data.mask; }

std::vector<std::int64_t> DensityPlot::maskHits() const
{
    return d->data.mask ? d->data.mask->newestHits : std::vector<std::int64_t>();
}

void DensityPlot::copyTraces(std::size_t most, std::function<void(KeptSignalPtr)> ready)
{
    d->counting->order([this, most, ready = std::move(ready)](Counter& counter) {
        const auto traces = std::make_shared<const KeptSignal>(counter.kept().newest(most));
        QMetaObject::invokeMethod(
            this, [traces, ready] { ready(traces); }, Qt::QueuedConnection);
    });
}

void DensityPlot::setLitSymbol(const std::optional<std::int64_t>& symbol)
{
    d->litSymbol = symbol;
    d->isStale = true;
}

SnapshotPtr DensityPlot::snapshot() const { return d->data.snapshot; }

QSize DensityPlot::sizeHint() const { return {800, 600}; }

} // namespace density
