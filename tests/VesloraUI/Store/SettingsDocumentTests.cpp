// SPDX-License-Identifier: MIT
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingsDocument.h"
#include "VesloraUI/Store/SettingsKeys.h"
#include "VesloraUI/Store/StoredSettings.h"
#include "tests/support/FakeDirectoryWatcher.h"
#include "tests/support/MemoryFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>

using namespace veslora;
using namespace veslora::SettingsDocument;
using StoredSettings::print;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// A home with a store of its own.
struct Home {
    MemoryFiles files;
    FakeDirectoryWatcher watcher;
    Defaults settings{files, watcher, "/config"};

    Home() { SettingsKeys::registerDefaults(settings); }
    [[nodiscard]] std::string text() const { return print(settings).print(Json::Layout::pretty); }
};

std::vector<Fault> faultsOf(std::string_view text) {
    const auto reading = read(text);
    const auto* faults = std::get_if<std::vector<Fault>>(&reading);
    return faults ? *faults : std::vector<Fault>();
}

Reason reasonFor(std::string_view text) {
    const auto faults = faultsOf(text);
    EXPECT_EQ(faults.size(), 1U) << text;
    return faults.empty() ? Reason::state : faults.front().reason;
}

std::string member(std::string_view key, const std::string& value) {
    return "{\"" + std::string(key) + "\": " + value + "}";
}

/// Some value that the setting may have.
Setting::Value someValue(const Setting& setting, std::mt19937& random) {
    const auto below = [&](std::size_t count) { return random() % count; };
    if (std::holds_alternative<bool>(setting.standard)) {
        return below(2) == 0;
    }
    if (const auto* range = std::get_if<ClosedRange>(&setting.bounds)) {
        const double upper = std::min(range->upper, 1e6);
        const double number = range->lower + (upper - range->lower) * static_cast<double>(below(1000)) / 999;
        return std::holds_alternative<int>(setting.standard) ? Setting::Value(static_cast<int>(number))
                                                             : Setting::Value(number);
    }
    if (const auto* choices = std::get_if<Setting::Choices>(&setting.bounds)) {
        return choices->all[below(choices->all.size())];
    }
    const std::string texts[]{"", "DP-1", "timer", "clock,timer", "HDMI \"1\" \\ ä€"};
    return setting.held(texts[below(std::size(texts))]);
}

} // namespace

TEST(SettingsDocument, WhatIsExportedGivesAnEmptyHomeEqualSettings) {
    std::mt19937 random(20261123);
    for (int round = 0; round < 200; ++round) {
        Home first;
        for (const Setting& setting : SettingsKeys::all()) {
            if (random() % 2 == 0) {
                first.settings.set(std::vector{Defaults::Change(setting.key, someValue(setting, random))});
            }
        }
        first.settings.set(SettingsKeys::alertsPausedUntil, 0.0);
        for (const Json& shown : {print(first.settings), withoutDefaults(print(first.settings))}) {
            Home second;
            const auto reading = read(shown.print(Json::Layout::pretty));
            ASSERT_TRUE(std::holds_alternative<Changes>(reading)) << first.text();
            second.settings.set(std::get<Changes>(reading));
            EXPECT_EQ(second.text(), first.text());
        }
    }
}

TEST(SettingsDocument, NothingIsExportedOfAnUntouchedHome) {
    const Home home;
    EXPECT_THAT(withoutDefaults(print(home.settings)).members(), IsEmpty());
    const auto choices = std::ranges::count(SettingsKeys::all(), false, &Setting::isState);
    EXPECT_EQ(print(home.settings).members().size(), static_cast<std::size_t>(choices));
    EXPECT_LT(static_cast<std::size_t>(choices), SettingsKeys::all().size()) << "a pause, for one, is none";
}

