// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "ViewsFixture.h"
#include "platform/glwidgets/DiagramCaption.h"
#include "platform/gui/ColorSet.h"
#include "platform/gui/PropertyPagesFrame.h"
#include "platform/startup/TranslationCenter.h"
#include "platform/values/Persistant.h"

#include <QCheckBox>
#include <QContextMenuEvent>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFile>
#include <QMenu>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QTabWidget>
#include <QToolButton>

namespace {

TYPED_TEST_SUITE(Views, AllViews, );

TYPED_TEST(Views, FeedOnlyOnNewContentWithAllListsBound)
{
    auto& view = *this->view;
    this->data->GetList() = {1, 2};
    this->second->GetList() = {2, 0};
    EXPECT_TRUE(view.SetHasChangedTrigger_ValuePath("Trigger")); // replay finds no lists
    EXPECT_TRUE(view.SetData1_ValuePath("Data"));
    this->trigger->SetValue(true);
    EXPECT_TRUE(this->bindSecond("Second"));
    for (const TChangeCode code : {ccState, ccAttributes, ccSelection})
        this->trigger->Notify(code);
    EXPECT_EQ(this->count(), 0U);
    EXPECT_TRUE(view.SetHasChangedTrigger_ValuePath("Trigger")); // rebinding replays
    EXPECT_EQ(this->count(), 1U);
    this->trigger->SetValue(true);
    this->trigger->SetValue(true);   // equal content announces new data, too
    view.Update(nullptr, ccContent); // matches no role that is unbound
    EXPECT_EQ(this->count(), 3U);
}

TYPED_TEST(Views, ApplyLimitsAtOnceFirstMatchingRoleOnly)
{
    auto& view = *this->view;
    this->a->SetValue(-5.0);
    EXPECT_TRUE(view.SetXAxisMin_ValuePath("A"));
    EXPECT_EQ(this->xAxis().GetStartValue(), -5.0);
    EXPECT_TRUE(view.SetYAxisMin_ValuePath("A")); // its replay matches the X role first
    this->a->SetValue(-7.0);
    EXPECT_EQ(this->xAxis().GetStartValue(), -7.0);
    EXPECT_EQ(this->yRange().first, -1.0);
    this->b->SetValue(3.0);
    EXPECT_TRUE(view.SetYAxisMin_ValuePath("B"));
    EXPECT_EQ(this->yRange(), std::pair(3.0, 1.0));
    this->a->SetValue(-8.0); // rebinding one role leaves the other hearing
    EXPECT_EQ(this->xAxis().GetStartValue(), -8.0);

    EXPECT_TRUE(view.SetXAxisMax_ValuePath("B"));
    EXPECT_TRUE(view.SetYAxisMax_ValuePath("A"));
    EXPECT_EQ(this->xAxis().GetStopValue(), 3.0);
    EXPECT_FALSE(view.SetXAxisMin_ValuePath("Data")); // a list is no number
    this->a->SetValue(9.0); // no longer X start: the next role in order takes it
    EXPECT_EQ(this->yRange(), std::pair(3.0, 9.0));
}

TYPED_TEST(Views, ServeHostsWithoutValues)
{
    auto& view = *this->view;
    const float floats[] = {5, 6, 7, 8};
    const double doubles[] = {1, 2};
    const auto give = [&](const auto* data, std::size_t count) {
        if constexpr (TestFixture::isIq)
            view.AddData(data, count);
        else
            view.FillData(data, count, true);
    };
    view.SetXAxisRange(-4.0, 0.0);
    view.SetYAxisRange(-9.0, 9.0);
    if constexpr (!TestFixture::isIq)
        view.SetBaudrate(1.0);
    EXPECT_EQ(this->yRange(), std::pair(-9.0, 9.0));
    this->bindData();
    this->feed({3, 4, 5}, {2, 0, 3}); // leaves a segment open
    give(floats, 4);
    give(doubles, 2);
    EXPECT_EQ(this->count(), 3U);
    if constexpr (std::is_same_v<TypeParam, VCGLTimeDiagram>) {
        EXPECT_EQ(view.GetDiagram()->GetTraces(), (Traces{{3, 4}, {5, 6, 7, 8}, {1, 2}}));
    }
    this->show();
    EXPECT_EQ(this->paintsBy([&] { view.Clear(); }), 1);
    EXPECT_EQ(this->count(), 0U);
    EXPECT_EQ(this->yRange(), std::pair(-9.0, 9.0));
    give(doubles, 0);
    this->feed({7, 7}, {2, 0}); // not joined to what was open
    EXPECT_EQ(this->count(), 1U);
}

TYPED_TEST(Views, PauseDataByMouseAndSpaceButNotTheLimits)
{
    auto& view = *this->view;
    this->bindData();
    this->show();
    QSignalSpy forStart(&view, SIGNAL(StopButtonPressedForStart()));
    QSignalSpy forStop(&view, SIGNAL(StopButtonPressedForStop()));
    const auto feed = [this] { this->feed({1, 2}, {2, 0}); };
    EXPECT_EQ(this->paintsBy(feed), 1);
    // Whoever hears of it may announce data at once.
    QObject::connect(&view, &TypeParam::StopButtonPressedForStart, feed);
    QObject::connect(&view, &TypeParam::StopButtonPressedForStop, feed);
    QTest::mouseClick(this->caption()->template findChild<QToolButton*>(), Qt::LeftButton);
    EXPECT_EQ(forStart.count(), 1);
    EXPECT_EQ(this->paintsBy(feed), 0); // lost
    EXPECT_EQ(this->count(), 1U);
    EXPECT_TRUE(view.SetYAxisMax_ValuePath("A"));
    this->a->SetValue(4.0);
    EXPECT_EQ(this->yRange().second, 4.0);
    if constexpr (std::is_same_v<TypeParam, VCGLTimeDiagram>) {
        EXPECT_TRUE(view.SetBaudrate_ValuePath("B"));
        this->b->SetValue(7.0);
        EXPECT_EQ(TestAccess::baudrate(view), 7.0F);
    }
    EXPECT_EQ(this->paintsBy([&] { this->give({5, 6}, true); }), 1); // direct data pass
    EXPECT_EQ(this->paintsBy([&] { this->give({5, 6}); }), this->isIq ? 1 : 0);
    view.AutoScale();
    this->give({5, 6});
    EXPECT_NEAR(this->yRange().second, 6.0, 0.1);
    EXPECT_EQ(view.focusProxy(), this->caption());
    QTest::keyClick(this->caption(), Qt::Key_Space);
    EXPECT_EQ(forStop.count(), 1);
    EXPECT_EQ(this->count(), 5U);
}

TYPED_TEST(Views, ShowTheirDataAndOfferMenusAndRuler)
{
    auto& view = *this->view;
    this->bindData();
    this->b->SetValue(1.0);
    if constexpr (!std::is_same_v<TypeParam, VCGLIQDiagram>) {
        EXPECT_TRUE(view.SetBaudrate_ValuePath("B"));
    }
    this->xAxis().SetRange(this->isIq ? -1.0 : -100.0, this->isIq ? 1.0 : 0.0);
    this->show();
    this->feed(List(100, 0.5), {100});
    const QImage picture = view.grab().toImage().convertToFormat(QImage::Format_RGB32);
    const QRect plot = view.Widgets().at(1)->geometry();
    const auto number = this->isIq    ? IColorBase::colIQPoint
                        : this->isEye ? IColorBase::colEyeTrace
                                      : IColorBase::colTimeTrace;
    int lit = 0;
    for (int x = plot.left(); x <= plot.right(); ++x)
        for (int y = plot.top(); y < plot.bottom(); ++y)
            lit += picture.pixelColor(x, y) == ColorSet::Instance()[number];
    EXPECT_GE(lit, this->isIq ? 1 : plot.width() / 2); // labels cover the rest
    const QString readout = this->xAxis().XPixelMap()->GetAxisDefinition().LabelWithUnit(1);
    EXPECT_EQ(readout.endsWith(" t/T"), !this->isIq) << qPrintable(readout); // I is no time

    QTest::mouseClick(view.windowHandle(), Qt::LeftButton, {}, plot.center());
    EXPECT_EQ(this->caption()->readout().isEmpty(), this->isEye);
    if constexpr (!std::is_same_v<TypeParam, VCGLIQDiagram>) {
        ASSERT_NE(view.getContextMenu(), nullptr);
        EXPECT_EQ(view.getContextMenu()->actions().size(), 2);
    }
    const auto byMouse = QContextMenuEvent::Mouse;
    const std::tuple<QContextMenuEvent::Reason, QPoint, int> menus[] = {
        {byMouse, plot.center(), 2},
        {byMouse, plot.topLeft() + QPoint(9, 99), this->isEye ? 2 : 1},
        {byMouse, plot.bottomLeft() + QPoint(99, 9), this->isEye ? 2 : 1}, // has no zoom to undo
        {QContextMenuEvent::Keyboard, QPoint(9, 9), 2}}; // on the caption, which has the focus
    for (const auto& [reason, at, entries] : menus) {
        int shown = 0;
        QTimer::singleShot(0, [&shown] {
            if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
                shown = int(menu->actions().size());
                menu->close();
            }
        });
        QWidget* child = view.childAt(at);
        QWidget* target = child ? child : &view;
        QContextMenuEvent event(reason, target->mapFrom(&view, at), view.mapToGlobal(at));
        QCoreApplication::sendEvent(target, &event);
        QCoreApplication::processEvents();
        EXPECT_EQ(shown, entries);
    }
}

