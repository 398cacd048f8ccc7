// SPDX-License-Identifier: MIT
#include "VesloraCore/Text/GraphemeClusters.h"
#include "VesloraCore/Text/JsonText.h"
#include "VesloraCore/Text/Scalars.h"
#include "VesloraCore/Text/VisibleText.h"
#include "tests/VesloraCore/TestText.h"

#include <gtest/gtest.h>

#include <ctime>
#include <random>

using namespace veslora;
using namespace std::string_literals;
using test::repeated;

namespace {

std::string spelled(const std::string& text) {
    const VisibleText::Spelled made = VisibleText::spelled(text, 1000);
    EXPECT_TRUE(made.isComplete) << text;
    return made.text;
}

} // namespace

TEST(VisibleText, OrdinaryTextStays) {
    for (const std::string text : {"", "ls  -la ", "echo 😀 é 中 \\ \" $HOME", "Отчёт", "ế", "שָׁלוֹם", "ที่นี่",
                                   "मेरे", "🇩🇪", "👍🏽", "…"}) {
        EXPECT_EQ(spelled(text), text);
    }
}

TEST(VisibleText, LineEndsAndTabsShowAsSigns) {
    EXPECT_EQ(spelled("ls\npwd"), "ls ⏎ pwd");
    EXPECT_EQ(spelled("ls \npwd"), "ls ⏎ pwd");
    EXPECT_EQ(spelled("ls\n"), "ls ⏎ ");
    EXPECT_EQ(spelled("\nls"), "⏎ ls");
    EXPECT_EQ(spelled("a\r\nb"), "a ␍ ⏎ b");
    EXPECT_EQ(spelled("a\tb"), "a ⇥ b");
    EXPECT_EQ(spelled("a\n\n\nb"), "a ⏎ ⏎ ⏎ b");
    EXPECT_EQ(spelled(""), "");
}

TEST(VisibleText, WhatHidesIsSpelledOut) {
    EXPECT_EQ(spelled("a\xE2\x80\xAE"
                      "b"),
              "a⟨U+202E⟩b");
    EXPECT_EQ(spelled("\xC2\xAD"), "⟨U+00AD⟩");
    EXPECT_EQ(spelled("\a"), "⟨U+0007⟩");
    EXPECT_EQ(spelled("\0"s), "⟨U+0000⟩");
    EXPECT_EQ(spelled("\x1B[31m"), "⟨U+001B⟩[31m");
    EXPECT_EQ(spelled("\xE2\x80\xA8"), "⟨U+2028⟩");
    EXPECT_EQ(spelled("\xE2\x80\xA9"), "⟨U+2029⟩");
    EXPECT_EQ(spelled("\xF3\xA0\x81\x81"), "⟨U+E0041⟩");
    EXPECT_EQ(spelled("\xFF"), "⟨U+FFFD⟩");
}

TEST(VisibleText, SignsThatCameWithTheTextCannotForgeOurs) {
    EXPECT_EQ(spelled("echo a ⏎ rm"), "echo a ⟨U+23CE⟩ rm");
    EXPECT_EQ(spelled("⟨U+202E⟩"), "⟨U+27E8⟩U+202E⟨U+27E9⟩");
    EXPECT_EQ(spelled("⇥␍␣"), "⟨U+21E5⟩⟨U+240D⟩⟨U+2423⟩");
}

TEST(VisibleText, ObjectsPrivateUseAndWhatIsUnassignedAreSpelled) {
    EXPECT_EQ(spelled("a\uFFFCb"), "a⟨U+FFFC⟩b");
    EXPECT_EQ(spelled("\uFFFD"), "⟨U+FFFD⟩");
    EXPECT_EQ(spelled("\uE0B0\U0010FFFD"), "⟨U+E0B0⟩⟨U+10FFFD⟩");
    EXPECT_EQ(spelled("\u0378\U000E1000"), "⟨U+0378⟩⟨U+E1000⟩");
    EXPECT_EQ(spelled("\uFDD0\uFFFF"), "⟨U+FDD0⟩⟨U+FFFF⟩");
}

TEST(VisibleText, WhatIsNewerThanTheToolkitIsSpelled) {
    EXPECT_EQ(spelled("\U0001FAE8"), "⟨U+1FAE8⟩") << "of Unicode 15";
    EXPECT_EQ(spelled("\U0001FAE0"), "\U0001FAE0") << "of Unicode 14";
}

TEST(VisibleText, SpacesThatAreNoOrdinaryOneAreSpelled) {
    EXPECT_EQ(spelled("rm\u00A0-rf\u2003\u3000 ~"), "rm⟨U+00A0⟩-rf⟨U+2003⟩⟨U+3000⟩ ~");
}

