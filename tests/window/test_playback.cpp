// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "WindowFixture.h"

#include "workbench/sources/StreamSource.h"
#include "workbench/window/menus/SeekBar.h"
#include "workbench/window/panes/PaneNote.h"

#include <QPushButton>

#include <random>

#include <unistd.h>
#include <zmq.hpp>

namespace {

/// ms to wait for work that fills a core, with sanitizers and among other work.
constexpr int slow = 60'000;

struct Playback : Window
{
    QSlider& slider() { return *window->findChild<SeekBar*>()->findChild<QSlider*>(); }
    QString time() { return window->findChild<SeekBar*>()->findChild<QLabel*>()->text(); }
    bool waitForTime(double seconds)
    {
        return QTest::qWaitFor([&] {
            return std::abs(window->feed().transport().time() - seconds) < 0.1 && !time().isEmpty();
        });
    }
    QPoint at(double part) { return {int(part * slider().width()), slider().height() / 2}; }
    void click(double part) { QTest::mouseClick(&slider(), Qt::LeftButton, {}, at(part)); }
    void pauseRecording()
    {
        dropSine(1, 80000); // 10 s
        QTest::keyClick(window.get(), Qt::Key_P);
        ASSERT_FALSE(window->feed().transport().isPlaying());
    }
};

TEST_F(Playback, GoesWhereTheSliderIsClickedDraggedOrMovedByKeys)
{
    EXPECT_FALSE(slider().isEnabled()) << "the built-in signal has no end";
    EXPECT_FALSE(action("To the &end").isEnabled());
    pauseRecording();
    const auto traces = TestAccess::traceCount(window->timeView());
    click(0.75);
    EXPECT_TRUE(waitForTime(7.5));
    EXPECT_GT(TestAccess::traceCount(window->timeView()), traces) << "the views stand still";
    EXPECT_FALSE(window->feed().transport().isPlaying());
    EXPECT_TRUE(time().endsWith(" / 0:10.000")) << time().toStdString();

    QTest::mousePress(&slider(), Qt::LeftButton, {}, at(0.25));
    QMouseEvent move(QEvent::MouseMove, at(0.5), slider().mapToGlobal(at(0.5)), Qt::NoButton,
                     Qt::LeftButton, {});
    QCoreApplication::sendEvent(&slider(), &move);
    EXPECT_TRUE(waitForTime(5.0));
    QTest::mouseRelease(&slider(), Qt::LeftButton, {}, at(0.5));

    const auto press = [&](QWidget* widget, Qt::Key key, double expected) {
        QTest::keyClick(widget, key);
        EXPECT_TRUE(waitForTime(expected)) << key << ' ' << window->feed().transport().time();
    };
    press(window.get(), Qt::Key_End, 10.0);
    press(window.get(), Qt::Key_Home, 0.0);
    press(&slider(), Qt::Key_PageUp, 1.0);
    for (const auto key : {Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Left})
        QTest::keyClick(window.get(), key);
    EXPECT_GT(window->feed().transport().time(), 1.15);
    press(&slider(), Qt::Key_Home, 0.0);

    click(0.5);
    EXPECT_TRUE(waitForTime(5.0));
    const auto eyes = TestAccess::traceCount(window->eyeView());
    control<QDoubleSpinBox>("S&ymbol rate").setValue(400.0); // as the sine has peaks
    EXPECT_GT(TestAccess::traceCount(window->eyeView()), eyes);
    EXPECT_TRUE(waitForTime(5.0));
    QTest::keyClick(window.get(), Qt::Key_P);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->feed().transport().time() > 5.2; }))
        << "plays on there";
}

