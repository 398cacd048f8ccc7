// SPDX-License-Identifier: MIT
#include "VesloraCore/Widgets/WidgetLayout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

using namespace veslora;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr auto small = WidgetSize::small;
constexpr auto wide = WidgetSize::wide;

std::vector<WidgetEntry> read(std::string_view text) {
    return WidgetLayout::fromStoredValue(text).entries;
}

std::vector<WidgetEntry> defaultEntries() {
    return WidgetLayout::defaultLayout().entries;
}

} // namespace

TEST(WidgetID, TableOfWidgets) {
    struct Row {
        WidgetID id;
        const char* rawValue;
        const char* title;
        double smallWidth;
        double wideWidth;
        std::vector<WidgetSize> sizes;
    };
    const Row rows[] = {
        {WidgetID::clock, "clock", "Clock", 150, 150, {small}},
        {WidgetID::timer, "timer", "Timer", 150, 230, {wide, small}},
        {WidgetID::meters, "meters", "Meters", 130, 230, {small, wide}},
        {WidgetID::music, "music", "Music", 150, 230, {small, wide}},
        {WidgetID::metronome, "metronome", "Metronome", 150, 230, {small, wide}},
        {WidgetID::claude, "claude", "Agents", 150, 230, {small, wide}},
        {WidgetID::claudeUsage, "claudeUsage", "Agent Usage", 150, 230, {small, wide}},
        {WidgetID::keepAwake, "keepAwake", "Keep Awake", 150, 230, {small, wide}},
    };
    ASSERT_EQ(std::size(rows), allWidgetIDs.size());
    for (std::size_t index = 0; index < std::size(rows); ++index) {
        const Row& row = rows[index];
        EXPECT_EQ(allWidgetIDs[index], row.id);
        EXPECT_EQ(rawValue(row.id), row.rawValue);
        EXPECT_EQ(widgetIDFrom(row.rawValue), row.id);
        EXPECT_EQ(title(row.id), row.title);
        EXPECT_EQ(width(row.id, small), row.smallWidth) << row.rawValue;
        EXPECT_EQ(width(row.id, wide), row.wideWidth) << row.rawValue;
        EXPECT_THAT(sizes(row.id), testing::ElementsAreArray(row.sizes)) << row.rawValue;
        EXPECT_EQ(defaultSize(row.id), row.sizes.front()) << row.rawValue;
    }
    EXPECT_EQ(units(small), 1);
    EXPECT_EQ(units(wide), 2);
    EXPECT_EQ(widgetIDFrom("Clock"), std::nullopt);
    EXPECT_EQ(widgetIDFrom(""), std::nullopt);
}

TEST(WidgetEntry, KnowsItsUnitsAndWidth) {
    const WidgetEntry entry{WidgetID::meters, wide};
    EXPECT_EQ(entry.units(), 2);
    EXPECT_EQ(entry.width(), 230);
}

TEST(WidgetLayout, DefaultIsTwoFullPagesWithoutTheClock) {
    const auto layout = WidgetLayout::defaultLayout();
    EXPECT_EQ(layout.storedValue(), "timer,music,metronome:2,claude:2,claudeUsage,meters,keepAwake");
    ASSERT_EQ(layout.pages().size(), 2U);
    for (const auto& page : layout.pages()) {
        int sum = 0;
        for (const WidgetEntry& entry : page) {
            sum += entry.units();
        }
        EXPECT_EQ(sum, WidgetLayout::unitsPerPage);
    }
    EXPECT_THAT(layout.available(), ElementsAre(WidgetID::clock));
}

TEST(WidgetLayout, WritingAndReadingGivesTheSameLayout) {
    for (const char* text :
         {"", "clock", "timer:1,clock", "keepAwake:2,claudeUsage,timer,meters:2,music:2"}) {
        const auto layout = WidgetLayout::fromStoredValue(text);
        EXPECT_EQ(layout.storedValue(), text);
        EXPECT_EQ(WidgetLayout::fromStoredValue(layout.storedValue()), layout);
    }
}

