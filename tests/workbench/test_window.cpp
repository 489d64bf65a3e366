// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "Recordings.h"
#include "platform/glwidgets/AxisHandler.h"
#include "platform/glwidgets/CaptionWidget.h"
#include "platform/glwidgets/DiagramCaption.h"
#include "platform/gui/ColorSet.h"
#include "time/GLTimeDiagram.h"
#include "views/VCGLTimeDiagram.h"
#include "workbench/window/Appearance.h"
#include "workbench/window/MainWindow.h"
#include "workbench/window/NoticeBar.h"
#include "workbench/window/ParameterPanel.h"
#include "workbench/window/StatusFields.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QDropEvent>
#include <QLabel>
#include <QMimeData>
#include <QSlider>
#include <QTemporaryDir>
#include <QTest>
#include <QToolBar>
#include <QToolButton>
#include <QUrl>

#include <gtest/gtest.h>

struct TestAccess
{
    static std::size_t traceCount(VCGLTimeDiagram& v) { return v.m_diagram->m_records.size(); }
    static AxisHandler& levels(VCGLTimeDiagram& v) { return *v.m_diagram->GetYAxisHandler(); }
};

namespace {

struct Window : testing::Test
{
    Window()
    {
        window->resize(1000, 600);
        window->openBuiltIn();
        window->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        QApplication::setActiveWindow(window.get()); // no window manager does it
    }
    QString path(const char* name) const { return folder.filePath(QString::fromUtf8(name)); }
    CaptionWidget& caption()
    {
        return *qobject_cast<CaptionWidget*>(
            window->timeView().GetToolbarCaption()->getCaptionWidget());
    }
    QAction& action(const char* text)
    {
        for (QAction* action : window->findChildren<QAction*>()) {
            if (action->text() == QString::fromUtf8(text))
                return *action;
        }
        ADD_FAILURE() << "no action " << text;
        return *window->findChildren<QAction*>().first();
    }
    bool waitForTraces(std::size_t traces)
    {
        return QTest::qWaitFor(
            [&] { return TestAccess::traceCount(window->timeView()) >= traces; });
    }
    void drop(const QList<QUrl>& urls)
    {
        QMimeData data;
        data.setUrls(urls);
        QDragEnterEvent enter({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window.get(), &enter);
        accepted = enter.isAccepted();
        QDropEvent event({50.0, 50.0}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        if (accepted)
            QCoreApplication::sendEvent(window.get(), &event);
    }
    QTemporaryDir folder;
    std::unique_ptr<MainWindow> window = std::make_unique<MainWindow>();
    bool accepted = false;
};

TEST_F(Window, ShowsTheSignalAsItPlaysAndClosesMeanwhile)
{
    window->feed().play();
    EXPECT_TRUE(waitForTraces(2));
    window->close();
    window.reset(); // while the timer runs and the view is bound
    window = std::make_unique<MainWindow>();
    window->openBuiltIn();
    window->feed().play();
    EXPECT_TRUE(waitForTraces(1));
}

TEST_F(Window, StandsStillWhileAnyOfItsPauseControlsSaysSo)
{
    window->feed().play();
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
        EXPECT_FALSE(window->feed().isPlaying());
        EXPECT_TRUE(caption().isPaused());
        EXPECT_EQ(action("&Play").text(), "&Play");
        const std::int64_t stood = window->feed().position();
        window->feed().advance(1000000); // a late tick changes nothing
        EXPECT_EQ(window->feed().position(), stood);

        press();
        EXPECT_TRUE(window->feed().isPlaying());
        EXPECT_FALSE(caption().isPaused());
        EXPECT_TRUE(QTest::qWaitFor([&] { return window->feed().position() > stood; }));
    }
}

TEST_F(Window, PausesAtTheEndAndStartsAgainByTheSameButton)
{
    writeRecording(path("short.wav"), SF_FORMAT_WAV | SF_FORMAT_PCM_16, 8000, 1, sine(1600));
    action("&Repeat").trigger();
    drop({QUrl::fromLocalFile(path("short.wav"))});
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window->feed().isPlaying(); }));
    EXPECT_EQ(window->feed().position(), 1600);
    EXPECT_TRUE(caption().isPaused());
    QTest::keyClick(&caption(), Qt::Key_Space);
    EXPECT_TRUE(window->feed().isPlaying());
    EXPECT_LT(window->feed().position(), 1600);
}

