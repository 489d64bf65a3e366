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
{};

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
    const QRect plot = view.Widgets().at(1)->geometry();
    // A pixel to a unit: OpenGL reckons with fewer digits, and points stay off the edges of pixels.
    const auto setRanges = [&] {
        view.SetXAxisRange(this->isIq ? 0.0 : -plot.width(), this->isIq ? plot.width() : 0.0);
        view.SetYAxisRange(0.0, plot.height());
    };
    setRanges();
    const QRect axis = view.Widgets().at(2)->geometry();
    QWidget note(&view);
    note.setGeometry(QRect(plot.center(), QSize(33, 21)));
    note.setAutoFillBackground(true);
    std::mt19937 random(1);
    const auto edgeless = [&](unsigned step) { return 0.05 + 0.11 * step; };
    const auto give = [&] {
        List samples(60);
        for (double& sample : samples)
            sample = static_cast<double>(random() % 200U) + edgeless(random() % 8U);
        this->give(samples, true);
    };
    const auto turnWheel = [&view](const QPoint& at) {
        QWheelEvent wheel(at, view.mapToGlobal(at), {}, {0, 120}, {}, {}, {}, false);
        QApplication::sendEvent(&view, &wheel);
    };
    QWindow* window = view.windowHandle();
    const std::function<void()> steps[] = {
        give,
        give,
        [&] { QTest::mouseMove(window, axis.center()); },
        [&] { QTest::mousePress(window, Qt::LeftButton, {}, plot.center() - QPoint(70, 30)); },
        [&] { QTest::mouseMove(window, plot.center() + QPoint(90, 40)); },
        [&] { QTest::mouseRelease(window, Qt::LeftButton, {}, plot.center() + QPoint(90, 40)); },
        [&] { note.show(); },
        give,
        [&] { turnWheel(axis.center()); },
        [&] {
            turnWheel({plot.left() + 9, plot.center().y()});
        },
        give,
        [&] { note.hide(); },
    };
    for (std::size_t i = 0; i < std::size(steps); ++i) {
        steps[i]();
        QCoreApplication::processEvents();
        QEvent request(QEvent::UpdateRequest); // what is still to be painted
        QApplication::sendEvent(&view, &request);
        // Bit by bit into the window's picture, and all at once by a painter.
        const auto* pixels = dynamic_cast<const QImage*>(view.backingStore()->paintDevice());
        EXPECT_TRUE(hasGl || !pixels || difference(*pixels, view.grab().toImage()).most == 0)
            << "step " << i;
    }
    setRanges();
    // By a painter, which a clip makes it, or OpenGL, and into pixels.
    const double ratio = view.devicePixelRatioF();
    const auto render = [&](bool isClipped) {
        QImage image((QSizeF(view.size()) * ratio).toSize(), QImage::Format_RGB32);
        image.setDevicePixelRatio(ratio);
        QPainter painter(&image);
        painter.setClipRect(view.rect(), isClipped ? Qt::ReplaceClip : Qt::NoClip);
        view.Render(painter);
        painter.setClipping(false);
        // The caption, and the diagram of an eye.
        for (auto* child :
             view.template findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
            if (child->isVisible() && !qobject_cast<QOpenGLWidget*>(child))
                child->render(&painter, child->pos());
        return image;
    };
    const auto [most, odd] =
        difference(hasGl ? view.grab().toImage() : render(true), render(false));
    // OpenGL rounds gradients in its own way; and that of Qt 6 glyphs, on finer pixels.
    const bool hasOddTexts = ratio != 1.0 && !QtVersions::placesTextsByLogicalPixels;
    EXPECT_LE(most, !hasGl ? 0 : !hasOddTexts ? 1 : 255);
    EXPECT_LE(odd, hasOddTexts ? 0.05 : 0.0);
}

} // namespace
