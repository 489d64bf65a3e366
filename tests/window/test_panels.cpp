// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// What is said beside the views and below them.
#include "WindowFixture.h"
#include "workbench/player/Figures.h"
#include "workbench/sources/StreamSource.h"
#include "workbench/window/StatusFields.h"
#include "workbench/window/menus/SeekBar.h"
#include "workbench/window/panels/ReceiverPanel.h"
#include "workbench/window/panes/ReadingTable.h"
#include "workbench/window/panes/Readings.h"

#include <QCheckBox>

#include <unistd.h>

namespace {

template<class Widget>
Widget& titled(const QWidget& parent, const QString& title)
{
    for (auto* widget : parent.findChildren<Widget*>()) {
        if (widget->accessibleName() == title || widget->property("text").toString() == title)
            return *widget;
    }
    ADD_FAILURE() << title.toStdString();
    std::abort();
}

double number(const QString& text) { return text.split(QChar(0x2009))[0].toDouble(); }

struct Panels : Window
{
    void playOn()
    {
        window->feed().transport().playThrough(1.0);
        window->refresh();
        window->measure();
    }
};

TEST_F(Panels, OfTheReceiverActAtOnceAndSayHowTheStagesDo)
{
    auto& panel = *window->findChild<ReceiverPanel*>();
    auto& isOn = titled<QCheckBox>(panel, "&Receiver on");
    EXPECT_FALSE(isOn.isEnabled()) << "the symbols of the built-in signal are known";
    writeDemo(path("signal.wav"));
    drop({QUrl::fromLocalFile(path("signal.wav"))});
    EXPECT_TRUE(isOn.isEnabled());
    isOn.click();
    auto& timing = titled<QCheckBox>(panel, "Symbol &timing");
    EXPECT_FALSE(timing.isEnabled()) << "there is no symbol rate";
    window->player().setSymbolRate(6000.0);
    EXPECT_TRUE(timing.isEnabled());
    auto& modulation = titled<QComboBox>(panel, "Modulation of the carrier that is recovered");
    modulation.setCurrentIndex(2); // QPSK
    emit modulation.activated(2);
    playOn();
    int lockedCount = 0;
    for (const auto* label : panel.findChildren<QLabel*>())
        lockedCount += label->text() == "locked" ? 1 : 0;
    EXPECT_EQ(lockedCount, 2); // timing and carrier
    EXPECT_NEAR(number(titled<QLabel>(panel, "Carrier offset").text()), 0.0, 20.0);
    EXPECT_TRUE(window->feed().iq().showsDecisions());

    window->player().setSymbolRate(40000.0); // fewer than two samples of a symbol
    EXPECT_TRUE(window->player().checkEye().error().sentence.contains("40000"));
    isOn.click();
    EXPECT_FALSE(window->feed().receiver().isOn);
}

TEST_F(Panels, OfFiguresSayWhatTheSignalMeasures)
{
    window.reset();
    window = std::make_unique<MainWindow>(scheme); // which has measured nothing
    auto& readings = *window->findChild<Readings*>();
    const ReadingTable& constellation = readings.constellation();
    NrzSettings settings;
    settings.levelCount = 4;
    settings.noise = 0.01;
    window->player().openBuiltIn(settings);
    for (const ReadingTable* table :
         {&readings.level(), &readings.eye(), &readings.constellation()}) {
        for (const auto* label : table->findChildren<QLabel*>())
            EXPECT_EQ(label->toolTip().isEmpty(),
                      label->accessibleName().isEmpty() && label->parent() == table)
                << qPrintable(label->text()) << ": what does it mean?";
    }
    playOn();
    EXPECT_NEAR(number(readings.level().text(0, 3)), 2.05, 0.05); // peak to peak
    for (std::size_t eye = 0; eye < 3; ++eye)
        EXPECT_NEAR(number(readings.eye().text(eye, 0)), 2.0 / 3.0 - 0.06, 0.02);
    EXPECT_EQ(constellation.note(0), "the symbols are not those of a constellation");

    settings.levelCount = 2;
    window->player().openBuiltIn(settings);
    playOn();
    EXPECT_NEAR(number(readings.eye().text(2, 1)), 1.0, 0.02);  // level of the ones
    EXPECT_NEAR(number(readings.eye().text(2, 3)), -0.5, 0.03); // of the crossing
    EXPECT_TRUE(readings.eye().text(0, 2).endsWith("\u2009UI"));
    const double width = number(readings.eye().text(0, 2)) / settings.symbolRate;
    window->player().setCountingSymbols(false);
    window->measure();
    EXPECT_NEAR(number(readings.eye().text(0, 2)), 1e6 * width, 1.0) << "us";

    for (int scheme = 0; scheme < 5; ++scheme) { // up to 64QAM
        ModulationSettings modulation;
        modulation.modulation = static_cast<ModulationKind>(scheme);
        modulation.snrDb = 25.0;
        modulation.seed = scheme == 0 ? 25 : 1; // with which a clock is easily missed
        window->player().openDemo(modulation);
        window->player().setSpan(0.5);
        EXPECT_EQ(readings.eye().text(0, 0), "\u2013") << "not of the signal before";
        playOn();
        EXPECT_NEAR(number(constellation.text(0, 2)), 25.0, 1.5) << scheme; // MER
        EXPECT_EQ(constellation.note(0), "");
    }
    EXPECT_EQ(readings.eye().note(0), "levels cannot be told apart");
    EXPECT_EQ(constellation.gate(), "of 3,000 symbols, 0.5000 to 1.0000\u2009s");
    window->show();
    for (const bool isShown : {false, true}) {
        window->panes().showingReadings().trigger();
        EXPECT_EQ(readings.eye().isVisible(), isShown);
    }
}

TEST_F(Panels, OfFiguresRepaintNoPaneAndLayNothingOut)
{
    struct Events : QObject
    {
        explicit Events(QEvent::Type type)
            : type(type)
        {}
        bool eventFilter(QObject*, QEvent* event) override
        {
            count += event->type() == type ? 1 : 0;
            return false;
        }
        const QEvent::Type type;
        int count = 0;
    };
    playOn();
    window->feed().transport().pause();
    auto& readings = *window->findChild<Readings*>();
    if (!readings.eye().isVisible())
        window->panes().showingReadings().trigger();
    QTest::qWait(100); // until all is laid out and painted
    Events panes(QEvent::Paint), tables(QEvent::Paint), layouts(QEvent::LayoutRequest);
    for (auto* pane : window->findChildren<GLFrameWidget*>())
        pane->installEventFilter(&panes);
    for (auto* label : readings.eye().findChildren<QLabel*>())
        label->installEventFilter(&tables);
    window->installEventFilter(&layouts);
    const auto showing = [&] { return tables.count > 0; };
    readings.show(Measurement()); // nothing is known
    EXPECT_TRUE(QTest::qWaitFor(showing));
    tables.count = 0;
    window->measure();
    EXPECT_TRUE(QTest::qWaitFor(showing));
    window->findChild<SeekBar*>()->setTime(1.234);
    QTest::qWait(50); // nor later
    EXPECT_EQ(panes.count, 0);
    EXPECT_EQ(layouts.count, 0);
    window->timeView().update();
    window->statusBar()->updateGeometry();
    EXPECT_TRUE(QTest::qWaitFor([&] { return panes.count > 0 && layouts.count > 0; }))
        << "they are counted";
}

TEST(Figures, KeepTheirPlaces)
{
    using figures::Levels;
    const double nan = std::nan("");
    const std::pair<QString, const char*> cases[] = {
        {Levels(1e-7, 5).text(1e-7), "100.00_n"},
        {Levels(1e-7, 5).text(2e-11), "0.02_n"},
        {Levels(0.0, 5).text(0.0), "0.0000"},
        {Levels(123456.7, 5, "Hz").text(-42.0), "-0.04_kHz"},
        {Levels(0.99999999, 5).text(-0.5), "-0.5000"},
        {Levels(1234.5, 5).text(7.0), "7.0"},
        {Levels(0.018, 5).text(-0.018), "-18.000_m"},
        {Levels(2.0, 5).text(-1e-9), "0.0000"},
        {Levels(nan, 5).text(nan), ""},
        {Levels(1e300, 5).text(1e300), "> 999_T"},
        {figures::fixed(-26.04, 1, "dB"), "-26.0_dB"},
        {figures::fixed(-1e9, 1, "dB"), "< -999_dB"},
        {figures::fixed(nan, 1), ""},
        {figures::frequency(999999.99), "1.00000_MHz"},
        {figures::offset(-93125.4), "-93.125_kHz"},
        {figures::offset(-0.01), "0.0_Hz"}};
    for (const auto& [figure, text] : cases)
        EXPECT_EQ(figure, QString(text).replace('_', QChar(0x2009)));

    ReadingTable table;
    table.addLines({"One", "Two", "Three"}, 2, "-888.8");
    table.resize(400, table.sizeHint().height());
    table.setVisible(true);
    const auto labels = table.findChildren<QLabel*>();
    const auto places = [&labels] {
        QCoreApplication::processEvents();
        QVector<QRect> result;
        for (const QLabel* label : labels)
            result += label->geometry();
        return result;
    };
    const auto before = places();
    table.show(0, 1, QString(200, '8'));
    table.show(1, 2, QString());
    table.setNote(0, 2, "why", "because");
    table.setNames(0, {"Much longer than before"});
    EXPECT_EQ(places(), before);
}

TEST_F(Panels, TellTheSampleRateOfWhatIsShown)
{
    QString source;
    const auto shown = [&] {
        for (const auto* label : window->findChild<StatusFields*>()->findChildren<QLabel*>()) {
            if (!label->toolTip().startsWith("Sample rate"))
                continue;
            source = label->toolTip().section("the source has ", 1);
            return label->text();
        }
        return QString();
    };
    EXPECT_EQ(shown(), "48\u2009kHz");
    dropSine(1, 8000);
    EXPECT_EQ(shown(), "8\u2009kHz");
    int ends[2] = {};
    ASSERT_EQ(pipe(ends), 0);
    Recording live;
    live.source =
        std::make_unique<StreamSource>("pipe", ends[0], *SampleFormat::parse("cu8"), 76560.4);
    ASSERT_TRUE(window->player().open(std::move(live), 0, std::nullopt));
    EXPECT_EQ(shown(), "76.5604\u2009kHz");
    ReceiverSettings receiver;
    receiver.isOn = true; // makes eight samples of a symbol
    window->player().setReceiver(receiver);
    for (const auto& [symbolRate, rate] : {std::pair(9600.0, "76.8"), {6250.0, "50"}}) {
        window->player().setSymbolRate(symbolRate);
        EXPECT_EQ(shown(), QString(rate) + "\u2009kHz");
        EXPECT_EQ(source, "76.5604\u2009kHz");
    }
    window->player().openDemo(ModulationSettings());
    EXPECT_EQ(shown(), "48\u2009kHz");
    EXPECT_EQ(source, "");
    close(ends[0]);
    close(ends[1]);
}

TEST_F(Panels, TakeNoNameForMarkup)
{
    auto& fields = *window->findChild<StatusFields*>();
    fields.setSource("<h1>a</h1>.wav");
    const auto* label = fields.findChild<QLabel*>();
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
    EXPECT_TRUE(label->toolTip().contains("&lt;h1&gt;a")) << qPrintable(label->toolTip());
}

} // namespace
