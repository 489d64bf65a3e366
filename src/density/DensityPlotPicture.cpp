// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// What a density plot shows: asking for counts in cells that fit, and painting them.
#include "density/DensityPlot.h"
#include "density/PlotFrame.h"
#include "density/PlotPainter.h"
#include "density/PlotState.h"

#include <QPaintEvent>
#include <QPainter>

#include <memory>
#include <utility>

namespace density {

namespace {

/// The cells that fit the place of a plot; none where another grid was asked for, or nothing fits.
std::optional<GridSize> cellsOf(const PlotState& state, const PlotView& view, double ratio)
{
    const QRectF& place = view.place();
    const bool canFollow = state.followsSize && place.width() > 1.0 && place.height() > 1.0;
    return canFollow ? std::optional<GridSize>(PlotFrame::gridOf(place, ratio)) : std::nullopt;
}

Window homeOf(const PlotState& state, const PlotView& view)
{
    return state.followsSize ? view.shownHome() : view.home();
}

} // namespace

// The home in the cells that fit the device. Where symbols would be lost by it, only when a new
// home is set.
void DensityPlot::fitCells(bool isNewHome)
{
    d->isFitAsked = false;
    const Window home = homeOf(*d, d->view);
    const std::optional<GridSize> size = cellsOf(*d, d->view, devicePixelRatioF());
    d->counting->order([=, hasHome = d->hasHome, zoom = d->view.shownZoom()](Counter& counter) {
        if (hasHome && (isNewHome || counter.keepsAll()))
            counter.setHome(home, size.value_or(counter.settings().size));
        counter.setZoom(zoom, size);
    });
    d->isStale = true;
}

// Of the size and the window as they are now, whatever is on its way.
bool DensityPlot::isFitting() const
{
    const SnapshotPtr& shown = d->data.snapshot;
    if (!shown)
        return false;
    const double ratio = devicePixelRatioF();
    PlotView view = d->view;
    view.setPlace(PlotFrame::placeOf(size(), fontMetrics(), ratio));
    const Window window = view.shownZoom().value_or(homeOf(*d, view));
    return shown->window == window && shown->size == cellsOf(*d, view, ratio).value_or(shown->size);
}

void DensityPlot::settle()
{
    d->ratio = devicePixelRatioF();
    d->view.setPlace(PlotFrame::placeOf(size(), fontMetrics(), d->ratio));
    fitCells(false);
    d->counting->wait();
    PlotData data;
    d->counting->order(
        [&data, request = request()](Counter& counter) { data = dataOf(counter, request); });
    d->counting->wait();
    d->isStale = false;
    take(&data, ++d->asked);
}

void DensityPlot::showZoom()
{
    d->isFitAsked = d->isStale = true;
    update();
}

PlotRequest DensityPlot::request() const
{
    return {d->colors, d->litSymbol, d->ground, d->groundWindow, d->frameKey};
}

// Asks for what is counted, where something changed and the last answer has come.
void DensityPlot::ask()
{
    if (d->isAsked || !(d->isStale || d->isFedElsewhere))
        return;
    // One at a time, however fast the wheel turns.
    if (d->isFitAsked)
        fitCells(false);
    const SnapshotPtr shown = d->isStale ? nullptr : d->data.snapshot;
    d->isAsked = true;
    d->isStale = false;
    const std::int64_t number = ++d->asked;
    d->counting->order(
        [this, shown, number, counting = d->counting.get(), request = request()](Counter& counter) {
            // Orders run before blocks: what was handed over may not be counted yet.
            const bool isMore = counting->hasWaiting();
            const bool isShown = shown && counter.allSymbols() == shown->allSymbols &&
                                 counter.leftOut() == shown->leftOut;
            auto data = isShown ? nullptr : std::make_shared<PlotData>(dataOf(counter, request));
            // Given away, so that one thread alone ever owns it.
            QMetaObject::invokeMethod(
                this,
                [this, data = std::move(data), number, isMore] {
                    d->isAsked = false;
                    d->isStale = d->isStale || isMore;
                    take(data.get(), number);
                },
                Qt::QueuedConnection);
        });
}

// An answer that was on its way while settle took a newer one is too late.
void DensityPlot::take(PlotData* data, std::int64_t number)
{
    if (!data || number < d->answered)
        return;
    d->answered = number;
    // As long as more comes, more may wait to be counted.
    d->isStale = d->isStale || !d->data.snapshot ||
                 d->data.snapshot->allSymbols != data->snapshot->allSymbols;
    const std::vector<std::int64_t> hits = maskHits();
    const std::int64_t symbols = data->snapshot->allSymbols;
    const CountRange range = d->data.range;
    d->data = std::move(*data);
    d->isStale = d->isStale || d->data.colors != d->colors;
    update(PlotPainter::changedBySymbols(*d, size(), font(), range));
    // Levels move slowly: found anew when as many symbols have come again, or after a clear.
    if (d->cursors.isShown && (symbols >= 2 * d->snapSymbols || symbols < d->snapSymbols))
        findSnap();
    emit updated();
    if (maskHits() != hits)
        emit maskHitsChanged();
}

void DensityPlot::paintEvent(QPaintEvent* event)
{
    const double ratio = devicePixelRatioF();
    if (ratio != d->ratio)
        resizeEvent(nullptr);
    heedGround();
    const QByteArray key = PlotFrame::keyOf(*d, size(), ratio, font());
    if (key != d->frameKey) {
        d->frameKey = key;
        d->frame = QImage(size() * ratio, QImage::Format_RGB32);
        d->frame.setDevicePixelRatio(ratio);
        QPainter painter(&d->frame);
        painter.setFont(font());
        PlotFrame(*d, painter, d->view).paint(size());
        painter.end();
        d->frame.setDevicePixelRatio(1.0);
        d->ground = d->frame.copy(PlotFrame::pixelsOf(d->view.place(), ratio));
        d->groundWindow = d->view.window();
        d->isStale = true;
    }
    QPainter painter(this);
    PlotPainter(*d, painter, d->view).paint(size(), d->frame, event->region());
}

void DensityPlot::renderPicture(QPainter& painter, const QSize& size)
{
    if (size.isEmpty())
        return;
    heedGround();
    PlotView view = d->view;
    view.setPlace(PlotFrame::placeOf(size, fontMetrics(), painter.device()->devicePixelRatioF()));
    PlotFrame(*d, painter, view).paint(size);
    PlotPainter(*d, painter, view).paint(size, {});
}

// Colours suit the ground, which may have become another.
void DensityPlot::heedGround()
{
    const bool isDark = PlotFrame::groundOf(d->shape.has_value()).lightness() < 128;
    if (isDark == d->colors.isDarkGround)
        return;
    d->colors.isDarkGround = d->data.colors.isDarkGround = isDark;
    if (d->data.snapshot)
        d->data.image = toImage(*d->data.snapshot, d->data.colors);
    d->data.whole = QImage();
}

void DensityPlot::resizeEvent(QResizeEvent*)
{
    d->ratio = devicePixelRatioF();
    d->view.setPlace(PlotFrame::placeOf(size(), fontMetrics(), d->ratio));
    d->resized.start();
}

} // namespace density
