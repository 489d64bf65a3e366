// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "TimeTestAccess.h"

#include "foundations/GLOrvanePropertyPage.h"
#include "platform/gui/ColorSet.h"
#include "platform/gui/PropertyPagesFrame.h"
#include "platform/values/Persistant.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QMenu>
#include <QMetaMethod>
#include <QPushButton>
#include <QSettings>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>

namespace {

/// Runs an action in the modal properties dialog that the call opens.
void inDialog(GLTimeDiagram& diagram, const std::function<void(PropertyPagesFrame&)>& action)
{
    bool ran = false;
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<PropertyPagesFrame*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        ran = true;
        action(*dialog);
    });
    diagram.ShowProperties();
    EXPECT_TRUE(ran);
}

void press(PropertyPagesFrame& dialog, QDialogButtonBox::StandardButton button)
{
    QTest::mouseClick(dialog.findChild<QDialogButtonBox*>()->button(button), Qt::LeftButton);
}

TEST(TimeSettings, DialogShowsTheRangesAndAppliesThemOnce)
{
    TimeFixture f;
    f.diagram->SetYStart(-2.0);
    f.diagram->SetYStop(2.0);
    ColorSet::Instance().m_pageOptions = 0;
    int rangeChanges = 0;
    struct Counter : IObserver
    {
        int& count;
        explicit Counter(int& c)
            : count(c)
        {}
        void Update(Observable*, TChangeCode) override { ++count; }
    } counter(rangeChanges);
    f.diagram->GetYAxisHandler()->Attach(&counter);

    inDialog(*f.diagram, [&](PropertyPagesFrame& dialog) {
        EXPECT_EQ(dialog.parentWidget(), &f.frame);
        EXPECT_EQ(ColorSet::Instance().m_pageOptions, 1025);
        GLOrvanePropertyPage* page = TestAccess::page(*f.diagram);
        ASSERT_NE(page, nullptr);
        EXPECT_EQ(page->window(), &dialog);
        EXPECT_EQ(page->GetXAxisMin(), -100.0);
        EXPECT_EQ(page->GetXAxisMax(), 0.0);
        EXPECT_EQ(page->GetYAxisMin(), -2.0);
        EXPECT_EQ(page->GetYAxisMax(), 2.0);
        page->SetXAxisMin(-100.0, 0.0, -50.0, true);
        page->SetYAxisMin(-10000.0, 10000.0, -5.0, true);
        page->SetShowGrid(false, true);
        press(dialog, QDialogButtonBox::Apply);
        EXPECT_EQ(rangeChanges, 1);
        press(dialog, QDialogButtonBox::Cancel);
    });
    f.diagram->GetYAxisHandler()->Detach(&counter);
    EXPECT_EQ(TestAccess::page(*f.diagram), nullptr);
    EXPECT_FALSE(TestAccess::showGrid(*f.diagram));
    EXPECT_EQ(f.xAxis->GetStartValue(), -50.0);
    double start = 0;
    double stop = 0;
    f.diagram->GetYStartStop(start, stop);
    EXPECT_EQ(start, -5.0);
    f.diagram->SetYStop(7.0); // the page left the diagram's own start alone
    f.diagram->GetYStartStop(start, stop);
    EXPECT_EQ(start, -2.0);
    EXPECT_EQ(stop, 7.0);

    inDialog(*f.diagram, [&](PropertyPagesFrame& dialog) {
        TestAccess::page(*f.diagram)->SetYAxisMin(-10000.0, 10000.0, -9.0, true);
        press(dialog, QDialogButtonBox::Cancel);
    });
    f.diagram->GetYStartStop(start, stop);
    EXPECT_EQ(start, -2.0);
    f.diagram->slotAcceptPropertyChanges(); // no page: nothing
    TestAccess::showGrid(*f.diagram) = true;
}

