// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/DensityExport.h"
#include "density/DensityPlot.h"
#include "density/Truth.h"
#include "platform/values/Tree.h"
#include "platform/values/Values.h"
#include "views/VCDensityPlot.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QWheelEvent>
#include <QtTest>

#include <cstring>

using namespace density;

namespace {

constexpr std::int64_t runt = 1234;

/// 5,000 traces of two levels, of which one touches 0 in the middle of its symbol.
std::vector<float> runtSignal()
{
    Truth truth;
    truth.noise = 0.02;
    truth.count = 5000;
    const KeptSignal kept = truth.make();
    std::vector<float> samples;
    for (std::size_t age = kept.count(); age-- > 0;)
        samples.insert(samples.end(), kept.at(age), kept.at(age) + kept.length());
    samples[runt * 33 + 16] = 0.0F;
    return samples;
}

/// A plot of a size with what it was given counted and shown.
struct Shown
{
    explicit Shown(DensityPlot::Kind kind = DensityPlot::Kind::Eye)
        : plot(kind)
    {
        plot.resize(700, 500);
        plot.show();
    }
    void settle()
    {
        plot.counting().wait();
        // The first answer may have been on its way.
        for (int round = 0; round < 2; ++round) {
            QSignalSpy updated(&plot, &DensityPlot::updated);
            plot.setLitSymbol({});
            ASSERT_TRUE(QTest::qWaitFor([&] { return updated.count() > 0; }));
        }
    }
    /// The pixel of a place, by the widget's own answer to a click.
    QPoint pixelOf(const QPointF& place)
    {
        QSignalSpy passed(&plot, &DensityPlot::passed);
        const auto placeOf = [&](const QPoint& pixel) {
            passed.clear();
            QTest::mouseClick(&plot, Qt::LeftButton, {}, pixel);
            EXPECT_TRUE(QTest::qWaitFor([&] { return passed.count() == 1; }));
            return passed.takeFirst().at(1).toPointF();
        };
        const QPoint one(200, 150), other(400, 300);
        const QPointF first = placeOf(one), second = placeOf(other);
        const QPointF perPixel((second.x() - first.x()) / 200.0, (second.y() - first.y()) / 150.0);
        return one + QPointF((place.x() - first.x()) / perPixel.x(),
                             (place.y() - first.y()) / perPixel.y())
                         .toPoint();
    }
    void wheel(const QPoint& at, int angle, Qt::KeyboardModifiers modifiers = {})
    {
        QWheelEvent event(at, plot.mapToGlobal(at), {}, {0, angle}, {}, modifiers,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&plot, &event);
    }

    DensityPlot plot;
};

TEST(DensityPlot, LeadsFromAPointBackToTheSymbolThatPassedThere)
{
    const std::vector<float> samples = runtSignal();
    Shown shown;
    shown.plot.addData(samples.data(), samples.size(), 0);
    shown.settle();
    const QPoint middle = shown.pixelOf({0.0, 0.0});
    QSignalSpy passed(&shown.plot, &DensityPlot::passed);
    for (const QPoint& pixel : {middle - QPoint(0, 3), middle + QPoint(0, 20)}) {
        QTest::mouseClick(&shown.plot, Qt::LeftButton, {}, pixel);
        ASSERT_TRUE(QTest::qWaitFor([&] { return passed.count() > 0; }));
        const auto symbols = passed.takeFirst().at(0).value<QVector<qint64>>();
        EXPECT_EQ(symbols, pixel.y() < middle.y() ? QVector<qint64>{runt} : QVector<qint64>());
    }
    // Its trace is lit, and a mask in its way is hit by it alone.
    const QImage before = shown.plot.grab().toImage();
    shown.plot.setLitSymbol(runt);
    shown.plot.setMask(Mask::standard()[0], 0.0, -1.0, 1.0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return shown.plot.maskResult().has_value(); }));
    EXPECT_EQ(shown.plot.maskResult()->newestHits, (std::vector<std::int64_t>{runt}));
    EXPECT_NE(shown.plot.grab().toImage().pixel(middle - QPoint(0, 6)),
              before.pixel(middle - QPoint(0, 6)));
}

