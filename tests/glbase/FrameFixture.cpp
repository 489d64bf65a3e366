// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "FrameFixture.h"

#include "platform/gui/ColorSet.h"

#include <QPainter>
#include <QtTest>

#include <gtest/gtest.h>

FrameFixture::FrameFixture()
{
    for (const auto& widget : {header, plot, footer})
        frame.AddWidget(widget);
    frame.resize(161, 127);
    frame.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&frame));
    ratio = frame.devicePixelRatioF();
    EXPECT_EQ(ratio, qEnvironmentVariable("QT_SCALE_FACTOR", "1").toDouble());
}

QImage FrameFixture::PaintedAsPicture()
{
    QImage image(PaintedWithGL().size(), QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::magenta);
    QPainter painter(&image);
    frame.Render(painter);
    return image;
}

QImage FrameFixture::Painted()
{
    QImage image = PaintedAsPicture();
    ExpectSamePicture(PaintedWithGL(), image, "GL beside the raster engine");
    return image;
}

QPoint FrameFixture::Device(double x, double y) const
{
    const QPointF position = (plot->geometry().topLeft() + QPointF(x, y)) * ratio;
    return {qFloor(position.x() + 0.5), qFloor(position.y() + 0.5)};
}

QImage FrameFixture::Expected(const std::vector<QRect>& rects) const
{
    QImage image((QSizeF(frame.size()) * ratio).toSize(), QImage::Format_RGB32);
    image.fill(ColorSet::Instance()[IColorBase::colBackground]);
    QPainter painter(&image);
    for (const QRect& rect : rects) {
        const QPoint end = Device(rect.x() + rect.width(), rect.y() + rect.height());
        painter.fillRect(QRect(Device(rect.x(), rect.y()), end - QPoint(1, 1)), trace);
    }
    return image;
}

void ExpectSamePicture(const QImage& actual, const QImage& expected, const char* what)
{
    if (actual == expected)
        return;
    ASSERT_EQ(actual.size(), expected.size()) << what;
    for (int i = 0; i < actual.width() * actual.height(); ++i) {
        const QPoint at(i % actual.width(), i / actual.width());
        ASSERT_EQ(actual.pixelColor(at).name(), expected.pixelColor(at).name())
            << what << " at " << at.x() << ", " << at.y();
    }
}
