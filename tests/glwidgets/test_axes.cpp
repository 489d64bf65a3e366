// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "GLWidgetsFixture.h"

#include "platform/base/IObserver.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QRegularExpression>
#include <QTimer>

#include <random>

namespace {

using Range = std::pair<double, double>;

Range rangeOf(const AxisHandler& axis) { return {axis.GetStartValue(), axis.GetStopValue()}; }

struct Axes : testing::Test, IObserver
{
    Axes() { y.Attach(this); }
    void Update(Observable*, TChangeCode) override
    {
        log.push_back(rangeOf(y));
        if (destroys)
            view.reset();
    }
    std::vector<Range> log;
    bool destroys = false;
    std::unique_ptr<View> view = std::make_unique<View>();
    XAxisWidget& x = *view->xAxis;
    YAxisHandler& y = *view->plot->yAxis;
};

TEST_F(Axes, TellEachRealChangeOnceAndKeepRangesAsGiven)
{
    y.SetRange(-1.0, 1.0); // as it starts
    y.SetRange(4.0, -4.0);
    y.SetRange(4.0, -4.0);
    y.SetStartValue(7.0);
    y.SetStopValue(7.0);
    y.SetRange(1e35, -1e35);
    y.SetStopValue(INFINITY);
    EXPECT_EQ(log, (std::vector<Range>{{4, -4}, {7, -4}, {7, 7}, {1e35, -1e35}, {1e35, INFINITY}}));
    y.SetRange(NAN, NAN);
    y.SetRange(NAN, NAN); // no change, although NaN differs from NaN
    EXPECT_EQ(log.size(), 6U);
    EXPECT_FALSE(y.IsZoomed());
    view->open();
    EXPECT_TRUE(view->repaints([this] { x.SetStopValue(3.0); }));
    EXPECT_TRUE(view->repaints([this] { y.SetStopValue(3.0); }));
}

TEST_F(Axes, LabelsAreApartInsideDifferentAndNeverMinusZero)
{
    static const QRegularExpression minusZero(QStringLiteral("^-0(\\.0*)?$"));
    std::mt19937 random(1);
    std::uniform_real_distribution<> unit(-1.0, 1.0);
    for (int i = 0; i < 200; ++i) {
        view->resize(i % 3 == 0 ? 90 : 900, i % 5 == 0 ? 90 : 400);
        const double span = std::pow(10.0, 12.0 * unit(random)) * (i % 2 ? 1.0 : -1.0);
        const double start = span * unit(random) * (i % 4 == 0 ? 1e4 : 1.0);
        SCOPED_TRACE(testing::Message() << start << " and " << span);
        x.SetRange(start, start + span);
        y.SetRange(start, start + span);
        const auto texts = view->texts();
        EXPECT_TRUE(view->width() < 900 || !texts.empty());
        const auto isX = [&](const QRectF& box) { return box.top() >= x.geometry().top(); };
        for (const auto& [text, box, color, size] : texts) {
            EXPECT_TRUE(QRectF(isX(box) ? x.geometry() : view->plot->geometry()).contains(box));
            EXPECT_FALSE(minusZero.match(text).hasMatch()) << qPrintable(text);
            for (const auto& [other, otherBox, otherColor, otherSize] : texts) {
                const bool isSame = &other == &text;
                EXPECT_TRUE(isSame || !box.intersects(otherBox));
                EXPECT_TRUE(isSame || isX(box) != isX(otherBox) || text != other);
            }
        }
    }
    view->resize(900, 400);
    x.SetRange(-1310000.0, 0.0); // some longer labels than lines are apart
    std::vector<double> numbers;
    for (const auto& [text, box, color, size] : view->texts()) {
        if (box.top() >= x.geometry().top() && box.right() < 880.0)
            numbers.push_back(text.toDouble());
    }
    ASSERT_GT(numbers.size(), 4U);
    for (std::size_t i = 2; i < numbers.size(); ++i)
        EXPECT_EQ(numbers[i] - numbers[i - 1], numbers[1] - numbers[0]);
}

TEST_F(Axes, LabelsAreDrawnOverWhateverLiesBelow)
{
    const auto render = [&](double ratio, bool isClipped) {
        QImage image((QSizeF(view->size()) * ratio).toSize(), QImage::Format_RGB32);
        image.setDevicePixelRatio(ratio);
        QPainter painter(&image);
        painter.setClipRect(view->rect(), isClipped ? Qt::ReplaceClip : Qt::NoClip);
        view->Render(painter);
        return image;
    };
    std::mt19937 random(1);
    const auto below = [&random](unsigned end) { return static_cast<int>(random() % end); };
    for (const double ratio : {1.0, 1.25, 2.0}) {
        y.SetRange(-1.0, 1.0);
        for (int turn = 0; turn < 12; ++turn) {
            const int colors = 1 + turn / 3; // more than are kept, in the end
            for (int k = 0; k < 50; ++k)
                view->plot->traces.push_back({QRect(below(60), below(250), 1 + below(9), 1),
                                              QColor(80 * below(colors), 255, 70)});
            if (turn % 5 == 4)
                y.SetRange(-0.1 * turn, 1.0);
            // A clip leaves all to the painter.
            ASSERT_EQ(render(ratio, false), render(ratio, true)) << ratio << ", turn " << turn;
            view->plot->traces.clear();
        }
    }
}

TEST_F(Axes, WheelAndDragKeepTheValueUnderThePointer)
{
    view->open();
    x.SetRange(-100.0, 0.0);
    const std::tuple<AxisHandler&, QPoint, QPoint, int, int> cases[] = {
        {x, view->inXAxis(123), view->inXAxis(170), 123, 170},
        {y, view->inPlot(12, 77), view->inPlot(300, 40), 77, 40}}; // leaves the strip
    for (const auto& [axis, at, to, pixel, toPixel] : cases) {
        const Range range = rangeOf(axis);
        const double value = axis.PixelToValue(pixel);
        for (const double zoom : {1.25, 1.0 / 1.25}) {
            view->wheel(at, zoom > 1.0 ? 120 : -240);
            EXPECT_NEAR((range.second - range.first) / zoom,
                        axis.GetStopValue() - axis.GetStartValue(), 1e-9);
            EXPECT_NEAR(axis.PixelToValue(pixel), value, 1e-9);
        }
        const double start = axis.GetStartValue();
        view->drag(at, to, Qt::MiddleButton);
        EXPECT_EQ(axis.GetStartValue(), start);
        view->drag(at, to);
        QTest::mouseMove(view->windowHandle(), at); // the drag is over
        EXPECT_NEAR(axis.PixelToValue(toPixel), value, 1e-9);
        EXPECT_TRUE(axis.IsZoomed());
        QTest::mouseDClick(view->windowHandle(), Qt::LeftButton, {}, at);
        EXPECT_EQ(rangeOf(axis), range);
        view->wheel(at, 120);
        axis.SetStartValue(3.0); // by program, which ends the zoom
        axis.SetStopValue(5.0);
        EXPECT_FALSE(axis.IsZoomed());
    }
    view->wheel(view->inPlot(y.StripWidth(), 77), 120); // the plot itself has no wheel
    EXPECT_FALSE(y.IsZoomed());
    EXPECT_EQ(view->ruler.CursorCount(), 0);
}

TEST_F(Axes, JoinedZoomsKeepTheScaleOfBothUnlessShiftIsHeld)
{
    view->open();
    AxisHandler::JoinZooms(view->xAxis, view->plot->yAxis);
    x.SetRange(-4.0, 4.0);
    y.SetRange(3.0, 1.0);
    view->wheel(view->inXAxis(99), 240);
    EXPECT_NEAR(x.GetStopValue() - x.GetStartValue(), 8.0 / 1.5625, 1e-9);
    EXPECT_NEAR(y.GetStartValue(), 2.64, 1e-9); // about its middle
    EXPECT_NEAR(y.GetStopValue(), 1.36, 1e-9);
    const Range before = rangeOf(x);
    view->wheel(view->inPlot(5, 99), 120, Qt::ShiftModifier);
    EXPECT_EQ(rangeOf(x), before);
    EXPECT_NEAR(y.GetStartValue() - y.GetStopValue(), 1.28 / 1.25, 1e-9);
    QTest::mouseDClick(view->windowHandle(), Qt::LeftButton, {}, view->inPlot(5, 99));
    EXPECT_FALSE(x.IsZoomed() || y.IsZoomed());
    y.SetRange(1.0, 1.0); // has no scale to keep
    view->wheel(view->inXAxis(99), 120);
    EXPECT_TRUE(x.IsZoomed() && !y.IsZoomed());
    y.SetRange(1.0, 1.0 + 1e-11); // takes no zoom that far
    x.SetRange(-4.0, 4.0);
    view->wheel(view->inXAxis(99), 120 * 20);
    EXPECT_FALSE(x.IsZoomed() || y.IsZoomed());
}

TEST_F(Axes, TheXAxisReadsOutTheValueUnderThePointer)
{
    view->open();
    const auto& axis = x.XPixelMap()->GetAxisDefinition();
    const QString readout = axis.LabelWithUnit(axis.PixelToValue(247));
    const auto isShown = [&] {
        bool isFound = false;
        for (const auto& [text, box, color, size] : view->texts())
            isFound |= text == readout && std::abs(box.center().x() - 247.0) < 2.0;
        return isFound;
    };
    for (const QPoint& pointer : {view->inXAxis(247), view->inPlot(300, 50)}) {
        const auto move = [&] { QTest::mouseMove(view->windowHandle(), pointer); };
        EXPECT_TRUE(view->repaints(move));
        EXPECT_EQ(isShown(), pointer.x() == 247) << qPrintable(readout);
    }
    // A menu takes the pointer away, and the release of the button.
    const QPoint at = view->inXAxis(247);
    QTest::mouseMove(view->windowHandle(), at);
    EXPECT_TRUE(isShown());
    QTimer::singleShot(0, [] { QApplication::activePopupWidget()->close(); });
    QTest::mousePress(view->windowHandle(), Qt::RightButton, {}, at);
    EXPECT_FALSE(isShown());
    QTest::mouseRelease(view->windowHandle(), Qt::RightButton, {}, at);
}

TEST_F(Axes, TheStripsMenuUndoesTheZoomAndMayDestroyTheView)
{
    const auto menuAt = [this](int column) {
        const QPoint at(column, 20);
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, at);
        return y.getContextMenu(&event, view->plot.get(), 0);
    };
    EXPECT_EQ(y.getContextMenu(nullptr, view->plot.get(), 0), nullptr);
    EXPECT_EQ(menuAt(y.StripWidth()), nullptr);
    QMenu* menu = menuAt(y.StripWidth() - 1);
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->parent(), view.get());
    EXPECT_FALSE(menu->actions().front()->isEnabled());
    y.ZoomAt(50, 0.5);
    EXPECT_EQ(menuAt(0), menu);
    menu->actions().front()->trigger();
    QCoreApplication::processEvents();
    EXPECT_FALSE(y.IsZoomed());

    view->open();
    y.ZoomAt(50, 0.5);
    destroys = true;
    QTimer::singleShot(0, view.get(), [menu] {
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    const QPoint at = view->inPlot(5, 50);
    QContextMenuEvent event(QContextMenuEvent::Mouse, at, view->mapToGlobal(at));
    QApplication::sendEvent(view.get(), &event);
    QCoreApplication::processEvents();
    EXPECT_EQ(view, nullptr);
}

} // namespace