TEST(DensityPlot, TestsAPolygonThatIsDrawnByHand)
{
    const std::vector<float> samples = runtSignal();
    Shown shown;
    DensityPlot& plot = shown.plot;
    plot.addData(samples.data(), samples.size(), 0);
    shown.settle();
    const QPointF corners[] = {{-0.1, -0.2}, {0.1, -0.2}, {0.0, 0.3}};
    QPoint pixels[3];
    std::transform(corners, corners + 3, pixels,
                   [&](const QPointF& corner) { return shown.pixelOf(corner); });
    QSignalSpy drawn(&plot, &DensityPlot::maskDrawn), hits(&plot, &DensityPlot::maskHitsChanged);
    QSignalSpy drawing(&plot, &DensityPlot::drawingMaskChanged);
    // In the signal's levels where there is no mask, in those of the mask where there is one.
    for (const bool isAdded : {false, true}) {
        Mask before = Mask::standard()[0];
        before.mostHits = 5;
        plot.setMask(isAdded ? std::optional<Mask>(before) : std::nullopt, 0.0, -1.0, 1.0);
        plot.drawMask(true);
        QTest::mouseClick(&plot, Qt::LeftButton, {}, pixels[0]);
        QTest::mouseClick(&plot, Qt::LeftButton, {}, pixels[2]);
        QTest::keyClick(&plot, Qt::Key_Return); // two corners are none
        QTest::keyClick(&plot, Qt::Key_Backspace);
        QTest::mouseClick(&plot, Qt::LeftButton, {}, pixels[1]);
        QTest::mouseClick(&plot, Qt::LeftButton, {}, pixels[2]);
        EXPECT_TRUE(plot.isDrawingMask());
        if (isAdded)
            QTest::keyClick(&plot, Qt::Key_Enter);
        else
            QTest::mouseDClick(&plot, Qt::LeftButton, {}, pixels[2]);
        ASSERT_EQ(drawn.count(), 1);
        const auto mask = drawn.takeFirst().at(0).value<Mask>();
        EXPECT_EQ(mask.polygons.size(), isAdded ? before.polygons.size() + 1 : 1U);
        EXPECT_EQ(mask.mostHits, isAdded ? 5 : 0);
        const QPolygonF placed = mask.placed(0.0, -1.0, 1.0).back();
        ASSERT_EQ(placed.size(), 3);
        // To half a pixel, of 2.4 in 400 pixels at most.
        for (int k = 0; k < 3; ++k)
            EXPECT_LT((placed[k] - corners[k]).manhattanLength(), 0.01);
        ASSERT_TRUE(QTest::qWaitFor([&] { return plot.maskHits().size() == 1; }));
        EXPECT_EQ(plot.maskHits()[0], runt);
    }
    plot.drawMask(true);
    QTest::keyClick(&plot, Qt::Key_Escape);
    EXPECT_FALSE(plot.isDrawingMask());
    EXPECT_EQ(drawing.count(), 6);
    EXPECT_GE(hits.count(), 1);
    EXPECT_TRUE(drawn.isEmpty());
}

TEST(DensityPlot, HandsOutCopiesOfTheNewestTraces)
{
    const std::vector<float> samples = runtSignal();
    Shown shown;
    shown.plot.addData(samples.data(), samples.size(), 0);
    shown.settle();
    KeptSignalPtr traces;
    shown.plot.copyTraces(3000, [&](KeptSignalPtr copy) { traces = std::move(copy); });
    ASSERT_TRUE(QTest::qWaitFor([&] { return traces != nullptr; }));
    EXPECT_EQ(traces->count(), 3000U);
    EXPECT_EQ(traces->symbolAt(0), 4999);
    EXPECT_TRUE(std::equal(samples.end() - 33, samples.end(), traces->at(0)));
}

