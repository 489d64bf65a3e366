// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "Pictures.h"
#include "TreeAccess.h"
#include "WindowFixture.h"
#include "platform/glwidgets/XAxisWidget.h"
#include "workbench/window/dialogs/ExportDialog.h"
#include "workbench/window/panes/ReadingTable.h"

#include <QToolTip>
#include <QWindow>

#include <array>

namespace {

TEST_F(Window, OpensPlaysExportsAndClosesMeanwhileAllByKeys)
{
    const SignalFeed& feed = window->feed();
    writeRecording(path("tone.wav"), 8000, 1, sine(80000));
    nameFileOnceAsked(window.get(), path("tone.wav"));
    QTest::keyClick(window.get(), Qt::Key_O, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return feed.source().name == "tone.wav"; }));
    QApplication::setActiveWindow(window.get()); // no window manager does it
    EXPECT_TRUE(feed.transport().isPlaying());
    EXPECT_TRUE(QTest::qWaitFor([&] { return TestAccess::traceCount(window->timeView()) > 1; }));
    QTest::keyClick(window.get(), Qt::Key_P);
    EXPECT_FALSE(feed.transport().isPlaying());
    QTest::keyClick(window.get(), Qt::Key_M);
    EXPECT_FALSE(window->findChild<ReadingTable*>()->isVisible());
    auto& symbolRate = control<QDoubleSpinBox>("S&ymbol rate");
    symbolRate.selectAll();
    QTest::keyClicks(&symbolRate, "500\r");
    EXPECT_EQ(feed.symbolRate(), 500.0);

    QTest::keyClick(window.get(), Qt::Key_E, Qt::ControlModifier);
    nameFileOnceAsked(window.get(), path("kept.png"));
    QTest::keyClick(window->findChild<ExportDialog*>(), Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !QImage(path("kept.png")).isNull(); }));

    QApplication::setActiveWindow(window.get());
    QTest::keyClick(window.get(), Qt::Key_P);
    EXPECT_TRUE(feed.transport().isPlaying());
    QTest::keyClick(window.get(), Qt::Key_Q, Qt::ControlModifier);
    EXPECT_FALSE(window->isVisible());
    window.reset(); // while the timer runs and the view is bound
}

TEST_F(Window, StandsStillWhileAnyOfItsPauseControlsSaysSo)
{
    window->feed().transport().play();
    ASSERT_TRUE(waitForTraces(1));
    QWidget* playButton = window->findChild<QToolBar*>()->widgetForAction(&action("&Pause"));
    const std::function<void()> presses[] = {
        [&] { QTest::mouseClick(caption().findChild<QToolButton*>(), Qt::LeftButton); },
        [&] { QTest::keyClick(&caption(), Qt::Key_Space); },
        [&] { QTest::mouseClick(playButton, Qt::LeftButton); },
        [&] { QTest::keyClick(window.get(), Qt::Key_P); },
    };
    for (const auto& press : presses) {
        press();
        EXPECT_FALSE(window->feed().transport().isPlaying());
        EXPECT_TRUE(caption().isPaused());
        const std::int64_t stood = window->feed().transport().position();
        window->feed().transport().advance(1000000); // a late tick changes nothing
        EXPECT_EQ(window->feed().transport().position(), stood);

        press();
        EXPECT_TRUE(window->feed().transport().isPlaying());
        EXPECT_FALSE(caption().isPaused());
        EXPECT_TRUE(QTest::qWaitFor([&] { return window->feed().transport().position() > stood; }));
    }
}

TEST_F(Window, ForgetsWhatItShowedWhenAnotherSignalIsOpened)
{
    const auto lit = [&] {
        auto* eye = window->eyeView().findChild<GLEyeDiagram*>();
        return std::array<int, 3>{
            litRows(window->timeView().grabFramebuffer(),
                    ColorSet::Instance()[IColorBase::colTimeTrace]),
            litRows(eye->grab().toImage(), ColorSet::Instance()[IColorBase::colEyeTrace]),
            litRows(window->iqView().grabFramebuffer(),
                    ColorSet::Instance()[IColorBase::colIQPoint])};
    };
    window->player().openDemo(ModulationSettings());
    window->feed().transport().play();
    EXPECT_TRUE(QTest::qWaitFor([&] { // which are in the bar that has the focus, too
        const auto [time, eye, iq] = lit();
        return time > 20 && eye > 20 && iq > 5;
    }));
    window->feed().transport().pause();
    TestAccess::age(window->iqView(), 0.3);
    QTest::qWait(400);
    window->iqView().repaint();
    EXPECT_GT(lit()[2], 5) << "points stay as long as it stands still";
    window->player().openDemo(ModulationSettings());
    const auto [time, eye, iq] = lit();
    EXPECT_LE(time, 4) << "of the line along zero";
    EXPECT_LE(eye, 1);
    EXPECT_EQ(iq, 0);
}

TEST_F(Window, GrowsToItsLeastSizeOnAScreenThatMadeItSmaller)
{
    QWindow& handle = *window->windowHandle();
    handle.resize(300, 200); // as a window system may
    ASSERT_TRUE(QTest::qWaitFor([&] { return window->height() == 200; }));
    emit handle.screenChanged(handle.screen());
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->size() == window->minimumSize(); }));
}

