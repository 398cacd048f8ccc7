// SPDX-License-Identifier: MIT
// The scripts' texts themselves.
#include "VesloraCore/Agents/Hooks/HookScripts.h"
#include "VesloraCore/Agents/Hooks/SupportNames.h"
#include "VesloraCore/Text/ShellQuote.h"
#include "tests/hooks/HookRoom.h"

#include <gtest/gtest.h>

#include <cstdlib>

using namespace veslora;
using namespace veslora::test;

TEST(HookTexts, AreAllThere) {
    for (const std::string_view name :
         {SupportNames::claudeHook, SupportNames::claudePermission, SupportNames::claudeStatusLine,
          SupportNames::codexHook, SupportNames::codexPermission}) {
        EXPECT_TRUE(HookScripts::text(name).starts_with("#!/bin/sh\n")) << name;
        EXPECT_TRUE(HookScripts::text(name).ends_with("exit 0\n")) << name;
        EXPECT_EQ(HookScripts::text(name).find('@'), std::string_view::npos)
            << name << " has an unfilled word";
    }
    EXPECT_EQ(HookScripts::text("other.sh"), "");
}

TEST(HookTexts, ShellcheckFindsNothing) {
    ASSERT_EQ(std::system("shellcheck --version >/dev/null 2>&1"), 0) << "shellcheck is not installed";
    const HookRoom room(shells().front());
    for (const HookScripts::Script& script : HookScripts::all()) {
        const std::string path = shellQuoted(room.path(std::string(script.fileName)));
        EXPECT_EQ(std::system(("shellcheck " + path).c_str()), 0) << script.fileName;
        EXPECT_EQ(std::system(("shellcheck -s sh " + path).c_str()), 0) << script.fileName;
    }
}

TEST(HookTexts, RunByTheirFirstLineToo) {
    HookRoom room({"none", {"/usr/bin/env"}, false});
    EXPECT_EQ(room.run("claude-hook.sh", "{}"), silence);
    EXPECT_EQ(room.names("claude-spool").size(), 1u);
}
