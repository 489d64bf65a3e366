// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// What an observer of an axis may do to a view whose range is being set, and the user while a menu
// or a dialog of it is open. A fault shows in the build with sanitizers.
#include "eye/GLEyeDiagram.h"
#include "foundations/GLOrvanePropertyPage.h"
#include "iq/GLIQDiagram.h"
#include "platform/glwidgets/XAxisWidget.h"
#include "platform/glwidgets/YAxisHandler.h"
#include "time/GLTimeDiagram.h"
#include "views/VCGLEyeDiagram.h"
#include "views/VCGLIQDiagram.h"
#include "views/VCGLTimeDiagram.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDialog>
#include <QMenu>
#include <QPainter>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <functional>
#include <limits>

using values::Tree;

struct TestAccess
{
    template<class View>
    static auto& diagram(View& view)
    {
        return *view.Diagram();
    }
    template<class View>
    static XAxisWidget& xAxis(View& view)
    {
        return *view.m_xAxis;
    }
};

namespace {

struct Taker : IObserver
{
    void Update(Observable*, TChangeCode) override
    {
        if (countdown-- == 0)
            act();
    }
    int countdown = 0;
    std::function<void()> act;
};

template<class View>
struct Lifetimes : testing::Test
{
    static constexpr bool isEye = std::is_same_v<View, VCGLEyeDiagram>;
    static constexpr bool isIq = std::is_same_v<View, VCGLIQDiagram>;

    void build()
    {
        tree.Create<values::ValueList<double>>("Data");
        tree.Create<values::ValueList<double>>("Second");
        tree.Create<values::Value<bool>>("Trigger");
        tree.Create<values::ValueNumeric<double>>("Limit");
        view = std::make_unique<View>();
        view->SetData1_ValuePath("Data");
        if constexpr (isIq)
            view->SetData2_ValuePath("Second");
        else
            view->SetBaudrateData_ValuePath("Second");
        view->SetHasChangedTrigger_ValuePath("Trigger");
        page = std::make_unique<QWidget>();
        TestAccess::diagram(*view).GetPropertyPage(page.get(), "");
        view->AutoScale();
    }
    void takeDown()
    {
        view.reset();
        for (const char* path : {"Data", "Second", "Trigger", "Limit"})
            tree.Remove(path);
    }
    auto list(const char* path)
    {
        return dynamic_cast<values::ValueList<double>*>(tree.FindValue(path));
    }
    void feed()
    {
        for (const char* path : {"Data", "Second"})
            if (auto* values = list(path))
                values->GetList() = {2, 9, 2, 30, 2, 5};
        if (auto* trigger = dynamic_cast<values::Value<bool>*>(tree.FindValue("Trigger")))
            trigger->SetValue(true);
    }
    void give()
    {
        if constexpr (isIq) {
            std::vector<float> data{1, 5};
            view->AddData(data);
        } else {
            std::vector<double> data{1, 5};
            view->FillData(data, true);
        }
    }

