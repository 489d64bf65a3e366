// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "WindowFixture.h"

#include <QFile>
#include <QMenu>
#include <QSemaphore>

#include <atomic>

namespace {

struct Memory : Window
{
    QStringList recent()
    {
        emit menu().aboutToShow();
        QStringList texts;
        for (QAction* entry : menu().actions())
            if (!entry->isSeparator())
                texts += entry->text();
        return texts;
    }
    QMenu& menu() { return *action("Open &recent").menu(); }
    void startAgain()
    {
        window->close();
        window.reset();
        window = std::make_unique<MainWindow>(scheme);
        window->restoreParameters();
        window->player().openBuiltIn(NrzSettings());
        window->restoreRoom();
        window->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        QApplication::setActiveWindow(window.get());
    }
    bool waitForName(const char* name)
    {
        return QTest::qWaitFor([&] { return window->feed().source().name == name; });
    }
};

TEST_F(Memory, ListsRecentRecordingsUntilTheyAreGone)
{
    EXPECT_FALSE(action("Open &recent").isEnabled());
    for (int i = 0; i < 12; ++i) {
        const QString file = path((std::to_string(i) + "&.wav").c_str());
        writeRecording(file, 8000, 1, sine(1600));
        drop({QUrl::fromLocalFile(file)});
    }
    startAgain();
    const QStringList listed = recent();
    ASSERT_EQ(listed.size(), 11); // and Clear
    EXPECT_TRUE(listed[0].startsWith("&1 11&&.wav - ")) << listed[0].toStdString();
    EXPECT_TRUE(listed[9].startsWith("&0 2&&.wav - "));
    menu().actions()[3]->trigger();
    EXPECT_TRUE(waitForName("8&.wav"));
    EXPECT_TRUE(recent()[0].startsWith("&1 8&&.wav"));

    QFile::remove(path("11&.wav"));
    menu().actions()[1]->trigger();
    auto* notice = window->findChild<NoticeBar*>();
    EXPECT_TRUE(QTest::qWaitFor([&] { return notice->text().startsWith(path("11&.wav")); }));
    EXPECT_TRUE(recent().filter("11&&.wav").isEmpty());
    EXPECT_EQ(window->feed().source().name, "8&.wav");
    caption().setReadout("a ruler's");
    QTest::keyClick(&caption(), Qt::Key_Escape);
    EXPECT_TRUE(notice->isVisible()) << "Escape is the ruler's first";
    caption().setReadout(QString());
    QTest::keyClick(&caption(), Qt::Key_Escape);
    EXPECT_FALSE(notice->isVisible());

    menu().actions().last()->trigger();
    EXPECT_FALSE(action("Open &recent").isEnabled());
}

TEST_F(Memory, KeepsWhatWasSet)
{
    window->resize(1100, 700);
    window->panes().setSizes({400, 200});
    const QList<int> heights = window->panes().sizes();
    control<QSpinBox>("Sym&bols").setValue(3);
    control<QDoubleSpinBox>("Band&width").setValue(0.75);
    control<QDoubleSpinBox>("&Span").setValue(33.0);
    for (const char* toggled : {"&Repeat", "&Faster", "&Parameters"})
        action(toggled).trigger();
    const double span = window->feed().span();
    ReceiverSettings settings;
    settings.isOn = true;
    settings.shift = -12000.0;
    settings.bandwidth = 16000.0;
    settings.rollOff = 0.2;
    settings.hasGainControl = false;
    settings.modulation = ReceiverSettings::Modulation::Bpsk;
    window->player().setReceiver(settings);
    startAgain();
    settings.isOn = false;
    EXPECT_TRUE(window->feed().receiver() == settings) << "but off";
    EXPECT_EQ(window->size(), QSize(1100, 700));
    EXPECT_NEAR(window->panes().sizes()[0], heights[0], 1) << "shared out in whole pixels";
    EXPECT_EQ(window->feed().eye().cut().symbolCount, 3);
    EXPECT_EQ(window->feed().eye().cut().bandwidth, 0.75);
    EXPECT_EQ(window->feed().transport().speed(), 2.0);
    EXPECT_FALSE(window->feed().transport().repeat());
    EXPECT_FALSE(action("&Repeat").isChecked());
    EXPECT_DOUBLE_EQ(window->feed().span(), span);
    EXPECT_FALSE(window->findChild<ParameterPanel*>()->isVisible());
    dropSine(1, 80000);
    EXPECT_NE(window->feed().span(), span) << "of another sample rate";
}

TEST_F(Memory, WearsTheSchemeThatIsChosen)
{
    using Choice = SchemeChoice::Choice;
    ColorSet& colors = ColorSet::Instance();
    const auto expectScheme = [&](ColorSet::Scheme expected) {
        EXPECT_EQ(colors.GetScheme(), expected);
        EXPECT_TRUE(QTest::qWaitFor([] { return appearance::isApplied(); }));
        EXPECT_EQ(control<QComboBox>("Sche&me").currentIndex(),
                  expected == ColorSet::Scheme::Dark ? 1 : 2);
        const QImage picture = window->grab().toImage();
        EXPECT_EQ(picture.pixelColor(picture.width() - 30, 40), colors[IColorBase::colBackground]);
    };
    qunsetenv("XDG_CURRENT_DESKTOP");
    EXPECT_EQ(SchemeChoice(std::nullopt).choice(), Choice::Desktop);
    EXPECT_EQ(colors.GetScheme(), ColorSet::Scheme::Dark);
    scheme.choose(Choice::Light);
    expectScheme(ColorSet::Scheme::Light);
    EXPECT_EQ(SchemeChoice(Choice::Dark).choice(), Choice::Dark);
    EXPECT_EQ(colors.GetScheme(), ColorSet::Scheme::Dark);
    EXPECT_EQ(SchemeChoice(std::nullopt).choice(), Choice::Light) << "what was forced is not kept";
    scheme.choose(Choice::Dark);
    expectScheme(ColorSet::Scheme::Dark);
}

TEST_F(Memory, ShowsWhatTakesLongAndLetsItBeGivenUp)
{
    Progress& progress = window->progress();
    auto isGoing = std::make_shared<std::atomic<bool>>(false);
    auto ended = std::make_shared<QSemaphore>();
    const auto endless = [=](const Progress::GoOn& goOn) {
        while (goOn(0.25))
            *isGoing = true;
        ended->release();
    };
    QStringList told;
    const auto tell = [&told](const char* name) {
        return [&told, name](bool isCancelled) { told += name + QString::number(isCancelled); };
    };
    progress.run("Counting", endless, tell("first"));
    EXPECT_FALSE(progress.isVisible());
    EXPECT_TRUE(QTest::qWaitFor([&] { return progress.isVisible() && *isGoing; }));
    progress.run("Counting again", endless, tell("second"));
    EXPECT_TRUE(ended->tryAcquire(1, 10000)) << "the first was not cancelled";
    EXPECT_TRUE(QTest::qWaitFor([&] { return progress.isVisible(); }));
    QTest::keyClick(window.get(), Qt::Key_Escape);
    EXPECT_FALSE(progress.isVisible());
    EXPECT_TRUE(ended->tryAcquire(1, 10000));
    progress.run(
        "Nothing", [](const Progress::GoOn&) {}, tell("third"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !progress.isRunning(); }));
    EXPECT_EQ(told, QStringList({"second1", "third0"}));
    progress.run("Until the end", endless, tell("last"));
    window.reset();
    EXPECT_TRUE(ended->tryAcquire(1, 10000));
}

} // namespace
