// SPDX-License-Identifier: MIT
#include "VesloraCore/ApprovalAlert.h"

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
          "", "Now Claude needs your permission to use Bash", "claude needs your permission to use Bash"})
        EXPECT_EQ(AlertNotice::message(message), message);
}

TEST(ApprovalAlert, ArmsSixTenthsOfASecondAfterItCameOnScreen) {
    EXPECT_FALSE(ApprovalAlert::isArmed(0, 0));
    EXPECT_FALSE(ApprovalAlert::isArmed(0, 0.59));
    EXPECT_TRUE(ApprovalAlert::isArmed(0, 0.6));
    EXPECT_TRUE(ApprovalAlert::isArmed(0, 3600));
    EXPECT_FALSE(ApprovalAlert::isArmed(100, 50)) << "A clock set back does not arm it.";
}

TEST(ApprovalAlert, FuseBurnsForTwentySeconds) {
    EXPECT_EQ(ApprovalAlert::fuseProgress(100, 100), 1);
    EXPECT_EQ(ApprovalAlert::fuseProgress(100, 105), 0.75);
    EXPECT_EQ(ApprovalAlert::fuseProgress(100, 120), 0);
    EXPECT_EQ(ApprovalAlert::fuseProgress(100, 500), 0) << "It rests there: a late answer is still possible.";
    EXPECT_EQ(ApprovalAlert::fuseProgress(100, 50), 1);
}
