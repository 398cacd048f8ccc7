// SPDX-License-Identifier: MIT
#include "VesloraCore/Text/Utf8.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

TEST(Utf8, KnowsValidTextFromOther) {
    EXPECT_TRUE(Utf8::isValid(""));
    EXPECT_TRUE(Utf8::isValid("naïve ✻ 😀"));
    EXPECT_FALSE(Utf8::isValid("caf\xE9"));
    EXPECT_FALSE(Utf8::isValid("\xED\xA0\x80")); // half a surrogate pair
    EXPECT_FALSE(Utf8::isValid("\xC0\xAF"));     // a slash in two bytes
}

TEST(Utf8, LeavesValidTextAlone) {
    EXPECT_EQ(Utf8::repaired("naïve ✻ 😀"), "naïve ✻ 😀");
    EXPECT_EQ(Utf8::repaired(""), "");
}

TEST(Utf8, PutsAMarkInPlaceOfWhatIsNoText) {
    EXPECT_EQ(Utf8::repaired("caf\xE9!"), "caf\uFFFD!");
    EXPECT_EQ(Utf8::repaired("\xFF"), "\uFFFD");
    EXPECT_TRUE(Utf8::isValid(Utf8::repaired("\xED\xA0\x80\xF0\x9F")));
}

} // namespace
} // namespace veslora
