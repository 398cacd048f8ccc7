// SPDX-License-Identifier: MIT
#include "VesloraCore/Text/JsonText.h"
#include "VesloraCore/Text/TerminalText.h"

#include <gtest/gtest.h>
#include <utf8proc.h>

using namespace veslora;
using TerminalText::withoutControls;

TEST(TerminalText, OrdinaryTextStaysAsItIs) {
    for (const char* text : {"", "Opus 5.5", "naïve ✻ 😀 日本語", "a · b", "e\u0301 👩🏽 ❤️"}) {
        EXPECT_EQ(withoutControls(text), text);
    }
}

TEST(TerminalText, NoCommandToATerminalIsLeft) {
    EXPECT_EQ(withoutControls("\x1b[31mred\x1b[0m"), "[31mred[0m");
    EXPECT_EQ(withoutControls("\x1b]0;title\x07"
                              "after"),
              "]0;titleafter");
    EXPECT_EQ(withoutControls("over\rwritten\b\b\x7f"), "over written");
    EXPECT_EQ(withoutControls("two\nlines\tand\vmore\f"), "two lines and more ");
    EXPECT_EQ(withoutControls("\u009b31mC1"), "31mC1");
    EXPECT_EQ(withoutControls("\x9b"
                              "31mC1 as one byte"),
              "31mC1 as one byte");
    EXPECT_EQ(withoutControls(std::string_view("nu\0ll", 5)), "null");
}

TEST(TerminalText, NothingTurnsTheOrderRound) {
    EXPECT_EQ(withoutControls("\u202Edetrevni\u202C \u2066x\u2069\u200F\u061C"), "detrevni x");
    EXPECT_EQ(withoutControls("a\u2028b\u2029c\u0085d"), "a b c d");
    EXPECT_EQ(withoutControls("\uFEFFa\u00ADb\u200Bc\U000E0041"), "abc");
}

TEST(TerminalText, WhatIsNoUtf8IsDropped) {
    EXPECT_EQ(withoutControls("caf\xE9 au lait"), "caf au lait");
    EXPECT_EQ(withoutControls("\xC0\x9B\xE0\x80\x9B\xED\xA0\x80\xF4\x90\x80\x80\xF8x\xC2"), "x");
    EXPECT_EQ(withoutControls("\xE2\x80"), "");
}

TEST(TerminalText, OfAllCodePointsNoneThatIsHiddenIsLeft) {
    for (char32_t codePoint = 0; codePoint <= 0x10FFFF; ++codePoint) {
        if (codePoint >= 0xD800 && codePoint <= 0xDFFF) {
            continue;
        }
        std::string text;
        JsonText::appendUtf8(text, codePoint);
        const std::string shown = withoutControls(text);
        const auto category = utf8proc_category(static_cast<utf8proc_int32_t>(codePoint));
        const bool isControl = category == UTF8PROC_CATEGORY_CC || category == UTF8PROC_CATEGORY_CF ||
                               category == UTF8PROC_CATEGORY_ZL || category == UTF8PROC_CATEGORY_ZP;
        if (isControl) {
            ASSERT_TRUE(shown.empty() || shown == " ") << std::hex << static_cast<unsigned>(codePoint);
        } else if (codePoint < 0xE0000 || codePoint > 0xE007F) {
            ASSERT_EQ(shown, text) << std::hex << static_cast<unsigned>(codePoint);
        }
    }
}