    Tree& tree = Tree::Instance();
    std::unique_ptr<View> view;
    std::unique_ptr<QWidget> page;
};

using AllViews = testing::Types<VCGLTimeDiagram, VCGLEyeDiagram, VCGLIQDiagram>;
TYPED_TEST_SUITE(Lifetimes, AllViews, );

TYPED_TEST(Lifetimes, BearObserversOfAnAxisThatTakeAnything)
{
    const std::function<void()> acts[] = {
        [this] { this->view.reset(); },
        [this] { this->tree.Remove("Data") && this->tree.Remove("Second"); },
        [this] { this->list("Data")->GetList().clear(); },
        [this] { TestAccess::diagram(*this->view).setXAxisWidget({}); },
        [this] { this->page.reset(); },
        [this] { this->feed(); },
    };
    const std::function<void()> operations[] = {
        [this] { this->feed(); },
        [this] { this->give(); },
        [this] { this->view->SetXAxisMin_ValuePath("Limit"); },
        [this] { this->view->SetYAxisMax_ValuePath("Limit"); },
        [this] { TestAccess::diagram(*this->view).slotAcceptPropertyChanges(); },
        [this] {
            QImage image(9, 9, QImage::Format_RGB32);
            QPainter painter(&image);
            if constexpr (TestFixture::isEye) // the others set no range when they paint
                TestAccess::diagram(*this->view).PaintPicture(painter, QSize(9, 9));
        },
    };
    int taken = 0;
    for (const auto& act : acts) {
        for (const auto& operation : operations) {
            for (const int change : {0, 1, 2, 3}) {
                this->build();
                Taker taker;
                taker.countdown = change;
                taker.act = [&] { ++taken, act(); };
                TestAccess::xAxis(*this->view).Attach(&taker);
                if constexpr (!TestFixture::isEye)
                    TestAccess::diagram(*this->view).GetYAxisHandler()->Attach(&taker);
                operation();
                this->takeDown();
            }
        }
    }
    EXPECT_GE(taken, this->isEye ? 12 : 36) << "observers that were told";
}

TYPED_TEST(Lifetimes, LeaveAPageAloneThatIsGone)
{
    this->build();
    this->page.reset();
    TestAccess::diagram(*this->view).slotAcceptPropertyChanges();
    this->takeDown();
}

TYPED_TEST(Lifetimes, LetGoOfValuesThatDieWithoutTheirTree)
{
    this->build();
    values::ValueObservingPtr<values::Value<bool>> pointer(this->view.get());
    {
        values::Value<bool> own("own");
        pointer.Reset(&own);
    }
    EXPECT_EQ(pointer.Get(), nullptr);
    this->takeDown();
}

/// The user opens the settings by the menu, and the view goes while they are open.
TYPED_TEST(Lifetimes, MayEndWhileTheUserIsInTheirDialog)
{
    this->build();
    this->view->resize(300, 300);
    this->view->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(this->view.get()));
    bool isOpen = false;
    QTimer::singleShot(0, [&] {
        QWidget* menu = QApplication::activePopupWidget();
        ASSERT_NE(menu, nullptr);
        QTimer::singleShot(0, [&] {
            isOpen = QApplication::activeModalWidget();
            this->view.reset();
        });
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    const QPoint at = this->view->Widgets().at(1)->geometry().center();
    QWidget* child = this->view->childAt(at);
    QWidget* target = child ? child : this->view.get();
    QContextMenuEvent event(QContextMenuEvent::Mouse, target->mapFrom(this->view.get(), at),
                            this->view->mapToGlobal(at));
    QCoreApplication::sendEvent(target, &event);
    EXPECT_TRUE(isOpen);
    this->takeDown();
}

TYPED_TEST(Lifetimes, PaintNothingIntoAnEmptyPicture)
{
    this->build();
    this->view->resize(300, 300);
    this->view->grab(QRect(0, 3, 10, 0));
    this->view->grab(QRect());
    QImage none;
    QPainter painter(&none);
    this->view->RenderPicture(painter, {10, 10});
    this->view->Render(painter);
    if constexpr (TestFixture::isEye)
        TestAccess::diagram(*this->view).PaintPicture(painter, {10, 10});
    this->takeDown();
}

TYPED_TEST(Lifetimes, LeaveTheirWindowAlsoWhereTheyHadNoRoom)
{
    QWidget window;
    for (const bool isMoved : {false, true}) {
        this->build();
        this->view->setParent(&window);
        this->view->resize(100, 0);
        window.show();
        this->view->show();
        QCoreApplication::processEvents();
        if (isMoved)
            this->view->setParent(nullptr);
        this->takeDown();
        QDialog dialog(&window); // exposes it
        QTimer::singleShot(0, &dialog, &QDialog::close);
        dialog.exec();
        QCoreApplication::processEvents();
    }
}

TYPED_TEST(Lifetimes, BearTheLargestScalesAndWheels)
{
    this->build();
    this->view->resize(300, 300);
    if constexpr (!TestFixture::isIq)
        TestAccess::diagram(*this->view).SetBaudrate(1.0F);
    TestAccess::xAxis(*this->view).SetRange(-100.0, 0.0);
    this->feed();
    QImage image(30, 30, QImage::Format_RGB32);
    for (const double scale : {1e300, 1e15, 1e-300, 0.0}) {
        QPainter painter(&image);
        painter.scale(scale, scale);
        this->view->RenderPicture(painter, {300, 300});
    }
    const auto& children = this->view->Widgets();
    for (const int delta : {std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        for (const auto& child : children) {
            const QPointF at = child->geometry().center();
            QWheelEvent event(at, at, {}, {delta, delta}, {}, {}, Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(this->view.get(), &event);
        }
    }
    this->takeDown();
}

} // namespace
