// SPDX-License-Identifier: MIT
#include "VesloraCore/Text/GraphemeClusters.h"
#include "tests/VesloraCore/TestText.h"

#include <gtest/gtest.h>

#include <string>

using namespace veslora;
using test::repeated;

namespace {

const std::string family = "👨‍👩‍👧"; // three people and two joiners
const std::string accented = "e\xCC\x81";
const std::string flags = "🇩🇪🇫🇷";

} // namespace

TEST(GraphemeClusters, CountsWhatAPersonCounts) {
    EXPECT_EQ(GraphemeClusters::count(""), 0u);
    EXPECT_EQ(GraphemeClusters::count("abc"), 3u);
    EXPECT_EQ(GraphemeClusters::count(accented), 1u);
    EXPECT_EQ(GraphemeClusters::count(family), 1u);
    EXPECT_EQ(GraphemeClusters::count(flags), 2u);
    EXPECT_EQ(GraphemeClusters::count("\r\n"), 1u);
    EXPECT_EQ(GraphemeClusters::count("각"), 1u);
    EXPECT_EQ(GraphemeClusters::count("👍🏽"), 1u);
}

TEST(GraphemeClusters, CutsBetweenCharactersOnly) {
    const std::string text = "a" + accented + family + flags + "b";
    EXPECT_EQ(GraphemeClusters::prefix(text, 0), "");
    EXPECT_EQ(GraphemeClusters::prefix(text, 1), "a");
    EXPECT_EQ(GraphemeClusters::prefix(text, 2), "a" + accented);
    EXPECT_EQ(GraphemeClusters::prefix(text, 3), "a" + accented + family);
    EXPECT_EQ(GraphemeClusters::prefix(text, 4), "a" + accented + family + "🇩🇪");
    EXPECT_EQ(GraphemeClusters::prefix(text, 6), text);
    EXPECT_EQ(GraphemeClusters::prefix(text, 100), text);
}

TEST(GraphemeClusters, TellsWhenThereAreMore) {
    const std::string text = repeated(family, 130);
    EXPECT_FALSE(GraphemeClusters::exceeds(text, 130));
    EXPECT_TRUE(GraphemeClusters::exceeds(text, 129));
    EXPECT_FALSE(GraphemeClusters::exceeds("", 0));
    EXPECT_TRUE(GraphemeClusters::exceeds("a", 0));
}

TEST(GraphemeClusters, CountsEveryBadByteOnce) {
    EXPECT_EQ(GraphemeClusters::count("a\xFF\xFE"
                                      "b"),
              4u);
    EXPECT_EQ(GraphemeClusters::count("\xF0\x9F"), 2u);
    EXPECT_EQ(GraphemeClusters::prefix("\xFF\xCC\x81", 1), "\xFF");
}

TEST(GraphemeClusters, ManyMarksOnOneLetterAreOneCharacter) {
    const std::string text = "a" + repeated("\xCC\x81", 100'000);
    EXPECT_EQ(GraphemeClusters::count(text), 1u);
    EXPECT_EQ(GraphemeClusters::prefix(text + "b", 1), text);
}