TEST_F(Playback, MeasuresBetweenEdgesThatAreSetAtThePresentTime)
{
    pauseRecording();
    window->player().setSpan(2.0);
    const auto press = [this](double time, Qt::Key key, double from, double to) {
        click(time / 10.0);
        EXPECT_TRUE(waitForTime(time));
        QTest::keyClick(window.get(), key);
        const Gate& gate = window->feed().gate();
        EXPECT_NEAR(gate.begin(), from, 0.1);
        EXPECT_NEAR(gate.end(), to, 0.1);
        EXPECT_NEAR(double(gate.sampleCount()), 8000.0 * (gate.end() - gate.begin()), 1.0);
        EXPECT_TRUE(waitForTime(to)) << "the gate is shown to its end";
        EXPECT_NEAR(window->feed().span(), to - from, 0.1);
    };
    press(6.0, Qt::Key_BracketRight, 4.0, 6.0); // from where the view starts
    press(5.0, Qt::Key_BracketLeft, 5.0, 6.0);
    press(8.0, Qt::Key_BracketRight, 5.0, 8.0);
    EXPECT_TRUE(window->panes().panes()[0].mode.startsWith("gate: "));
    action("Gate of &all").trigger();
    EXPECT_EQ(window->feed().gate().sampleCount(), 80000U);
    action("Gate of &what is shown").trigger();
    EXPECT_FALSE(window->feed().gate().isFixed());
}

TEST_F(Playback, EstimatesTheSymbolRateAtAClick)
{
    auto* button = window->findChild<ParameterPanel*>()->findChild<QPushButton*>();
    ASSERT_EQ(button->text(), "Est&imate");
    EXPECT_FALSE(button->isEnabled()) << "that of the built-in signal is known";
    writeDemo(path("data.wav"));
    drop({QUrl::fromLocalFile(path("data.wav"))});
    ASSERT_FALSE(window->feed().symbolRate());
    QTest::mouseClick(button, Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([this] { return window->feed().symbolRate().has_value(); }, slow));
    EXPECT_NEAR(*window->feed().symbolRate(), 6000.0, 1.0);
    window->player().setEstimating(true);
    drop({QUrl::fromLocalFile(path("data.wav"))});
    ASSERT_FALSE(window->feed().symbolRate());
    ASSERT_TRUE(QTest::qWaitFor([this] { return window->feed().symbolRate().has_value(); }, slow))
        << "unasked, as it is sure";
    std::vector<double> samples, burst; // long after its start
    ModulationSource(ModulationSettings()).read(burst, 60000);
    std::mt19937 noise(1);
    for (int i = 0; i < 1'500'000; ++i)
        samples.push_back(1e-12 * double(noise()));
    std::copy(burst.begin(), burst.end(), samples.begin() + 1'000'000);
    writeRecording(path("burst.wav"), 48000, 2, samples, SF_FORMAT_WAV | SF_FORMAT_FLOAT);
    drop({QUrl::fromLocalFile(path("burst.wav"))});
    ASSERT_TRUE(QTest::qWaitFor([this] { return window->feed().symbolRate().has_value(); }, slow));
    EXPECT_NEAR(*window->feed().symbolRate(), 6000.0, 1.0);
    QTest::mouseClick(button, Qt::LeftButton);
    window.reset(); // while it looks
}

TEST_F(Playback, HasSpeedsByKeysUpToTheFastest)
{
    for (int i = 0; i < 20; ++i)
        QTest::keyClick(window.get(), Qt::Key_Plus);
    EXPECT_EQ(window->feed().transport().speed(), Transport::fastest);
    for (int i = 0; i < 20; ++i)
        QTest::keyClick(window.get(), Qt::Key_Minus);
    EXPECT_EQ(window->feed().transport().speed(), 0.1);
    dropSine(1, 16); // 2 ms last ten seconds
    const Transport& transport = window->feed().transport();
    EXPECT_EQ(transport.speed(), 2e-4);
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return transport.time() > 0.0 && !time().startsWith("0.0"); }));
    EXPECT_LT(transport.time(), 1e-3);
    dropSine(1, 8000);
    EXPECT_EQ(transport.speed(), 0.1) << "as it was chosen before";
}