TYPED_TEST(Views, TakeANewLanguageAtOnce)
{
    this->show();
    auto& diagram = *this->view->GetDiagram();
    const QMenu& menu = *static_cast<IHasContextMenu&>(diagram).getContextMenu(nullptr, nullptr, 0);
    QStringList texts[2];
    for (const bool isGerman : {true, false}) {
        TranslationCenter::Instance().SetLanguage(isGerman ? "de" : "en");
        QCoreApplication::processEvents();
        texts[isGerman] << this->caption()->accessibleName() << menu.actions()[0]->text()
                        << menu.actions()[1]->text()
                        << this->caption()->template findChild<QToolButton*>()->toolTip()
                        << static_cast<IHasPropertyPage&>(diagram).GetPropertyPagePath();
    }
    for (int i = 0; i < texts[0].size(); ++i)
        EXPECT_NE(texts[0][i], texts[1][i]);
}

TYPED_TEST(Views, ShowTheirSettingsApplyThemOnceAndMayGoMeanwhile)
{
    auto& diagram = *this->view->GetDiagram();
    const QPointer<QAction> settings =
        static_cast<IHasContextMenu&>(diagram).getContextMenu(nullptr, nullptr, 0)->actions()[0];
    const auto inDialog = [&](const std::function<void(PropertyPagesFrame&)>& act) {
        bool isRun = false;
        QTimer::singleShot(0, [&] {
            QPointer dialog = qobject_cast<PropertyPagesFrame*>(QApplication::activeModalWidget());
            ASSERT_TRUE(isRun = dialog);
            act(*dialog);
            if (dialog)
                dialog->reject();
        });
        settings->trigger();
        EXPECT_TRUE(isRun);
    };
    this->show();
    diagram.SetYStart(-2.0);
    diagram.SetYStop(2.0);
    double xStart = this->isEye ? 0.0 : -100.0, yStart = -2.0; // an eye lies over 0 to 1
    this->xAxis().SetRange(xStart, this->isEye ? 1.0 : 0.0);
    using Button = QDialogButtonBox;
    for (const auto button : {Button::Cancel, Button::Apply, Button::Apply}) {
        const bool isGridShown = TestAccess::showGrid(*this->view);
        inDialog([&](PropertyPagesFrame& dialog) {
            EXPECT_EQ(dialog.findChild<QTabWidget*>()->count(), 2); // and the colours
            const auto editors = dialog.findChildren<QDoubleSpinBox*>();
            const double shown[] = {xStart, 0.0, yStart, 2.0};
            for (int i = 0; i < 4; ++i) {
                EXPECT_EQ(editors[i]->value(), shown[i]) << i;
                EXPECT_EQ(editors[i]->isEnabled(), i >= 2 || !this->isEye) << i;
            }
            editors[0]->setValue(-50.0);
            editors[2]->setValue(-5.0);
            dialog.findChild<QCheckBox*>()->setChecked(!isGridShown);
            auto* pressed = dialog.findChild<Button*>()->button(button);
            const int paints = this->paintsBy([&] { pressed->click(); });
            EXPECT_TRUE(button == Button::Cancel ||
                        paints == 1); // where just the grid changes, too
        });
        const bool isApplied = button == Button::Apply;
        xStart = isApplied && !this->isEye ? -50.0 : xStart;
        yStart = isApplied ? -5.0 : yStart;
        EXPECT_TRUE(this->isEye || this->xAxis().GetStartValue() == xStart);
        EXPECT_EQ(this->yRange(), std::pair(yStart, 2.0));
        EXPECT_EQ(TestAccess::showGrid(*this->view), isGridShown != isApplied);
    }
    diagram.SetYStop(7.0); // the page left the diagram's own start alone
    EXPECT_EQ(this->yRange(), std::pair(this->isEye ? -5.0 : -2.0, 7.0));
    inDialog([&](auto&) { this->view.reset(); });
}

