// SPDX-License-Identifier: MIT
// What the configuration files of GTK and KDE say of the desktop's look, and that nothing in them does harm.
#include "VesloraLinux/System/AppearanceText.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace veslora::AppearanceText {

void PrintTo(const Words& words, std::ostream* stream) {
    const auto tell = [stream](const auto& word) {
        *stream << (word ? std::to_string(static_cast<int>(*word)) : "-") << ' ';
    };
    tell(words.colorScheme);
    tell(words.highContrast);
    tell(words.reducedMotion);
}

namespace {

constexpr auto light = ColorScheme::light;
constexpr auto dark = ColorScheme::dark;
constexpr auto open = std::nullopt;

struct Case {
    std::string text;
    Words words;
};

TEST(AppearanceTextTests, ReadsGtk) {
    const std::vector<Case> cases{
        {"", {}},
        {"[Settings]\n", {}},
        {"[Settings]\ngtk-font-name=Inter 11\n", {}},
        {"[Settings]\ngtk-application-prefer-dark-theme=1\n", {dark, open, open}},
        {"[Settings]\r\ngtk-application-prefer-dark-theme = true\r\n", {dark, open, open}},
        {"[Settings]\ngtk-application-prefer-dark-theme=0", {light, open, open}},
        {"[Settings]\ngtk-application-prefer-dark-theme=perhaps\n", {}},
        {"[Settings]\ngtk-theme-name=Adwaita\n", {light, false, open}},
        {"[Settings]\ngtk-theme-name=Adwaita-dark\n", {dark, false, open}},
        {"[Settings]\ngtk-theme-name=Breeze-Dark\n", {dark, false, open}},
        {"[Settings]\ngtk-theme-name=Adwaita-dark\ngtk-application-prefer-dark-theme=0\n",
         {dark, false, open}},
        {"[Settings]\ngtk-application-prefer-dark-theme=1\ngtk-theme-name=Adwaita\n", {dark, false, open}},
        {"[Settings]\ngtk-theme-name=Darkness\n", {light, false, open}},
        {"[Settings]\ngtk-theme-name=HighContrast\n", {light, true, open}},
        {"[Settings]\ngtk-theme-name=HighContrastInverse\n", {dark, true, open}},
        {"[Settings]\ngtk-theme-name=\n", {}},
        {"[Settings]\ngtk-enable-animations=0\n", {open, open, true}},
        {"[Settings]\ngtk-enable-animations=true\n", {open, open, false}},
        {"[Settings]\ngtk-enable-animations=2\n", {}},
        {"gtk-enable-animations=0\n", {}},
        {"[Other]\ngtk-enable-animations=0\n[Settings]\n", {}},
        {"[Settings]\n#gtk-enable-animations=0\n; gtk-theme-name=HighContrast\n", {}},
        // The last of two counts, as the toolkits read it.
        {"[Settings]\ngtk-enable-animations=0\ngtk-enable-animations=1\n", {open, open, false}},
    };
    for (const auto& [text, words] : cases) {
        EXPECT_EQ(ofGtk(text), words) << text;
    }
}

TEST(AppearanceTextTests, ReadsKde) {
    const std::vector<Case> cases{
        {"", {}},
        {"[General]\nColorScheme=BreezeLight\n", {light, false, open}},
        {"[General]\nColorScheme=BreezeDark\n", {dark, false, open}},
        {"[General][$i]\nColorScheme[$i]=BreezeDark\n", {dark, false, open}},
        {"[General]\nColorScheme=BreezeHighContrast\n", {light, true, open}},
        {"[Other]\nColorScheme=BreezeDark\n", {}},
        {"[Colors:Window]\nBackgroundNormal=32,35,38\n", {dark, open, open}},
        {"[Colors:Window]\nBackgroundNormal=239, 240, 241\n", {light, open, open}},
        {"[Colors:Window][Inactive]\nBackgroundNormal=32,35,38\n", {}},
        {"[Colors:Window]\nBackgroundNormal=0,0,255\n", {dark, open, open}},
        {"[Colors:Window]\nBackgroundNormal=0,255,0\n", {light, open, open}},
        // What the colours are outweighs what they are called.
        {"[General]\nColorScheme=DarkRoast\n[Colors:Window]\nBackgroundNormal=250,250,250\n",
         {light, false, open}},
        {"[Colors:Window]\nBackgroundNormal=32,35\n", {}},
        {"[Colors:Window]\nBackgroundNormal=32,35,38,40\n", {}},
        {"[Colors:Window]\nBackgroundNormal=32,35,\n", {}},
        {"[Colors:Window]\nBackgroundNormal=-1,0,0\n", {}},
        {"[Colors:Window]\nBackgroundNormal=256,0,0\n", {}},
        {"[Colors:Window]\nBackgroundNormal=99999999999999999999,0,0\n", {}},
        {"[Colors:Window]\nBackgroundNormal=black\n", {}},
        {"[KDE]\nAnimationDurationFactor=0\n", {open, open, true}},
        {"[KDE]\nAnimationDurationFactor=0.0\n", {open, open, true}},
        {"[KDE]\nAnimationDurationFactor=0.5\n", {open, open, false}},
        {"[KDE]\nAnimationDurationFactor=nan\n", {open, open, false}},
        {"[KDE]\nAnimationDurationFactor=fast\n", {}},
        {"[KDE]\nAnimationDurationFactor=\n", {}},
    };
    for (const auto& [text, words] : cases) {
        EXPECT_EQ(ofKde(text), words) << text;
    }
}

TEST(AppearanceTextTests, WhatIsNoConfigurationSaysNothing) {
    const std::vector<std::string> texts{
        std::string(100'000, '['),
        std::string(100'000, '='),
        std::string(100'000, '\n'),
        std::string(100'000, '\0'),
        "[Settings\ngtk-enable-animations=0",
        "]\n[\n[]\n[$\n[[$i]\n=\n==\n",
        std::string("\xff\xfe[\0S\0", 6),
        "[Settings]\ngtk-theme-name\n=HighContrast\n",
    };
    for (const std::string& text : texts) {
        EXPECT_EQ(ofGtk(text), Words());
        EXPECT_EQ(ofKde(text), Words());
    }
}

TEST(AppearanceTextTests, TheFirstThatSaysSomethingIsTaken) {
    EXPECT_EQ(firstOf({dark, open, open}, {light, true, open}), (Words{dark, true, open}));
    EXPECT_EQ(firstOf({open, false, true}, {light, true, false}), (Words{light, false, true}));
    EXPECT_EQ(firstOf({}, {}), Words());
}

} // namespace
} // namespace veslora::AppearanceText