TEST(VisibleText, BlanksThatCountAsLettersAreSpelled) {
    EXPECT_EQ(spelled("\u115F\u1160\u3164\uFFA0\u2800"), "⟨U+115F⟩⟨U+1160⟩⟨U+3164⟩⟨U+FFA0⟩⟨U+2800⟩");
    EXPECT_EQ(spelled("\u034Fx\uFE0F\U000E0100\U0001D159"), "⟨U+034F⟩x⟨U+FE0F⟩⟨U+E0100⟩⟨U+1D159⟩");
}

TEST(VisibleText, EnclosingMarksAreSpelled) {
    EXPECT_EQ(spelled("r\u20DDm\u0489"), "r⟨U+20DD⟩m⟨U+0489⟩");
}

TEST(VisibleText, MarksWithoutALetterAreSpelled) {
    EXPECT_EQ(spelled("\u0301"), "⟨U+0301⟩");
    EXPECT_EQ(spelled("a \u0301"), "a ⟨U+0301⟩");
    EXPECT_EQ(spelled("a\n\u0301"), "a ⏎ ⟨U+0301⟩");
    EXPECT_EQ(spelled("\u200B\u0301\u0302"), "⟨U+200B⟩⟨U+0301⟩⟨U+0302⟩");
    EXPECT_EQ(spelled("\xFF\u0301"), "⟨U+FFFD⟩⟨U+0301⟩");
}

TEST(VisibleText, MarksThatNoLanguageWritesAreSpelled) {
    EXPECT_EQ(spelled("e\u0302\u0301\u0323"), "e\u0302\u0301\u0323");
    EXPECT_EQ(spelled("e\u0302\u0301\u0323\u0308"), "e\u0302\u0301\u0323⟨U+0308⟩") << "a fourth";
    EXPECT_EQ(spelled("e\u0301\u0301"), "e\u0301⟨U+0301⟩") << "the same twice";
    EXPECT_EQ(spelled("e\u0301\u0301\u0302"), "e\u0301⟨U+0301⟩⟨U+0302⟩") << "nothing is put on a code";
    EXPECT_EQ(spelled("a\u05B8"), "a⟨U+05B8⟩") << "a Hebrew point on a Latin letter";
    EXPECT_EQ(spelled("1\u0E34"), "1⟨U+0E34⟩");
}

TEST(VisibleText, EndsWhereTheRoomDoes) {
    EXPECT_EQ(VisibleText::spelled("abcd", 4), (VisibleText::Spelled{"abcd", true}));
    EXPECT_EQ(VisibleText::spelled("abcde", 4), (VisibleText::Spelled{"abc…", false}));
    EXPECT_EQ(VisibleText::spelled("\u200B", 8), (VisibleText::Spelled{"⟨U+200B⟩", true}));
    EXPECT_EQ(VisibleText::spelled("a\u200B", 8), (VisibleText::Spelled{"a⟨U+200…", false}));
    EXPECT_EQ(VisibleText::spelled("e\u0301e\u0301e\u0301", 2), (VisibleText::Spelled{"e\u0301…", false}));
    EXPECT_EQ(VisibleText::spelled("", 0), (VisibleText::Spelled{"", true}));
    EXPECT_EQ(VisibleText::spelled("a", 0), (VisibleText::Spelled{"…", false}));
}

TEST(VisibleText, OneCharacterOfManyCodePointsIsNoWayAroundTheLimit) {
    for (const char* piece : {"\u1100", "\U0001F3FD", "\u0301"}) {
        const auto made = VisibleText::spelled("a" + repeated(piece, 3000), 130);
        EXPECT_FALSE(made.isComplete);
        EXPECT_LT(made.text.size(), 4 * 4 * 130 + 20u);
    }
}

TEST(VisibleText, ALongTextCostsNoMoreThanItsStart) {
    for (const char* piece : {"x", "\u200B", "\u0301", "\u1100", "\xFF"}) {
        const std::string text = repeated(piece, 1 << 20);
        const std::clock_t start = std::clock();
        EXPECT_FALSE(VisibleText::spelled(text, 130).isComplete);
        EXPECT_LT(std::clock() - start, CLOCKS_PER_SEC / 50);
    }
}

TEST(VisibleText, NothingHiddenIsLeftOfAnything) {
    std::mt19937 random(9);
    std::uniform_int_distribution<char32_t> any(1, 0x10FFFF);
    std::uniform_int_distribution<char32_t> near(0x20, 0x1FFF);
    for (int round = 0; round < 2000; ++round) {
        std::string text;
        for (int i = 0; i < 20; ++i) {
            const char32_t c = i % 3 == 0 ? any(random) : near(random);
            JsonText::appendUtf8(text, c);
        }
        const std::string made = VisibleText::spelled(text, 1000).text;
        for (std::size_t at = 0; at < made.size();) {
            const auto scalar = Scalars::at(made, at);
            ASSERT_TRUE(scalar.codePoint);
            EXPECT_FALSE(Scalars::isHidden(*scalar.codePoint));
            at += scalar.length;
        }
    }
}
