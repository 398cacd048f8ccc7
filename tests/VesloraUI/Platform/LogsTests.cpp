// SPDX-License-Identifier: MIT
#include "VesloraUI/Platform/Logs.h"
#include "tests/support/LogRecorder.h"

#include <gtest/gtest.h>

#include <array>

namespace veslora {
namespace {

using testing::LogRecorder;

constexpr std::array categories{Logs::agents, Logs::audio,       Logs::bus,      Logs::hooks, Logs::island,
                                Logs::music,  Logs::power,       Logs::settings, Logs::spool, Logs::start,
                                Logs::system, Logs::transcripts, Logs::views,    Logs::x11};

TEST(LogsTests, NothingIsSaidUnasked) {
    const LogRecorder recorder(LogRecorder::Categories::byDefault);
    for (const auto category : categories) {
        qCInfo(category, "decided");
        qCWarning(category, "failed");
    }
    EXPECT_TRUE(recorder.lines().empty());
}

TEST(LogsTests, EveryCategorySpeaksWhenAsked) {
    const LogRecorder recorder;
    for (const auto category : categories) {
        qCInfo(category, "decided");
    }
    EXPECT_EQ(recorder.decisions().size(), categories.size());
}

TEST(LogsTests, AFaultOfTheProgramItselfIsAlwaysTold) {
    const LogRecorder recorder(LogRecorder::Categories::byDefault);
    qCCritical(Logs::views, "a view is broken");
    EXPECT_EQ(recorder.lines().size(), 1U);
}

TEST(LogsTests, ALineMakesNothingBeforeSomebodyListens) {
    const LogRecorder recorder(LogRecorder::Categories::byDefault);
    int made = 0;
    const auto text = [&made] {
        ++made;
        return "text";
    };
    qCWarning(Logs::system, "%s", text());
    EXPECT_EQ(made, 0);
}

TEST(LogsTests, APlaceNamesNoProjectOfTheUsers) {
    EXPECT_EQ(Logs::place("/home/user/.claude/projects/-home-user-secret/1.jsonl"),
              "/home/user/.claude/projects/...");
    EXPECT_EQ(Logs::place("/home/user/.claude/projects"), "/home/user/.claude/projects");
    EXPECT_EQ(Logs::place("/home/user/.config/Veslora/settings.json"),
              "/home/user/.config/Veslora/settings.json");
}

} // namespace
} // namespace veslora