TEST_F(Window, GivesTheRoomOfHiddenViewsToTheOthersAndRemembersIt)
{
    QWidget* center = window->centralWidget();
    const auto& panes = window->panes().panes();
    const auto expectRoom = [&](const QString& shown) {
        QCoreApplication::processEvents();
        QRect room;
        for (std::size_t i = 0; i < panes.size(); ++i) {
            EXPECT_EQ(panes[i].view->isVisible(), shown[int(i)] == '1') << i;
            EXPECT_EQ(panes[i].showing->isChecked(), shown[int(i)] == '1') << i;
            if (panes[i].view->isVisible())
                room |= {panes[i].frame->mapTo(center, QPoint()), panes[i].frame->size()};
        }
        EXPECT_EQ(room, center->rect());
    };
    const std::pair<Qt::Key, const char*> presses[] = {{Qt::Key_1, "011"},
                                                       {Qt::Key_3, "010"},
                                                       {Qt::Key_2, "010"} /* the last one stays */,
                                                       {Qt::Key_1, "110"},
                                                       {Qt::Key_2, "100"}};
    expectRoom("111");
    for (const auto& [key, shown] : presses) {
        QTest::keyClick(window.get(), key, Qt::ControlModifier);
        expectRoom(shown);
    }
    EXPECT_FALSE(QSettings(path("settings.ini"), QSettings::IniFormat).value("Views/eye").toBool());
    window->panes().showAll(); // for a picture
    window->panes().restore();
    expectRoom("100");
}

TEST_F(Window, ShowsIAndQInTheSameScaleAtAnySize)
{
    const auto span = [](const char* from, const char* to) {
        return numberAt(to) - numberAt(from);
    };
    const auto isEqual = [&] {
        const QRect plot = window->iqView().Widgets()[1]->rect();
        const double x = span(IqValues::xMinPath, IqValues::xMaxPath) / plot.width();
        return std::abs(span(IqValues::yMinPath, IqValues::yMaxPath) / plot.height() / x - 1) <
               0.01;
    };
    for (const QSize& size : {QSize(1000, 600), QSize(1300, 500), QSize(800, 900)}) {
        window->resize(size);
        QCoreApplication::processEvents();
        EXPECT_TRUE(QTest::qWaitFor(isEqual)) << size.width();
    }
}

TEST_F(Window, PausesAtTheEndAndStartsAgainByTheSameButton)
{
    action("&Repeat").trigger();
    dropSine(1, 1600);
    window->feed().transport().setSpeed(1.0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window->feed().transport().isPlaying(); }));
    EXPECT_EQ(window->feed().transport().position(), 1600);
    EXPECT_TRUE(caption().isPaused());
    QTest::keyClick(&caption(), Qt::Key_Space);
    EXPECT_TRUE(window->feed().transport().isPlaying());
    EXPECT_LT(window->feed().transport().position(), 1600);
}

TEST_F(Window, OpensWhatIsDroppedOrSaysWhatIsWrongWithIt)
{
    auto* notice = window->findChild<NoticeBar*>();
    const int height = window->timeView().height();
    writeFile(path("letter.txt"), "Dear reader");
    drop({QUrl::fromLocalFile(path("letter.txt"))});
    EXPECT_TRUE(notice->isVisible());
    QCoreApplication::processEvents();
    EXPECT_EQ(window->timeView().height(), height) << "it lies over the views";
    EXPECT_TRUE(notice->text().startsWith(path("letter.txt") + ": no row of numbers"));
    EXPECT_EQ(window->feed().source().name, "Built-in NRZ signal"); // goes on

    dropSine(2, 16000);
    EXPECT_FALSE(notice->isVisible());
    EXPECT_TRUE(window->feed().transport().isPlaying());
    EXPECT_TRUE(window->windowTitle().startsWith("sine.wav"));
    // The axis fits the sine of amplitude 0.5.
    EXPECT_TRUE(QTest::qWaitFor([&] {
        return std::abs(TestAccess::levels(window->timeView()).GetStopValue() - 0.55) < 0.01;
    }));
    AxisHandler& levels = TestAccess::levels(window->timeView());
    levels.ZoomAt(9, 0.1);
    const double zoomed = levels.GetStopValue();
    window->refresh();
    EXPECT_EQ(levels.GetStopValue(), zoomed) << "the user's range";
    QTest::keyClick(window.get(), Qt::Key_P);
    QTest::keyClick(window.get(), Qt::Key_A);
    EXPECT_NEAR(levels.GetStopValue(), 0.55, 0.01) << "also while it stands still";
    EXPECT_FALSE(drop({QUrl("http://example.invalid/x.wav")}));

    action("&Information...").trigger();
    const auto* information = window->findChild<QPlainTextEdit*>();
    EXPECT_TRUE(information->isVisible());
    EXPECT_TRUE(information->toPlainText().startsWith("Name: sine.wav\n"));
}

