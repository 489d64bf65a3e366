// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/DensityExport.h"
#include "density/ShownPlot.h"

#include <cstring>

using namespace density;

namespace {

TEST(DensityPlot, TestsAPolygonThatIsDrawnByHand)
{
    ShownRunt shown;
    DensityPlot& plot = shown.plot;
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

TEST(DensityPlot, SnapsCursorsToWhatTheEyeShows)
{
    ShownRunt shown;
    DensityPlot& plot = shown.plot;
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
    const double perPixel = home.height() / plot.snapshot()->size.rows;
    const QPoint middle(level.x(), level.y() + static_cast<int>(1.0 / perPixel));
    shown.drag(middle, {level + QPoint(0, 5)});
    EXPECT_NEAR(plot.cursorPlaces()[2], 1.0, 0.01);
    shown.drag(level, {level + QPoint(0, 6)}, Qt::AltModifier);
    EXPECT_NEAR(plot.cursorPlaces()[2], 1.0 - 6.0 * perPixel, perPixel);
    const double second = home.left + 0.6 * home.width();
    const int away =
        static_cast<int>((second + 0.5) / home.width() * plot.snapshot()->size.columns);
    shown.drag(crossing + QPoint(away, 0), {crossing - QPoint(4, 0)});
    EXPECT_NEAR(plot.cursorPlaces()[1], -0.5, 0.01);
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
