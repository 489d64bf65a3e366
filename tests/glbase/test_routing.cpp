// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "FrameFixture.h"

#include <QMenu>
#include <QTimer>

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using Log = std::vector<std::string>;

/// A mouse object and menu provider that logs and takes what it is told to.
struct Handler : IMouseHandler, IHasContextMenu
{
    bool Say(const char* what, const QPoint& at)
    {
        log->push_back(name + what + std::to_string(at.x()) + ',' + std::to_string(at.y()));
        return takes;
    }
    bool mousePress(GLCommonWidget*, QMouseEvent* e) override { return Say(" press ", e->pos()); }
    bool mouseMove(GLCommonWidget*, QMouseEvent* e) override { return Say(" move ", e->pos()); }
    bool mouseRelease(GLCommonWidget*, QMouseEvent* e) override { return Say(" up ", e->pos()); }
    bool mouseDoubleClick(GLCommonWidget*, QMouseEvent* e) override
    {
        return Say(" two ", e->pos());
    }
    bool wheel(GLCommonWidget*, QWheelEvent* e) override
    {
        return Say(" wheel ", e->position().toPoint());
    }
    void leave(GLCommonWidget*) override { log->push_back(name + " leave"); }
    void attached(GLCommonWidget* widget) override { attachedTo = widget; }
    void drawOverlay(GLCommonWidget*, GLPainter&) override { log->push_back(name + " draw"); }
    QMenu* getContextMenu(QContextMenuEvent* e, GLCommonWidget*, int) override
    {
        Say(" menu ", e->pos());
        return menu;
    }
    void contextMenuClosed() override { log->push_back(name + " closed"); }

    std::string name;
    Log* log = nullptr;
    bool takes = false;
    GLCommonWidget* attachedTo = nullptr;
    QMenu* menu = nullptr;
};

/// Two widgets of 100 x 50 pixels, one above the other, on the screen; the pointer is in the lower.
struct Routing : testing::Test
{
    Log log;
    std::unique_ptr<GLLayout> layout = std::make_unique<GLLayout>();
    std::shared_ptr<Canvas> upper = std::make_shared<Canvas>("upper");
    std::shared_ptr<Canvas> lower = std::make_shared<Canvas>("lower");

    Routing()
    {
        layout->AddWidget(upper);
        layout->AddWidget(lower);
        layout->resize(100, 100);
        layout->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(layout.get()));
        Move(5, 55);
    }
    // Through the window, as from the window system, which reports each new position as a move.
    void Move(int x, int y) { QTest::mouseMove(layout->windowHandle(), {x, y}); }
    void Press(int x, int y, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mousePress(layout->windowHandle(), button, {}, {x, y});
    }
    void Release(int x, int y, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseRelease(layout->windowHandle(), button, {}, {x, y});
    }
    /// Opens the menu at 30, 70, acts when it is there, and closes it.
    void InMenu(QMenu& menu, const std::function<void()>& act)
    {
        menu.addAction(QStringLiteral("Action"));
        QTimer::singleShot(0, &menu, [&] {
            EXPECT_TRUE(menu.isVisible());
            act();
            menu.close();
        });
        const QPoint at(30, 70);
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, layout->mapToGlobal(at));
        QApplication::sendEvent(layout.get(), &event);
    }
    std::shared_ptr<Handler> Add(GLCommonWidget& widget, const char* name,
                                 GLCommonWidget::eZOrder zOrder = GLCommonWidget::zoAxis)
    {
        auto handler = std::make_shared<Handler>();
        handler->name = name;
        handler->log = &log;
        widget.addMouseObject(handler, zOrder);
        widget.addContextMenu(handler, zOrder);
        return handler;
    }
};

