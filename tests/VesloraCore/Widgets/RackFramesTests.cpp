// SPDX-License-Identifier: MIT
#include "VesloraCore/Widgets/RackFrames.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

namespace veslora {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<WidgetEntry> pageOf(std::string_view text) {
    return WidgetLayout::fromStoredValue(text).entries;
}

std::vector<double> lefts(const std::vector<ModuleFrame>& frames) {
    std::vector<double> result;
    for (const ModuleFrame& frame : frames) {
        result.push_back(frame.x);
    }
    return result;
}

/// A rack as wide as its modules with that gap of the user's own make it.
RackRoom hugging(const std::vector<WidgetEntry>& page, double gap) {
    double width = gap * static_cast<double>(page.size() - 1);
    for (const WidgetEntry& entry : page) {
        width += entry.width();
    }
    return {width, 1070, gap};
}

/// The moments of a drag, over the modules of a page as they were when it began.
class DropIndexTest : public testing::Test {
  protected:
    const WidgetLayout layout = WidgetLayout::fromStoredValue("timer,music,meters,claude:1,keepAwake");

    [[nodiscard]] std::vector<WidgetID> without(WidgetID id) const {
        auto ids = layout.ids();
        std::erase(ids, id);
        return ids;
    }
    [[nodiscard]] std::vector<ModuleFrame> framesOf(std::size_t page) const {
        const auto entries = layout.pages().at(page);
        return RackFrames::frames(entries, hugging(entries, 20));
    }
};

} // namespace

TEST(RackFrames, AGapOfTheUsersOwnIsExact) {
    const auto page = pageOf("timer,music,meters");
    EXPECT_THAT(lefts(RackFrames::frames(page, hugging(page, 60))), ElementsAre(0, 290, 500));
}

TEST(RackFrames, AutomaticGapsSpreadTheModulesOverTheRack) {
    const auto page = pageOf("music,claude:1,keepAwake");
    const RackRoom room{650, 1070, std::nullopt};
    EXPECT_EQ(RackFrames::spacing(page, room), 100);
    EXPECT_THAT(lefts(RackFrames::frames(page, room)), ElementsAre(0, 250, 500));
}

TEST(RackFrames, AutomaticGapsAreTwentyAtLeast) {
    const auto page = pageOf("music,claude:1,keepAwake");
    EXPECT_EQ(RackFrames::spacing(page, {400, 1070, std::nullopt}), 20);
    EXPECT_THAT(lefts(RackFrames::frames(page, {400, 1070, std::nullopt})), ElementsAre(-45, 125, 295))
        << "in the middle, where the rack is still too narrow for a moment";
}

TEST(RackFrames, OnANarrowScreenTheGapsGiveWay) {
    const auto page = pageOf("music,claude:1,keepAwake");
    EXPECT_EQ(RackFrames::spacing(page, {474, 474, 60.0}), 12);
    EXPECT_EQ(RackFrames::spacing(page, {474, 474, std::nullopt}), 12);
    EXPECT_EQ(RackFrames::spacing(page, {100, 100, 60.0}), RackRoom::leastSpacing);
}

TEST(RackFrames, OneModuleIsInTheMiddleAndNoneIsNowhere) {
    EXPECT_THAT(lefts(RackFrames::frames(pageOf("meters"), {456, 1070, std::nullopt})), ElementsAre(163));
    EXPECT_THAT(RackFrames::frames({}, {456, 1070, std::nullopt}), IsEmpty());
}

TEST(RackFrames, WhateverThePageModulesNeverOverlapAndKeepTheirOrder) {
    std::mt19937 random(7); // NOLINT(cert-msc32-c,cert-msc51-cpp): a test has to be repeatable
    const auto below = [&random](int count) {
        return static_cast<int>(random() % static_cast<unsigned>(count));
    };
    for (int round = 0; round < 2000; ++round) {
        WidgetLayout layout;
        for (const WidgetID id : allWidgetIDs) {
            if (below(2) == 0) {
                layout.add(id, below(2) == 0 ? WidgetSize::small : WidgetSize::wide);
            }
        }
        const double limit = 200 + below(900);
        const RackRoom room{std::min(limit, 100.0 + below(1000)), limit,
                            below(2) == 0 ? std::nullopt : std::optional<double>(8 + below(73))};
        const PageLimits limits{.width = limit, .gap = RackRoom::leastSpacing};
        for (const auto& page : layout.pages(limits)) {
            const auto frames = RackFrames::frames(page, room);
            ASSERT_EQ(frames.size(), page.size());
            for (std::size_t index = 1; index < frames.size(); ++index) {
                const double gap = frames[index].x - frames[index - 1].x - frames[index - 1].width;
                ASSERT_GE(gap, RackRoom::leastSpacing - 1e-9);
            }
            ASSERT_NEAR(frames.front().x + frames.back().x + frames.back().width, room.width, 1e-6)
                << "as much on the left as on the right";
            const double taken = frames.back().x + frames.back().width - frames.front().x;
            ASSERT_TRUE(page.size() == 1 || taken <= limit + 1e-6) << "never wider than its screen";
        }
    }
}

TEST_F(DropIndexTest, CountsTheModulesWhoseMiddleIsPassed) {
    const auto frames = framesOf(0);
    const auto others = without(WidgetID::timer);
    EXPECT_EQ(RackFrames::dropIndex(others, frames, -1000), 0);
    EXPECT_EQ(RackFrames::dropIndex(others, frames, frames[1].midX()), 0) << "not passed yet";
    EXPECT_EQ(RackFrames::dropIndex(others, frames, frames[1].midX() + 0.5), 1);
    EXPECT_EQ(RackFrames::dropIndex(others, frames, 10'000), 3) << "past all of its page";
}

TEST_F(DropIndexTest, BeginsWithTheFirstOfThatPage) {
    const auto frames = framesOf(1);
    const auto others = without(WidgetID::timer);
    ASSERT_EQ(frames.front().id, WidgetID::keepAwake);
    EXPECT_EQ(RackFrames::dropIndex(others, frames, -1000), 3);
    EXPECT_EQ(RackFrames::dropIndex(others, frames, 10'000), 4);
}

TEST_F(DropIndexTest, AloneOnItsPageItGoesBehindAllOthers) {
    EXPECT_EQ(RackFrames::dropIndex(without(WidgetID::keepAwake), framesOf(1), 0), 4);
    EXPECT_EQ(RackFrames::dropIndex({}, {}, 0), 0);
}

TEST(RackFrames, OnlyTheBandsAtBothEdgesFlip) {
    EXPECT_EQ(RackFrames::edgeDirection(23.9, 600), -1);
    EXPECT_EQ(RackFrames::edgeDirection(24, 600), 0);
    EXPECT_EQ(RackFrames::edgeDirection(576, 600), 0);
    EXPECT_EQ(RackFrames::edgeDirection(576.1, 600), 1);
    EXPECT_EQ(RackFrames::edgeDirection(10, 30), -1) << "in both at once the left one counts";
}

} // namespace veslora
