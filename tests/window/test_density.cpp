// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "WindowFixture.h"
#include "density/DensityExport.h"
#include "workbench/measure/SymbolCutter.h"
#include "workbench/receiver/Receiver.h"
#include "workbench/window/density/Densities.h"
#include "workbench/window/density/MaskChoice.h"
#include "workbench/window/density/TimeMark.h"
#include "workbench/window/density/WayBack.h"
#include "workbench/window/dialogs/ExportDialog.h"
#include "workbench/window/panes/ViewExport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSignalSpy>

#include <random>

namespace {

using density::DensityPlot;

constexpr int perSymbol = 16; // samples
constexpr int symbolCount = 3000;
constexpr int runt = 1777; // the symbol that stays halfway

/// Two levels with smooth edges in between, sample k * 16 in the middle of symbol k, and a little
/// noise, so that the clock is found and nothing is ideal.
std::vector<double> twoLevels()
{
    std::mt19937 bits(7);
    std::normal_distribution<double> noise(0.0, 0.01);
    std::vector<double> level(symbolCount + 1);
    for (double& each : level)
        each = (bits() & 1U) != 0 ? 0.5 : -0.5;
    level[runt - 1] = level[runt + 1] = -0.5;
    level[runt] = 0.1;
    std::vector<double> samples;
    for (int k = 0; k < symbolCount * perSymbol; ++k) {
        const double part = double(k % perSymbol) / perSymbol;
        const double weight = 0.5 - 0.5 * std::cos(3.14159265358979 * part);
        const auto before = std::size_t(k / perSymbol);
        samples.push_back(level[before] + weight * (level[before + 1] - level[before]) +
                          noise(bits));
    }
    return samples;
}

/// Symbols of a recording with a trace, and those of a receiver's that have none.
struct Expected
{
    std::int64_t whole = 0, torn = 0;
};

Expected symbolsOf(const QString& file)
{
    auto recording = RecordingOpener::open(file, {});
    ReceiverSettings settings;
    settings.symbolRate = 16000.0 / perSymbol;
    Receiver receiver(recording->source->facts(), 0, settings);
    std::vector<SignalBlock> blocks;
    receiver.process(0, readAll(*recording->source, 65536), blocks);
    receiver.finish(blocks);
    Expected expected;
    SymbolCutter cutter(
        receiver.format(), 0.0, 1,
        [&](const SymbolCutter::Place& place) {
            ++(place.isWhole ? expected.whole : expected.torn);
        },
        [&](const Symbol&, bool isTorn) { expected.torn += isTorn; });
    for (const SignalBlock& block : blocks)
        cutter.add(block);
    cutter.finish();
    return expected;
}

struct Density : Window
{
    Density()
    {
        window->resize(1280, 800);
        writeRecording(path("levels.wav"), 16000, 1, twoLevels());
        drop({QUrl::fromLocalFile(path("levels.wav"))});
        window->player().setSymbolRate(16000.0 / perSymbol);
    }
    DensityPlot& eye() { return *window->densities().eye().plot(); }
    void playAll()
    {
        Transport& transport = window->feed().transport();
        window->panes().showWhilePaused([&] {
            transport.pause();
            transport.seek(0.0);
            transport.playThrough(100.0);
        });
        window->densities().settle();
    }
    std::int64_t counted() { return eye().snapshot()->allSymbols; }
    std::int64_t leftOut() { return eye().snapshot()->leftOut.tornTraces; }
    /// Clicks where a level is in the middle of the symbols. @return whether something is told.
    bool clickAt(double level)
    {
        // The plot has one frame of borders; a click there tells what it stands for.
        QSignalSpy passed(&eye(), &DensityPlot::passed);
        const auto placeOf = [&](const QPoint& pixel) {
            QTest::mouseClick(&eye(), Qt::LeftButton, {}, pixel);
            EXPECT_TRUE(QTest::qWaitFor([&] { return !passed.isEmpty(); }));
            return passed.takeLast()[1].toPointF();
        };
        const QPoint one(eye().width() / 3, 60), other(eye().width() / 2, 110);
        const QPointF a = placeOf(one), b = placeOf(other);
        const double x = one.x() + (0.0 - a.x()) / (b.x() - a.x()) * (other.x() - one.x());
        const double y = one.y() + (level - a.y()) / (b.y() - a.y()) * (other.y() - one.y());
        placeOf(QPointF(x, y).toPoint());
        return !window->densities().wayBack().stretches().empty();
    }
};

TEST_F(Density, CountsEachSymbolOfARecordingOnce)
{
    window->densities().eye().setOn(true);
    playAll();
    EXPECT_NEAR(double(counted()), double(symbolCount), 4.0);
    EXPECT_EQ(counted(), symbolsOf(path("levels.wav")).whole);
    EXPECT_EQ(leftOut(), 0);
    const std::int64_t all = counted();
    playAll();
    EXPECT_EQ(counted(), all) << "what is played again brings nothing new";

    window->player().setEye(2, 0.8);
    EXPECT_TRUE(QTest::qWaitFor([this] { return counted() < symbolCount / 2; }));
    playAll();
    EXPECT_NEAR(double(counted()), double(all), 4.0) << "another look at all of them";
    window->player().fixGate(1.0005, 1.5005);
    window->densities().settle();
    EXPECT_EQ(counted(), 500 - 2) << "of the gate, as the figures; those at its ends have no trace";
}

TEST_F(Density, LeavesOutWhatHasNoTraceUpToTheLastSymbol)
{
    // The clock slips twice: the second time too late to be found again.
    std::vector<double> samples = twoLevels();
    for (const std::ptrdiff_t symbol : {symbolCount - 12, symbolCount / 2}) {
        const auto first = samples.begin() + symbol * perSymbol;
        samples.erase(first, first + 7);
    }
    writeRecording(path("slips.wav"), 16000, 1, samples);
    drop({QUrl::fromLocalFile(path("slips.wav"))});
    window->player().setSymbolRate(16000.0 / perSymbol);
    window->densities().eye().setOn(true);
    const Expected expected = symbolsOf(path("slips.wav"));
    EXPECT_GT(expected.torn, 3);
    for (const bool isGated : {false, true}) {
        if (isGated)
            window->player().gateAll();
        window->panes().showWhilePaused([this] {
            window->feed().transport().seek(0.0);
            // To the last sample, and not beyond.
            window->feed().transport().playThrough(*window->feed().transport().length());
        });
        window->densities().settle();
        EXPECT_EQ(counted(), expected.whole) << isGated;
        EXPECT_EQ(leftOut(), expected.torn) << isGated;
    }
}

TEST_F(Density, IsSwitchedByKeyAndButtonAndStaysAsItWasLeft)
{
    auto& densities = window->densities();
    QTest::keyClick(window.get(), Qt::Key_D);
    EXPECT_TRUE(densities.eye().isOn() && densities.iq().isOn()) << "none has the focus";
    window->eyeView().setFocus();
    QTest::keyClick(window->focusWidget(), Qt::Key_D);
    EXPECT_FALSE(densities.eye().isOn());
    EXPECT_TRUE(densities.iq().isOn());
    auto* bar = window->eyeView().focusProxy();
    for (auto* button : bar->findChildren<QToolButton*>())
        if (button->defaultAction() == &densities.eye().switching())
            QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_TRUE(densities.eye().isOn());
    EXPECT_EQ(eye().geometry().top(), bar->height());
    densities.iq().switching().trigger();

    window->close();
    window.reset();
    window = std::make_unique<MainWindow>(scheme);
    EXPECT_FALSE(window->densities().eye().isOn());
    window->restoreParameters();
    EXPECT_TRUE(window->densities().eye().isOn());
    EXPECT_FALSE(window->densities().iq().isOn());
}

TEST_F(Density, LeadsFromAPointBackToTheSignal)
{
    window->densities().eye().setOn(true);
    playAll();
    WayBack& way = window->densities().wayBack();
    ASSERT_TRUE(clickAt(0.1));
    ASSERT_EQ(way.stretches().size(), 1U);
    const double time = double(runt * perSymbol) / 16000.0;
    EXPECT_NEAR(way.stretches()[0].time, time, 1.0 / 16000.0) << "to the sample";
    const auto& transport = window->feed().transport();
    EXPECT_NEAR(transport.time(), time + 0.5 * window->feed().span(), 1e-3);
    ASSERT_TRUE(window->densities().timeMark().stretch());
    const auto [from, to] = *window->densities().timeMark().stretch();
    EXPECT_NEAR(0.5 * (from + to) * window->feed().scale().unitSeconds(), time - transport.time(),
                1.0 / 16000.0);

    EXPECT_FALSE(clickAt(0.3)) << way.text().toStdString();
    EXPECT_TRUE(way.text().startsWith("nothing passed")) << way.text().toStdString();
    ASSERT_TRUE(clickAt(0.5));
    ASSERT_GT(way.stretches().size(), 100U);
    const double newest = transport.time();
    way.show(500);
    EXPECT_LT(transport.time(), newest);
    QTest::keyClick(window.get(), Qt::Key_F3);
    EXPECT_EQ(way.index(), 501);
    QTest::keyClick(window.get(), Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(way.index(), 500);
    window->feed().transport().play();
    EXPECT_FALSE(window->densities().timeMark().stretch()) << "what plays is elsewhere";
}

TEST_F(Density, IsTestedAgainstAMaskWhoseHitsLeadBackToTheirSymbols)
{
    window->densities().eye().setOn(true);
    auto& masks = window->densities().masks();
    // About the middle between the levels; the runt reaches 0.6 of the way up.
    masks.choose(density::Mask::fromJson(R"({"schema": "orvane.mask/1", "polygons":
        [[[-0.05, 0.5], [0.05, 0.5], [0.05, 0.7], [-0.05, 0.7]]],
        "limit": {"hits": 0, "symbols": 1000}})"));
    EXPECT_FALSE(masks.result()) << "no level is known yet";
    playAll();
    ASSERT_TRUE(masks.result()) << masks.text().toStdString();
    EXPECT_EQ(masks.result()->hitCount, 0) << "the limit ends before the runt";
    EXPECT_TRUE(masks.text().startsWith("pass, 0 hits in 1,000")) << masks.text().toStdString();
    auto mask = *masks.mask();
    mask.symbolCount = 2500;
    masks.choose(mask);
    window->densities().settle();
    EXPECT_EQ(masks.result()->hitCount, 1);
    EXPECT_TRUE(masks.text().startsWith("FAIL, 1 hits")) << masks.text().toStdString();
    action("Show the &hits").trigger();
    const auto& stretches = window->densities().wayBack().stretches();
    ASSERT_EQ(stretches.size(), 1U);
    EXPECT_NEAR(stretches[0].time, double(runt * perSymbol) / 16000.0, 1.0 / 16000.0);

    masks.chooseMargin(0.49);
    window->densities().settle();
    EXPECT_GT(masks.result()->hitCount, 1) << "it reaches the levels";
    EXPECT_TRUE(window->panes().panes()[1].mode.contains("FAIL")) << "in sight";
}

TEST_F(Density, IsKeptInFilesByItsDialogs)
{
    window->densities().eye().setOn(true);
    playAll();
    MaskChoice& masks = window->densities().masks();
    // Below a folder with a dot the toolkit's dialog adds no ending.
    ASSERT_TRUE(QDir(path("")).mkpath("a.folder"));
    const QString name = path("a.folder/my mask");
    action("STM-4").trigger();
    const density::Mask chosen = *masks.mask();
    nameFileOnceAsked(window.get(), name);
    action("&Save...").trigger();
    EXPECT_FALSE(QFileInfo::exists(name));
    masks.choose(std::nullopt);
    writeFile(path("bad.json"), "{}");
    nameFileOnceAsked(window.get(), path("bad.json"));
    action("&Load...").trigger();
    EXPECT_FALSE(masks.mask());
    nameFileOnceAsked(window.get(), name + ".json");
    action("&Load...").trigger();
    ASSERT_TRUE(masks.mask());
    EXPECT_EQ(masks.mask()->toJson(), chosen.toJson());
    EXPECT_TRUE(action("STM-4").isChecked());

    const QStringList endings{"png", "csv", "npy"};
    for (const QString& ending : endings) {
        QApplication::setActiveWindow(window.get()); // no window manager does it
        QTest::keyClick(window.get(), Qt::Key_E, Qt::ControlModifier);
        auto* dialog = window->findChild<ExportDialog*>();
        ASSERT_TRUE(dialog);
        const auto choices = dialog->findChildren<QComboBox*>();
        QTest::keyClick(choices[0], Qt::Key_Home);
        QTest::keyClick(choices[0], Qt::Key_Down); // to the eye, whose size is proposed
        choices[1]->setCurrentIndex(int(ViewExport::endings().indexOf(ending)));
        nameFileOnceAsked(window.get(), path("a.folder/eye"));
        QTest::keyClick(dialog, Qt::Key_Return);
        QCoreApplication::sendPostedEvents(dialog, QEvent::DeferredDelete);
    }
    const auto contentOf = [this](const char* ending) {
        QFile file(path("a.folder/eye.") + ending);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << ending;
        return file.readAll();
    };
    EXPECT_EQ(contentOf("csv"), density::toCsv(*eye().snapshot()));
    EXPECT_EQ(contentOf("npy"), density::toNpy(*eye().snapshot()));
    EXPECT_EQ(QImage::fromData(contentOf("png")).size(), window->eyeView().size());
}

TEST_F(Density, OfASignalThatDoesNotComeAgainIsLedBackToWhatIsKept)
{
    window->player().openDemo(ModulationSettings());
    window->densities().eye().setOn(true);
    window->densities().iq().setOn(true);
    window->panes().showWhilePaused([this] { window->feed().transport().playThrough(1.0); });
    window->densities().settle();
    EXPECT_NEAR(double(counted()), 6000.0, 8.0);
    window->panes().showWhilePaused([this] { window->feed().transport().playThrough(20.0); });
    window->densities().settle();
    EXPECT_GT(counted(), 120'000);
    EXPECT_EQ(eye().snapshot()->symbolCount, counted()) << "more than are kept, all in the picture";
    WayBack& way = window->densities().wayBack();
    const double end = window->feed().transport().time();
    way.take(window->densities().eye(), {100'000}, "here");
    ASSERT_EQ(way.stretches().size(), 1U);
    EXPECT_NEAR(way.stretches()[0].time, 100'000.0 / 6000.0, 3.0 / 6000.0);
    EXPECT_EQ(window->feed().transport().time(), end) << "it cannot be gone back in";
    ASSERT_TRUE(window->densities().timeMark().stretch());
    EXPECT_NEAR(window->densities().timeMark().stretch()->first, -0.5 * 400.0, 3.0);
    EXPECT_FALSE(window->feed().counted(DensityFeed::Kind::Traces).timeOf(-1));
}

} // namespace