TEST_F(Playback, VeilsALiveSignalThatStandsStillAndPausesWhereItEnds)
{
    int ends[2] = {};
    ASSERT_EQ(pipe(ends), 0);
    Recording recording;
    recording.source =
        std::make_unique<StreamSource>("pipe", ends[0], *SampleFormat::parse("u8"), 8000.0);
    ASSERT_TRUE(window->player().open(std::move(recording), 0, std::nullopt));
    window->feed().transport().play();
    const std::vector<char> samples(4000);
    EXPECT_EQ(write(ends[1], samples.data(), samples.size()), 4000);
    const PaneNote& note = *window->panes().panes()[0].note;
    EXPECT_TRUE(QTest::qWaitFor([&] { return note.text().startsWith("stands still for "); }));
    EXPECT_EQ(note.geometry().bottomRight(), note.parentWidget()->rect().bottomRight());
    close(ends[1]);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window->feed().transport().isPlaying(); }));
    EXPECT_FALSE(action("&Play").isEnabled());
    EXPECT_EQ(note.text(), "");
    QTest::mouseClick(caption().findChild<QToolButton*>(), Qt::LeftButton);
    EXPECT_TRUE(caption().isPaused()) << "it has ended";
    close(ends[0]);
}

TEST_F(Playback, VeilsAPublisherThatIsGoneUntilItIsBack)
{
    struct Publisher
    {
        explicit Publisher(const std::string& endpoint)
        {
            socket.set(zmq::sockopt::linger, 0);
            socket.bind(endpoint);
        }
        zmq::context_t context;
        zmq::socket_t socket{context, ZMQ_PUB};
    };
    auto publisher = std::make_unique<Publisher>("tcp://127.0.0.1:*");
    const std::string endpoint = publisher->socket.get(zmq::sockopt::last_endpoint);
    Recording::Options options;
    options.format = SampleFormat::parse("u8");
    options.sampleRate = 8000.0;
    const QString address = QString::fromStdString(endpoint).replace("tcp", "zmq");
    auto live = RecordingOpener::open(address, options);
    ASSERT_TRUE(live);
    ASSERT_TRUE(window->player().open(std::move(*live), 0, std::nullopt));
    window->feed().transport().play();
    const auto sendUntil = [&](const std::function<bool()>& holds) {
        return QTest::qWaitFor([&] {
            publisher->socket.send(zmq::str_buffer("samples"), zmq::send_flags::dontwait);
            return holds();
        });
    };
    const PaneNote& note = *window->panes().panes()[0].note;
    const auto isPlaying = [&] { return window->feed().hasPlayed() && note.text().isEmpty(); };
    EXPECT_TRUE(sendUntil(isPlaying));
    publisher.reset();
    for (const char* since : {"2 s", "3 s"})
        EXPECT_TRUE(
            QTest::qWaitFor([&] { return note.text() == QString("stands still for ") + since; }));
    EXPECT_TRUE(window->feed().trouble()->sentence.contains("is gone: reconnecting"));
    publisher = std::make_unique<Publisher>(endpoint);
    EXPECT_TRUE(sendUntil(isPlaying));
}

TEST_F(Playback, SaysWhatEmptyViewsWaitForAndWhatIsShown)
{
    const auto& panes = window->panes().panes();
    const auto notes = [&] {
        QStringList texts;
        for (const auto& pane : panes)
            texts += pane.note->text();
        return texts;
    };
    window->player().openDemo(ModulationSettings());
    EXPECT_TRUE(QTest::qWaitFor([&] {
        window->refresh();
        return notes().filter("paused before the first sample").size() == 3;
    }));
    EXPECT_TRUE(panes[0].note->isVisible());
    window->feed().transport().play();
    EXPECT_TRUE(QTest::qWaitFor([&] { return notes().join("").isEmpty(); }));
    EXPECT_FALSE(panes[0].note->isVisible());

    window->player().openDemo(ModulationSettings());
    EXPECT_EQ(panes[2].mode, "decision instants");
    QTest::keyClick(window.get(), Qt::Key_T);
    EXPECT_EQ(panes[2].mode, "trajectory");
    EXPECT_EQ(panes[1].mode, "0 to 1: 2 symbols");
    const QList<int> heights = window->panes().sizes();
    dropSine(1, 80000);
    EXPECT_TRUE(notes()[1].startsWith("An eye needs the symbol rate"));
    EXPECT_TRUE(notes()[2].startsWith("A constellation needs I and Q"));
    EXPECT_GT(window->panes().sizes()[0], 2 * window->panes().sizes()[1]);
    window->player().openDemo(ModulationSettings());
    EXPECT_EQ(window->panes().sizes(), heights);
}

} // namespace