TEST(WidgetLayout, AbsentTextIsTheDefault) {
    EXPECT_EQ(WidgetLayout::fromStoredValue(std::nullopt), WidgetLayout::defaultLayout());
}

TEST(WidgetLayout, EmptyTextIsARackThatTheUserEmptied) {
    EXPECT_THAT(read(""), IsEmpty());
    EXPECT_THAT(read("  \t "), IsEmpty());
}

TEST(WidgetLayout, TextOfWhichNothingIsLeftIsTheDefault) {
    EXPECT_EQ(read("bogus"), defaultEntries());
    EXPECT_EQ(read(","), defaultEntries());
    EXPECT_EQ(read("bogus:1,,nonsense"), defaultEntries());
    EXPECT_EQ(read(":::"), defaultEntries());
}

TEST(WidgetLayout, UnknownWidgetsVanish) {
    EXPECT_THAT(read("bogus,music,Clock"), ElementsAre(WidgetEntry{WidgetID::music, small}));
}

TEST(WidgetLayout, SizeThatAWidgetDoesNotComeInBecomesItsUsualOne) {
    EXPECT_THAT(read("clock:2"), ElementsAre(WidgetEntry{WidgetID::clock, small}));
    EXPECT_EQ(WidgetLayout::fromStoredValue("clock:2").storedValue(), "clock");
    EXPECT_THAT(read("music:3"), ElementsAre(WidgetEntry{WidgetID::music, small}));
}

TEST(WidgetLayout, TimerIsWideUnlessToldOtherwise) {
    EXPECT_THAT(read("timer"), ElementsAre(WidgetEntry{WidgetID::timer, wide}));
    EXPECT_THAT(read("timer:1"), ElementsAre(WidgetEntry{WidgetID::timer, small}));
}

TEST(WidgetLayout, SizesAreDecimalIntegersWithOrWithoutASign) {
    const WidgetEntry wideMusic{WidgetID::music, wide};
    EXPECT_THAT(read("music:+2"), ElementsAre(wideMusic));
    EXPECT_THAT(read("music:002"), ElementsAre(wideMusic));
    const WidgetEntry smallMusic{WidgetID::music, small};
    for (const char* text :
         {"music:", "music:-2", "music:+-2", "music:++2", "music:2.0", "music:2x", "music:two",
          "music:99999999999999999999", "music::2", "music:2:1", "music:2 1"}) {
        EXPECT_THAT(read(text), ElementsAre(smallMusic)) << text;
    }
}

TEST(WidgetLayout, FirstOfTwoWins) {
    EXPECT_THAT(read("timer,timer:1"), ElementsAre(WidgetEntry{WidgetID::timer, wide}));
}

TEST(WidgetLayout, BlanksRoundThePiecesDoNotMatter) {
    EXPECT_THAT(read("timer : 1 , music"),
                ElementsAre(WidgetEntry{WidgetID::timer, small}, WidgetEntry{WidgetID::music, small}));
    EXPECT_EQ(read("music\n"), defaultEntries()) << "A line's end is no blank.";
}

TEST(WidgetLayout, EmptyPiecesAndPartsAreSkipped) {
    EXPECT_THAT(read(",,:music:2,"), ElementsAre(WidgetEntry{WidgetID::music, wide}));
    EXPECT_THAT(read(" :1,clock"), ElementsAre(WidgetEntry{WidgetID::clock, small}));
}

TEST(WidgetLayout, AddsEachWidgetOnce) {
    WidgetLayout layout;
    layout.add(WidgetID::timer);
    layout.add(WidgetID::clock, wide);
    layout.add(WidgetID::music, wide);
    layout.add(WidgetID::timer, small);
    EXPECT_EQ(layout.storedValue(), "timer,clock,music:2");
    EXPECT_THAT(layout.ids(), ElementsAre(WidgetID::timer, WidgetID::clock, WidgetID::music));
    EXPECT_THAT(layout.available(), ElementsAre(WidgetID::meters, WidgetID::metronome, WidgetID::claude,
                                                WidgetID::claudeUsage, WidgetID::keepAwake));
}

