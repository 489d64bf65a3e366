// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/DensityPlot.h"
#include "density/PlotState.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

#include <cmath>

namespace density {

namespace {

constexpr double zoomStep = 1.25;   // a notch of the wheel
constexpr double notch = 120.0;     // eighths of a degree
constexpr double nearPixels = 5.0;  // from a cursor
constexpr double snapPixels = 8.0;  // from what a cursor snaps to
constexpr double clickPixels = 2.0; // about a click
constexpr std::size_t mostPassed = 1000;

} // namespace

/// The cursor at a pixel.
static int cursorAt(const Cursors& cursors, const PlotView& view, const QPoint& pixel)
{
    int nearest = Cursors::None;
    double distance = nearPixels;
    for (int k = 0; k < Cursors::Count && cursors.isShown; ++k) {
        const double place = cursors.places[static_cast<std::size_t>(k)];
        const QPointF at = view.toPixel({place, place});
        const double away = std::abs(Cursors::isX(k) ? at.x() - pixel.x() : at.y() - pixel.y());
        if (away <= distance) {
            distance = away;
            nearest = k;
        }
    }
    return nearest;
}

void DensityPlot::wheelEvent(QWheelEvent* event)
{
    const QPointF at = event->position();
    if (!d->view.place().contains(at)) {
        event->ignore();
        return;
    }
    // With Alt, and of some systems with Shift, the wheel is taken for one sideways.
    const QPoint turned = event->angleDelta();
    const int angle = turned.y() != 0 ? turned.y() : turned.x();
    const bool isX = event->modifiers() & Qt::ShiftModifier;
    const bool isY = event->modifiers() & Qt::ControlModifier;
    const auto axes = isX == isY ? PlotView::BothAxes : isX ? PlotView::XAxis : PlotView::YAxis;
    if (d->view.zoomAbout(at, std::pow(zoomStep, -(angle / notch)), axes))
        showZoom();
    event->accept();
}

void DensityPlot::mousePressEvent(QMouseEvent* event)
{
    if (!d->view.place().contains(event->pos())) {
        event->ignore();
        return;
    }
    d->pressedAt = event->pos();
    const int cursor = cursorAt(d->cursors, d->view, event->pos());
    const bool isBand =
        event->button() == Qt::RightButton || event->modifiers() & Qt::ShiftModifier;
    if (event->button() == Qt::LeftButton && cursor != Cursors::None && !isBand) {
        d->cursors.selected = cursor;
        d->drag = PlotState::Drag::Cursor;
        update();
    } else if (isBand) {
        d->drag = PlotState::Drag::Band;
        if (!d->band)
            d->band = new QRubberBand(QRubberBand::Rectangle, this);
        d->band->setGeometry(QRect(d->pressedAt, QSize()));
        d->band->show();
    } else if (event->button() == Qt::LeftButton) {
        d->drag = PlotState::Drag::Maybe;
        d->view.beginPan();
    }
}

void DensityPlot::mouseMoveEvent(QMouseEvent* event)
{
    if (d->drawing) {
        d->drawing->setPointer(d->view.toValue(event->pos()));
        update();
    }
    const QPoint moved = event->pos() - d->pressedAt;
    switch (d->drag) {
    case PlotState::Drag::None:
        break;
    case PlotState::Drag::Maybe:
        if (moved.manhattanLength() < QApplication::startDragDistance())
            break;
        d->drag = PlotState::Drag::Pan;
        [[fallthrough]];
    case PlotState::Drag::Pan:
        if (d->view.pan(moved))
            showZoom();
        break;
    case PlotState::Drag::Band:
        d->band->setGeometry(QRect(d->pressedAt, event->pos()).normalized() &
                             d->view.place().toRect());
        break;
    case PlotState::Drag::Cursor: {
        const QPointF value = d->view.toValue(event->pos());
        const QPointF near = d->view.toValue(event->pos() + QPointF(snapPixels, -snapPixels));
        const int index = d->cursors.selected;
        const bool isX = Cursors::isX(index);
        double& place = d->cursors.places[static_cast<std::size_t>(index)];
        place = isX ? value.x() : value.y();
        if (!(event->modifiers() & Qt::AltModifier))
            place = CursorSnap::nearest(isX ? d->snap.x : d->snap.y, place,
                                        isX ? near.x() - value.x() : near.y() - value.y())
                        .value_or(place);
        update();
        break;
    }
    }
}

void DensityPlot::mouseReleaseEvent(QMouseEvent* event)
{
    const auto drag = d->drag;
    d->drag = PlotState::Drag::None;
    if (drag == PlotState::Drag::Band && d->band) {
        const QRect chosen = d->band->geometry();
        d->band->hide();
        // Less is a slip of the hand.
        constexpr int least = 4;
        if (chosen.width() >= least && chosen.height() >= least && d->view.zoomTo(chosen))
            showZoom();
    } else if (drag == PlotState::Drag::Maybe && d->drawing) {
        d->drawing->add(d->view.toValue(event->pos()));
        update();
    } else if (drag == PlotState::Drag::Maybe) {
        tellPassed(event->pos());
    }
}

void DensityPlot::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !d->view.place().contains(event->pos()))
        return;
    if (d->drawing)
        closeDrawing();
    else if (d->view.goHome())
        showZoom();
}

void DensityPlot::drawMask(bool on)
{
    if (on == isDrawingMask() || !d->shape)
        return;
    d->drawing = on ? std::optional<MaskDrawing>(MaskDrawing()) : std::nullopt;
    // The line follows the pointer.
    setMouseTracking(on);
    if (on) {
        setCursor(Qt::CrossCursor);
        setFocus();
    } else {
        unsetCursor();
    }
    update();
    emit drawingMaskChanged(on);
}

