// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glbase/GLBaseWidget.h"
#include "platform/gui/ColorSet.h"
#include "workbench/player/Player.h"
#include "workbench/sources/RecordingOpener.h"
#include "workbench/window/MainWindow.h"
#include "workbench/window/SchemeChoice.h"
#include "workbench/window/panes/ViewExport.h"

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <utility>

namespace {

using Format = ViewExport::Format;
using Footer = ViewExport::Footer;

struct Exported : testing::Test
{
    Exported()
    {
        window.player().openDemo(ModulationSettings());
        window.setAttribute(Qt::WA_DontShowOnScreen);
        window.show();
    }
    void play()
    {
        window.feed().transport().playThrough(0.5);
        window.refresh();
        window.measure();
        window.grab();
        const QWidget& view = *window.panes().panes().front().view;
        for (QSize seen; seen != view.size();) {
            seen = view.size();
            QCoreApplication::processEvents(); // room is made for what is measured
        }
    }
    QByteArray content(std::size_t index, Format format, const QSize& size, double scale = 1.0)
    {
        return window.exporter().content(index, format, size, scale).value_or(QByteArray());
    }

    SchemeChoice scheme{std::nullopt};
    MainWindow window{scheme};
    QTemporaryDir folder;
};

/// What of a picture stands out from the ground and has nothing like it in another, a pixel around;
/// a part of what stands out.
double strays(const QImage& image, const QImage& other)
{
    const auto isLit = [](const QImage& of, int x, int y) {
        constexpr int ground = 40;
        return of.valid(x, y) && qGray(of.pixel(x, y)) > ground;
    };
    int lit = 0;
    int alone = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (!isLit(image, x, y))
                continue;
            ++lit;
            bool isMet = false;
            for (int k = 0; k < 9; ++k)
                isMet = isMet || isLit(other, x + k % 3 - 1, y + k / 3 - 1);
            alone += isMet ? 0 : 1;
        }
    }
    return lit == 0 ? 1.0 : static_cast<double>(alone) / lit;
}

/// Counts what changes widgets, or paints them.
struct Watch : QObject
{
    bool eventFilter(QObject*, QEvent* event) override
    {
        const QList<QEvent::Type> changes{QEvent::Resize,        QEvent::Move,
                                          QEvent::Paint,         QEvent::Show,
                                          QEvent::LayoutRequest, QEvent::UpdateRequest};
        count += changes.contains(event->type()) ? 1 : 0;
        return false;
    }
    int count = 0;
};

TEST_F(Exported, PicturesShowWhatTheScreenShows)
{
    const auto expectVectorsLike = [this](const QImage& png, std::size_t index) {
        QSvgRenderer renderer(content(index, Format::Svg, png.size()));
        EXPECT_EQ(renderer.viewBox().size(), png.size());
        QImage svg(png.size(), QImage::Format_RGB32);
        QPainter painter(&svg);
        renderer.render(&painter);
        EXPECT_LT(strays(svg, png), 0.02);
        EXPECT_LT(strays(png, svg), 0.02);
    };
    play();
    for (std::size_t index = 0; index < 3; ++index) {
        SCOPED_TRACE(index);
        QWidget& view = *window.panes().panes()[index].view;
        const QSize shown = view.size();
        for (const QSize& size : {shown, QSize(700, 500), QSize(300, 420)}) {
            view.resize(size);
            QCoreApplication::processEvents();
            QImage screen = view.grab().toImage();
            for (const auto* button : view.findChildren<QToolButton*>()) // of no use in a picture
                QPainter(&screen).fillRect(QRect(button->mapTo(&view, QPoint()), button->size()),
                                           ColorSet::Instance()[IColorBase::colBackground]);
            view.resize(shown);
            QCoreApplication::processEvents();
            const QImage png = QImage::fromData(content(index, Format::Png, size));
            ASSERT_EQ(png.size(), screen.size());
            EXPECT_LT(strays(png, screen), 0.005) << "or the button is in it";
            EXPECT_LT(strays(screen, png), 0.005);
            expectVectorsLike(png, index);
        }
    }
    const auto points = [&](double scale) {
        const QImage image = QImage::fromData(content(2, Format::Png, {500, 500}, scale));
        int count = 0;
        for (int k = 0; k < image.width() * image.height(); ++k)
            count += image.pixel(k % image.width(), k / image.width()) ==
                     ColorSet::Instance()[IColorBase::colIQPoint].rgb();
        return count;
    };
    const int pointCount = points(1.0);
    EXPECT_GT(pointCount, 100);
    EXPECT_NEAR(points(3.0) / 9.0, pointCount, 0.3 * pointCount) << "fewer lie over one another";
    window.player().setTrajectory(true);
    window.player().setSpan(0.5); // more points than become a square each
    play();
    expectVectorsLike(QImage::fromData(content(2, Format::Png, {300, 420})), 2);
}