TEST(WidgetLayout, RemovesWhatIsThere) {
    auto layout = WidgetLayout::fromStoredValue("timer,music");
    layout.remove(WidgetID::clock);
    layout.remove(WidgetID::timer);
    EXPECT_EQ(layout.storedValue(), "music");
    layout.remove(WidgetID::music);
    EXPECT_EQ(layout.storedValue(), "");
    EXPECT_THAT(layout.pages(), IsEmpty());
}

TEST(WidgetLayout, MovesKeepingTheSize) {
    auto layout = WidgetLayout::fromStoredValue("clock,music:2,meters");
    layout.move(WidgetID::music, 0);
    EXPECT_EQ(layout.storedValue(), "music:2,clock,meters");
    layout.move(WidgetID::music, 1);
    EXPECT_EQ(layout.storedValue(), "clock,music:2,meters");
    layout.move(WidgetID::clock, 99);
    EXPECT_EQ(layout.storedValue(), "music:2,meters,clock");
    layout.move(WidgetID::clock, -5);
    EXPECT_EQ(layout.storedValue(), "clock,music:2,meters");
    layout.move(WidgetID::timer, 0);
    EXPECT_EQ(layout.storedValue(), "clock,music:2,meters");
}

TEST(WidgetLayout, ChangesASizeOnlyToOneOnOffer) {
    auto layout = WidgetLayout::fromStoredValue("clock,music");
    layout.setSize(WidgetID::music, wide);
    layout.setSize(WidgetID::clock, wide);
    layout.setSize(WidgetID::timer, small);
    EXPECT_EQ(layout.storedValue(), "clock,music:2");
}

TEST(WidgetLayout, WideFourthEntryOpensTheSecondPage) {
    const auto pages = WidgetLayout::fromStoredValue("timer,music,metronome:2,claude:2").pages();
    ASSERT_EQ(pages.size(), 2U);
    EXPECT_EQ(pages[0].size(), 3U);
    EXPECT_THAT(pages[1], ElementsAre(WidgetEntry{WidgetID::claude, wide}));
}

TEST(WidgetLayout, PacksInOrderWithoutFillingGaps) {
    EXPECT_THAT(WidgetLayout::pack({2, 2, 2}, 5), ElementsAre(ElementsAre(0, 1), ElementsAre(2)));
    EXPECT_THAT(WidgetLayout::pack({2, 2, 2, 1}, 5), ElementsAre(ElementsAre(0, 1), ElementsAre(2, 3)));
    EXPECT_THAT(WidgetLayout::pack({1, 1, 1, 1, 1, 1}, 5),
                ElementsAre(ElementsAre(0, 1, 2, 3, 4), ElementsAre(5)));
    EXPECT_THAT(WidgetLayout::pack({}, 5), IsEmpty());
}

TEST(WidgetLayout, ItemLargerThanAPageGetsOneOfItsOwn) {
    EXPECT_THAT(WidgetLayout::pack({7}, 5), ElementsAre(ElementsAre(0)));
    EXPECT_THAT(WidgetLayout::pack({1, 7, 1}, 5),
                ElementsAre(ElementsAre(0), ElementsAre(1), ElementsAre(2)));
}

TEST(WidgetLayout, ClampedIndexStaysOnThePage) {
    // Pages: 2 2 1 | 2 1.
    const std::vector<int> units{2, 2, 1, 2, 1};
    EXPECT_EQ(WidgetLayout::clampedIndex(units, 3, 4, 1), 4);
    EXPECT_EQ(WidgetLayout::clampedIndex(units, 3, 0, 1), 2)
        << "2 2 | 2 1 1, while at 0 and 1 it is on the first.";
    EXPECT_EQ(WidgetLayout::clampedIndex(units, 0, 4, 0), 2)
        << "2 1 2 | 2 1, while at 4 and 3 it is on the second.";
    EXPECT_EQ(WidgetLayout::clampedIndex(units, 4, 0, 1), 3)
        << "Right after the three that fill the first page.";
}