bool DensityPlot::isDrawingMask() const { return d->drawing.has_value(); }

void DensityPlot::closeDrawing()
{
    PlacedMask placed;
    placed.mask.levels = Mask::Levels::Absolute;
    placed = d->mask.value_or(placed);
    const auto mask = d->drawing->addedTo(placed.mask, placed.instant, placed.low, placed.high);
    if (!mask) // Two corners are no polygon yet.
        return;
    drawMask(false);
    setMask(mask, placed.instant, placed.low, placed.high);
    emit maskDrawn(*mask);
}

bool DensityPlot::drawByKey(int key)
{
    if (!d->drawing)
        return false;
    if (key == Qt::Key_Return || key == Qt::Key_Enter)
        closeDrawing();
    else if (key == Qt::Key_Backspace)
        d->drawing->takeBack();
    else if (key == Qt::Key_Escape)
        drawMask(false);
    else
        return false;
    update();
    return true;
}

void DensityPlot::tellPassed(const QPointF& pixel)
{
    const QPointF reach(clickPixels, -clickPixels);
    const QPointF low = d->view.toValue(pixel - reach);
    const QPointF high = d->view.toValue(pixel + reach);
    const Window around{low.x(), high.x(), low.y(), high.y()};
    const QPointF place = d->view.toValue(pixel);
    d->counting->order([this, around, place](Counter& counter) {
        QVector<qint64> symbols;
        for (const Counter::Hit& hit : counter.hits(around, {1, 1}, 0, 0, mostPassed))
            symbols.append(hit.symbol);
        QMetaObject::invokeMethod(
            this, [this, symbols, place] { emit passed(symbols, place); }, Qt::QueuedConnection);
    });
}

bool DensityPlot::moveCursor(int key, bool isFar)
{
    if (!d->cursors.isShown)
        return false;
    const int index = d->cursors.selected;
    const bool isX = Cursors::isX(index);
    const bool isForward = key == (isX ? Qt::Key_Right : Qt::Key_Up);
    if (!isForward && key != (isX ? Qt::Key_Left : Qt::Key_Down))
        return false;
    const Window shown = window();
    const double pixel =
        isX ? shown.width() / d->view.place().width() : shown.height() / d->view.place().height();
    d->cursors.places[static_cast<std::size_t>(index)] +=
        (isForward ? pixel : -pixel) * (isFar ? 10.0 : 1.0);
    update();
    return true;
}

bool DensityPlot::snapCursor(int key, bool isBack)
{
    if (key != Qt::Key_N || !d->cursors.isShown)
        return false;
    const int index = d->cursors.selected;
    double& place = d->cursors.places[static_cast<std::size_t>(index)];
    place = CursorSnap::next(Cursors::isX(index) ? d->snap.x : d->snap.y, place, !isBack)
                .value_or(place);
    update();
    return true;
}

void DensityPlot::setEqualScale(bool isEqual)
{
    if (d->shape || isEqual == d->view.hasEqualScale())
        return;
    d->view.setEqualScale(isEqual);
    showZoom();
}

/// Keys that a plot needs while it draws or shows cursors, whatever they else mean in its window.
static bool isOwnKey(int key, bool isDrawing, bool hasCursors)
{
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Backspace:
    case Qt::Key_Escape:
        return isDrawing;
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_N:
        return hasCursors;
    default:
        return false;
    }
}

// Tab selects a cursor while they are shown; else it goes to the next widget as usual.
bool DensityPlot::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride &&
        isOwnKey(static_cast<QKeyEvent*>(event)->key(), isDrawingMask(), d->cursors.isShown)) {
        event->accept();
        return true;
    }
    if (event->type() == QEvent::KeyPress && d->cursors.isShown &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Tab) {
        d->cursors.selected = (d->cursors.selected + 1) % Cursors::Count;
        update();
        return true;
    }
    return QWidget::event(event);
}

void DensityPlot::keyPressEvent(QKeyEvent* event)
{
    const auto zoomed = [this](bool isOther) {
        if (isOther)
            showZoom();
    };
    if (event->matches(QKeySequence::Undo)) {
        zoomed(d->view.undo());
    } else if (event->matches(QKeySequence::Redo)) {
        zoomed(d->view.redo());
    } else if (drawByKey(event->key()) ||
               moveCursor(event->key(), event->modifiers() & Qt::ShiftModifier) ||
               snapCursor(event->key(), event->modifiers() & Qt::ShiftModifier)) {
        return;
    } else if (event->key() == Qt::Key_Home) {
        zoomed(d->view.goHome());
    } else if (event->key() == Qt::Key_C && event->modifiers() == Qt::NoModifier) {
        showCursors(!d->cursors.isShown);
    } else if (event->key() == Qt::Key_E && event->modifiers() == Qt::NoModifier) {
        setEqualScale(!d->view.hasEqualScale());
    } else if (event->key() == Qt::Key_L) {
        setColors(d->colors.scale, !d->colors.isLogarithmic);
    } else if (event->key() == Qt::Key_S && event->modifiers() == Qt::NoModifier) {
        setColors(
            static_cast<ColorScale>((static_cast<int>(d->colors.scale) + 1) % colorScaleCount),
            d->colors.isLogarithmic);
    } else if (event->key() == Qt::Key_Space) {
        setPaused(!d->isPaused);
    } else if (event->key() == Qt::Key_Delete) {
        clear();
    } else {
        QWidget::keyPressEvent(event);
    }
}

} // namespace density