TEST(TimeSettings, ApplyingUntouchedCanFlattenAnAxisWithoutHarm)
{
    TimeFixture f;
    f.xAxis->SetRange(0.0, 10.0); // the page clamps both ends to 0
    f.add({0, 1});
    f.add({0, 1});
    inDialog(*f.diagram, [&](PropertyPagesFrame& dialog) { press(dialog, QDialogButtonBox::Ok); });
    EXPECT_EQ(f.xAxis->GetStartValue(), f.xAxis->GetStopValue());
    f.paint();
    EXPECT_EQ(TestAccess::records(*f.diagram).size(), 2U);
}

TEST(TimeSettings, DialogSurvivesTheDiagramAndItsFrame)
{
    auto frame = std::make_unique<GLLayout>();
    auto diagram = std::make_shared<GLTimeDiagram>("TimeDiagram");
    frame->AddWidget(diagram);
    GLTimeDiagram* raw = diagram.get();
    QMenu* menu = raw->getContextMenu(nullptr, nullptr, 0);
    EXPECT_EQ(menu->parent(), frame.get());
    inDialog(*raw, [&](PropertyPagesFrame&) {
        frame.reset(); // takes dialog and menu along
        diagram.reset();
    });

    // The frame may also go while the diagram stays.
    frame = std::make_unique<GLLayout>();
    diagram = std::make_shared<GLTimeDiagram>("TimeDiagram");
    frame->AddWidget(diagram);
    diagram->getContextMenu(nullptr, nullptr, 0);
    frame.reset();
    EXPECT_NE(diagram->getContextMenu(nullptr, nullptr, 0), nullptr);
}

TEST(TimeSettings, OffersMenuSlotsAndInterfacesInOrder)
{
    TimeFixture f;
    QMenu* menu = f.diagram->getContextMenu(nullptr, nullptr, 0);
    EXPECT_EQ(menu, f.diagram->getContextMenu(nullptr, nullptr, 1));
    ASSERT_EQ(menu->actions().size(), 2);
    EXPECT_EQ(menu->actions()[0]->text(), QStringLiteral("Properties..."));
    EXPECT_EQ(menu->actions()[1]->text(), QStringLiteral("Auto Scaling"));
    menu->actions()[1]->trigger();
    EXPECT_TRUE(TestAccess::timer(*f.diagram).isActive());

    const QMetaObject* meta = f.diagram->metaObject();
    const char* const slotNames[] = {"slotAcceptPropertyChanges()", "ShowProperties()",
                                     "AutoScale()"};
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(meta->method(meta->methodOffset() + i).methodSignature(), slotNames[i]);
    QObject* object = f.diagram.get();
    EXPECT_EQ(object->qt_metacast("values::PersistantOwner"),
              static_cast<values::PersistantOwner*>(f.diagram.get()));
    EXPECT_EQ(object->qt_metacast("IHasContextMenu"),
              static_cast<IHasContextMenu*>(f.diagram.get()));
    EXPECT_EQ(object->qt_metacast("IHasPropertyPage"),
              static_cast<IHasPropertyPage*>(f.diagram.get()));
    EXPECT_EQ(f.diagram->GetPropertyPagePath(), QStringLiteral("Time Diagram"));
}

TEST(TimeSettings, KeepsTheGridSwitchFromOneDiagramToTheNext)
{
    const auto stored = [] {
        const QSettings settings(values::Persistant::StoreFile(), QSettings::IniFormat);
        return settings.value(QStringLiteral("GLTimeDiagram/ShowGrid"));
    };
    for (const bool shown : {false, true}) {
        {
            GLTimeDiagram diagram("TimeDiagram");
            TestAccess::showGrid(diagram) = shown;
        }
        EXPECT_EQ(stored().toBool(), shown);
        GLTimeDiagram next("TimeDiagram"); // also: a bare diagram has no frame to repaint
        EXPECT_EQ(TestAccess::showGrid(next), shown);
    }
}

} // namespace