TEST(DensityPlot, ZoomsPansAndComesBack)
{
    const std::vector<float> samples = runtSignal();
    Shown shown;
    DensityPlot& plot = shown.plot;
    plot.addData(samples.data(), samples.size(), 0);
    shown.settle();
    const Window home = plot.window();
    const QPoint at(300, 200);
    shown.wheel(at, 120, Qt::ShiftModifier);
    EXPECT_NEAR(plot.window().width(), home.width() / 1.25, 1e-9);
    EXPECT_EQ(plot.window().height(), home.height());
    shown.wheel(at, 120, Qt::ControlModifier);
    const Window zoomed = plot.window();
    EXPECT_NEAR(zoomed.height(), home.height() / 1.25, 1e-9);
    shown.settle(); // counted anew for just this window
    EXPECT_EQ(plot.snapshot()->symbolCount, 5000);
    QTest::mousePress(&plot, Qt::LeftButton, {}, at);
    for (const int step : {40, 90}) {
        const QPoint to = at + QPoint(step, 0);
        QMouseEvent move(QEvent::MouseMove, to, plot.mapToGlobal(to), Qt::LeftButton,
                         Qt::LeftButton, {});
        QApplication::sendEvent(&plot, &move);
    }
    QTest::mouseRelease(&plot, Qt::LeftButton, {}, at + QPoint(90, 0));
    EXPECT_LT(plot.window().left, zoomed.left);
    EXPECT_NEAR(plot.window().width(), zoomed.width(), 1e-9);
    QTest::keyClick(&plot, Qt::Key_Z, Qt::ControlModifier); // a drag is one step
    EXPECT_EQ(plot.window(), zoomed);
    QTest::mousePress(&plot, Qt::RightButton, {}, QPoint(200, 100));
    const QPoint to(400, 300);
    QMouseEvent move(QEvent::MouseMove, to, plot.mapToGlobal(to), Qt::RightButton, Qt::RightButton,
                     {});
    QApplication::sendEvent(&plot, &move);
    QTest::mouseRelease(&plot, Qt::RightButton, {}, QPoint(400, 300));
    EXPECT_LT(plot.window().width(), 0.5 * zoomed.width());
    QTest::mouseDClick(&plot, Qt::LeftButton, {}, at);
    EXPECT_EQ(plot.window(), home);
    for (int k = 0; k < 4; ++k)
        QTest::keyClick(&plot, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(plot.window(), home);
    for (int k = 0; k < 300; ++k)
        shown.wheel(at, 120); // ends where numbers do
    EXPECT_TRUE(plot.window().isUsable());
    shown.settle();
}

TEST(DensityPlot, PaintsCellsAsPixelsAndLosesNothingByASize)
{
    const std::vector<float> samples = runtSignal();
    Shown shown;
    DensityPlot& plot = shown.plot;
    std::int64_t symbol = 0;
    const auto add = [&] {
        plot.addData(samples.data(), samples.size(), symbol);
        plot.counting().wait();
        symbol += 5000;
    };
    add();
    int columns = GridSize().columns;
    for (const QSize& size : {QSize(700, 500), QSize(643, 411)}) {
        plot.resize(size);
        const auto isFitted = [&] {
            return plot.snapshot() && plot.snapshot()->size.columns != columns;
        };
        ASSERT_TRUE(QTest::qWaitFor(isFitted));
        columns = plot.snapshot()->size.columns;
        shown.settle();
        ColorMapping colors;
        const QImage expected = toImage(*plot.snapshot(), colors);
        const QImage seen = plot.grab().toImage();
        if (seen.devicePixelRatio() != 1.0)
            GTEST_SKIP() << "cells are smaller than what is clicked";
        // The corner, to the pixel that a click's own rounding may be off.
        const QPoint near = shown.pixelOf({plot.window().left, plot.window().top});
        bool isFound = false;
        for (int k = 0; k < 25 && !isFound; ++k) {
            const QPoint corner = near + QPoint(k % 5 - 2, k / 5 - 2);
            isFound = true;
            for (int y = 0; y < expected.height() && isFound; ++y) {
                for (int x = 0; x < expected.width() && isFound; ++x)
                    isFound = expected.pixel(x, y) == 0U ||
                              expected.pixel(x, y) == seen.pixel(corner + QPoint(x, y));
            }
        }
        EXPECT_TRUE(isFound) << size.width();
    }
    while (symbol < 120'000)
        add();
    plot.resize(500, 400);
    QTest::qWait(400); // longer than a size may rest
    shown.settle();
    EXPECT_EQ(plot.snapshot()->symbolCount, 120'000);
}

TEST(DensityPlot, SnapsCursorsToWhatTheEyeShows)
{
    const std::vector<float> samples = runtSignal();
    Shown shown;
    DensityPlot& plot = shown.plot;
    plot.addData(samples.data(), samples.size(), 0);
    shown.settle();
    const QPoint level = shown.pixelOf({0.5, 1.0}), crossing = shown.pixelOf({-0.5, 0.4});
    const Window home = plot.window();
    plot.showCursors(true);
    // To the next place at the right; found before long.
    ASSERT_TRUE(QTest::qWaitFor([&] {
        QTest::keyClick(&plot, Qt::Key_N);
        return std::abs(plot.cursorPlaces()[0] - 0.5) < 0.01;
    }));
    QTest::keyClick(&plot, Qt::Key_N); // around
    EXPECT_NEAR(plot.cursorPlaces()[0], -0.5, 0.01);
    QTest::keyClick(&plot, Qt::Key_N);
    EXPECT_LE(std::abs(plot.cursorPlaces()[0]), 0.25); // the best instant
    for (int k = 0; k < 2; ++k)
        QTest::keyClick(&plot, Qt::Key_Tab);
    // From two fifths of the height down to the lower level, around to the upper one, and halfway.
    for (const double place : {-1.0, 1.0, 0.0}) {
        QTest::keyClick(&plot, Qt::Key_N, Qt::ShiftModifier);
        EXPECT_NEAR(plot.cursorPlaces()[2], place, 0.01);
    }
    // Dragged near to a level or a crossing, it is there; with Alt it is where it was dragged to.
    const auto drag = [&](const QPoint& from, const QPoint& to, Qt::KeyboardModifiers modifiers) {
        QTest::mousePress(&plot, Qt::LeftButton, {}, from);
        QMouseEvent move(QEvent::MouseMove, to, plot.mapToGlobal(to), Qt::LeftButton,
                         Qt::LeftButton, modifiers);
        QApplication::sendEvent(&plot, &move);
        QTest::mouseRelease(&plot, Qt::LeftButton, modifiers, to);
    };
    const double perPixel = home.height() / plot.snapshot()->size.rows;
    const QPoint middle(level.x(), level.y() + static_cast<int>(1.0 / perPixel));
    drag(middle, level + QPoint(0, 5), {});
    EXPECT_NEAR(plot.cursorPlaces()[2], 1.0, 0.01);
    drag(level, level + QPoint(0, 6), Qt::AltModifier);
    EXPECT_NEAR(plot.cursorPlaces()[2], 1.0 - 6.0 * perPixel, perPixel);
    const double second = home.left + 0.6 * home.width();
    drag(crossing +
             QPoint(static_cast<int>((second + 0.5) / home.width() * plot.snapshot()->size.columns),
                    0),
         crossing - QPoint(4, 0), {});
    EXPECT_NEAR(plot.cursorPlaces()[1], -0.5, 0.01);
}

TEST(DensityPlot, TakesNothingWhilePausedAndForgetsOnRequest)
{
    const std::vector<float> samples = runtSignal();
    Shown shown;
    DensityPlot& plot = shown.plot;
    plot.addData(samples.data(), samples.size(), 0);
    shown.settle();
    QTest::keyClick(&plot, Qt::Key_Space);
    EXPECT_TRUE(plot.isPaused());
    plot.addData(samples.data(), samples.size(), 5000);
    shown.settle();
    EXPECT_EQ(plot.snapshot()->allSymbols, 5000);
    QTest::keyClick(&plot, Qt::Key_Space);
    plot.addData(samples.data(), samples.size() - 1, 5000); // the last trace is not whole
    shown.settle();
    ASSERT_TRUE(QTest::qWaitFor([&] { return plot.snapshot()->allSymbols == 9999; }));
    EXPECT_EQ(plot.snapshot()->leftOut.tornTraces, 1);
    QTest::keyClick(&plot, Qt::Key_Delete);
    ASSERT_TRUE(QTest::qWaitFor([&] { return plot.snapshot()->allSymbols == 0; }));
    const double huge[] = {1e300, -1e300};
    Shown points(DensityPlot::Kind::Constellation);
    points.plot.addData(huge, 2, 0);
    points.plot.setPersistence({Persistence::Kind::Newest, 10.0});
    for (const int key : {Qt::Key_C, Qt::Key_L, Qt::Key_S, Qt::Key_Left, Qt::Key_Tab, Qt::Key_Up})
        QTest::keyClick(&points.plot, static_cast<Qt::Key>(key));
    points.plot.autoScale();
    points.plot.grab();
}

TEST(DensityPlot, FeedsItselfFromBoundValues)
{
    values::Tree& tree = values::Tree::Instance();
    const auto list = [&](const char* path, const std::vector<double>& numbers) {
        auto* value = tree.Create<values::ValueList<double>>(path);
        value->Assign(numbers.begin(), numbers.end());
        return value;
    };
    // Two traces of three samples, one of two, and one that the next notification ends.
    auto* samples = list("density/Data1", {9, 0.1, 0.2, 0.3, 0.1, 0.2, 0.3, 0.4, 0.5, 0.1, 0.2});
    auto* markers = list("density/Starts", {0, 3, 0, 0, 3, 0, 0, 2, 0, 3});
    list("density/Q", {0.5, -0.5, 0.5});
    auto* trigger = tree.Create<values::Value<bool>>("density/New");
    density::Counter::Settings settings;
    settings.shape = TraceShape{3, 2.0};
    VCDensityPlot eye(DensityPlot::Kind::Eye, settings);
    VCDensityPlot points(DensityPlot::Kind::Constellation);
    EXPECT_FALSE(eye.SetData1_ValuePath("density/New"));
    EXPECT_TRUE(eye.SetHasChangedTrigger_ValuePath("density/New")); // nothing to read yet
    EXPECT_TRUE(eye.SetData1_ValuePath("density/Data1"));
    EXPECT_TRUE(eye.SetBaudrateData_ValuePath("density/Starts"));
    EXPECT_TRUE(points.SetData1_ValuePath("density/Data1"));
    EXPECT_TRUE(points.SetData2_ValuePath("density/Q"));
    EXPECT_TRUE(points.SetHasChangedTrigger_ValuePath("density/New")); // reads at once: 3 points
    trigger->SetValue(true);
    samples->GetList() = {0.3};
    markers->GetList() = {0};
    trigger->SetValue(true);
    eye.setPaused(true);
    trigger->SetValue(true);
    const auto countsOf = [](VCDensityPlot& plot) {
        SnapshotPtr snapshot;
        plot.counting().order([&](Counter& counter) { snapshot = counter.snapshot(); });
        plot.counting().wait();
        return snapshot;
    };
    countsOf(eye);
    EXPECT_EQ(countsOf(eye)->allSymbols, 3);
    EXPECT_EQ(countsOf(eye)->leftOut.tornTraces, 1);
    std::vector<std::int64_t> symbols;
    eye.counting().order([&](Counter& counter) {
        for (std::size_t age = counter.kept().count(); age-- > 0;)
            symbols.push_back(counter.kept().symbolAt(age));
    });
    eye.counting().wait();
    EXPECT_EQ(symbols, (std::vector<std::int64_t>{0, 1, 3}));
    countsOf(points);
    EXPECT_EQ(countsOf(points)->allSymbols, 8);
    for (const char* path : {"density/Data1", "density/Starts", "density/Q", "density/New"})
        tree.Remove(path);
}

TEST(DensityPlot, ColoursGrowEvenlyLighter)
{
    // Lightness L* of CIE 1976, of sRGB.
    const auto lightness = [](QRgb color) {
        const auto linear = [](int channel) {
            const double part = channel / 255.0;
            return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        const double y = 0.2126 * linear(qRed(color)) + 0.7152 * linear(qGreen(color)) +
                         0.0722 * linear(qBlue(color));
        return y > 0.008856 ? 116.0 * std::cbrt(y) - 16.0 : 903.3 * y;
    };
    for (int scale = 0; scale < colorScaleCount; ++scale) {
        const auto at = [&](double part) {
            return lightness(colorOf(static_cast<ColorScale>(scale), part));
        };
        const double step = (at(1.0) - at(0.0)) / 20.0;
        EXPECT_GT(step, 3.0);
        for (int k = 0; k < 20; ++k)
            EXPECT_NEAR(at((k + 1) / 20.0) - at(k / 20.0), step, 0.6 * step) << scale << " " << k;
    }
    ColorMapping mapping;
    EXPECT_NEAR(mapping.partOf(10.0, 1.0, 1e4), 0.25, 1e-12);
    EXPECT_EQ(mapping.partOf(7.0, 7.0, 7.0), 1.0);
    EXPECT_EQ(mapping.partOf(0.0, 1.0, 10.0), 0.0);
    mapping.isLogarithmic = false;
    EXPECT_EQ(mapping.partOf(5.0, 1.0, 10.0), 0.5);
}

TEST(DensityExport, WritesTheCountsAsTheyAre)
{
    Snapshot counts;
    counts.window = {0.0, 3.0, -1.0, 1.0};
    counts.size = {3, 2};
    counts.counts = {0, 1, 0, 2.5, 0, 9007199254740991.0};
    EXPECT_EQ(toCsv(counts), "x,y,count\n1.5,-0.5,1\n0.5,0.5,2.5\n2.5,0.5,9007199254740991\n");
    const QByteArray npy = toNpy(counts);
    const int header =
        static_cast<unsigned char>(npy[8]) + 256 * static_cast<unsigned char>(npy[9]);
    EXPECT_TRUE(npy.startsWith(QByteArray("\x93NUMPY\x01\x00", 8)));
    EXPECT_EQ((10 + header) % 64, 0);
    EXPECT_TRUE(
        npy.mid(10).startsWith("{'descr': '<f8', 'fortran_order': False, 'shape': (2, 3), }"));
    EXPECT_EQ(npy[9 + header], '\n');
    ASSERT_EQ(npy.size(), 10 + header + 6 * 8);
    std::vector<double> back(6);
    std::memcpy(back.data(), npy.constData() + 10 + header, 48);
    EXPECT_EQ(back, counts.counts);
    const QImage image = toImage(counts, ColorMapping());
    EXPECT_EQ(image.size(), QSize(3, 2));
    EXPECT_EQ(image.pixel(1, 0), 0U); // the top row is row 1
    EXPECT_EQ(image.pixel(2, 0), ColorMapping().colorAt(1.0));
    EXPECT_EQ(image.pixel(1, 1), ColorMapping().colorAt(0.0));
}

} // namespace
