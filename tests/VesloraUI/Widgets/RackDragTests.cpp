// SPDX-License-Identifier: MIT
#include "VesloraUI/Store/SettingsKeys.h"
#include "VesloraUI/Widgets/RackDrag.h"
#include "tests/VesloraUI/Fixtures/FakePlatform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <set>

namespace veslora {
namespace {

using testing::SizeIs;

class RackDragTest : public testing::Test {
  protected:
    RackDragTest() {
        settings.set(SettingsKeys::widgetSpacingAutomatic, false);
        settings.set(SettingsKeys::widgetSpacing, 20.0);
        setLayout("timer,music,meters,claude:1,keepAwake,clock");
    }
    void setLayout(const std::string& text) {
        drag.reset();
        settings.set(SettingsKeys::widgetLayout, text);
        model = std::make_unique<RackModel>(settings, platform.taps);
        model->enterEditing();
        drag = std::make_unique<RackDrag>(*model, platform.time, [this] { ++changes; });
    }
    /// Points from the rack's middle to the middle of a widget on the page as it shows.
    [[nodiscard]] double middleOf(WidgetID id) const {
        for (const ModuleFrame& frame : model->frames()) {
            if (frame.id == id) {
                return frame.midX() - model->width() / 2;
            }
        }
        ADD_FAILURE() << rawValue(id) << " is not on the page";
        return 0;
    }
    [[nodiscard]] std::string shown() const { return model->previewLayout().storedValue(); }
    [[nodiscard]] double rightEdge() const { return model->width() / 2; }

