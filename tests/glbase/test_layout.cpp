// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "FrameFixture.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using Canvases = std::vector<std::shared_ptr<Canvas>>;

Canvases AddCanvases(GLLayout& layout, const std::vector<int>& fixedHeights)
{
    Canvases canvases;
    for (const int height : fixedHeights) {
        canvases.push_back(std::make_shared<Canvas>("Canvas", height));
        EXPECT_TRUE(layout.AddWidget(canvases.back()));
    }
    return canvases;
}

TEST(Layout, SharesItsHeightWithoutLosingAPixel)
{
    struct Case
    {
        int height;
        std::vector<int> fixed; // 0: a share of the rest
        std::vector<int> heights;
    };
    const Case cases[] = {{100, {20, 0, 30}, {20, 50, 30}},
                          {101, {0, 0, 0}, {33, 34, 34}},
                          {100, {20, 30}, {20, 30}},
                          {40, {25, 0, 16}, {25, 0, 15}},
                          {1, {25, 0, 16}, {1, 0, 0}}};
    for (const Case& c : cases) {
        GLLayout layout;
        const Canvases canvases = AddCanvases(layout, c.fixed);
        layout.resize(70, c.height);
        layout.grabFramebuffer(); // it was never shown
        int top = 0;
        for (std::size_t i = 0; i < canvases.size(); ++i) {
            EXPECT_EQ(canvases[i]->geometry(), QRect(0, top, 70, c.heights[i])) << c.height;
            EXPECT_EQ(canvases[i]->rect(), QRect(0, 0, 70, c.heights[i]));
            top += c.heights[i];
        }
    }
}

TEST(Layout, ReportsASizeOnlyWhenItChanged)
{
    GLLayout layout;
    layout.resize(100, 100);
    const Canvases canvases = AddCanvases(layout, {20, 0});
    layout.show();
    const int before[] = {canvases[0]->resizeCount, canvases[1]->resizeCount};
    layout.resize(100, 150);
    EXPECT_EQ(canvases[0]->resizeCount, before[0]);
    EXPECT_EQ(canvases[1]->resizeCount, before[1] + 1);
    canvases[0]->ShowInLayout(false);
    EXPECT_EQ(canvases[1]->geometry(), QRect(0, 0, 100, 150));
    EXPECT_TRUE(canvases[0]->rect().isEmpty());
    canvases[0]->ShowInLayout(true);
    EXPECT_EQ(canvases[1]->geometry(), QRect(0, 20, 100, 130));
}

TEST(Layout, HoldsAWidgetOnceAndLetsItGo)
{
    auto layout = std::make_unique<GLLayout>();
    GLLayout other;
    const auto widget = std::make_shared<GLBaseWidget>("Axis", layout.get());
    EXPECT_TRUE(layout->AddWidget(widget)); // being made for the layout is not being in it
    EXPECT_FALSE(layout->AddWidget(widget) || other.AddWidget(widget) || layout->AddWidget({}));
    EXPECT_EQ(layout->Widgets().size(), 1U);
    EXPECT_EQ(widget->GetFrameWidget(), layout.get());

    EXPECT_FALSE(other.RemoveWidget(*widget));
    EXPECT_TRUE(layout->RemoveWidget(*widget));
    EXPECT_FALSE(layout->RemoveWidget(*widget));
    EXPECT_EQ(widget.use_count(), 1);
    widget->update(); // without a frame

    EXPECT_TRUE(layout->AddWidget(widget));
    layout.reset();
    EXPECT_EQ(widget->GetFrameWidget(), nullptr);
    EXPECT_EQ(widget.use_count(), 1);
}

TEST(Layout, AlignsWidthsWithNamedSiblings)
{
    GLLayout layout;
    layout.resize(200, 90);
    const auto axis = std::make_shared<GLBaseWidget>("Axis", nullptr);
    const auto plot = std::make_shared<GLBaseWidget>("Plot", nullptr);
    EXPECT_TRUE(axis->SetHorizontalAlignment("Plot", haAlign, 0.5)); // the plot comes later
    EXPECT_TRUE(plot->SetHorizontalAlignment("Top", haAlign, 0.8));
    layout.AddWidget(axis);
    EXPECT_EQ(axis->rect().width(), 200); // no such sibling yet
    layout.AddWidget(plot);
    EXPECT_EQ(plot->rect().width(), 160);
    EXPECT_EQ(axis->rect().width(), 80);
    EXPECT_TRUE(plot->SetHorizontalAlignment("Axis", haAlign, 1.0)); // a circle
    EXPECT_EQ(plot->rect().width(), 100);
    for (const double factor : {0.0, -1.0, double(NAN), double(INFINITY)})
        EXPECT_FALSE(plot->SetHorizontalAlignment("Top", haAlign, factor));
    EXPECT_FALSE(plot->SetHorizontalAlignment(nullptr, haAlign, 0.5));
    EXPECT_EQ(plot->rect().width(), 200);
}

TEST(Layout, QtWidgetsFollowTheirPlaceAndMayDieFirst)
{
    GLLayout layout;
    layout.resize(100, 100);
    layout.show();
    const auto host = std::make_shared<GLBaseWidget>("Host", nullptr);
    auto* caption = new QWidget(&layout);
    host->SetQWidget(caption);
    EXPECT_FALSE(caption->isVisible());
    const Canvases canvases = AddCanvases(layout, {30});
    layout.AddWidget(host);
    EXPECT_TRUE(caption->isVisible());
    EXPECT_EQ(caption->geometry(), QRect(0, 30, 100, 70));
    layout.resize(120, 30);
    EXPECT_FALSE(caption->isVisible()); // no room left
    layout.resize(120, 60);
    EXPECT_TRUE(caption->isVisible());
    EXPECT_EQ(caption->geometry(), QRect(0, 30, 120, 30));
    layout.RemoveWidget(*host);
    EXPECT_FALSE(caption->isVisible());
    EXPECT_EQ(caption->parentWidget(), &layout);

    layout.AddWidget(host);
    delete caption;
    EXPECT_EQ(host->GetQWidget(), nullptr);
    layout.resize(90, 90);
}

TEST(Layout, ChildrenMayLeaveWhileTheyArePainted)
{
    GLLayout layout;
    layout.resize(60, 60);
    Canvases canvases = AddCanvases(layout, {0, 0, 0});
    canvases[0]->paint = [&](GLPainter& painter) {
        for (const std::size_t i : {2, 0})
            layout.RemoveWidget(*std::exchange(canvases[i], nullptr));
        painter.fillRect(QRect(0, 0, 9, 9), Qt::red);
    };
    bool isPainted = false;
    canvases[1]->paint = [&](GLPainter& painter) { isPainted = painter.painter(); };
    layout.grabFramebuffer();
    EXPECT_TRUE(isPainted);
    EXPECT_EQ(layout.Widgets().size(), 1U);
}

} // namespace
