// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/Hooks/CodexHookTrust.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::IsEmpty;

const std::string hooks = R"({"hooks":{
    "PreToolUse":[{"hooks":[{"command":"foreign"}]},{"hooks":[{"command":"foreign"},{"command":"ours"}]}],
    "PermissionRequest":[{"matcher":"*","hooks":[{"type":"command","command":"asks"}]}],
    "Stop":[{"hooks":[{"command":"foreign"}]}, {"hooks": 3}, 4]}})";

TEST(CodexHookTrustTests, FindsThePlacesOfOurHooks) {
    EXPECT_THAT(CodexHookTrust::placesOf(hooks, {"ours", "asks"}),
                testing::UnorderedElementsAre("pre_tool_use:1:1", "permission_request:0:0"));
}

TEST(CodexHookTrustTests, WhatIsNoConfigurationHasNone) {
    for (const char* text : {"", "{", "[]", "3", R"({"hooks":[]})", R"({"hooks":{"Stop":{}}})", "\xff"}) {
        EXPECT_THAT(CodexHookTrust::placesOf(text, {"ours"}), IsEmpty()) << text;
    }
}

TEST(CodexHookTrustTests, EachPlaceMustBeNamed) {
    const std::string path = "/home/me/.codex/hooks.json";
    const std::string first = "[hooks.state.\"" + path + ":stop:0:0\"]\ntrusted_hash = \"sha256:1\"\n";
    const std::string second = "['hooks'.state.'" + path + ":pre_tool_use:1:1']\n";
    EXPECT_TRUE(CodexHookTrust::namesAll(first, path, {"stop:0:0"}));
    EXPECT_FALSE(CodexHookTrust::namesAll(first, path, {"stop:0:0", "pre_tool_use:1:1"}));
    EXPECT_TRUE(CodexHookTrust::namesAll(first + second, path, {"stop:0:0", "pre_tool_use:1:1"}));
    EXPECT_FALSE(CodexHookTrust::namesAll(first, path, {"stop:0:1"}));
    EXPECT_FALSE(CodexHookTrust::namesAll(first, "/other" + path, {"stop:0:0"}));
    EXPECT_FALSE(CodexHookTrust::namesAll("", path, {"stop:0:0"}));
}

TEST(CodexHookTrustTests, APathIsWrittenAsTheFormatWantsIt) {
    EXPECT_TRUE(CodexHookTrust::namesAll(R"([hooks.state."/a\"b\\c:stop:0:0"])", R"(/a"b\c)", {"stop:0:0"}));
}

} // namespace
} // namespace veslora