TEST_F(Window, OpensWhatIsDroppedOrSaysWhatIsWrongWithIt)
{
    auto* notice = window->findChild<NoticeBar*>();
    writeFile(path("letter.txt"), "Dear reader");
    drop({QUrl::fromLocalFile(path("letter.txt"))});
    EXPECT_TRUE(notice->isVisible());
    EXPECT_TRUE(notice->text().startsWith(path("letter.txt") + ": not a recording"));
    EXPECT_EQ(window->feed().source()->name(), "Built-in NRZ signal"); // goes on

    writeRecording(path("two.wav"), SF_FORMAT_WAV | SF_FORMAT_PCM_16, 8000, 2, sine(16000));
    drop({QUrl("http://example.invalid/x.wav"), QUrl::fromLocalFile(path("two.wav"))});
    EXPECT_FALSE(notice->isVisible());
    EXPECT_TRUE(window->feed().isPlaying());
    EXPECT_TRUE(window->windowTitle().startsWith("two.wav"));
    // The axis fits the sine of amplitude 0.5.
    EXPECT_TRUE(QTest::qWaitFor([&] {
        return std::abs(TestAccess::levels(window->timeView()).GetStopValue() - 0.55) < 0.01;
    }));

    drop({QUrl("http://example.invalid/x.wav")});
    EXPECT_FALSE(accepted);
}

TEST_F(Window, FollowsItsControls)
{
    writeRecording(path("two.wav"), SF_FORMAT_WAV | SF_FORMAT_PCM_16, 8000, 2, sine(16000));
    auto* panel = window->findChild<ParameterPanel*>();
    auto* source = dynamic_cast<NrzSource*>(window->feed().source());
    QTest::keyClick(panel->findChildren<QSlider*>().first(), Qt::Key_Left);
    EXPECT_NEAR(source->settings().noise, std::pow(10.0, -27.0 / 20.0), 1e-12);

    drop({QUrl::fromLocalFile(path("two.wav"))});
    auto* channel = panel->findChildren<QSpinBox*>().first();
    ASSERT_TRUE(channel->isVisible());
    QTest::keyClick(channel, Qt::Key_Up);
    EXPECT_EQ(window->feed().channel(), 1);
    auto* span = panel->findChild<QDoubleSpinBox*>();
    EXPECT_NEAR(span->value(), 1000.0, 0.01); // ms: the whole recording
    span->setValue(250.0);
    EXPECT_NEAR(window->feed().span(), 0.25, 1e-9);

    auto* speed = window->findChild<QToolBar*>()->findChild<QComboBox*>();
    QTest::keyClick(speed, Qt::Key_End);
    EXPECT_EQ(window->feed().speed(), 10.0);
}

TEST_F(Window, WearsTheColoursOfTheScheme)
{
    ColorSet& colors = ColorSet::Instance();
    for (const auto scheme : {ColorSet::Scheme::Light, ColorSet::Scheme::Dark}) {
        colors.SetScheme(scheme);
        EXPECT_TRUE(QTest::qWaitFor([] { return appearance::isApplied(); }));
        auto* combo = window->findChild<ParameterPanel*>()->findChild<QComboBox*>();
        EXPECT_EQ(combo->currentIndex(), scheme == ColorSet::Scheme::Dark ? 0 : 1);
        const QImage picture = window->grab().toImage();
        EXPECT_EQ(picture.pixelColor(picture.width() - 3, 300), colors[IColorBase::colBackground]);
    }
}

TEST_F(Window, KeepsTheWidthOfItsNumbers)
{
    auto* status = window->findChild<StatusFields*>();
    status->setSource(QString(500, 'm'), 48000.0, 12.5);
    const auto widths = [&] {
        QCoreApplication::processEvents();
        QList<int> result{window->width()};
        for (const QLabel* label : status->findChildren<QLabel*>())
            result += label->width();
        return result;
    };
    const QList<int> before = widths();
    status->setPosition(754.321);
    status->setDropCount(123456);
    status->setFrameRate(29.97);
    EXPECT_EQ(widths(), before);
}

} // namespace
