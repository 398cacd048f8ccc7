// SPDX-License-Identifier: MIT
#include "VesloraCore/Island/CommandLine.h"
#include "VesloraCore/Island/StatusLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

using namespace veslora;
using testing::HasSubstr;
using testing::Not;

namespace {

std::vector<ClaudeSessionSummary> sessions() {
    std::vector<ClaudeSessionSummary> all(4);
    all[0].status = ClaudeStatus::NeedsApproval{"Needs your permission", 5};
    all[1].status = ClaudeStatus::Working{5};
    all[2].status = ClaudeStatus::Working{6};
    all[3].status = ClaudeStatus::Finished{7};
    for (auto& session : all) {
        session.id = "secret-id";
        session.name = "secret-name";
        session.activity = "secret-activity";
    }
    return all;
}

constexpr std::array kinds{
    LiveActivityKind::timerAlert,    LiveActivityKind::claudeAlert, LiveActivityKind::claudeFinished,
    LiveActivityKind::metronome,     LiveActivityKind::timer,       LiveActivityKind::music,
    LiveActivityKind::claudeWorking, LiveActivityKind::keepAwake,   LiveActivityKind::none};

} // namespace

TEST(StatusLineTest, TellsOfTheIslandAndCountsTheSessions) {
    EXPECT_EQ(StatusLine::make(false, LiveActivityKind::claudeAlert, sessions()),
              R"({"island":"closed","sessions":{"finished":1,"idle":0,"needsApproval":1,"working":2},)"
              R"("shows":"claudeAlert"})");
    EXPECT_EQ(StatusLine::make(true, LiveActivityKind::claudeAlert, {}),
              R"({"island":"open","sessions":{"finished":0,"idle":0,"needsApproval":0,"working":0},)"
              R"("shows":"rack"})");
}

TEST(StatusLineTest, TellsUntilWhenAlertsArePausedWhileTheyAre) {
    const std::string line = StatusLine::make(false, LiveActivityKind::none, {}, 1'800'003'600.0);
    EXPECT_THAT(line, HasSubstr(R"("pausedUntil":1800003600,)"));
    EXPECT_TRUE(StatusLine::isOne(line));
    EXPECT_THAT(StatusLine::make(false, LiveActivityKind::none, {}), Not(HasSubstr("pausedUntil")));
    EXPECT_THAT(std::string(CommandLine::explanation()), HasSubstr(" pausedUntil "));
}

TEST(StatusLineTest, HoldsNothingOfASession) {
    EXPECT_THAT(StatusLine::make(false, LiveActivityKind::none, sessions()), Not(HasSubstr("secret")));
    EXPECT_THAT(StatusLine::make(false, LiveActivityKind::none, sessions()), Not(HasSubstr("permission")));
}

TEST(StatusLineTest, WhatCanShowIsToldToTheUser) {
    for (const LiveActivityKind kind : kinds) {
        const std::string line = StatusLine::make(false, kind, {});
        const std::size_t begin = line.rfind(':') + 1;
        EXPECT_THAT(std::string(CommandLine::explanation()),
                    HasSubstr(line.substr(begin, line.size() - begin - 1)));
        EXPECT_TRUE(StatusLine::isOne(line));
    }
}

TEST(StatusLineTest, KnowsItsOwnKindOnly) {
    EXPECT_TRUE(StatusLine::isOne(StatusLine::make(true, LiveActivityKind::none, sessions())));
    for (const std::string& text : std::vector<std::string>{
             "", "{}", "closed", R"(["island","shows","sessions"])",
             R"({"island":1,"shows":"a","sessions":{}})", R"({"island":"a","shows":"b","sessions":3})",
             R"({"island":"a","shows":"b"})", "{\"island\":\"a\",\"shows\":\"b\",\"sessions\":{}} \n",
             "{\"island\":\"\x1b[2J\",\"shows\":\"b\",\"sessions\":{}}",
             "{\"island\":\"\xc2\x9b\",\"shows\":\"b\",\"sessions\":{}}",
             R"({"island":"a","shows":"b","sessions":{}})" + std::string(1000, ' ')}) {
        EXPECT_FALSE(StatusLine::isOne(text)) << text;
    }
}
