// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "FrameFixture.h"

#include "platform/base/ErrorHandler.h"
#include "platform/base/QtVersions.h"
#include "platform/glbase/TextWidths.h"

#include <QFontMetrics>
#include <QLabel>
#include <QOpenGLContext>
#include <QOpenGLWidget>

#include <array>

#include <GL/gl.h>

namespace {

struct Painting : testing::Test, FrameFixture
{
    void Draw(const std::vector<std::array<float, 4>>& segments, eLineStyle style, int width)
    {
        GLLines lines;
        lines.SetLineStyle({style, width, trace});
        for (const auto& s : segments)
            lines.AddLine(s[0], s[1], s[2], s[3]);
        frame.DrawLines(lines);
        lines.Clear();
        frame.DrawLines(lines);
    }
};

TEST_F(Painting, LinesCoverTheirLogicalPixels)
{
    struct
    {
        const char* name;
        std::vector<std::array<float, 4>> segments;
        std::vector<QRect> pixels;
        eLineStyle style = lsSolid;
        int width = 1;
    } const rows[] = {
        {"level, backwards", {{30, 41, 12, 41}}, {{12, 41, 19, 1}}},
        {"one pixel", {{51, 51, 51, 51}}, {{51, 51, 1, 1}}},
        {"neighbours", {{60, 3, 60, 8}, {61, 3, 61, 8}, {62, 3, 62, 8}}, {{60, 3, 3, 6}}},
        {"borders", {{0, 0, 160, 0}, {160, 0, 160, 85}}, {{0, 0, 161, 1}, {160, 0, 1, 86}}},
        {"huge", {{-1e9F, 61, 3e38F, 61}, {71, 9, 71, -3e38F}}, {{0, 61, 161, 1}, {71, 0, 1, 10}}},
        {"not finite", {{NAN, 5, 9, 5}, {5, INFINITY, 5, 9}, {-INFINITY, 5, INFINITY, 5}}, {}},
        {"outside", {{-5, 3, -5, 9}, {3, 86, 9, 86}, {3, -1, 9, -1}, {1e9F, 3, 1e9F, 9}}, {}},
        {"wide", {{81, 10, 81, 20}}, {{80, 10, 3, 11}}, lsSolid, 3},
        {"no width", {{81, 10, 81, 20}}, {{81, 10, 1, 11}}, lsSolid, 0},
        {"no style", {{81, 10, 81, 20}}, {}, lsNone},
        {"dashes", {{15, 9, 0, 9}}, {{12, 9, 4, 1}, {5, 9, 4, 1}, {0, 9, 2, 1}}, lsDash},
        {"dots", {{3, 0, 3, 5}}, {{3, 0, 1, 1}, {3, 3, 1, 1}}, lsDot},
    };
    for (const auto& row : rows) {
        plot->paint = [&](GLPainter&) { Draw(row.segments, row.style, row.width); };
        const QImage image = Painted();
        // Between two pixels, which of them an end of a dash takes is nobody's concern.
        if (row.style == lsSolid || ratio == std::floor(ratio))
            ExpectSamePicture(image, Expected(row.pixels), row.name);
    }
}

TEST_F(Painting, SlantedLinesReachBothEndsWithoutGap)
{
    plot->paint = [&](GLPainter&) {
        Draw({{100, 10, 99, 30}, {-50, -60, 90, 80}, {10, 80, 60, 70}}, lsSolid, 1);
    };
    std::vector<QRect> pixels = {{100, 10, 1, 11}, {99, 21, 1, 10}};
    for (int x = 10; x <= 90; ++x)
        pixels.insert(pixels.end(),
                      {{x, x - 10, 1, 1},
                       {std::min(x, 60), qFloor(80.5 - (std::min(x, 60) - 10) / 5.0), 1, 1}});
    const QImage image = Painted();
    if (ratio == 1.0) // above, steps are finer
        ExpectSamePicture(image, Expected(pixels), "slanted");
}

TEST_F(Painting, RectanglesLieOnWholePixels)
{
    plot->paint = [&](GLPainter& painter) {
        painter.setPen(trace);
        painter.drawRect(QRect(31, 11, 10, 7)); // outline only: the brush is none
        painter.setPen(Qt::NoPen);
        painter.setBrush(trace);
        painter.drawRect(QRect(51, 11, 5, 3));
        painter.drawHLine(71, 75, 33, trace);
        painter.drawVLine(77, 33, 30, trace);
    };
    const std::vector<QRect> pixels = {{31, 11, 11, 1}, {31, 18, 11, 1}, {31, 11, 1, 8},
                                       {41, 11, 1, 8},  {51, 11, 5, 3},  {71, 33, 5, 1},
                                       {77, 30, 1, 4}};
    ExpectSamePicture(Painted(), Expected(pixels), "rectangles");
}

TEST_F(Painting, PixelsAreWrittenAsAPainterPaintsThem)
{
    plot->paint = [&](GLPainter& painter) {
        painter.setHGradientBrush(Qt::darkBlue, Qt::black);
        painter.setPen(trace);
        painter.drawRect(QRect(3, 3, 140, 70));
        for (int i = 0; i < 60; ++i) { // numbers of all widths in places of all widths
            const QString text = QString::number(1e4 * std::sin(i), 'g', 1 + i % 7);
            painter.drawText(QRect(i % 5 * 31, i * 3 / 2, 50 + i % 8, 15 + i % 3), Qt::AlignCenter,
                             text);
        }
        painter.drawPoints({9, 9, 10.5F, 9.49F, 160, 85, NAN, 3, 161, 2, -0.6F, 7}, QTransform(),
                           Qt::white);
        Draw({{0, 80, 160, 3}, {20, 0, 19, 85}}, lsSolid, 2);
    };
    // The ground shows in part, or shimmers through.
    header->paint = [&](GLPainter& painter) { painter.fillRect(QRect(0, 0, 99, 25), trace); };
    footer->paint = [&](GLPainter& painter) {
        painter.fillRect(painter.area(), QColor(255, 0, 0, 100));
    };
    PaintedOnScreen(); // sets the ratio
    const auto render = [&](QImage::Format format, bool isClipped) {
        QImage image((QSizeF(frame.size()) * ratio).toSize(), format);
        image.setDevicePixelRatio(ratio);
        QPainter painter(&image);
        painter.setClipRect(frame.rect(), isClipped ? Qt::ReplaceClip : Qt::NoClip);
        frame.Render(painter);
        painter.end();
        return image.convertToFormat(QImage::Format_RGB32);
    };
    // A clip leaves all to the painter.
    for (const auto format :
         {QImage::Format_RGB32, QImage::Format_ARGB32_Premultiplied, QImage::Format_RGB16})
        ExpectSamePicture(render(format, false), render(format, true), "written");
}

TEST_F(Painting, HandlesNestAndLeaveNothingBehind)
{
    plot->paint = [&](GLPainter& outer) {
        outer.qtPainter()->translate(7, 7);
        outer.qtPainter()->setClipRect(0, 0, 3, 3);
        outer.save();
        {
            GLPainter inner(&frame);
            inner.fillRect(QRect(20, 20, 10, 10), trace);
            inner.save();
            inner.save();
            EXPECT_EQ(inner.depth(), 2);
        }
        outer.fillRect(QRect(0, 0, 10, 10), trace); // through the outer handle's own clip
        outer.restore();
        outer.restore(); // one too many does nothing
        EXPECT_EQ(outer.depth(), 0);
        outer.save(); // left open
    };
    footer->paint = [&](GLPainter& painter) { painter.fillRect(QRect(-9, -9, 12, 12), trace); };
    ExpectSamePicture(Painted(), Expected({{20, 20, 10, 10}, {7, 7, 3, 3}, {0, 86, 3, 3}}),
                      "areas");
}

TEST_F(Painting, FollowsAPainterThatTurnsAndClips)
{
    plot->paint = [&](GLPainter& painter) { painter.drawHLine(0, 160, 6, trace); };
    QImage image(127, 161, QImage::Format_RGB32);
    image.fill(Qt::magenta);
    QPainter painter(&image);
    painter.translate(127, 0);
    painter.rotate(90); // the top of the frame lies at the right now
    painter.setClipRect(0, 0, 100, 127);
    frame.Render(painter);
    const int x = 126 - (25 + 6);
    EXPECT_EQ(image.pixelColor(x, 99), trace);
    EXPECT_EQ(image.pixelColor(x, 100), QColor(Qt::magenta));
    EXPECT_NE(image.pixelColor(x + 1, 50), trace);
}

TEST_F(Painting, WidthsOfTextsAreThoseOfTheFontHoweverOftenAsked)
{
    QFont large;
    large.setPointSize(20);
    for (int turn = 0; turn < 2; ++turn) {
        for (const QFont& font : {QFont(), large}) {
            for (int k = 0; k < 300; ++k) { // more than are kept, in the end
                const QString text = QString::number(1e-3 * k);
                EXPECT_EQ(textWidths::of(font, text), QFontMetrics(font).horizontalAdvance(text));
            }
        }
    }
}

TEST_F(Painting, WithoutPaintingHandlesAreInert)
{
    for (GLFrameWidget* widget : std::vector<GLFrameWidget*>{&frame, nullptr}) {
        GLPainter painter(widget);
        painter.save();
        painter.drawRect(QRect(0, 0, 9, 9));
        EXPECT_FALSE(painter.beginNativePainting() || painter.depth() || painter.qtPainter());
    }
    Draw({{0, 0, 9, 9}}, lsSolid, 1);
}

TEST_F(Painting, NativePointsLightTheirPixelAndStayInsideTheWidget)
{
    if (Renderer::Current() != Renderer::Kind::OpenGL)
        GTEST_SKIP() << "frames paint without OpenGL";
    bool isNative = false;
    const float points[][2] = {{0, 0},  {160, 0}, {0, 85}, {160, 85}, {100, 51}, // inside
                               {-1, 5}, {161, 5}, {5, -1}, {5, 86},   {50, 1e30F}, {NAN, 5}};
    plot->paint = [&](GLPainter& painter) {
        isNative = painter.beginNativePainting();
        if (!isNative)
            return;
        EXPECT_FALSE(painter.beginNativePainting());
        glColor3ub(76, 201, 240);
        glPointSize(1.0F);
        glEnableClientState(GL_VERTEX_ARRAY);
        glVertexPointer(2, GL_FLOAT, 0, points);
        glDrawArrays(GL_POINTS, 0, 11);
        glDisableClientState(GL_VERTEX_ARRAY);
        EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
    }; // the handle ends what was begun
    footer->paint = [&](GLPainter& painter) { painter.fillRect(QRect(8, 8, 4, 4), trace); };

    QImage expected = Expected({{8, 86 + 8, 4, 4}});
    for (int i = 0; i < 5; ++i)
        expected.setPixelColor(Device(double(points[i][0]), double(points[i][1])), trace);
    ExpectSamePicture(PaintedOnScreen(), expected, "points");
    EXPECT_TRUE(isNative);
    const QSurfaceFormat format = frame.findChild<QOpenGLWidget*>()->context()->format();
    EXPECT_NE(format.profile(), QSurfaceFormat::CoreProfile);
    EXPECT_LE(format.samples(), 0);
    PaintedAsPicture();
    EXPECT_FALSE(isNative);
}

// Run again with the other renderer, and where there is no OpenGL.
TEST(Frame, UsesItsServicesAndSaysInItsPlaceThatTheOpenGLAskedForIsMissing)
{
    struct : IErrorHandlerBase
    {
        void Report(const QString& message) override { reports << message; }
        QStringList reports;
    } errors;
    struct : IColorBase
    {
        QColor& operator[](ECOLOR) override { return color; }
        QColor color = Qt::magenta;
    } colors;
    GLFrameWidget::m_pErrorHandler = &errors;
    GLFrameWidget::m_pColors = &colors;
    const bool wantsOpenGL = qEnvironmentVariable("ORVANE_RENDERER") == "gl";
    const bool hasNone = qEnvironmentVariableIsSet("QT_XCB_GL_INTEGRATION");
    const bool usesOpenGL = wantsOpenGL && (QtVersions::bearsMissingOpenGL || !hasNone);
    const bool isMissing = usesOpenGL && hasNone;
    for (int round = 0; round < 2; ++round) {
        GLLayout frame;
        frame.show();
        frame.resize(300, 200);
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&frame));
        EXPECT_EQ(frame.isValid(), !isMissing);
        EXPECT_EQ(frame.findChild<QOpenGLWidget*>() != nullptr, usesOpenGL);
        const auto* notice = frame.findChild<QLabel*>();
        ASSERT_EQ(notice != nullptr, isMissing);
        EXPECT_TRUE(!notice || (notice->isVisible() && notice->geometry() == frame.rect()));
        QImage image(frame.size(), QImage::Format_RGB32);
        QPainter painter(&image);
        frame.Render(painter);
        EXPECT_EQ(image.pixelColor(1, 1), colors.color);
        EXPECT_TRUE(isMissing || frame.grab().toImage().pixelColor(299, 199) == colors.color);
    }
    EXPECT_EQ(errors.reports.size(), isMissing ? 1 : 0); // once will do
    // The tests' driver is software.
    EXPECT_EQ(Renderer::Current() == Renderer::Kind::OpenGL, usesOpenGL);
    EXPECT_FALSE(Renderer::Want(Renderer::Wish::OpenGL)) << "frames paint already";
    EXPECT_TRUE(
        Renderer::Description().contains(usesOpenGL ? "OpenGL, because" : "raster, because"));
    GLFrameWidget::m_pErrorHandler = nullptr;
    GLFrameWidget::m_pColors = nullptr;
}

TEST(Frame, KnowsDriversThatRunOnTheProcessor)
{
    for (const char* name : {"llvmpipe (LLVM 15.0.6, 256 bits)", "softpipe", "Software Rasterizer",
                             "Gallium 0.4 on llvmpipe", "virgl (LLVMPIPE (LLVM 15.0.6 256 bits))",
                             "SVGA3D; build: RELEASE; no acceleration", "GDI Generic",
                             "ANGLE (Google, Vulkan (SwiftShader Device), SwiftShader driver)",
                             "D3D12 (Microsoft Basic Render Driver)"})
        EXPECT_TRUE(Renderer::IsSoftware(name)) << name;
    for (const char* name : {"Mesa Intel(R) UHD Graphics 620 (KBL GT2)", "SVGA3D; build: RELEASE;",
                             "NVIDIA GeForce RTX 3060/PCIe/SSE2", "virgl (AMD Radeon RX 580)"})
        EXPECT_FALSE(Renderer::IsSoftware(name)) << name;
}

} // namespace
