// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// What views show is the same whichever way it is painted.
#include "Difference.h"
#include "ViewsFixture.h"
#include "platform/base/QtVersions.h"
#include "platform/glbase/Renderer.h"

#include <QBackingStore>
#include <QPainter>
#include <QWindow>

#include <random>

namespace {

template<class View>
struct Renderers : Views<View>
{
    QRect plotArea() const { return this->view->Widgets().at(1)->geometry(); }

    /// A pixel to a unit: OpenGL reckons with fewer digits, and points stay off the edges of
    /// pixels.
    void setRanges()
    {
        const QSize plot = plotArea().size();
        this->view->SetXAxisRange(this->isIq ? 0.0 : -plot.width(), this->isIq ? plot.width() : 0);
        this->view->SetYAxisRange(0.0, plot.height());
    }
    void giveTrace()
    {
        List samples(60);
        for (double& sample : samples)
            sample = 0.05 + static_cast<double>(random() % 200U) +
                     0.11 * static_cast<double>(random() % 8U);
        this->give(samples, true);
    }
    void turnWheel(const QPoint& at)
    {
        QWheelEvent wheel(at, this->view->mapToGlobal(at), {}, {0, 120}, {}, {}, {}, false);
        QApplication::sendEvent(this->view.get(), &wheel);
    }
    /// What was painted bit by bit into the window's picture is what a painter paints at once.
    void expectWindowToBeUpToDate()
    {
        QCoreApplication::processEvents();
        QEvent request(QEvent::UpdateRequest); // what is still to be painted
        QApplication::sendEvent(this->view.get(), &request);
        const auto* pixels = dynamic_cast<const QImage*>(this->view->backingStore()->paintDevice());
        const bool hasPicture = Renderer::Current() != Renderer::Kind::OpenGL && pixels;
        EXPECT_TRUE(!hasPicture || difference(*pixels, this->view->grab().toImage()).most == 0);
    }
    /// By a painter, which a clip makes it, or into pixels.
    QImage render(bool isClipped)
    {
        const double ratio = this->view->devicePixelRatioF();
        QImage image((QSizeF(this->view->size()) * ratio).toSize(), QImage::Format_RGB32);
        image.setDevicePixelRatio(ratio);
        QPainter painter(&image);
        painter.setClipRect(this->view->rect(), isClipped ? Qt::ReplaceClip : Qt::NoClip);
        this->view->Render(painter);
        painter.setClipping(false);
        // The caption, and the diagram of an eye.
        for (auto* child :
             this->view->template findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
            if (child->isVisible() && !qobject_cast<QOpenGLWidget*>(child))
                child->render(&painter, child->pos());
        return image;
    }

    std::mt19937 random{1};
};

TYPED_TEST_SUITE(Renderers, AllViews, );

TYPED_TEST(Renderers, LookTheSameHoweverTheyArePainted)
{
    const bool hasGl = Renderer::Current() == Renderer::Kind::OpenGL;
    auto& view = *this->view;
    if constexpr (TestFixture::isIq)
        view.GetDiagram()->SetAgesByData(true);
    else
        view.GetDiagram()->SetBaudrate(1.0F);
    this->show();
    this->setRanges();
    const QRect plot = this->plotArea();
    const QPoint axis = view.Widgets().at(2)->geometry().center();
    QWidget note(&view);
    note.setGeometry(QRect(plot.center(), QSize(33, 21)));
    note.setAutoFillBackground(true);
    const auto give = [this] { this->giveTrace(); };
    QWindow* window = view.windowHandle();
    const std::function<void()> steps[] = {
        give,
        give,
        [&] { QTest::mouseMove(window, axis); },
        [&] { QTest::mousePress(window, Qt::LeftButton, {}, plot.center() - QPoint(70, 30)); },
        [&] { QTest::mouseMove(window, plot.center() + QPoint(90, 40)); },
        [&] { QTest::mouseRelease(window, Qt::LeftButton, {}, plot.center() + QPoint(90, 40)); },
        [&] { note.show(); },
        give,
        [&] { this->turnWheel(axis); },
        [&] {
            this->turnWheel({plot.left() + 9, plot.center().y()});
        },
        give,
        [&] { note.hide(); },
    };
    for (std::size_t i = 0; i < std::size(steps); ++i) {
        SCOPED_TRACE(testing::Message() << "step " << i);
        steps[i]();
        this->expectWindowToBeUpToDate();
    }
    this->setRanges();
    const auto [most, odd] =
        difference(hasGl ? view.grab().toImage() : this->render(true), this->render(false));
    // OpenGL rounds gradients in its own way; and that of Qt 6 glyphs, on finer pixels.
    const bool hasOddTexts =
        view.devicePixelRatioF() != 1.0 && !QtVersions::placesTextsByLogicalPixels;
    EXPECT_LE(most, !hasGl ? 0 : !hasOddTexts ? 1 : 255);
    EXPECT_LE(odd, hasOddTexts ? 0.05 : 0.0);
}

} // namespace