TYPED_TEST(Views, KeepTheGridSwitchFromOneToTheNext)
{
    const QString key = QString(this->view->GetDiagram()->metaObject()->className());
    const QString file = values::Persistant::StoreFile();
    this->view.reset();
    QFile::remove(file);
    bool isShown = true; // where nothing is stored
    for (const bool next : {false, true}) {
        this->view = std::make_unique<TypeParam>();
        EXPECT_EQ(std::exchange(TestAccess::showGrid(*this->view), next), isShown);
        isShown = next;
        this->view.reset();
        const QSettings stored(file, QSettings::IniFormat);
        EXPECT_EQ(stored.value(key + "/ShowGrid"), next ? "true" : "false");
    }
}

TYPED_TEST(Views, TakeThemselvesDownInOrder)
{
    auto& view = this->view;
    this->bindData();
    for (auto setter : {&TypeParam::SetXAxisMin_ValuePath, &TypeParam::SetXAxisMax_ValuePath,
                        &TypeParam::SetYAxisMin_ValuePath, &TypeParam::SetYAxisMax_ValuePath})
        EXPECT_TRUE(((*view).*setter)("A"));
    this->tree.Remove("Second");
    this->trigger->SetValue(true);
    EXPECT_EQ(this->count(), 0U);
    QStringList gone;
    const std::pair<QObject*, QString> parts[] = {{&this->xAxis(), "axis"},
                                                  {view->GetDiagram(), "diagram"},
                                                  {view->GetToolbarCaption(), "caption"}};
    for (const auto& [object, name] : parts)
        QObject::connect(object, &QObject::destroyed, [&gone, name = name] { gone << name; });
    const int released = this->tree.ReleaseCount();
    view.reset();
    EXPECT_EQ(gone, (QStringList{"axis", "diagram", "caption"}));
    EXPECT_EQ(this->data->ObserverCount() + this->trigger->ObserverCount(), 0U);
    EXPECT_EQ(this->a->ObserverCount(), 0U);
    EXPECT_EQ(this->tree.ReleaseCount(), released);
}

} // namespace
