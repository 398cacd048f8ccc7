// SPDX-License-Identifier: MIT
#include "VesloraCore/Text/Scripts.h"

#include <gtest/gtest.h>

using namespace veslora;
using Scripts::Script;

TEST(Scripts, LettersOfOneScriptShareIt) {
    EXPECT_EQ(Scripts::of(U'a'), Scripts::of(U'Z'));
    EXPECT_EQ(Scripts::of(U'é'), Scripts::of(U'a'));
    EXPECT_NE(Scripts::of(U'а'), Scripts::of(U'a')) << "Cyrillic";
    EXPECT_EQ(Scripts::of(U'א'), Scripts::of(U'\u05B8'));
    EXPECT_EQ(Scripts::of(U'中'), Scripts::of(U'\U00020000'));
}

TEST(Scripts, WhatManyScriptsUseIsCommonAndMarksInherit) {
    for (const char32_t common : {U'\0', U' ', U'1', U'-', U'€', U'😀', U'⏎'}) {
        EXPECT_EQ(Scripts::of(common), Script::common);
    }
    EXPECT_EQ(Scripts::of(U'\u0301'), Script::inherited);
}

TEST(Scripts, NoCharacterHasNoScript) {
    for (const char32_t none : {char32_t(0x378), char32_t(0xD800), char32_t(0xE000), char32_t(0xFFFF),
                                char32_t(0x10FFFF), char32_t(0x110000), char32_t(0xFFFFFFFF)}) {
        EXPECT_EQ(Scripts::of(none), Script::unknown);
    }
    EXPECT_EQ(Scripts::of(0x31350), Script::unknown) << "an ideograph of Unicode 15";
}
