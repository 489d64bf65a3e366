// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/DensityPlot.h"

#include "density/DensityExport.h"
#include "density/PlotPainter.h"
#include "density/PlotState.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace density {

namespace {

constexpr int framePeriodMs = 33;
constexpr std::size_t mostHitTraces = 50; // of a mask, drawn

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

/// What samples reach, with a tenth to spare; none without a good one.
std::optional<Window> reachOf(const std::optional<TraceShape>& shape, const float* samples,
                              std::size_t count)
{
    float low = std::numeric_limits<float>::infinity(), high = -low;
    for (std::size_t k = 0; k < count; ++k) {
        if (std::isfinite(samples[k])) {
            low = std::min(low, samples[k]);
            high = std::max(high, samples[k]);
        }
    }
    if (!(low <= high))
        return std::nullopt;
    const auto bottom = static_cast<double>(low), top = static_cast<double>(high);
    // A flat line has its own size to spare, and 0 has a unit.
    const double extent = top > bottom ? top - bottom : top != 0.0 ? std::abs(top) : 1.0;
    Window window;
    if (shape) {
        window = {-0.5 * shape->symbolCount, 0.5 * shape->symbolCount, bottom - 0.1 * extent,
                  top + 0.1 * extent};
    } else {
        const double reach = 1.1 * std::max(std::abs(bottom), std::abs(top));
        window = reach > 0.0 ? Window{-reach, reach, -reach, reach} : Window{};
    }
    return window.isUsable() ? std::optional<Window>(window) : std::nullopt;
}

PlotData dataOf(Counter& counter, const std::optional<std::int64_t>& litSymbol)
{
    PlotData data;
    data.snapshot = counter.snapshot();
    data.errors = counter.errorVectors().figures();
    const KeptSignal& kept = counter.kept();
    std::vector<std::int64_t> wanted;
    if (const MaskTest* test = counter.maskTest()) {
        data.mask = test->result();
        wanted = data.mask->newestHits;
        wanted.resize(std::min(wanted.size(), mostHitTraces));
    }
    if (wanted.empty() && !litSymbol)
        return data;
    const auto samplesAt = [&](std::size_t age) {
        return std::vector<float>(kept.at(age), kept.at(age) + kept.length());
    };
    // Hits come in the order of the kept symbols.
    auto next = wanted.begin();
    for (std::size_t age = 0; age < kept.count(); ++age) {
        const std::int64_t symbol = kept.symbolAt(age);
        if (next != wanted.end() && symbol == *next) {
            data.hits.push_back(samplesAt(age));
            ++next;
        }
        if (symbol == litSymbol && data.lit.empty())
            data.lit = samplesAt(age);
    }
    return data;
}

} // namespace

DensityPlot::DensityPlot(Kind kind, const Counter::Settings& settings, QWidget* parent)
    : QWidget(parent)
    , d(std::make_unique<PlotState>(settingsFor(kind, settings)))
{
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(200, 150);
    d->timer.setInterval(framePeriodMs);
    connect(&d->timer, &QTimer::timeout, this, &DensityPlot::ask);
    d->timer.start();
}

// First of all the thread, which tells this object.
DensityPlot::~DensityPlot() { d->counting.reset(); }

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
    d->isStale = true;
}

void DensityPlot::setHome(const Window& home)
{
    if (!home.isUsable())
        return;
    d->hasHome = true;
    d->view.setHome(home);
    d->counting->order([home](Counter& counter) { counter.setHome(home); });
    d->isStale = true;
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
    d->image = QImage();
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
    update();
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

void DensityPlot::showZoom()
{
    d->counting->order([zoom = d->view.zoom()](Counter& counter) { counter.setZoom(zoom); });
    d->isStale = true;
    update();
}

// Asks for what is counted, where something changed and the last answer has come.
void DensityPlot::ask()
{
    if (d->isAsked || !(d->isStale || d->isFedElsewhere))
        return;
    const std::int64_t shown = d->isStale || !d->data.snapshot ? -1 : d->data.snapshot->allSymbols;
    d->isAsked = true;
    d->isStale = false;
    d->counting->order([this, shown, lit = d->litSymbol](Counter& counter) {
        const auto data = counter.allSymbols() == shown
                              ? nullptr
                              : std::make_shared<PlotData>(dataOf(counter, lit));
        QMetaObject::invokeMethod(
            this, [this, data] { take(data.get()); }, Qt::QueuedConnection);
    });
}

void DensityPlot::take(PlotData* data)
{
    d->isAsked = false;
    if (!data)
        return;
    // As long as more comes, more may wait to be counted.
    d->isStale = d->isStale || !d->data.snapshot ||
                 d->data.snapshot->allSymbols != data->snapshot->allSymbols;
    const std::vector<std::int64_t> hits = maskHits();
    d->data = std::move(*data);
    d->image = QImage();
    update();
    emit updated();
    if (maskHits() != hits)
        emit maskHitsChanged();
}

void DensityPlot::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    renderPicture(painter, size());
}

void DensityPlot::renderPicture(QPainter& painter, const QSize& size)
{
    if (size.isEmpty())
        return;
    const bool isDark = PlotPainter::groundOf(d->shape.has_value()).lightness() < 128;
    if (d->image.isNull() || isDark != d->colors.isDarkGround) {
        d->colors.isDarkGround = isDark;
        d->image = d->data.snapshot ? toImage(*d->data.snapshot, d->colors) : QImage();
    }
    PlotPainter(*d, painter, size, fontMetrics()).paint(size);
}

void DensityPlot::resizeEvent(QResizeEvent*)
{
    d->view.setPlace(PlotPainter::placeOf(size(), fontMetrics()));
}

} // namespace density
