// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "FrameFixture.h"

namespace {

struct Layout : testing::Test
{
    /// Fixed heights, 0 for a share of the rest.
    void Add(const std::vector<int>& heights)
    {
        for (const int height : heights) {
            canvases.push_back(std::make_shared<Canvas>("Canvas", height));
            EXPECT_TRUE(layout->AddWidget(canvases.back()));
        }
    }
    std::unique_ptr<GLLayout> layout = std::make_unique<GLLayout>();
    std::vector<std::shared_ptr<Canvas>> canvases;
};

TEST_F(Layout, SharesItsHeightWithoutLosingAPixel)
{
    const std::tuple<int, std::vector<int>, std::vector<int>> rows[] = {
        {100, {20, 0, 30}, {20, 50, 30}},
        {101, {0, 0, 0}, {33, 34, 34}},
        {100, {20, 30}, {20, 30}},
        {40, {25, 0, 16}, {25, 0, 15}},
        {1, {25, 0, 16}, {1, 0, 0}}};
    for (const auto& [height, fixed, heights] : rows) {
        layout = std::make_unique<GLLayout>();
        canvases.clear();
        Add(fixed);
        layout->resize(70, height);
        layout->grabFramebuffer(); // it was never shown
        int top = 0;
        for (std::size_t i = 0; i < canvases.size(); ++i) {
            EXPECT_EQ(canvases[i]->geometry(), QRect(0, top, 70, heights[i])) << height;
            top += heights[i];
        }
        canvases[0]->ShowInLayout(false);
        EXPECT_TRUE(canvases[0]->rect().isEmpty() && canvases[1]->geometry().top() == 0);
    }
}

TEST_F(Layout, HoldsAWidgetOnceAndLetsItGo)
{
    GLLayout other;
    const auto widget = std::make_shared<GLBaseWidget>("Axis", layout.get());
    EXPECT_TRUE(layout->AddWidget(widget)); // being made for the layout is not being in it
    EXPECT_FALSE(layout->AddWidget(widget) || other.AddWidget(widget) || layout->AddWidget({}));
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

TEST_F(Layout, AlignsWidthsWithNamedSiblings)
{
    layout->resize(200, 90);
    const auto axis = std::make_shared<GLBaseWidget>("Axis", nullptr);
    const auto plot = std::make_shared<GLBaseWidget>("Plot", nullptr);
    EXPECT_TRUE(axis->SetHorizontalAlignment("Plot", haAlign, 0.501)); // the plot comes later
    EXPECT_TRUE(plot->SetHorizontalAlignment("Top", haAlign, 0.796));
    layout->AddWidget(axis);
    EXPECT_EQ(axis->rect().width(), 200); // no such sibling yet
    layout->AddWidget(plot);
    EXPECT_EQ(plot->rect().width(), 159); // to the nearest pixel
    EXPECT_EQ(axis->rect().width(), 80);
    EXPECT_TRUE(plot->SetHorizontalAlignment("Axis", haAlign, 1.0)); // a circle
    EXPECT_EQ(plot->rect().width(), 100);
    for (const double factor : {0.0, -1.0, double(NAN), double(INFINITY)})
        EXPECT_FALSE(plot->SetHorizontalAlignment("Top", haAlign, factor));
    EXPECT_FALSE(plot->SetHorizontalAlignment(nullptr, haAlign, 0.5));
    EXPECT_EQ(plot->rect().width(), 200);
}

TEST_F(Layout, QtWidgetsFollowTheirPlaceAndMayDieFirst)
{
    layout->resize(100, 100);
    layout->show();
    const auto host = std::make_shared<GLBaseWidget>("Host", nullptr);
    auto* caption = new QWidget(layout.get());
    host->SetQWidget(caption);
    EXPECT_FALSE(caption->isVisible());
    Add({30});
    layout->AddWidget(host);
    for (const int height : {100, 30, 60}) { // 30: no room left
        layout->resize(height, height);
        EXPECT_EQ(caption->isVisible(), height > 30);
        EXPECT_TRUE(height == 30 || caption->geometry() == QRect(0, 30, height, height - 30));
    }
    layout->RemoveWidget(*host);
    EXPECT_FALSE(caption->isVisible());
    EXPECT_EQ(caption->parentWidget(), layout.get());
    layout->AddWidget(host);
    delete caption;
    EXPECT_EQ(host->GetQWidget(), nullptr);
    layout->resize(90, 90);
}

} // namespace
