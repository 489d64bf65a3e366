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
struct PlotRequest;
struct PlotState;

/// Shows how often a signal passed where: the traces of an eye over time in symbols and level, or
/// the points of a constellation over I and Q. Counts become colours; the legend at the right says
/// which. What is counted, in how many symbols, and what was left out, stands below the plot.
///
/// The home is the part of the plane that is shown unless the user zooms. What the user can do:
/// - The wheel zooms about the pointer; with Shift the X axis alone, with Ctrl the Y axis alone. On
///   axes of equal scale, which E switches on and off in a constellation, it zooms both.
/// - A drag pans; with Shift, or with the right button, it zooms to a rectangle. A double click and
///   the Home key return to the home. Ctrl+Z and Ctrl+Y undo and redo a zoom.
/// - A click asks which symbols passed there, see passed.
/// - C shows or hides cursors. The mouse drags them; they snap to levels, crossings and the best
///   instant unless Alt is held. Tab selects one: arrows move it (with Shift ten times as far), N
///   sends it to the next such place (with Shift to the previous one).
/// - L switches between logarithmic and linear colours, S to the next colour scale; Space pauses,
///   Del clears.
///
/// Counting runs on a thread of its own. Unless the settings say otherwise, a cell is a device
/// pixel, or a square of device pixels where the plot has more than two million. After a resize all
/// symbols are counted anew in cells of the new size while all of them are kept. Otherwise the
/// picture is stretched until the next clear or home. The plot is drawn up to 30 times a second,
/// while there is something new. GUI thread only, except counting().
class ORVANE_API DensityPlot : public QWidget
{
    Q_OBJECT
public:
    enum class Kind { Eye, Constellation };
    using TimeUnit = density::TimeUnit;

    /// @param settings  an eye without a shape gets the default one; a constellation ignores it.
    ///                  The home in the settings is shown until the first block determines one,
    ///                  unless setHome was called.
    explicit DensityPlot(Kind kind, const Counter::Settings& settings = {},
                         QWidget* parent = nullptr);
    ~DensityPlot() override;

    ///@{
    /// Adds traces of the shape, one after the other, or points as I, Q, I, Q... Ignored while
    /// paused. When counting does not keep up, symbols are left out and counted as torn.
    /// @param samples      read during the call; may be null when the count is 0.
    /// @param count        number of samples; an incomplete last trace counts as torn.
    /// @param firstSymbol  number of the first symbol; the others follow it one by one.
    void addData(const float* samples, std::size_t count, std::int64_t firstSymbol);
    void addData(const double* samples, std::size_t count, std::int64_t firstSymbol);
    ///@}
    /// Adds symbols that the caller left out to the count of torn ones. Ignored while paused.
    void addTorn(std::int64_t count);
    /// Number of samples of a trace; 2 for a point.
    std::size_t sampleCount() const;
    /// The thread that counts, for producers on other threads, which need not wait for the GUI
    /// thread. Owned by the plot.
    CountingThread& counting();
    /// Forgets all symbols; home and zoom stay.
    void clear();

    /// Sets the home. The kept symbols are counted anew. A home that is not usable is ignored.
    void setHome(const Window& home);
    /// Sets the home to the extent of the kept symbols and a tenth more. Takes effect soon after
    /// the call.
    void autoScale();
    /// The part of the plane that is shown.
    Window window() const;
    /// Sets how long symbols stay in the picture.
    void setPersistence(const Persistence& persistence);
    void setPaused(bool paused);
    bool isPaused() const;
    /// Sets the symbol rate in Bd, which gives read-outs in seconds as well; 0, the value at first,
    /// means that it is not known, and so does any number that is not positive and finite.
    void setSymbolRate(double symbolRate);
    /// Sets the unit of the time axis: symbols at first, and while the symbol rate is not known.
    void setTimeUnit(TimeUnit unit);
    /// Sets the unit of the level, or of I and Q, such as "V"; empty at first.
    void setUnit(const QString& unit);
    /// Sets whether a unit has the same length on both axes. On at first in a constellation;
    /// ignored by an eye.
    void setEqualScale(bool isEqual);
    void setColors(ColorScale scale, bool isLogarithmic);
    void showCursors(bool show);
    /// Places of the cursors: first and second X in symbols, or I, then first and second Y.
    std::array<double, 4> cursorPlaces() const;

    /// Tests traces against a mask, starting with the kept ones; no mask ends the test. Ignored by
    /// a constellation.
    /// @param instant,low,high  where the mask is put, see Mask::placed.
    void setMask(const std::optional<Mask>& mask, double instant = 0.0, double low = 0.0,
                 double high = 1.0);
    /// The result of the test as of the last count that is shown; none without a test.
    std::optional<MaskTest::Result> maskResult() const;
    /// Numbers of the newest symbols that hit the mask, up to MaskTest::mostKeptHits, the newest
    /// first, as in maskResult. setLitSymbol shows those that are still kept.
    std::vector<std::int64_t> maskHits() const;
    /// Starts or ends drawing a polygon by hand in an eye: a click sets a corner, a double click
    /// the last one; Enter closes the polygon too, Backspace takes the last corner back, Esc ends
    /// without a polygon. Wheel and drag zoom and pan as usual. The polygon joins the mask, or a
    /// new mask in the signal's levels, which is tested from then on; see maskDrawn.
    void drawMask(bool on);
    bool isDrawingMask() const;
    /// Sets the ideal points of a constellation, as its symbols are scaled. EVM and MER are
    /// measured for the kept symbols and all later ones. Empty at first: not known.
    void setIdeal(const std::vector<std::complex<double>>& ideal);
    /// EVM and MER as of the last count that is shown.
    ErrorVectors::Figures errorVectors() const;
    /// Copies the newest kept traces or points, for EyeFigures or Spread.
    /// @param most   number of traces or points.
    /// @param ready  called on the GUI thread soon after the call, and not at all when the plot is
    ///               destroyed before. Any thread may read the copy.
    void copyTraces(std::size_t most, std::function<void(KeptSignalPtr)> ready);
    /// Draws the trace or point of one symbol over the picture; none ends it. A symbol that is not
    /// kept is not drawn.
    void setLitSymbol(const std::optional<std::int64_t>& symbol);

    /// What is shown; null before the first count.
    SnapshotPtr snapshot() const;
    /// Whether what is shown was counted in the present window and, unless the settings say
    /// otherwise, in cells that fit the present size. Not before the first count, nor while another
    /// is on its way after a zoom, a home or a resize; nor where the picture is stretched for good.
    bool isFitting() const;
    /// Waits until all that was handed over is counted, and shows it, fitting where no symbol would
    /// be lost by that. Another thread that goes on handing over prolongs it.
    void settle();
    /// Paints it as it is, in any size.
    void renderPicture(QPainter& painter, const QSize& size);

    QSize sizeHint() const override;

signals:
    /// The user clicked.
    /// @param symbols  numbers of the newest 1000 kept symbols that passed within 2 pixels, the
    ///                 newest first; empty where nothing passed.
    /// @param place    X in symbols, or I, and Y.
    void passed(const QVector<qint64>& symbols, const QPointF& place);
    /// A new count is shown.
    void updated();
    void pausedChanged(bool paused);
    /// The user finished a polygon. The plot already tests this mask, which includes it.
    void maskDrawn(const density::Mask& mask);
    /// Drawing a polygon started or ended.
    void drawingMaskChanged(bool on);
    /// The result of maskHits changed.
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
    PlotRequest request() const;
    void ask();
    void take(PlotData* data, std::int64_t number);
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