TEST_F(Routing, APressHoldsTheMouseUntilAllButtonsAreUp)
{
    const auto a = Add(*upper, "upper");
    const auto b = Add(*lower, "lower");
    Move(10, 60);
    Press(10, 60);
    Press(11, 30, Qt::MiddleButton);
    Release(11, 30);
    Move(13, -30);
    Release(14, 20, Qt::MiddleButton);
    Move(15, 20);
    QTest::mouseDClick(layout->windowHandle(), Qt::LeftButton, {}, {15, 20});
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(layout.get(), &leave);
    EXPECT_THAT(log, ElementsAre("lower move 10,10", "lower press 10,10", "lower move 11,-20",
                                 "lower press 11,-20", "lower up 11,-20", "lower move 13,-80",
                                 "lower move 14,-30", "lower up 14,-30", "lower leave",
                                 "upper move 15,20", "upper press 15,20", "upper up 15,20",
                                 "upper two 15,20", "upper up 15,20", "upper leave"));
}

TEST_F(Routing, MouseObjectsAreAskedFromTheTopAndTheTakerKeepsThePress)
{
    const auto bottom = Add(*lower, "bottom", GLCommonWidget::zoBottom);
    const auto axis = Add(*lower, "axis");
    const auto ruler = Add(*lower, "ruler", GLCommonWidget::zoRuler);
    const auto second = Add(*lower, "second", GLCommonWidget::zoRuler);
    const auto gone = Add(*lower, "gone");
    lower->removeMouseObject(gone.get());
    Add(*lower, "dead"); // held by nobody
    EXPECT_EQ(gone->attachedTo, nullptr);
    EXPECT_EQ(ruler->attachedTo, lower.get());

    Press(5, 55);
    ruler->takes = true;
    Press(5, 55, Qt::MiddleButton);
    ruler->takes = false;
    Move(7, 10);
    Release(7, 10);
    Release(7, 10, Qt::MiddleButton);
    layout->grabFramebuffer(); // draws the first one last
    for (const bool takes : {false, true}) {
        axis->takes = takes;
        QWheelEvent wheel(QPointF(30, 65), layout->mapToGlobal(QPoint(30, 65)), {}, {0, 120}, {},
                          {}, Qt::NoScrollPhase, false);
        QApplication::sendEvent(layout.get(), &wheel);
        EXPECT_EQ(wheel.isAccepted(), takes); // else it goes on to the parent
    }
    EXPECT_THAT(log, ElementsAre("axis press 5,5", "ruler press 5,5", "second press 5,5",
                                 "bottom press 5,5", "axis press 5,5", "ruler press 5,5",
                                 "ruler move 7,-40", "ruler up 7,-40", "ruler up 7,-40",
                                 "axis leave", "ruler leave", "second leave", "bottom leave",
                                 "bottom draw", "second draw", "ruler draw", "axis draw",
                                 "axis wheel 30,15", "ruler wheel 30,15", "second wheel 30,15",
                                 "bottom wheel 30,15", "axis wheel 30,15"));
    layout->RemoveWidget(*lower);
    lower.reset();
    EXPECT_EQ(axis->attachedTo, nullptr);
}

TEST_F(Routing, TheFirstMenuOfferedIsRunWhereItWasAskedForAndMayOutliveWhatOfferedIt)
{
    const auto axis = Add(*lower, "axis");
    auto bottom = Add(*lower, "bottom", GLCommonWidget::zoBottom);
    const auto never = Add(*lower, "never", GLCommonWidget::zoBottom);
    QMenu menu;
    bottom->menu = &menu;
    Move(6, 56);
    log.clear();
    InMenu(menu, [&] { EXPECT_EQ(menu.pos(), layout->mapToGlobal(QPoint(30, 70))); });
    EXPECT_THAT(log, ElementsAre("axis leave", "bottom leave", "never leave", "axis menu 30,20",
                                 "bottom menu 30,20", "bottom closed"));
    const std::weak_ptr<Canvas> widget = lower;
    InMenu(menu, [&] {
        layout->RemoveWidget(*lower);
        lower.reset();
        EXPECT_TRUE(widget.expired()); // gone at once, as its owner expects
        bottom.reset();
        layout.reset();
    });
    EXPECT_EQ(log.size(), 8U);
}

} // namespace
