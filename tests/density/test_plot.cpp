// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "Difference.h"
#include "density/DensityExport.h"
#include "density/ShownPlot.h"
#include "platform/values/Tree.h"
#include "platform/values/Values.h"
#include "views/VCDensityPlot.h"

#include <QOpenGLWidget>
#include <QPaintEvent>
#include <QPainter>

#include <future>

using namespace density;

namespace {

TEST(DensityPlot, LeadsFromAPointBackToTheSymbolThatPassedThere)
{
    ShownRunt shown;
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

// A millionth of a sample wide, and in proportion high: the lit trace runs through it from corner
// to corner. Its ends lie a million plots away.
TEST(DensityPlot, KeepsLinesInPlaceHoweverDeepTheZoom)
{
    ShownRunt shown;
    DensityPlot& plot = shown.plot;
    const float* trace = shown.samples.data() + std::ptrdiff_t{runt} * 33 + 15;
    const double rise = static_cast<double>(trace[1]) - static_cast<double>(trace[0]);
    const double time = -0.5 / 16.0;
    const double level = static_cast<double>(trace[0]) + 0.5 * rise;
    const QPointF half(0.5e-6 / 16.0, 0.5e-6 * std::abs(rise));
    plot.setHome({time - half.x(), time + half.x(), level - half.y(), level + half.y()});
    plot.settle();
    const QPoint low = shown.pixelOf({plot.window().left, plot.window().bottom});
    const QPoint high = shown.pixelOf({plot.window().right, plot.window().top});
    const auto colorAt = [&](double x, double y) {
        const QPointF at(low.x() + x * (high.x() - low.x()), low.y() + y * (high.y() - low.y()));
        const QImage image = plot.grab().toImage();
        return QColor(image.pixel((at * image.devicePixelRatio()).toPoint()));
    };
    const auto along = [rise](double part) { return rise > 0.0 ? part : 1.0 - part; };
    const QColor above = colorAt(0.25, 1.0 - along(0.25));
    plot.setLitSymbol(runt);
    const auto isLit = [&](double part) { return colorAt(part, along(part)).lightness() > 200; };
    ASSERT_TRUE(QTest::qWaitFor([&] { return isLit(0.4); }));
    EXPECT_TRUE(isLit(0.2) && isLit(0.7));
    EXPECT_EQ(colorAt(0.25, 1.0 - along(0.25)), above);
}

TEST(DensityPlot, HandsOutCopiesOfTheNewestTraces)
{
    ShownRunt shown;
    KeptSignalPtr traces;
    shown.plot.copyTraces(3000, [&](KeptSignalPtr copy) { traces = std::move(copy); });
    ASSERT_TRUE(QTest::qWaitFor([&] { return traces != nullptr; }));
    EXPECT_EQ(traces->count(), 3000U);
    EXPECT_EQ(traces->symbolAt(0), 4999);
    EXPECT_TRUE(std::equal(shown.samples.end() - 33, shown.samples.end(), traces->at(0)));
}

TEST(DensityPlot, ZoomsPansAndComesBack)
{
    ShownRunt shown;
    DensityPlot& plot = shown.plot;
    const Window home = plot.window();
    const QPoint at(300, 200);
    shown.wheel(at, 120, Qt::ShiftModifier);
    EXPECT_NEAR(plot.window().width(), home.width() / 1.25, 1e-9);
    EXPECT_EQ(plot.window().height(), home.height());
    shown.wheel(at, 120, Qt::ControlModifier);
    const Window zoomed = plot.window();
    EXPECT_NEAR(zoomed.height(), home.height() / 1.25, 1e-9);
    plot.settle(); // counted anew for just this window
    EXPECT_EQ(plot.snapshot()->symbolCount, 5000);
    shown.drag(at, {at + QPoint(40, 0), at + QPoint(90, 0)});
    EXPECT_LT(plot.window().left, zoomed.left);
    EXPECT_NEAR(plot.window().width(), zoomed.width(), 1e-9);
    QTest::keyClick(&plot, Qt::Key_Z, Qt::ControlModifier); // a drag is one step
    EXPECT_EQ(plot.window(), zoomed);
    shown.drag({200, 100}, {{400, 300}}, {}, Qt::RightButton);
    EXPECT_LT(plot.window().width(), 0.5 * zoomed.width());
    QTest::mouseDClick(&plot, Qt::LeftButton, {}, at);
    EXPECT_EQ(plot.window(), home);
    for (int k = 0; k < 4; ++k)
        QTest::keyClick(&plot, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(plot.window(), home);
    for (int k = 0; k < 300; ++k)
        shown.wheel(at, 120); // ends where numbers do
    EXPECT_TRUE(plot.window().isUsable());
    plot.settle();
}

TEST(DensityPlot, PaintsCellsAsPixelsAndLosesNothingByASize)
{
    ShownRunt shown;
    DensityPlot& plot = shown.plot;
    for (const QSize& size : {QSize(700, 500), QSize(643, 411)}) {
        // Counting is held up, so that what is shown right after a resize is of the former size.
        std::promise<void> go;
        plot.counting().order([&go](Counter&) { go.get_future().wait(); });
        plot.resize(size);
        EXPECT_EQ(plot.isFitting(), size.width() == 700);
        go.set_value();
        ASSERT_TRUE(QTest::qWaitFor([&] { return plot.isFitting(); }));
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
    shown.wheel({300, 200}, 120);
    EXPECT_FALSE(plot.isFitting());
    ASSERT_TRUE(QTest::qWaitFor([&] { return plot.isFitting(); }));
    QTest::keyClick(&plot, Qt::Key_Home);
    for (std::int64_t symbol = 5000; symbol < 120'000; symbol += 5000) {
        plot.addData(shown.samples.data(), shown.samples.size(), symbol);
        plot.counting().wait();
    }
    plot.resize(500, 400);
    plot.settle();
    EXPECT_FALSE(plot.isFitting());
    EXPECT_EQ(plot.snapshot()->symbolCount, 120'000);
    plot.clear();
    plot.settle();
    EXPECT_TRUE(plot.isFitting());
}

/// What a window would show of a widget that it repaints where that asks for it.
struct Screen : QObject
{
    explicit Screen(QWidget& widget)
        : picture(widget.grab().toImage())
    {
        widget.installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            asked += static_cast<QPaintEvent*>(event)->region();
        return false;
    }
    QImage picture;
    QRegion asked;
};

TEST(DensityPlot, RepaintsAllThatSymbolsChangeAndNoMore)
{
    const std::vector<float> samples = runtSignal();
    Shown shown;
    DensityPlot& plot = shown.plot;
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&plot));
    plot.addData(samples.data(), samples.size(), 0);
    plot.settle();
    Screen screen(plot);
    for (int turn = 1; turn < 4; ++turn) {
        const bool hasCursors = turn == 3; // which look for levels, and repaint all then
        plot.showCursors(hasCursors);
        do {
            screen.asked = QRegion();
            QTest::qWait(300); // longer than a size may rest
        } while (!screen.asked.isEmpty());
        screen.picture = plot.grab().toImage();
        screen.asked = QRegion();
        plot.addData(samples.data(), samples.size() / 5, std::int64_t{5000} * turn);
        const std::int64_t all = 5000 + std::int64_t{1000} * turn;
        ASSERT_TRUE(QTest::qWaitFor([&] { return plot.snapshot()->allSymbols == all; }));
        ASSERT_TRUE(QTest::qWaitFor([&] { return !screen.asked.isEmpty(); }));
        QTest::qWait(50);
        const QRegion asked = screen.asked;
        EXPECT_TRUE(hasCursors || !asked.contains(QRect(0, 100, 10, 10))) << "labels of an axis";
        QPainter painter(&screen.picture);
        plot.render(&painter, asked.boundingRect().topLeft(), asked);
        painter.end();
        EXPECT_EQ(screen.picture, plot.grab().toImage()) << "turn " << turn;
    }
}

TEST(DensityPlot, ShowsWhatWasHandedOverWhileTheThreadWasBusy)
{
    const std::vector<float> samples = runtSignal();
    Shown shown;
    DensityPlot& plot = shown.plot;
    for (std::int64_t symbol = 0; symbol < 100'000; symbol += 5000) {
        plot.addData(samples.data(), samples.size(), symbol);
        plot.settle();
    }
    QTest::qWait(300); // until it asks no more
    // Copies that take longer than the plot goes without asking.
    for (int k = 0; k < 60; ++k)
        plot.copyTraces(100'000, [](const KeptSignalPtr&) {});
    plot.addData(samples.data(), samples.size(), 100'000);
    EXPECT_TRUE(QTest::qWaitFor([&] { return plot.snapshot()->allSymbols == 105'000; }));
}

TEST(DensityPlot, LooksTheSameHoweverItIsPainted)
{
    ShownRunt shown;
    DensityPlot& plot = shown.plot;
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&plot));
    plot.setMask(Mask::standard()[0], 0.0, -1.0, 1.0);
    plot.setLitSymbol(runt);
    plot.showCursors(true);
    plot.settle(); // with the mask's hits
    for (int round = 0; round < 2; ++round) {
        QCoreApplication::processEvents(); // the frame is painted, and counts come on its ground
        plot.settle();
    }
    // Bit by bit into the window's picture, all at once, and by OpenGL.
    const double ratio = plot.devicePixelRatioF();
    QImage picture((QSizeF(plot.size()) * ratio).toSize(), QImage::Format_RGB32);
    picture.setDevicePixelRatio(ratio);
    {
        QPainter painter(&picture);
        painter.setFont(plot.font());
        plot.renderPicture(painter, plot.size());
    }
    const QImage seen = plot.grab().toImage();
    EXPECT_EQ(difference(seen, picture).most, 0);
    struct Surface : QOpenGLWidget
    {
        explicit Surface(DensityPlot& shownPlot)
            : plot(shownPlot)
        {
            resize(plot.size());
        }
        void paintGL() override
        {
            QPainter painter(this);
            plot.renderPicture(painter, plot.size());
        }
        DensityPlot& plot;
    };
    Surface surface(plot);
    surface.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&surface));
    if (!surface.isValid())
        GTEST_SKIP() << "no OpenGL";
    // OpenGL smooths lines and glyphs in its own way, and they are few; cells are half of it.
    EXPECT_LE(difference(surface.grabFramebuffer(), picture).odd, 0.05);
}

TEST(DensityPlot, KeepsTheScaleOfAConstellationEqualUnlessAskedOtherwise)
{
    const float points[] = {1.0F, 1.0F, -1.0F, -1.0F};
    Shown shown(DensityPlot::Kind::Constellation);
    DensityPlot& plot = shown.plot;
    plot.addData(points, 4, 0);
    plot.settle();
    const auto shape = [&] { return plot.window().width() / plot.window().height(); };
    const double equal = shape();
    for (const auto& modifiers : {Qt::ShiftModifier, Qt::ControlModifier})
        shown.wheel({300, 200}, 120, modifiers);
    EXPECT_NEAR(shape(), equal, 1e-9);
    QTest::keyClick(&plot, Qt::Key_E);
    shown.wheel({300, 200}, 120, Qt::ShiftModifier);
    EXPECT_NEAR(shape(), equal / 1.25, 1e-9);
    QTest::keyClick(&plot, Qt::Key_E);
    EXPECT_NEAR(shape(), equal, 1e-9);
}

TEST(DensityPlot, TakesNothingWhilePausedAndForgetsOnRequest)
{
    ShownRunt shown;
    DensityPlot& plot = shown.plot;
    const std::vector<float>& samples = shown.samples;
    QTest::keyClick(&plot, Qt::Key_Space);
    EXPECT_TRUE(plot.isPaused());
    plot.addData(samples.data(), samples.size(), 5000);
    plot.settle();
    EXPECT_EQ(plot.snapshot()->allSymbols, 5000);
    QTest::keyClick(&plot, Qt::Key_Space);
    plot.addData(samples.data(), samples.size() - 1, 5000); // the last trace is not whole
    plot.settle();
    EXPECT_EQ(plot.snapshot()->allSymbols, 9999);
    EXPECT_EQ(plot.snapshot()->leftOut.tornTraces, 1);
    CountingThread::Block torn; // by another thread: told though no symbol comes
    torn.torn = 3;
    plot.counting().push(torn);
    EXPECT_TRUE(QTest::qWaitFor([&] { return plot.snapshot()->leftOut.tornTraces == 4; }));
    QTest::keyClick(&plot, Qt::Key_Delete);
    plot.settle();
    EXPECT_EQ(plot.snapshot()->allSymbols, 0);
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

} // namespace