TEST(SettingsDocument, AFileOfOddValuesIsExportedAsItIsRead) {
    Home home;
    home.files.put("/config/settings.json",
                   R"({"accent": "pink", "widgetSpacing": 900, "metronomeBPM": 12.7, "hoverDelay": -3,
                       "metronomeVolume": "loud", "widgetLayout": "music,teapot,music:2", "another's": 1,
                       "displayOutput": "DP-1\u001b[2J", "alertsPausedUntil": 5})");
    home.watcher.fire("/config");
    const Json shown = print(home.settings);
    EXPECT_EQ(shown.textAt("accent"), "lime");
    EXPECT_EQ(shown.find("widgetSpacing")->number(), 80);
    EXPECT_EQ(shown.find("metronomeBPM")->integer(), 30);
    EXPECT_EQ(shown.find("hoverDelay")->number(), 0);
    EXPECT_EQ(shown.find("metronomeVolume")->number(), 0.8);
    EXPECT_EQ(shown.textAt("widgetLayout"), "music");
    EXPECT_EQ(shown.textAt("displayOutput"), "");
    EXPECT_EQ(shown.find("another's"), nullptr);
    EXPECT_EQ(shown.find("alertsPausedUntil"), nullptr);
    EXPECT_THAT(faultsOf(shown.print(Json::Layout::compact)), IsEmpty());
}

TEST(SettingsDocument, EveryKeyRefusesWhatItsReadRefuses) {
    const std::map<std::string_view, std::vector<std::string>> more{
        {SettingsKeys::hoverDelay, {"-0.1", "1e400"}},
        {SettingsKeys::displayChoice, {R"("Main")"}},
        {SettingsKeys::displayOutput, {R"("DP\u001b1")", R"("\ud800")", '"' + std::string(256, 'x') + '"'}},
        {SettingsKeys::accent, {R"("pink")", R"("")", R"("Lime")"}},
        {SettingsKeys::timerSound, {R"("Bang")"}},
        {SettingsKeys::widgetLayout, {R"("teapot")", R"("music,music")", R"("timer:3")", R"("timer:2")"}},
        {SettingsKeys::widgetSpacing, {"7.9", "80.1", "-60"}},
        {SettingsKeys::liveActivityPriority, {R"("none")"}},
        {SettingsKeys::metronomeBPM, {"0", "29", "301", "120.5", "1e10"}},
        {SettingsKeys::metronomeSignature, {R"("9/8")"}},
        {SettingsKeys::metronomeSound, {R"("gong")"}},
        {SettingsKeys::metronomeVolume, {"-0.1", "1.1"}},
    };
    for (const Setting& setting : SettingsKeys::all()) {
        if (setting.isState) {
            EXPECT_EQ(reasonFor(member(setting.key, "0")), Reason::state) << setting.key;
            continue;
        }
        std::vector<std::string> values{"null", "[]", "{}", "[true]"};
        values.emplace_back(std::holds_alternative<std::string>(setting.standard) ? "1" : R"("x")");
        values.emplace_back(std::holds_alternative<bool>(setting.standard) ? "0" : "true");
        EXPECT_TRUE(std::holds_alternative<std::monostate>(setting.bounds) || more.contains(setting.key))
            << setting.key << " has bounds that nothing here goes beyond";
        if (more.contains(setting.key)) {
            values.insert(values.end(), more.at(setting.key).begin(), more.at(setting.key).end());
        }
        for (const std::string& value : values) {
            EXPECT_EQ(reasonFor(member(setting.key, value)), Reason::unusable) << setting.key << value;
        }
    }
}

TEST(SettingsDocument, BothEndsOfARangeAndWholeNumbersInAnyFormAreTaken) {
    for (const char* text :
         {R"({"widgetSpacing": 8})", R"({"widgetSpacing": 8e1})", R"({"metronomeBPM": 30})",
          R"({"metronomeBPM": 3e2})", R"({"metronomeBPM": 120.0})", R"({"hoverDelay": 0})",
          R"({"widgetLayout": ""})", R"({"displayOutput": ""})", R"( { } )", "\xef\xbb\xbf{}"}) {
        EXPECT_THAT(faultsOf(text), IsEmpty()) << text;
    }
}

TEST(SettingsDocument, OneBadKeyRefusesAllAndEachIsTold) {
    EXPECT_THAT(faultsOf(R"({"accent": "cyan", "Accent": 1, "hoverDelay": true, "accent": "lime"})"),
                ElementsAre(Fault{Reason::repeatedKey, "accent"}, Fault{Reason::unknownKey, "Accent"},
                            Fault{Reason::unusable, "hoverDelay"}));
}

