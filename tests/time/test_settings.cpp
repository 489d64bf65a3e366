// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "TimeFixture.h"
#include "foundations/GLOrvanePropertyPage.h"
#include "platform/gui/PropertyPagesFrame.h"
#include "platform/values/Persistant.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFile>
#include <QMenu>
#include <QPushButton>
#include <QSettings>
#include <QTabWidget>
#include <QTest>

#include <functional>

namespace {

struct TimeSettings : TimeFixture
{
    /// Acts in the dialog that the menu opens, then presses a button if it is still there.
    void inDialog(const std::function<void(PropertyPagesFrame&)>& act,
                  QDialogButtonBox::StandardButton button)
    {
        bool ran = false;
        QTimer::singleShot(0, [&] {
            const QPointer<PropertyPagesFrame> dialog =
                qobject_cast<PropertyPagesFrame*>(QApplication::activeModalWidget());
            ASSERT_TRUE(dialog);
            ran = true;
            act(*dialog);
            if (dialog)
                press(*dialog, button);
        });
        diagram->getContextMenu(nullptr, nullptr, 0)->actions().at(0)->trigger();
        EXPECT_TRUE(ran);
    }
    static void press(PropertyPagesFrame& dialog, QDialogButtonBox::StandardButton button)
    {
        QTest::mouseClick(dialog.findChild<QDialogButtonBox*>()->button(button), Qt::LeftButton);
    }
    QTimer& timer() { return TestAccess::timer(*diagram); }
};

TEST_F(TimeSettings, AutoScalingReplacesTheRangeThenWidensItForASecond)
{
    diagram->SetYStart(-3.0);
    diagram->SetYStop(3.0);
    ranges.clear();
    add({50, 60});
    EXPECT_EQ(ranges, Ranges{}); // no request
    diagram->getContextMenu(nullptr, nullptr, 0)->actions().at(1)->trigger();
    add({}); // rejected: the request stands
    add({10, 20});
    add({12, 13});
    diagram->AutoScale(); // again, while it lasts: nothing
    add({0, 10});
    diagram->SetYStart(-0.6);
    add({0, 10});
    EXPECT_EQ(ranges,
              (Ranges{{9.5, 3.0}, {9.5, 20.5}, {-0.5, 20.5}, {-0.6, 20.5}, {double(-0.6F), 20.5}}));
    timer().stop(); // as if the second were over
    add({100, 200});
    EXPECT_EQ(ranges.size(), 5U);

    EXPECT_EQ(timer().interval(), 1000);
    diagram->AutoScale();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !timer().isActive(); }));
    add({10, 20}); // the request outlives the second
    add({100, 200});
    EXPECT_EQ(yRange(), std::pair(9.5, 20.5));
}

TEST_F(TimeSettings, DialogShowsTheRangesAndAppliesThemOnce)
{
    diagram->SetYStart(-2.0);
    diagram->SetYStop(2.0);
    diagram->GetYAxisHandler()->SetRange(-1.5, 1.5); // zoomed
    ranges.clear();
    const auto edit = [&](PropertyPagesFrame& dialog) {
        GLOrvanePropertyPage* page = TestAccess::page(*diagram);
        ASSERT_EQ(page->window(), &dialog);
        EXPECT_EQ(dialog.parentWidget(), frame.get());
        EXPECT_EQ(dialog.findChild<QTabWidget*>()->count(), 2); // and the colours
        EXPECT_EQ(page->GetXAxisMin(), -100.0);
        EXPECT_EQ(page->GetXAxisMax(), 0.0);
        EXPECT_EQ(page->GetYAxisMin(), -1.5);
        EXPECT_EQ(page->GetYAxisMax(), 1.5);
        page->SetXAxisMin(-100.0, 0.0, -50.0, true);
        page->SetYAxisMin(-10000.0, 10000.0, -5.0, true);
        page->SetShowGrid(true, true);
    };
    inDialog(edit, QDialogButtonBox::Cancel);
    EXPECT_EQ(ranges, Ranges{});
    inDialog(
        [&](PropertyPagesFrame& dialog) {
            edit(dialog);
            press(dialog, QDialogButtonBox::Apply);
            EXPECT_EQ(ranges, (Ranges{{-5.0, 1.5}}));
        },
        QDialogButtonBox::Cancel);
    diagram->slotAcceptPropertyChanges(); // no page: nothing
    EXPECT_EQ(ranges.size(), 1U);
    EXPECT_TRUE(TestAccess::showGrid(*diagram));
    EXPECT_EQ(xAxis->GetStartValue(), -50.0);
    EXPECT_EQ(xAxis->GetStopValue(), 0.0);
    diagram->SetYStop(7.0); // the page left the diagram's own start alone
    EXPECT_EQ(yRange(), std::pair(-2.0, 7.0));

    xAxis->SetRange(0.0, 10.0); // the page clamps both ends to 0, which harms nobody
    inDialog([](auto&) {}, QDialogButtonBox::Ok);
    EXPECT_EQ(xAxis->GetStopValue(), 0.0);
    paint();
}

TEST_F(TimeSettings, DialogAndMenuSurviveTheDiagramAndItsFrame)
{
    EXPECT_EQ(diagram->getContextMenu(nullptr, nullptr, 0)->parent(), frame.get());
    inDialog(
        [&](auto&) {
            frame.reset(); // takes dialog and menu along
            diagram.reset();
        },
        QDialogButtonBox::Cancel);
    // The frame may also go while the diagram stays.
    frame = std::make_unique<GLLayout>();
    diagram = std::make_shared<GLTimeDiagram>("TimeDiagram");
    frame->AddWidget(diagram);
    diagram->getContextMenu(nullptr, nullptr, 0);
    frame.reset();
    EXPECT_NE(diagram->getContextMenu(nullptr, nullptr, 0), nullptr);
}

TEST_F(TimeSettings, KeepTheGridSwitchFromOneDiagramToTheNext)
{
    const auto stored = [] {
        return QSettings(values::Persistant::StoreFile(), QSettings::IniFormat)
            .value("GLTimeDiagram/ShowGrid");
    };
    QFile::remove(values::Persistant::StoreFile());
    for (const bool shown : {true, false, true}) {
        {
            GLTimeDiagram last("TimeDiagram"); // a bare diagram has no frame to repaint
            EXPECT_EQ(TestAccess::showGrid(last), stored().isNull() || stored().toBool());
            TestAccess::showGrid(last) = shown;
        }
        EXPECT_EQ(stored(), shown ? "true" : "false");
    }
}

} // namespace
