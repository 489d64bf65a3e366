// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/MainWindow.h"
#include "workbench/window/Player.h"
#include "workbench/window/SchemeChoice.h"
#include "workbench/window/ViewExport.h"

#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

namespace {

using Format = ViewExport::Format;

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
        window.feed().playThrough(0.5);
        window.refresh();
        window.grab();
    }
    QByteArray content(std::size_t index, Format format, const QSize& size, double scale = 1.0)
    {
        why.clear();
        return window.exporter().content(index, format, size, scale, why);
    }

    SchemeChoice scheme{std::nullopt};
    MainWindow window{scheme};
    QTemporaryDir folder;
    QString why;
};

TEST_F(Exported, PicturesHaveTheWantedSizeAndShowTheView)
{
    EXPECT_TRUE(content(0, Format::Csv, {}).isEmpty());
    EXPECT_FALSE(why.isEmpty()) << "there is nothing yet";
    play();
    const QSize size(700, 500);
    for (std::size_t index = 0; index < 3; ++index) {
        QWidget& view = *window.panes().panes()[index].view;
        const QSize before = view.size();
        QImage small = QImage::fromData(content(index, Format::Png, size));
        QImage large = QImage::fromData(content(index, Format::Png, size, 2.0));
        EXPECT_EQ(small.size(), size);
        EXPECT_EQ(large.size(), size * 2);
        EXPECT_EQ(view.size(), before);
        // The same picture, but finer: about as much of it is lit. Points are a pixel in both.
        const auto lit = [](const QImage& image) {
            double sum = 0.0;
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x)
                    sum += qGray(image.pixel(x, y));
            }
            return sum / (double(image.width()) * image.height());
        };
        EXPECT_NEAR(lit(small), lit(large), 0.5 * lit(small)) << index;
        EXPECT_GT(lit(small), 20.0) << index; // the ground alone is darker

        QXmlStreamReader svg(content(index, Format::Svg, size));
        QString texts;
        while (!svg.atEnd()) {
            if (svg.readNext() == QXmlStreamReader::Characters)
                texts += svg.text();
        }
        EXPECT_FALSE(svg.hasError());
        EXPECT_TRUE(texts.contains("0.0")) << "labels are texts";
        EXPECT_TRUE(content(index, Format::Pdf, size).startsWith("%PDF"));
    }
    for (const QSize& bad : {QSize(), QSize(20000, 10), QSize(-1, 10)}) {
        EXPECT_TRUE(content(0, Format::Png, bad).isEmpty());
        EXPECT_FALSE(why.isEmpty());
    }
    EXPECT_TRUE(content(0, Format::Png, {9000, 10}, 2.0).isEmpty());
}

TEST_F(Exported, DataComeBackAsTheyWere)
{
    play();
    const std::vector<double> shown = window.feed().shownSamples();
    ASSERT_GT(shown.size(), 100U);
    const QString file = folder.filePath("time.csv");
    EXPECT_EQ(ViewExport::save(file, content(0, Format::Csv, {})), QString());
    Recording recording = Recording::open(file, {});
    ASSERT_TRUE(recording.source) << recording.why.toStdString();
    EXPECT_NEAR(recording.source->sampleRate(), 48000.0, 0.1);
    std::vector<double> samples;
    ASSERT_EQ(recording.source->read(samples, shown.size() + 1), shown.size());
    EXPECT_EQ(samples, shown);

    const QList<QByteArray> points = content(2, Format::Csv, {}).split('\n');
    EXPECT_EQ(points[0], "I,Q");
    EXPECT_GT(points.size(), 1000);
    EXPECT_EQ(content(1, Format::Csv, {}).split('\n')[1].split(',')[0], "0");

    QFile kept(folder.filePath("kept.csv"));
    ASSERT_TRUE(kept.open(QIODevice::WriteOnly));
    kept.write("before");
    kept.close();
    EXPECT_NE(ViewExport::save(folder.filePath("none/kept.csv"), "after"), QString());
    EXPECT_NE(ViewExport::save(folder.path(), "after"), QString());
    EXPECT_EQ(ViewExport::save(kept.fileName(), "after"), QString());
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll(), "after");
}

} // namespace