TEST(WidgetLayout, ClampedIndexTakesTheLowerOfTwoPlacesEquallyNear) {
    // All of one unit on one page: every place fits, so the wanted one is taken, and beyond the end the last
    // one.
    EXPECT_EQ(WidgetLayout::clampedIndex({1, 1, 1}, 0, 1, 0), 1);
    EXPECT_EQ(WidgetLayout::clampedIndex({1, 1, 1}, 0, 99, 0), 2);
    EXPECT_EQ(WidgetLayout::clampedIndex({1, 1, 1}, 0, std::numeric_limits<int>::min(), 0), 0);
    EXPECT_EQ(WidgetLayout::clampedIndex({1, 1, 1}, 0, std::numeric_limits<int>::max(), 0), 2);
}

TEST(WidgetLayout, ClampedIndexIsTheWantedOneWhereNothingFits) {
    EXPECT_EQ(WidgetLayout::clampedIndex({1, 1}, 0, 1, 7), 1);
    EXPECT_EQ(WidgetLayout::clampedIndex({1, 1}, 5, 1, 0), 1);
    EXPECT_EQ(WidgetLayout::clampedIndex({1, 1}, -1, 1, 0), 1);
    EXPECT_EQ(WidgetLayout::clampedIndex({}, 0, 3, 0), 3);
}

TEST(WidgetLayout, ClampedIndexOfAWidget) {
    const auto layout = WidgetLayout::defaultLayout();
    EXPECT_EQ(layout.clampedIndex(6, WidgetID::claude, 1), 6);
    EXPECT_EQ(layout.clampedIndex(0, WidgetID::claude, 1), 3);
    EXPECT_EQ(layout.clampedIndex(4, WidgetID::clock, 0), 4) << "It is not in the layout.";
}

TEST(WidgetLayout, APageHoldsNoMoreThanItsScreenHasRoomFor) {
    const auto layout = WidgetLayout::fromStoredValue("music,claude:1,claudeUsage,keepAwake,meters");
    const auto countsFor = [&layout](double width) {
        std::vector<std::size_t> counts;
        for (const auto& page : layout.pages({.width = width, .gap = 8})) {
            counts.push_back(page.size());
        }
        return counts;
    };
    // Four of 150, one of 130, and four gaps of 8.
    EXPECT_THAT(countsFor(762), ElementsAre(5));
    EXPECT_THAT(countsFor(761.9), ElementsAre(4, 1));
    EXPECT_THAT(countsFor(308), ElementsAre(2, 2, 1));
    EXPECT_THAT(countsFor(307), ElementsAre(1, 1, 1, 2)) << "the last two are 288 wide together";
    EXPECT_THAT(countsFor(0), ElementsAre(1, 1, 1, 1, 1)) << "a module that fits nowhere is still reached";
}

TEST(WidgetLayout, AScreenChangesNothingOfWhatIsStored) {
    const auto layout = WidgetLayout::defaultLayout();
    std::vector<WidgetEntry> all;
    for (const auto& page : layout.pages({.width = 400, .gap = 8})) {
        all.insert(all.end(), page.begin(), page.end());
    }
    EXPECT_EQ(all, layout.entries);
}

TEST(WidgetLayout, ClampedIndexGoesByTheScreensPages) {
    const auto layout = WidgetLayout::fromStoredValue("music,claude:1,claudeUsage,keepAwake");
    const PageLimits narrow{.width = 308, .gap = 8};
    EXPECT_EQ(layout.clampedIndex(3, WidgetID::music, 0), 3);
    EXPECT_EQ(layout.clampedIndex(3, WidgetID::music, 0, narrow), 1) << "the first page holds two";
    EXPECT_EQ(layout.clampedIndex(0, WidgetID::music, 1, narrow), 2);
}
