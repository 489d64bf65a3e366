// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/glbase/GLCommonWidget.h"
#include "platform/glbase/GLLayout.h"
#include "platform/glbase/GLPainter.h"
#include "platform/glbase/Renderer.h"
#include "platform/gui/ColorSet.h"

#include <QPainter>
#include <QTest>
#include <QtMath>

#include <gtest/gtest.h>

#include <functional>

/// A GL widget that paints what a test tells it to.
struct Canvas : GLCommonWidget
{
    explicit Canvas(const char* name, int height = 0)
        : GLCommonWidget(name, nullptr)
        , fixedHeight(height)
    {}
    int FixedHeight() const override { return fixedHeight; }
    void paintEvent(QPaintEvent* event) override
    {
        GLPainter painter(GetFrameWidget());
        if (paint)
            paint(painter);
        GLCommonWidget::paintEvent(event);
    }

    int fixedHeight;
    std::function<void(GLPainter&)> paint;
};

/// Fails with the first pixel that differs.
inline void ExpectSamePicture(const QImage& actual, const QImage& expected, const char* what)
{
    ASSERT_EQ(actual.size(), expected.size()) << what;
    for (int i = 0; actual != expected; ++i) {
        const QPoint at(i % actual.width(), i / actual.width());
        ASSERT_EQ(actual.pixelColor(at).name(), expected.pixelColor(at).name())
            << what << " at " << at.x() << ", " << at.y();
    }
}

/// A plot of 161 x 86 pixels between a header and a footer, on the screen. At a device pixel ratio
/// of 1.5 it starts and ends between two device pixels.
struct FrameFixture
{
    FrameFixture()
    {
        for (const auto& widget : {header, plot, footer})
            frame.AddWidget(widget);
        frame.resize(161, 127);
        frame.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&frame));
        ratio = frame.devicePixelRatioF();
        EXPECT_EQ(ratio, qEnvironmentVariable("QT_SCALE_FACTOR", "1").toDouble());
    }
    QImage PaintedOnScreen()
    {
        const QImage image = Renderer::Current() == Renderer::Kind::OpenGL ? frame.grabFramebuffer()
                                                                           : frame.grab().toImage();
        return image.convertToFormat(QImage::Format_RGB32);
    }
    QImage PaintedAsPicture()
    {
        QImage image(PaintedOnScreen().size(), QImage::Format_RGB32);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::magenta);
        QPainter painter(&image);
        frame.Render(painter);
        return image;
    }
    /// The picture of both renderers, where frames paint with OpenGL; a failure when they differ
    /// anywhere.
    QImage Painted()
    {
        QImage image = PaintedAsPicture();
        ExpectSamePicture(PaintedOnScreen(), image, "the screen beside a picture");
        return image;
    }
    /// Device pixel of a logical coordinate in the plot.
    QPoint Device(double x, double y) const
    {
        const QPointF position = (plot->geometry().topLeft() + QPointF(x, y)) * ratio;
        return {qFloor(position.x() + 0.5), qFloor(position.y() + 0.5)};
    }
    /// Device pixels of an area of the plot.
    QRect Device(const QRect& rect) const
    {
        return {Device(rect.x(), rect.y()),
                Device(rect.x() + rect.width(), rect.y() + rect.height()) - QPoint(1, 1)};
    }
    /// A picture that shows rectangles of the plot (logical pixels) on the ground colour.
    QImage Expected(const std::vector<QRect>& rects) const
    {
        QImage image((QSizeF(frame.size()) * ratio).toSize(), QImage::Format_RGB32);
        image.fill(ColorSet::Instance()[IColorBase::colBackground]);
        QPainter painter(&image);
        for (const QRect& rect : rects)
            painter.fillRect(Device(rect), trace);
        return image;
    }

    GLLayout frame;
    const std::shared_ptr<Canvas> header = std::make_shared<Canvas>("Header", 25);
    const std::shared_ptr<Canvas> plot = std::make_shared<Canvas>("Plot");
    const std::shared_ptr<Canvas> footer = std::make_shared<Canvas>("Footer", 16);
    const QColor trace{76, 201, 240};
    double ratio = 1.0; // known once the window is on the screen
};
