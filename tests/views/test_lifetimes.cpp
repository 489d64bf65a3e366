// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Faults of memory that views had, each once; random sequences of operations look for others. One
// shows in the build with sanitizers.
#include "ViewsFixture.h"
#include "platform/glwidgets/YAxisHandler.h"

#include <QDoubleSpinBox>
#include <QPainter>
#include <QWheelEvent>

#include <functional>

namespace {

template<class View>
struct Lifetimes : Views<View>, IObserver
{
    void Update(Observable*, TChangeCode) override
    {
        ++told;
        this->view.reset();
    }
    int told = 0;
};
TYPED_TEST_SUITE(Lifetimes, AllViews, );

TYPED_TEST(Lifetimes, MayEndInAnObserverOfAnAxis)
{
    auto& view = this->view;
    this->a->SetValue(-5.0);
    const std::function<void()> operations[] = {
        [&] {
            this->feed({2, 9, 2, 30, 2, 5}, {2, 9, 2, 30, 2, 5});
        },
        [&] { view->SetXAxisMin_ValuePath("A"); },
        [&] { view->GetDiagram()->slotAcceptPropertyChanges(); },
        [&] {
            const QPointF at = view->Widgets().at(2)->geometry().center();
            QWheelEvent wheel(at, at, {}, {0, 120}, {}, {}, Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(view.get(), &wheel);
        },
    };
    for (const auto& operation : operations) {
        view = std::make_unique<TypeParam>();
        view->resize(300, 300);
        this->bindData();
        QWidget page;
        view->GetDiagram()->GetPropertyPage(&page, "");
        page.findChildren<QDoubleSpinBox*>()[0]->setValue(-50.0);
        page.findChildren<QDoubleSpinBox*>()[2]->setValue(-50.0);
        view->AutoScale();
        this->xAxis().Attach(this);
        if constexpr (!TestFixture::isEye)
            view->GetDiagram()->GetYAxisHandler()->Attach(this);
        operation();
    }
    EXPECT_GE(this->told, this->isEye ? 1 : 4);
}

TYPED_TEST(Lifetimes, LeaveAPageAloneThatIsGone)
{
    auto page = std::make_unique<QWidget>();
    this->view->GetDiagram()->GetPropertyPage(page.get(), "");
    page.reset();
    this->view->GetDiagram()->slotAcceptPropertyChanges();
}

TYPED_TEST(Lifetimes, PaintNothingIntoAnEmptyPicture)
{
    auto& view = *this->view;
    view.resize(300, 300);
    view.grab(QRect(0, 3, 10, 0));
    QImage none;
    QPainter painter(&none);
    view.RenderPicture(painter, {10, 10});
    view.Render(painter);
}

TYPED_TEST(Lifetimes, PaintTheirGroundWhereThePictureIsPartOfAHugeOne)
{
    // Painters of pictures reach 32767 pixels, and memory not much further.
    for (const int width : {300, 32767, 40000, 1000000000}) {
        QImage picture(300, 200, QImage::Format_RGB32);
        picture.fill(Qt::magenta);
        QPainter painter(&picture);
        this->view->RenderPicture(painter, {width, 200});
        painter.end();
        for (const int x : {0, 150, 299})
            EXPECT_NE(picture.pixelColor(x, 100), QColor(Qt::magenta)) << width << ' ' << x;
    }
}

} // namespace
