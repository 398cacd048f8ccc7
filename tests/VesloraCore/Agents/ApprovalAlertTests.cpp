// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/ApprovalAlert.h"

#include <gtest/gtest.h>

using namespace veslora;

TEST(AlertNotice, ShortensTheLongSentence) {
    EXPECT_EQ(AlertNotice::message("Claude needs your permission to use Bash"), "Wants to use Bash");
    EXPECT_EQ(AlertNotice::message("Claude needs your permission to use "), "Wants to use ");
}

TEST(AlertNotice, TodaysMessageDoesNotNameTheAgentThatTheIslandNamesAlready) {
    EXPECT_EQ(AlertNotice::message("Claude needs your permission"), "Needs your permission");
}

TEST(AlertNotice, AnyOtherMessageStandsAsItIs) {
    for (const char* message :
         {"Claude needs your permission.", "claude needs your permission", "Claude is waiting for your input",
          "", "Now Claude needs your permission to use Bash", "claude needs your permission to use Bash"}) {
        EXPECT_EQ(AlertNotice::message(message), message);
    }
}

TEST(ApprovalAlert, FuseBurnsForTwentySeconds) {
    EXPECT_EQ(ApprovalAlert::fuseProgress(120, 100), 1);
    EXPECT_EQ(ApprovalAlert::fuseProgress(120, 105), 0.75);
    EXPECT_EQ(ApprovalAlert::fuseProgress(120, 120), 0);
    EXPECT_EQ(ApprovalAlert::fuseProgress(120, 500), 0);
    EXPECT_EQ(ApprovalAlert::fuseProgress(120, 50), 1);
}
