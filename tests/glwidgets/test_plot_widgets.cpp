// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "GLWidgetsFixture.h"

#include <QPointer>
#include <QRegularExpression>
#include <QToolButton>

namespace {

struct PlotWidgets : testing::Test
{
    std::unique_ptr<View> view = std::make_unique<View>();
    PlotWidgets() { view->open(); }
    void drag(int x1, int y1, int x2, int y2)
    {
        view->drag(view->inPlot(x1, y1), view->inPlot(x2, y2));
    }
    QToolButton* button() const { return view->bar()->findChild<QToolButton*>(); }
    const std::function<void()> pauses[3] = {
        [this] { QTest::mouseClick(button(), Qt::LeftButton); },
        [this] {
            const QPointer<QWindow> window(view->windowHandle());
            QTest::keyPress(window, Qt::Key_Space); // may destroy the view
            if (window)
                QTest::keyRelease(window, Qt::Key_Space);
        },
        [this] { // an assistive tool
            button()->toggle();
            QCoreApplication::processEvents();
        }};
    /// The text beside a cursor of the ruler as it is painted.
    QString cursorText(const char* key)
    {
        view->picture();
        return view->plot->TextRects()->text(key);
    }
    /// The number after a name in the caption's read-out, NaN for none.
    double field(const char* name)
    {
        const QRegularExpression pattern(QStringLiteral("(?:^| )%1 +([-0-9.]+)").arg(name));
        const auto match = pattern.match(view->bar()->readout());
        return match.hasMatch() ? match.captured(1).toDouble() : qQNaN();
    }
    /// Place of a text in the plot.
    QRectF boxOf(const QString& text)
    {
        for (const auto& [found, box, color, size] : view->texts()) {
            if (found == text)
                return box.translated(-view->plot->geometry().topLeft());
        }
        return {};
    }
};

TEST_F(PlotWidgets, PausingIsShownAndMayDestroyTheView)
{
    const QString pause = button()->toolTip();
    for (const auto& toggle : pauses) {
        for (const bool isPaused : {true, false}) {
            toggle();
            EXPECT_EQ(view->caption->isPaused(), isPaused);
            EXPECT_EQ(button()->toolTip() != pause, isPaused);
        }
        QKeyEvent held(QEvent::KeyPress, Qt::Key_Space, {}, QStringLiteral(" "), true);
        QApplication::sendEvent(view->bar(), &held);
        EXPECT_FALSE(view->caption->isPaused());
        QObject::connect(view->caption, &DiagramCaption::si_paused, qApp, [this] { view.reset(); });
        toggle();
        EXPECT_EQ(view, nullptr);
        view = std::make_unique<View>();
        view->open();
    }
}

TEST_F(PlotWidgets, TheBarFollowsTheColourSchemeAndKeepsTextsOffTheButton)
{
    ColorSet& colors = ColorSet::Instance();
    view->resize(120, 300);
    view->bar()->setReadout(QString(100, QLatin1Char('8')));
    for (const auto scheme : {ColorSet::Scheme::Light, ColorSet::Scheme::Dark}) {
        colors.SetScheme(scheme);
        const QImage image = view->bar()->grab().toImage();
        for (int row = 0; row < image.height() - 1; ++row) // the last row marks the focus
            EXPECT_EQ(image.pixelColor(button()->geometry().left() - 2, row),
                      colors[IColorBase::colBackground]);
    }
}

TEST_F(PlotWidgets, TextsStandBesideTheirAnchorInsideThePlot)
{
    Plot& plot = *view->plot;
    const int far = INT_MAX;
    const QRect area = plot.rect();
    const QPoint anchors[] = {{0, 0},   area.center(), area.bottomRight(), {area.right(), 0},
                              {0, far}, {far, -far},   {-far, far}};
    for (const QPoint& anchor : anchors) {
        plot.AddMarker("m", "first\nsecond line", anchor);
        const QRectF box = boxOf("first") | boxOf("second line");
        EXPECT_TRUE(QRectF(area).contains(box)) << anchor.x() << " " << anchor.y();
        EXPECT_FALSE(box.contains(anchor));
        EXPECT_LT(boxOf("first").center().y(), boxOf("second line").top());
    }
    plot.RemoveMarker("m");
    for (const QPoint& from : {QPoint(0, 0), QPoint(200, 100), area.bottomRight()}) {
        for (const QPoint& step : {QPoint(15, 15), QPoint(-15, 9), QPoint(40, -12), QPoint(3, 0)}) {
            const QPoint points[] = {from, from + step};
            if (!area.contains(points[1]))
                continue;
            plot.AddMarker("m", "x -0.123 t/T", points[0]);
            plot.AddMarker("n", "y 0.123", points[1]);
            const QRectF boxes[] = {boxOf("x -0.123 t/T"), boxOf("y 0.123")};
            for (const QRectF& box : boxes)
                EXPECT_FALSE(box.contains(points[0]) || box.contains(points[1]));
            EXPECT_FALSE(boxes[0].intersects(boxes[1]));
        }
    }
    plot.RemoveMarker("m");
    plot.RemoveMarker("n");
    plot.addTextFreqList("100 MHz");
    plot.addTextFreqList("200 MHz");
    view->resize(900, 300); // the list moves with the border
    EXPECT_GT(boxOf("200 MHz").right(), 880.0);
    EXPECT_LT(boxOf("100 MHz").top(), 20.0);
    plot.clear();
    EXPECT_TRUE(plot.TextRects()->isEmpty());
}

TEST_F(PlotWidgets, TheRulerMeasuresFromPressToRelease)
{
    AxisHandler& x = *view->xAxis;
    YAxisHandler& y = *view->plot->yAxis;
    x.SetRange(-100.0, 0.0);
    y.SetUnitText("V");
    EXPECT_TRUE(view->repaints([this] { drag(150, 60, 999, 200); }));
    EXPECT_NEAR(field("x"), x.PixelToValue(view->plot->rect().right()), 0.06); // stays inside
    drag(150, 60, 320, 200);
    // A column is 0.2 wide, a row 0.008 high.
    EXPECT_NEAR(field("x"), x.PixelToValue(320), 0.06);
    EXPECT_NEAR(field("y"), y.PixelToValue(200), 0.0006);
    EXPECT_NEAR(field("dx"), x.PixelToValue(320) - x.PixelToValue(150), 0.06);
    EXPECT_NEAR(field("dy"), y.PixelToValue(200) - y.PixelToValue(60), 0.0006);
    EXPECT_TRUE(view->bar()->readout().endsWith(" V"));
    EXPECT_FALSE(cursorText("ruler1").contains("dx"));
    EXPECT_TRUE(cursorText("ruler2").contains("dx"));

    // A picture and the screen show the same lines: overlays share the painter of the plot.
    const QRect place = view->plot->geometry();
    for (const QImage& image : {view->picture(), view->grabFramebuffer().copy(place)}) {
        const QColor line = image.pixelColor(150, 5);
        EXPECT_NE(line, image.pixelColor(151, 5));
        EXPECT_EQ(image.pixelColor(320, 5), line);
        EXPECT_EQ(image.pixelColor(490, 60), line);
        EXPECT_EQ(image.pixelColor(490, 200), line);
    }
    // The cursors stay at their values when the axes change.
    const QString before = cursorText("ruler1");
    x.SetRange(-90.0, 10.0);
    EXPECT_EQ(cursorText("ruler1"), before);
    const int column = x.ValueToPixel(x.PixelToValue(150) - 10.0);
    EXPECT_NE(view->picture().pixelColor(column, 5), view->picture().pixelColor(column - 2, 5));
    for (const double stop : {1.1e35, 1e-300, 0.0}) {
        x.SetRange(0.0, stop); // out of sight, or without pixels
        view->picture();
    }
}

TEST_F(PlotWidgets, AClickStartsTheRulerAnewAndEscapeClearsIt)
{
    drag(150, 60, 320, 200);
    drag(250, 60, 251, 61); // a hand that trembles
    EXPECT_EQ(view->ruler.CursorCount(), 1);
    EXPECT_TRUE(qIsNaN(field("dx")));
    EXPECT_TRUE(cursorText("ruler2").isEmpty());

    QTest::mousePress(view->windowHandle(), Qt::LeftButton, {}, view->inPlot(150, 60));
    const QPoint to = view->inPlot(300, 60);
    QMouseEvent move(QEvent::MouseMove, to, view->mapToGlobal(to), Qt::NoButton, Qt::NoButton, {});
    QApplication::sendEvent(view.get(), &move); // a popup took the release
    QTest::mouseRelease(view->windowHandle(), Qt::LeftButton, {}, view->inPlot(300, 60));
    EXPECT_EQ(view->ruler.CursorCount(), 1);

    for (const bool isTaken : {true, false}) { // the second has nothing to clear
        QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, {});
        QApplication::sendEvent(view->bar(), &escape);
        EXPECT_EQ(escape.isAccepted(), isTaken);
        EXPECT_EQ(view->ruler.CursorCount(), 0);
        EXPECT_TRUE(cursorText("ruler1").isEmpty());
    }
}

} // namespace
