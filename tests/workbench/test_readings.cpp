// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/MainWindow.h"
#include "workbench/window/ReadingTable.h"
#include "workbench/window/Readings.h"
#include "workbench/window/SchemeChoice.h"
#include "workbench/window/ViewPanes.h"

#include <QTest>

#include <gtest/gtest.h>

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
    EXPECT_EQ(readings.constellation().text(0, 2), "\u2013") << "no modulation is known";

    settings.levelCount = 2;
    window.player().openBuiltIn(settings);
    window.feed().playThrough(2.0);
    window.refresh();
    EXPECT_EQ(readings.eye().text(1, 0), " ") << "two levels have one eye";

    ModulationSettings modulation;
    modulation.scheme = ModulationSettings::Scheme::Qam16;
    modulation.snrDb = 25.0;
    window.player().openDemo(modulation);
    window.feed().playThrough(1.0);
    window.refresh();
    EXPECT_NEAR(number(readings.constellation().text(0, 2)), 25.0, 1.5); // MER
    window.feed().iq().setTrajectory(true);
    window.refresh();
    EXPECT_EQ(readings.constellation().text(0, 2), "\u2013") << "these are no symbols";

    window.show();
    QAction& showing = window.panes().showingReadings();
    for (const bool isShown : {false, true}) {
        showing.trigger();
        EXPECT_EQ(readings.eye().isVisible(), isShown);
    }
}

} // namespace
