// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/Figures.h"
#include "workbench/window/MainWindow.h"
#include "workbench/window/ReadingTable.h"
#include "workbench/window/Readings.h"
#include "workbench/window/SchemeChoice.h"
#include "workbench/window/ViewPanes.h"

#include <QLabel>
#include <QTest>

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

namespace {

double number(const QString& text) { return text.split(QChar(0x2009))[0].toDouble(); }

TEST(ReadOuts, SayWhatTheSignalMeasuresBelowItsViews)
{
    SchemeChoice scheme(std::nullopt);
    MainWindow window(scheme);
    NrzSettings settings;
    settings.levelCount = 4;
    settings.noise = 0.01;
    window.player().openBuiltIn(settings);
    auto& readings = *window.findChild<Readings*>();
    EXPECT_EQ(readings.eye().text(0, 0), "\u2013");
    window.feed().playThrough(2.0);
    window.refresh();
    EXPECT_NEAR(number(readings.level().text(0, 3)), 2.05, 0.05); // peak to peak
    for (std::size_t eye = 0; eye < 3; ++eye)
        EXPECT_NEAR(number(readings.eye().text(eye, 0)), 2.0 / 3.0 - 0.06, 0.02);
    EXPECT_EQ(readings.constellation().note(0), "modulation unknown");

    settings.levelCount = 2;
    window.player().openBuiltIn(settings);
    window.feed().playThrough(2.0);
    window.refresh();
    EXPECT_NEAR(number(readings.eye().text(2, 1)), 1.0, 0.02); // level of the ones
    EXPECT_NEAR(number(readings.eye().text(2, 3)), -0.5, 0.03);

    ModulationSettings modulation;
    modulation.scheme = ModulationSettings::Scheme::Qam16;
    modulation.snrDb = 25.0;
    window.player().openDemo(modulation);
    window.feed().playThrough(1.0);
    window.refresh();
    EXPECT_NEAR(number(readings.constellation().text(0, 2)), 25.0, 1.5); // MER
    EXPECT_EQ(readings.constellation().note(0), "");
    window.feed().iq().setTrajectory(true);
    window.refresh();
    EXPECT_EQ(readings.constellation().text(0, 2), "\u2013");
    EXPECT_EQ(readings.constellation().note(0), "no symbols");

    window.show();
    QAction& showing = window.panes().showingReadings();
    for (const bool isShown : {false, true}) {
        showing.trigger();
        EXPECT_EQ(readings.eye().isVisible(), isShown);
    }
}

TEST(ReadOuts, GiveFiguresThatKeepTheirPlaces)
{
    const double nan = std::nan("");
    const auto thin = [](const char* text) { return QString(text).replace('_', QChar(0x2009)); };
    const std::tuple<double, double, const char*> levels[] = {{1e-7, 1e-7, "100.00_n"},
                                                              {1e-7, 2e-11, "0.02_n"},
                                                              {0.0, 0.0, "0.0000"},
                                                              {123456.7, -42.0, "-0.04_k"},
                                                              {0.99999, -0.5, "-0.5000"},
                                                              {0.99999999, 1.0, "1.0000"},
                                                              {1234.5, 7.0, "7.0"},
                                                              {0.018, -0.018, "-18.000_m"},
                                                              {2.0, -1e-9, "0.0000"},
                                                              {nan, 0.25, "0.2500"},
                                                              {1.0, nan, ""},
                                                              {1e300, 1e300, "> 999_T"}};
    for (const auto& [largest, level, text] : levels)
        EXPECT_EQ(figures::Levels(largest, 5).text(level), thin(text)) << largest;
    const std::pair<QString, const char*> others[] = {
        {figures::fixed(-26.04, 1, "dB"), "-26.0_dB"},
        {figures::fixed(1e300, 1), "> 999"},
        {figures::fixed(-1e9, 1, "dB"), "< -999_dB"},
        {figures::fixed(nan, 1), ""},
        {figures::fixed(std::nullopt, 1), ""},
        {figures::frequency(1200.0), "1.20000_kHz"},
        {figures::frequency(999999.99), "1.00000_MHz"},
        {figures::frequency(0.05), "50.0000_mHz"},
        {figures::offset(-93125.4), "-93.125_kHz"},
        {figures::offset(-0.01), "0.0_Hz"},
        {figures::offset(nan), ""}};
    for (const auto& [figure, text] : others)
        EXPECT_EQ(figure, thin(text));

    ReadingTable table;
    table.addLines({"One", "Two", "Three"}, 2, "-888.8");
    table.resize(400, table.sizeHint().height());
    table.setVisible(true);
    const auto places = [&table] {
        QCoreApplication::processEvents();
        QVector<QRect> result;
        for (const QLabel* label : table.findChildren<QLabel*>())
            result += label->text() == "why" ? QRect() : label->geometry();
        return result.mid(0, 9);
    };
    const auto before = places();
    table.show(0, 1, QString(200, '8'));
    table.show(1, 2, QString());
    table.setNote(0, 2, "why", "because");
    table.setNames(0, {"Much longer than before"});
    EXPECT_EQ(places(), before);
}

} // namespace