TEST_F(Window, OffersTheChannelsOfARecording)
{
    auto* panel = window->findChild<ParameterPanel*>();
    auto* channel = panel->findChildren<QSpinBox*>().first();
    EXPECT_FALSE(channel->isVisible());
    dropSine(3, 24000);
    ASSERT_TRUE(channel->isVisible());
    EXPECT_EQ(channel->maximum(), 3);
    QTest::keyClick(channel, Qt::Key_Up);
    EXPECT_EQ(window->feed().channel(), ChannelChoice(1));
    auto* subtracted = qobject_cast<QComboBox*>(channel->nextInFocusChain()->nextInFocusChain());
    ASSERT_TRUE(subtracted && subtracted->isVisible());
    QTest::keyClick(subtracted, Qt::Key_Down);
    QTest::keyClick(subtracted, Qt::Key_Down);
    EXPECT_EQ(window->feed().channel(), ChannelChoice(1, 2));
}

TEST_F(Window, ShowsMoreOfALongSegmentOnceTheTimeAxisReachesBack)
{
    writeRecording(path("fast.wav"), 1000000, 1, sine(3000000));
    ASSERT_TRUE(drop({QUrl::fromLocalFile(path("fast.wav"))}));
    window->feed().transport().setSpeed(1.0);
    window->feed().setSpan(0.005);
    const auto longest = [this] {
        std::size_t most = 0;
        for (const auto& trace : window->timeView().GetTraces())
            most = std::max(most, trace.size());
        return most;
    };
    ASSERT_TRUE(QTest::qWaitFor([&] { return longest() == 10000; })) << "two spans";
    const auto axis = window->timeView().GetXAxis();
    axis->SetStartValue(3.0 * axis->GetStartValue());
    EXPECT_TRUE(QTest::qWaitFor([&] { return longest() >= 15000; }));
}

TEST_F(Window, FollowsItsControls)
{
    auto* panel = window->findChild<ParameterPanel*>();
    const NrzSettings& builtIn = window->player().builtIn();
    QTest::keyClick(panel->findChildren<QSlider*>().first(), Qt::Key_Left);
    EXPECT_NEAR(builtIn.noise, std::pow(10.0, -27.0 / 20.0), 1e-12);
    auto& symbolRate = control<QDoubleSpinBox>("S&ymbol rate");
    const auto enter = [](QDoubleSpinBox& box, const char* text) {
        box.selectAll();
        QTest::keyClicks(&box, text);
        QTest::keyClick(&box, Qt::Key_Return);
    };
    const auto type = [&](const char* text) {
        enter(symbolRate, text);
        return symbolRate.text().toStdString();
    };
    EXPECT_EQ(type("2,4k"), "2.4\u2009kBd");
    EXPECT_EQ(window->feed().symbolRate(), 2400.0);
    EXPECT_EQ(type("fast"), "2.4\u2009kBd");
    EXPECT_TRUE(QToolTip::text().startsWith("\"fast\" cannot be used; give 100\u2009Bd"));
    EXPECT_EQ(window->feed().eye().cut().samplesPerSymbol, 20.0);

    dropSine(3, 24000);
    auto& span = control<QDoubleSpinBox>("&Span");
    EXPECT_EQ(span.text(), "0.4\u2009s");     // some thousand samples
    QTest::keyClick(&symbolRate, Qt::Key_Up); // steps from no rate tell nothing
    EXPECT_EQ(symbolRate.value(), 0.0);
    EXPECT_EQ(type("0.5 kBd"), "500\u2009Bd");
    EXPECT_EQ(window->feed().eye().cut().samplesPerSymbol, 16.0);
    EXPECT_FALSE(window->findChild<NoticeBar*>()->isVisible());
    EXPECT_EQ(span.text(), "200\u2009T"); // as long as before
    const std::pair<const char*, double> spans[] = {
        {"50", 0.1}, {"5 ms", 0.005}, {"0,2s", 0.2}, {"7 ducks", 0.2}, {"5e3 us", 0.005}};
    for (const auto& [text, seconds] : spans) {
        enter(span, text);
        EXPECT_NEAR(window->feed().span(), seconds, 1e-12) << text;
    }
    control<QComboBox>("A&xis counts").activated(1);
    EXPECT_EQ(span.text(), "5\u2009ms");
    EXPECT_EQ(window->panes().panes()[0].mode, "time in ms");
    EXPECT_EQ(window->timeView().GetXAxis()->XPixelMap()->GetAxisDefinition().LabelWithUnit(-2.0),
              "-2.000\u2009ms");
    auto* eyeSymbols = &control<QSpinBox>("Sym&bols");
    eyeSymbols->selectAll();
    QTest::keyClicks(eyeSymbols, "20"); // the 0 would lead beyond the range
    EXPECT_TRUE(QTest::qWaitFor([] { return QToolTip::text() == "only 1 to 16 can be given"; }));
    EXPECT_EQ(type("0"), "unknown");
    EXPECT_EQ(window->feed().eye().cut().samplesPerSymbol, 0.0);
    symbolRate.setValue(7000.0); // too few samples a symbol
    EXPECT_TRUE(window->findChild<NoticeBar*>()->text().startsWith("sine.wav: an eye takes 2"));
}

} // namespace
