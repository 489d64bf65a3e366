// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/glbase/GLCommonWidget.h"
#include "platform/glbase/GLLayout.h"
#include "platform/glbase/GLPainter.h"

#include <QImage>

#include <functional>
#include <memory>
#include <vector>

/// A GL widget that paints what a test tells it to, and counts its resize events.
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
    void resizeEvent(QResizeEvent*) override { ++resizeCount; }

    int fixedHeight;
    int resizeCount = 0;
    std::function<void(GLPainter&)> paint;
};

/// A plot of 161 x 86 pixels between a header and a footer, on the screen. At a device pixel ratio
/// of 1.5 it starts and ends between two device pixels.
struct FrameFixture
{
    GLLayout frame;
    std::shared_ptr<Canvas> header = std::make_shared<Canvas>("Header", 25);
    std::shared_ptr<Canvas> plot = std::make_shared<Canvas>("Plot");
    std::shared_ptr<Canvas> footer = std::make_shared<Canvas>("Footer", 16);
    const QColor trace = QColor(76, 201, 240);
    double ratio;

    FrameFixture();

    QImage PaintedWithGL() { return frame.grabFramebuffer().convertToFormat(QImage::Format_RGB32); }
    QImage PaintedAsPicture();
    /// The picture of both engines; a failure when they differ anywhere.
    QImage Painted();
    /// Device pixel of a logical coordinate in the plot.
    QPoint Device(double x, double y) const;
    /// A picture that shows rectangles of the plot (logical pixels) on the ground colour.
    QImage Expected(const std::vector<QRect>& rects) const;
};

/// Fails with the first pixel that differs.
void ExpectSamePicture(const QImage& actual, const QImage& expected, const char* what);