TEST(SettingsDocument, TheSameKeyInAnotherSpellingIsTheSame) {
    EXPECT_EQ(reasonFor(R"({"accent": "cyan", "\u0061ccent": "cyan"})"), Reason::repeatedKey);
    EXPECT_THAT(faultsOf(R"({"\u0061ccent": "cyan"})"), IsEmpty());
}

TEST(SettingsDocument, WhatIsNoObjectIsRefused) {
    for (const std::string& text :
         {std::string(), std::string(" \n"), std::string("[]"), std::string("true"),
          std::string(R"({"accent": "cyan")"), std::string(R"({"accent": "cyan"} x)"),
          std::string("{\"accent\": \"c\xff\"}"), std::string(R"({"accent" "cyan"})"), std::string("\0{}", 3),
          std::string(60'000, '[')}) {
        EXPECT_EQ(reasonFor(text), Reason::notAnObject) << text.substr(0, 30);
    }
}

TEST(SettingsDocument, ATextIsBounded) {
    const std::string longestOne = "{}" + std::string(longest - 2, ' ');
    EXPECT_THAT(faultsOf(longestOne), IsEmpty());
    EXPECT_EQ(reasonFor(longestOne + " "), Reason::tooLong);
    std::string many = "{\"k0\": 0";
    for (int at = 1; at < 5000; ++at) {
        many += ", \"k" + std::to_string(at) + "\": 0";
    }
    EXPECT_LE(faultsOf(many + "}").size(), 20U) << "a terminal's worth";
}

TEST(SettingsDocument, AnExplanationMovesNoCursor) {
    const std::string key = "\x1b[2J\n\xe2\x80\xae" + std::string(1000, 'k');
    const std::string text = explain({Reason::unknownKey, key});
    EXPECT_EQ(text.find_first_of("\x1b\n"), std::string::npos);
    EXPECT_EQ(text.find("\xe2\x80\xae"), std::string::npos);
    EXPECT_LT(text.size(), 120U);
    EXPECT_EQ(explain({Reason::unusable, "widgetSpacing"}),
              "widgetSpacing: it must be a number from 8 to 80.");
    EXPECT_EQ(explain({Reason::unusable, "metronomeBPM"}),
              "metronomeBPM: it must be a whole number from 30 to 300.");
    EXPECT_EQ(explain({Reason::unusable, "accent"}), "accent: it must be one of lime, cyan, amber, white.");
    EXPECT_EQ(explain({Reason::unusable, "hoverDelay"}), "hoverDelay: it must be a number from 0 on.");
    EXPECT_EQ(explain({Reason::unusable, "timerNotifications"}),
              "timerNotifications: it must be true or false.");
}

TEST(SettingsDocument, WhatWasTypedIsAValueOfTheSettingsType) {
    const auto typed = [](std::string_view key, std::string_view value) {
        const auto text = assigning(key, value);
        const auto* made = std::get_if<std::string>(&text);
        return made != nullptr && faultsOf(*made).empty();
    };
    EXPECT_TRUE(typed("accent", "cyan"));
    EXPECT_TRUE(typed("displayOutput", ""));
    EXPECT_TRUE(typed("hideInFullscreen", "false"));
    EXPECT_TRUE(typed("widgetSpacing", "12.5"));
    for (const auto& [key, value] :
         std::vector<std::pair<std::string, std::string>>{{"accent", "\"cyan\""},
                                                          {"hideInFullscreen", "no"},
                                                          {"hideInFullscreen", ""},
                                                          {"widgetSpacing", "12,5"},
                                                          {"widgetSpacing", "0x10"},
                                                          {"widgetSpacing", "1}"},
                                                          {"metronomeBPM", "1e99999"},
                                                          {"displayOutput", "\xff"},
                                                          {"displayOutput", "\xed\xa0\x80"},
                                                          {"displayOutput", std::string(100'000, 'x')},
                                                          {"alertsPausedUntil", "0"},
                                                          {"nothing", "1"}}) {
        EXPECT_FALSE(typed(key, value)) << key << value.substr(0, 20);
    }
}

TEST(SettingsDocument, AValueForAShellHasNoQuotes) {
    EXPECT_EQ(plain(Json::makeString("timer,music")), "timer,music");
    EXPECT_EQ(plain(Json::makeBoolean(false)), "false");
    EXPECT_EQ(plain(Json::makeInteger(120)), "120");
}
