// SPDX-License-Identifier: MIT
#include "VesloraCore/Scalars.h"

#include <gtest/gtest.h>

using namespace veslora;

TEST(Scalars, HiddenOnesAreControlsFormatsAndSeparators) {
    for (const char32_t hidden : {U'\0', U'\a', U'\x7F', U'\u0085', U'\u00AD', U'\u200B', U'\u200D',
                                  U'\u202E', U'\u2028', U'\u2029', U'\u2066', U'\uFEFF', U'\U000E0041'})
        EXPECT_TRUE(Scalars::isHidden(hidden)) << static_cast<unsigned>(hidden);
    for (const char32_t shown : {U' ', U'a', U'\u00A0', U'é', U'😀', U'\u0301', U'中', U'\uFFFD'})
        EXPECT_FALSE(Scalars::isHidden(shown)) << static_cast<unsigned>(shown);
}

TEST(Scalars, ABadByteStandsForItself) {
    const auto bad = Scalars::at("\xFFz", 0);
    EXPECT_FALSE(bad.codePoint);
    EXPECT_EQ(bad.length, 1u);
    const auto cut = Scalars::at("a\xE2\x82", 1);
    EXPECT_FALSE(cut.codePoint);
    const auto good = Scalars::at("a€", 1);
    EXPECT_EQ(good.codePoint, U'€');
    EXPECT_EQ(good.length, 3u);
}