TEST_F(Exported, PicturesLeaveTheViewAlone)
{
    EXPECT_TRUE(content(0, Format::Csv, {}).isEmpty()) << "there is nothing yet";
    play();
    window.panes().setPaused(true);
    for (std::size_t index = 0; index < 3; ++index) {
        SCOPED_TRACE(index);
        GLLayout& view = *window.panes().panes()[index].view;
        // The user looks at a part.
        for (const QPointF& place :
             {QPointF(10, view.height() / 2), QPointF(90, view.height() - 4)}) {
            QWheelEvent wheel(place, view.mapToGlobal(place.toPoint()), {}, {0, 240}, Qt::NoButton,
                              Qt::NoModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(&view, &wheel);
        }
        Watch watch;
        view.installEventFilter(&watch);
        for (QWidget* widget : view.findChildren<QWidget*>())
            widget->installEventFilter(&watch);
        for (int seen = -1; std::exchange(seen, watch.count) != watch.count;)
            QCoreApplication::processEvents();
        watch.count = 0;
        const QRect plot = view.Widgets()[1]->geometry(); // where the mouse finds it
        const QByteArray before = content(index, Format::Png, view.size());
        const QByteArray data = content(index, Format::Csv, {});
        for (const QSize& size :
             {QSize(800, 600), QSize(4000, 3000), QSize(100, 80), QSize(9, 7)}) {
            EXPECT_EQ(QImage::fromData(content(index, Format::Png, size)).size(), size);
            EXPECT_TRUE(QSvgRenderer(content(index, Format::Svg, size)).isValid());
            EXPECT_TRUE(content(index, Format::Pdf, size).startsWith("%PDF"));
        }
        QCoreApplication::processEvents();
        EXPECT_EQ(watch.count, 0);
        EXPECT_EQ(view.Widgets()[1]->geometry(), plot);
        EXPECT_EQ(content(index, Format::Png, view.size()), before);
        EXPECT_EQ(content(index, Format::Csv, {}), data);
    }
    const auto withFigures = [&](Format format, int height) {
        return window.exporter()
            .content(0, format, {700, height}, 1.0, Footer::Figures)
            .value_or(QByteArray());
    };
    EXPECT_EQ(QImage::fromData(withFigures(Format::Png, 360)).size(), QSize(700, 360));
    EXPECT_TRUE(withFigures(Format::Svg, 360).contains("Maximum")) << "vectors";
    EXPECT_TRUE(withFigures(Format::Png, 60).isEmpty()) << "no room";
    for (const QSize& bad : {QSize(), QSize(20000, 10), QSize(-1, 10)})
        EXPECT_TRUE(content(0, Format::Png, bad).isEmpty());
    EXPECT_TRUE(content(0, Format::Png, {9000, 10}, 2.0).isEmpty());
}

TEST_F(Exported, DataComeBackAsTheyWere)
{
    play();
    const std::vector<double> shown = window.feed().gate().samples();
    ASSERT_GT(shown.size(), 100U);
    const QString file = folder.filePath("time.csv");
    EXPECT_TRUE(ViewExport::save(file, content(0, Format::Csv, {})));
    auto recording = RecordingOpener::open(file, {});
    ASSERT_TRUE(recording) << recording.error().sentence.toStdString();
    EXPECT_NEAR(recording->source->facts().sampleRate, 48000.0, 0.1);
    std::vector<double> samples;
    ASSERT_EQ(recording->source->read(samples, shown.size() + 1), shown.size());
    EXPECT_EQ(samples, shown);

    const QList<QByteArray> points = content(2, Format::Csv, {}).split('\n');
    EXPECT_EQ(points[0], "I,Q");
    EXPECT_NEAR(double(points.size()), 402, 1);
    EXPECT_EQ(content(1, Format::Csv, {}).split('\n')[1].split(',')[0], "0");
}

} // namespace
