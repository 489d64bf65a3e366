// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "FrameFixture.h"

#include <random>

namespace {

struct StepLine : testing::Test, FrameFixture
{
    GLStepLine line;
    std::mt19937 generator{7};

    StepLine()
    {
        line.SetLineStyle({lsSolid, 1, trace});
        plot->paint = [this](GLPainter&) { frame.DrawStepLine(line); };
    }
    void SetRandomLevels(std::size_t count)
    {
        std::vector<unsigned char> levels(count);
        for (unsigned char& level : levels)
            level = static_cast<unsigned char>(generator());
        line.SetData(levels.data(), count);
    }
    /// Level by level: a stroke over its columns, and one up or down to the next level.
    QImage PlainTwin() const
    {
        QImage image = Expected({});
        QPainter painter(&image);
        const QRect area = Device(line.DestRect());
        painter.setClipRect(area & Device(QRect(0, 0, 161, 86)));
        const int pen = std::min(qRound(ratio), area.height());
        const auto& levels = line.Levels();
        const auto xOf = [&](std::size_t i) {
            return area.left() + static_cast<int>(i * std::size_t(area.width()) / levels.size());
        };
        const auto yOf = [&](std::size_t i) {
            const int rise = area.height() - pen;
            return area.top() + rise - qRound(levels[i] * rise / 255.0);
        };
        for (std::size_t i = 0; i < levels.size(); ++i) {
            painter.fillRect(xOf(i), yOf(i), xOf(i + 1) - xOf(i) + pen, pen, trace);
            const auto [top, bottom] =
                std::minmax({yOf(i), yOf(std::min(i + 1, levels.size() - 1))});
            painter.fillRect(xOf(i + 1), top, pen, bottom - top + pen, trace);
        }
        return image;
    }
};

TEST_F(StepLine, LooksLikeItsLevelsDrawnOneByOne)
{
    const std::vector<QRect> rects = {
        {3, 4, 100, 60}, {-41, 0, 300, 86}, {10, 10, 1, 1}, {20, -30, 7, 200}, {150, 80, 60, 2}};
    for (const std::size_t count : {1, 2, 15, 16, 17, 99, 100, 101, 255, 256, 257, 4097, 60000}) {
        SetRandomLevels(count);
        for (const QRect& rect : rects) {
            line.SetDestRect(rect.x(), rect.y(), rect.width(), rect.height());
            ExpectSamePicture(Painted(), PlainTwin(), "step line");
            ASSERT_FALSE(HasFailure()) << count << " levels, " << rect.width() << " columns";
        }
    }
}

TEST_F(StepLine, FindsTheExtremesOfAnyRange)
{
    for (const std::size_t count : {1, 15, 16, 17, 32, 255, 256, 257, 4095, 4096, 4097, 70001}) {
        SetRandomLevels(count);
        const auto at = line.Levels().begin();
        for (int i = 0; i < 300; ++i) {
            const std::size_t first = i == 0 ? 0 : generator() % count;
            const std::size_t last = i == 0 ? count : first + 1 + generator() % (count - first);
            const auto [low, high] = std::minmax_element(at + long(first), at + long(last));
            const auto extremes = line.ExtremesOf(first, last);
            ASSERT_TRUE(extremes.min == *low && extremes.max == *high)
                << first << " to " << last << " of " << count;
        }
    }
}

TEST_F(StepLine, TakesAnyRectangleAndKeepsItsOwnLevels)
{
    const int odd[][2] = {{5, 0},
                          {5, -1},
                          {1'000'000'000, 9},
                          {INT_MIN, INT_MIN},
                          {INT_MIN, INT_MAX},
                          {INT_MAX, INT_MAX}};
    for (const auto& [start, extent] : odd) {
        line.SetDestRect(start, 5, extent, 9);
        ExpectSamePicture(Painted(), Expected({}), "nothing to see");
        line.SetDestRect(5, start, 9, extent);
        ExpectSamePicture(Painted(), Expected({}), "nothing to see");
    }
    line.SetDestRect(5, 5, 9, 9);
    line.SetData(nullptr, 2);
    ExpectSamePicture(Painted(), Expected({}), "no levels");
}

} // namespace
