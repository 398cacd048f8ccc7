// SPDX-License-Identifier: MIT
#include "VesloraLinux/X11/TopInsets.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

const QRect left(0, 0, 800, 900);
const QRect right(800, 0, 800, 900);
const QRect below(0, 900, 1600, 900);

std::vector<std::uint32_t> topStrut(std::uint32_t height, std::uint32_t start, std::uint32_t end) {
    return {0, 0, height, 0, 0, 0, 0, 0, start, end, 0, 0};
}

TEST(TopInsetsTests, ReadsABarOfTheScreenThatItStandsOn) {
    EXPECT_EQ(topInsetOfStrut(topStrut(27, 0, 799), left), 27);
    EXPECT_EQ(topInsetOfStrut(topStrut(27, 0, 799), right), 0);
    EXPECT_EQ(topInsetOfStrut(topStrut(27, 800, 1599), right), 27);
    EXPECT_EQ(topInsetOfStrut(topStrut(27, 0, 1599), right), 27);
}

TEST(TopInsetsTests, CountsFromTheDesktopsEdgeForALowerScreen) {
    EXPECT_EQ(topInsetOfStrut(topStrut(927, 0, 1599), below), 27);
    // As seen from the upper screens that would be a bar higher than they are.
    EXPECT_EQ(topInsetOfStrut(topStrut(927, 0, 1599), left), 0);
    EXPECT_EQ(topInsetOfStrut(topStrut(27, 0, 1599), below), 0);
}

TEST(TopInsetsTests, TakesTheOlderHintForTheWholeWidth) {
    EXPECT_EQ(topInsetOfStrut({0, 0, 24, 0}, right), 24);
}

TEST(TopInsetsTests, MakesNothingOfOtherFormsAndOtherEdges) {
    EXPECT_EQ(topInsetOfStrut({}, left), 0);
    EXPECT_EQ(topInsetOfStrut({0, 0, 24}, left), 0);
    EXPECT_EQ(topInsetOfStrut({50, 0, 0, 40, 0, 0, 0, 0, 0, 0, 0, 1599}, left), 0);
    EXPECT_EQ(topInsetOfStrut(topStrut(0xffffffff, 0, 799), left), 0);
}

TEST(TopInsetsTests, ReadsTheWorkAreaOfItsScreen) {
    EXPECT_EQ(topInsetOfAreas({0, 32, 800, 868, 800, 0, 800, 900}, left), 32);
    EXPECT_EQ(topInsetOfAreas({0, 32, 800, 868, 800, 0, 800, 900}, right), 0);
    EXPECT_EQ(topInsetOfAreas({}, left), 0);
    EXPECT_EQ(topInsetOfAreas({0, 32, 800}, left), 0);
    // An area that begins far down tells nothing of a bar.
    EXPECT_EQ(topInsetOfAreas({0, 600, 800, 300}, left), 0);
}

} // namespace
} // namespace veslora
