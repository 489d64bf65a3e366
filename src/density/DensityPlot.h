// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/ColorScale.h"
#include "density/CountingThread.h"
#include "density/MaskTest.h"
#include "foundations/Export.h"

#include <QVector>
#include <QWidget>

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace density {

struct PlotData;
struct PlotState;

/// Shows how often a signal passed where: the traces of an eye over time in symbols and level, or
/// the points of a constellation over I and Q. Counts become colours; the legend at the right says
/// which. What is counted, in how many symbols, and what was left out, stands below the plot.
///
/// Wheel: zooms about the pointer; with Shift the X axis alone, with Ctrl the Y axis alone, unless
/// of an equal scale, which E ends and begins in a constellation. Drag: pans. Drag with Shift or
/// with the right button: zooms to the rectangle. Double click: home. Click: tells which symbols
/// passed there, see passed. Keys: Ctrl+Z and Ctrl+Y undo and redo a zoom, Home goes home, C shows
/// or hides cursors, of which Tab selects one that arrows move (with Shift ten times as far), the
/// mouse drags, and N sends to the next level, crossing or best instant (with Shift back); a drag
/// snaps to these, unless with Alt. L switches between logarithmic and linear colours, S goes to
/// the next colour scale, Space pauses, Del clears.
///
/// Counting runs on a thread of its own. Unless the settings say otherwise, a cell is a pixel of
/// the device, or a square of them where the plot has more than two million; after a resize,
/// symbols are counted anew in such cells as long as all of them are kept, else the picture of all
/// of them is stretched until the next clear or home. The plot is drawn 30 times a second at most,
/// while there is something new. GUI thread, but for counting().
class ORVANE_API DensityPlot : public QWidget
{
    Q_OBJECT
public:
    enum class Kind { Eye, Constellation };
    using TimeUnit = density::TimeUnit;

    /// @param settings  for an eye with a shape, for a constellation without; else with the
    /// standard
    ///                  one, or none. The home is found from the first block that comes, unless
    ///                  setHome was called.
    explicit DensityPlot(Kind kind, const Counter::Settings& settings = {},
                         QWidget* parent = nullptr);
    ~DensityPlot() override;

    /// Adds traces of the shape, one after the other, or I, Q, I, Q...; read during the call.
    /// Ignored while paused. Where counting does not keep up, symbols are left out and counted as
    /// torn.
    /// @param count        samples; a trace that is not whole counts as torn.
    /// @param firstSymbol  number of the first one; the others follow it.
    void addData(const float* samples, std::size_t count, std::int64_t firstSymbol);
    void addData(const double* samples, std::size_t count, std::int64_t firstSymbol);
    /// Counts symbols that others left out as torn. Ignored while paused.
    void addTorn(std::int64_t count);
    /// Samples of a trace, or 2 of a point.
    std::size_t sampleCount() const;
    /// For producers on other threads, which hand over without the GUI. Lives as long as the plot.
    CountingThread& counting();
    /// Forgets all symbols; what is shown stays.
    void clear();

    /// What is shown unless zoomed. Symbols are counted anew from those kept.
    void setHome(const Window& home);
    /// The home becomes what the kept symbols reach, with a tenth to spare.
    void autoScale();
    Window window() const;
    void setPersistence(const Persistence& persistence);
    void setPaused(bool paused);
    bool isPaused() const;
    /// Bd: read-outs have seconds too; 0, as at first: not known.
    void setSymbolRate(double symbolRate);
    /// Of the axis of time; symbols at first, and while the symbol rate is not known.
    void setTimeUnit(TimeUnit unit);
    /// Of the level, or of I and Q, such as "V"; empty at first.
    void setUnit(const QString& unit);
    /// Whether a unit is as long on both axes: as at first of a constellation, never of an eye.
    void setEqualScale(bool isEqual);
    void setColors(ColorScale scale, bool isLogarithmic);
    void showCursors(bool show);
    /// First and second X in symbols, or I, then first and second Y.
    std::array<double, 4> cursorPlaces() const;

    /// Tests the traces against a mask, those that are kept first; none ends it. Levels found, see
    /// Mask::placed.
    void setMask(const std::optional<Mask>& mask, double instant = 0.0, double low = 0.0,
                 double high = 1.0);
    std::optional<MaskTest::Result> maskResult() const;
    /// Numbers of the newest symbols that hit the mask, up to MaskTest::mostKeptHits, the newest
    /// first: as listed by maskResult. Those still kept can be lit, see setLitSymbol.
    std::vector<std::int64_t> maskHits() const;
    /// Starts or ends drawing a polygon by hand, of an eye: a click sets a corner, a double click
    /// the last one; Enter closes the polygon too, Backspace takes the last corner back, Esc ends
    /// without one. Wheel and drag zoom and pan as ever. The polygon is added to the mask, or to a
    /// new one in the signal's levels, which is tested from then on, see maskDrawn.
    void drawMask(bool on);
    bool isDrawingMask() const;
    /// The points of a constellation, as its symbols are scaled, for EVM and MER of all symbols, of
    /// those that are kept and all that come; empty, as at first: not known.
    void setIdeal(const std::vector<std::complex<double>>& ideal);
    ErrorVectors::Figures errorVectors() const;
    /// Copies the newest kept traces or points, as for EyeFigures.
    /// @param ready  told on the GUI thread, before long; the copy is its own, and may go to
    /// another
    ///               thread. Not told when the plot goes before.
    void copyTraces(std::size_t most, std::function<void(KeptSignalPtr)> ready);
    /// Draws the trace, or the point, of a kept symbol over the picture; none ends it. One that is
    /// not kept is not drawn.
    void setLitSymbol(const std::optional<std::int64_t>& symbol);

    /// What is shown; null before the first count.
    SnapshotPtr snapshot() const;
    /// Paints it as it is, in any size.
    void renderPicture(QPainter& painter, const QSize& size);

    QSize sizeHint() const override;

signals:
    /// What was clicked: numbers of the newest 1000 kept symbols that passed within 2 pixels of
    /// there, the newest first; none where nothing passed.
    void passed(const QVector<qint64>& symbols, const QPointF& place);
    /// A new count is shown.
    void updated();
    void pausedChanged(bool paused);
    /// The mask with the polygon that was drawn, and which the plot tests already.
    void maskDrawn(const density::Mask& mask);
    /// Drawing has started or ended, by whichever way.
    void drawingMaskChanged(bool on);
    /// maskHits is another.
    void maskHitsChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;

private:
    void ask();
    void take(PlotData* data);
    void fitCells(bool isNewHome);
    void heedGround();
    void findSnap();
    bool snapCursor(int key, bool isBack);
    void showZoom();
    void tellPassed(const QPointF& pixel);
    bool moveCursor(int key, bool isFar);
    bool drawByKey(int key);
    void closeDrawing();

    std::unique_ptr<PlotState> d;
};

} // namespace density
