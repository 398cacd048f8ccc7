// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/ClaudeSessionFile.h"
#include "VesloraCore/Text/Json.h"
#include "tests/VesloraCore/TestData.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace veslora;

namespace {

ClaudeSessionFile captured(const std::string& name) {
    const auto file = ClaudeSessionFile::parse(test::dataFile("agents/claude/sessions/" + name + ".json"));
    EXPECT_TRUE(file) << name;
    return file.value_or(ClaudeSessionFile());
}

ClaudeSessionFile with(const std::string& more) {
    const auto file = ClaudeSessionFile::parse(R"({"sessionId":"a","pid":7,)" + more + "}");
    EXPECT_TRUE(file) << more;
    return file.value_or(ClaudeSessionFile());
}

} // namespace

TEST(ClaudeSessionFile, ReadsTheCapturedFiles) {
    const ClaudeSessionFile busy = captured("busy");
    EXPECT_EQ(busy.version, "2.1.329");
    EXPECT_EQ(busy.sessionId, "43044874-ca7b-4fcf-8bd6-5b494a07e2e9");
    EXPECT_EQ(busy.pid, 13010);
    EXPECT_EQ(busy.cwd, "/home/me/agents/w-allow");
    EXPECT_EQ(busy.name, "w-allow-33");
    EXPECT_EQ(busy.tmux, "main:@0.%0");
    EXPECT_TRUE(busy.isBusy);
    EXPECT_FALSE(busy.waitingFor);
    EXPECT_EQ(busy.statusSince, 1795245160.36);

    const ClaudeSessionFile idle = captured("idle");
    EXPECT_FALSE(idle.isBusy);
    EXPECT_FALSE(idle.waitingFor);
    EXPECT_EQ(captured("waiting-permission").waitingFor, "permission prompt");
    EXPECT_FALSE(captured("waiting-permission").isBusy);
    EXPECT_EQ(captured("waiting-input-needed").waitingFor, "input needed");
    EXPECT_EQ(captured("renamed").name, "my-name");
}

TEST(ClaudeSessionFile, AnOpenDialogCountsAsWork) {
    const ClaudeSessionFile file = captured("waiting-dialog-open");
    EXPECT_TRUE(file.isBusy);
    EXPECT_FALSE(file.waitingFor);
}

TEST(ClaudeSessionFile, ReadsEveryStateOfTheCapturedTimeLines) {
    for (const std::string& path : test::dataFiles("agents/claude/sessions", ".timeline.jsonl")) {
        std::istringstream lines(test::dataFile(path));
        int read = 0;
        for (std::string line; std::getline(lines, line); ++read) {
            const auto entry = Json::parse(line);
            ASSERT_TRUE(entry) << path;
            const std::string* content = entry->stringAt("content");
            if (content) {
                EXPECT_TRUE(ClaudeSessionFile::parse(*content)) << path << " line " << read;
            }
        }
        EXPECT_GT(read, 3) << path;
    }
}

TEST(ClaudeSessionFile, NeedsASessionAndAPid) {
    EXPECT_FALSE(ClaudeSessionFile::parse(R"({"pid":7})"));
    EXPECT_FALSE(ClaudeSessionFile::parse(R"({"sessionId":"","pid":7})"));
    EXPECT_FALSE(ClaudeSessionFile::parse(R"({"sessionId":5,"pid":7})"));
    EXPECT_FALSE(ClaudeSessionFile::parse(R"({"sessionId":"a"})"));
    EXPECT_FALSE(ClaudeSessionFile::parse(R"({"sessionId":"a","pid":"7"})"));
    EXPECT_FALSE(ClaudeSessionFile::parse(R"({"sessionId":"a","pid":true})"));
    EXPECT_FALSE(ClaudeSessionFile::parse(R"(["a"])"));
    EXPECT_FALSE(ClaudeSessionFile::parse(""));
}

TEST(ClaudeSessionFile, APidBeyondItsRangeCountsAsAbsent) {
    EXPECT_EQ(ClaudeSessionFile::parse(R"({"sessionId":"a","pid":7.9})")->pid, 7);
    EXPECT_EQ(ClaudeSessionFile::parse(R"({"sessionId":"a","pid":2147483647})")->pid, 2147483647);
    EXPECT_FALSE(ClaudeSessionFile::parse(R"({"sessionId":"a","pid":2147483648})"));
    EXPECT_FALSE(ClaudeSessionFile::parse(R"({"sessionId":"a","pid":123456789012345678901234567890})"));
    EXPECT_FALSE(ClaudeSessionFile::parse(R"({"sessionId":"a","pid":1e400})"));
}

TEST(ClaudeSessionFile, WaitingWithoutAReasonIsAnEmptyReason) {
    EXPECT_EQ(with(R"("status":"waiting")").waitingFor, "");
    EXPECT_EQ(with(R"("status":"waiting","waitingFor":5)").waitingFor, "");
    EXPECT_FALSE(with(R"("status":"busy","waitingFor":"permission prompt")").waitingFor);
    EXPECT_FALSE(with(R"("status":"idle","waitingFor":"dialog open")").isBusy);
    EXPECT_FALSE(with(R"("status":1)").isBusy);
}

TEST(ClaudeSessionFile, ReadsItsStampAsMillisecondsOrAsADate) {
    EXPECT_EQ(with(R"("statusUpdatedAt":1700000000000)").statusSince, 1700000000.0);
    EXPECT_EQ(with(R"("statusUpdatedAt":"2023-11-14T22:13:20Z")").statusSince, 1700000000.0);
    EXPECT_EQ(with(R"("statusUpdatedAt":"2023-11-14T22:13:20.000Z")").statusSince, 1700000000.0);
    EXPECT_FALSE(with(R"("statusUpdatedAt":"yesterday")").statusSince);
    EXPECT_FALSE(with(R"("statusUpdatedAt":true)").statusSince);
    EXPECT_FALSE(with(R"("statusUpdatedAt":null)").statusSince);
    EXPECT_FALSE(with(R"("statusUpdatedAt":1e400)").statusSince);
    EXPECT_FALSE(with(R"("cwd":"")").statusSince);
}

TEST(ClaudeSessionFile, OptionalFieldsMayBeMissingOrOdd) {
    const ClaudeSessionFile bare = with(R"("cwd":1,"name":[],"tmux":{})");
    EXPECT_EQ(bare, (ClaudeSessionFile{"a", 7, "", "", false, std::nullopt, std::nullopt, std::nullopt}));
}

TEST(ClaudeSessionFile, NothingComesOfAHalfWrittenFile) {
    const std::string whole = test::dataFile("agents/claude/sessions/busy.json");
    const std::size_t length = whole.find_last_of('}') + 1;
    for (std::size_t kept = 0; kept < length; ++kept) {
        EXPECT_FALSE(ClaudeSessionFile::parse(std::string_view(whole).substr(0, kept))) << kept;
    }
}
