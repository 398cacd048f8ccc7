// SPDX-License-Identifier: MIT
#include "VesloraCore/Text/Scalars.h"

#include <gtest/gtest.h>

using namespace veslora;

TEST(Scalars, HiddenIsWhatNobodyCouldCountOnSeeing) {
    for (const char32_t hidden :
         {U'\0',         U'\a',         U'\x7F',          U'\u0085',       U'\u00AD', U'\u200B',
          U'\u200D',     U'\u202E',     U'\u2028',        U'\u2029',       U'\u2066', U'\uFEFF',
          U'\u00A0',     U'\u3000',     U'\u034F',        U'\u115F',       U'\u17B4', U'\u20DD',
          U'\u2800',     U'\uE000',     U'\uFE0F',        U'\uFFFC',       U'\uFFFD', U'\u0378',
          U'\U0001D159', U'\U000E0041', char32_t(0xD800), char32_t(0xFFFE)}) {
        EXPECT_TRUE(Scalars::isHidden(hidden)) << static_cast<unsigned>(hidden);
    }
    for (const char32_t shown : {U' ', U'a', U'é', U'😀', U'\u0301', U'中', U'⟨', U'\U0001F1E9'}) {
        EXPECT_FALSE(Scalars::isHidden(shown)) << static_cast<unsigned>(shown);
    }
}

TEST(Scalars, MarksStandOnWhatIsBeforeThem) {
    for (const char32_t mark : {U'\u0301', U'\u0903', U'\u20DD'}) {
        EXPECT_TRUE(Scalars::isMark(mark)) << static_cast<unsigned>(mark);
    }
    for (const char32_t other : {U'a', U' ', U'^', U'\U0001F3FD'}) {
        EXPECT_FALSE(Scalars::isMark(other)) << static_cast<unsigned>(other);
    }
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
