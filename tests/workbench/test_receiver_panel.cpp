// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "Recordings.h"
#include "workbench/window/MainWindow.h"
#include "workbench/window/Player.h"
#include "workbench/window/ReceiverPanel.h"
#include "workbench/window/SchemeChoice.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>

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

using ReceiverControls = Recordings;

TEST_F(ReceiverControls, ActAtOnceAndSayHowTheStagesDo)
{
    std::vector<double> samples;
    ModulationSource(ModulationSettings()).read(samples, 60000);
    const QString file = path("signal.cf32"); // nobody tells its symbol rate
    writeRecording(file, 48000, 2, samples, SF_FORMAT_RAW | SF_FORMAT_FLOAT);
    SchemeChoice scheme(std::nullopt);
    MainWindow window(scheme);
    auto& panel = *window.findChild<ReceiverPanel*>();
    auto& isOn = titled<QCheckBox>(panel, "&Receiver on");
    window.player().openBuiltIn(NrzSettings());
    EXPECT_FALSE(isOn.isEnabled()) << "its symbols are known";

    Recording::Options options;
    options.sampleRate = 48000.0;
    ASSERT_TRUE(window.player().open(Recording::open(file, options), 0, std::nullopt, why));
    EXPECT_TRUE(isOn.isEnabled());
    isOn.click();
    auto& timing = titled<QCheckBox>(panel, "Symbol &timing");
    EXPECT_FALSE(timing.isEnabled()) << "there is no symbol rate";
    window.player().setSymbolRate(6000.0);
    EXPECT_TRUE(timing.isEnabled());
    auto& modulation = titled<QComboBox>(panel, "Modulation of the carrier that is recovered");
    modulation.setCurrentIndex(2); // QPSK
    emit modulation.activated(2);
    window.feed().transport().playThrough(1.0);
    window.refresh();
    int lockedCount = 0;
    for (const auto* label : panel.findChildren<QLabel*>())
        lockedCount += label->text() == "locked" ? 1 : 0;
    EXPECT_EQ(lockedCount, 2); // timing and carrier
    EXPECT_NEAR(titled<QLabel>(panel, "Carrier offset").text().split(QChar(0x2009))[0].toDouble(),
                0.0, 20.0);
    EXPECT_TRUE(window.feed().iq().showsDecisions());

    window.player().setSymbolRate(40000.0); // fewer than two samples of a symbol
    EXPECT_TRUE(window.player().eyeNotice().contains("40000"));
    isOn.click();
    EXPECT_FALSE(window.feed().receiver().isOn);
}

} // namespace