    FakePlatform platform;
    FakeDefaults settings{platform};
    std::unique_ptr<RackModel> model;
    std::unique_ptr<RackDrag> drag;
    int changes = 0;
};

TEST_F(RackDragTest, ShowsTheWidgetWhereItsMiddleIs) {
    const double from = middleOf(WidgetID::timer) + 30;
    drag->dragChanged(WidgetID::timer, from, from + 10);
    EXPECT_EQ(drag->ghostCenter(), middleOf(WidgetID::timer) + 10);
    EXPECT_EQ(shown(), "timer,music,meters,claude,keepAwake,clock");
    drag->dragChanged(WidgetID::timer, from, from + 1000);
    EXPECT_EQ(shown(), "music,meters,claude,timer,keepAwake,clock") << "at the last place of its page";
    EXPECT_EQ(model->layout().storedValue(), "timer,music,meters,claude,keepAwake,clock");
    drag->dragEnded();
    EXPECT_EQ(model->layout().storedValue(), "music,meters,claude,timer,keepAwake,clock");
    EXPECT_EQ(drag->ghostCenter(), std::nullopt);
    EXPECT_EQ(platform.time.pending(), 0U);
}

TEST_F(RackDragTest, AtTheEdgeThePageTurnsAfterHalfASecond) {
    const double from = middleOf(WidgetID::music);
    drag->dragChanged(WidgetID::music, from, rightEdge() - 10);
    platform.advance(0.3);
    drag->dragChanged(WidgetID::music, from, rightEdge() - 5);
    platform.advance(0.19);
    EXPECT_EQ(model->page(), 0);
    platform.advance(0.01);
    EXPECT_EQ(model->page(), 1) << "moving within the band starts no new wait";
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(model->shownPage().back().id, WidgetID::music) << "it shows on the page that turned up";
    drag->dragEnded();
    EXPECT_EQ(model->layout().pages().at(1).back().id, WidgetID::music);
}

TEST_F(RackDragTest, LeavingTheBandKeepsThePage) {
    const double from = middleOf(WidgetID::music);
    drag->dragChanged(WidgetID::music, from, rightEdge() - 10);
    platform.advance(0.4);
    drag->dragChanged(WidgetID::music, from, 0);
    platform.advance(5);
    EXPECT_EQ(model->page(), 0);
    drag->dragChanged(WidgetID::music, from, rightEdge() - 10);
    platform.advance(0.4);
    EXPECT_EQ(model->page(), 0) << "the wait began again";
    drag->dragEnded();
    platform.advance(5);
    EXPECT_EQ(model->page(), 0) << "nothing waits any more once the widget was dropped";
}

TEST_F(RackDragTest, AtTheLastPageNothingTurns) {
    const double from = middleOf(WidgetID::music);
    drag->dragChanged(WidgetID::music, from, -rightEdge() + 5);
    platform.advance(1);
    EXPECT_EQ(model->page(), 0);
    drag->dragEnded();
    EXPECT_EQ(model->layout().ids().front(), WidgetID::music);
}

TEST_F(RackDragTest, TheWidgetComesBackToThePageThatItCameFrom) {
    const double from = middleOf(WidgetID::music);
    drag->dragChanged(WidgetID::music, from, rightEdge() - 1);
    platform.advance(0.5);
    ASSERT_EQ(model->page(), 1);
    drag->dragChanged(WidgetID::music, from, -model->width() / 2 + 1);
    platform.advance(0.5);
    EXPECT_EQ(model->page(), 0);
    drag->dragChanged(WidgetID::music, from, from - 1000);
    drag->dragEnded();
    EXPECT_EQ(model->layout().storedValue(), "music,timer,meters,claude,keepAwake,clock");
}

TEST_F(RackDragTest, AWidgetOfAnotherPageIsNotTakenUp) {
    drag->dragChanged(WidgetID::clock, 0, 10);
    EXPECT_EQ(drag->ghostCenter(), std::nullopt);
    EXPECT_EQ(model->draggingID(), std::nullopt);
}

TEST_F(RackDragTest, LeavingEditModeEndsTheDragAndMovesNothing) {
    const double from = middleOf(WidgetID::timer);
    drag->dragChanged(WidgetID::timer, from, from + 400);
    model->exitEditing();
    drag->dragEnded();
    EXPECT_EQ(model->layout().storedValue(), "timer,music,meters,claude,keepAwake,clock");
}

TEST_F(RackDragTest, NoPageTurnsOnceEditModeWasLeft) {
    const double from = middleOf(WidgetID::music);
    drag->dragChanged(WidgetID::music, from, rightEdge() - 10);
    model->exitEditing();
    platform.advance(5);
    EXPECT_EQ(model->page(), 0);
    EXPECT_EQ(model->draggingID(), std::nullopt) << "nor does the drag begin again";
}

TEST_F(RackDragTest, TheEndOfTheViewDropsTheWidgetWhereItShows) {
    const double from = middleOf(WidgetID::timer);
    drag->dragChanged(WidgetID::timer, from, from + 1000);
    drag.reset();
    EXPECT_EQ(model->layout().storedValue(), "music,meters,claude,timer,keepAwake,clock");
    EXPECT_EQ(platform.time.pending(), 0U);
}

TEST_F(RackDragTest, WhateverIsDraggedWhereverNothingIsLost) {
    std::mt19937 random(5); // NOLINT(cert-msc32-c,cert-msc51-cpp): a test has to be repeatable
    const auto below = [&random](int count) {
        return static_cast<int>(random() % static_cast<unsigned>(count));
    };
    for (int round = 0; round < 300; ++round) {
        model->setScreenWidth(300 + below(1200));
        const auto before = model->layout();
        const auto page = model->shownPage();
        const WidgetID id = page[static_cast<std::size_t>(below(static_cast<int>(page.size())))].id;
        for (int move = 0; move < 6; ++move) {
            drag->dragChanged(id, 0, below(1600) - 800);
            platform.advance(0.1 * below(8));
            ASSERT_EQ(model->layout(), before) << "nothing is kept during the drag";
            if (below(10) == 0) {
                model->setScreenWidth(300 + below(1200)); // another screen is plugged in
            }
            ASSERT_LT(model->page(), std::max(model->pageCount(), 1) + 1);
            ASSERT_LE(model->islandWidth(), model->widthLimit());
        }
        drag->dragEnded();
        const auto ids = model->layout().ids();
        ASSERT_THAT(std::set<WidgetID>(ids.begin(), ids.end()), SizeIs(before.entries.size()));
        ASSERT_EQ(WidgetLayout::fromStoredValue(model->layout().storedValue()), model->layout());
        ASSERT_LT(model->page(), model->pageCount());
        ASSERT_EQ(platform.time.pending(), 0U);
    }
}

} // namespace
} // namespace veslora
