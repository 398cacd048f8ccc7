// SPDX-License-Identifier: MIT
#include "VesloraCore/ApprovalAlert.h"

#include <gtest/gtest.h>

using namespace veslora;

TEST(AlertNotice, ShortensTheLongSentence) {
    EXPECT_EQ(AlertNotice::message("Claude needs your permission to use Bash"), "Wants to use Bash");
    EXPECT_EQ(AlertNotice::message("Claude needs your permission to use "), "Wants to use ");
}

TEST(AlertNotice, AnyOtherMessageStandsAsItIs) {
    for (const char* message :
         {"Claude needs your permission", "Claude is waiting for your input", "",
          "Now Claude needs your permission to use Bash", "claude needs your permission to use Bash"})
        EXPECT_EQ(AlertNotice::message(message), message);
}

TEST(ApprovalAlert, FuseBurnsForTwentySeconds) {
    EXPECT_EQ(ApprovalAlert::fuseProgress(100, 100), 1);
    EXPECT_EQ(ApprovalAlert::fuseProgress(100, 105), 0.75);
    EXPECT_EQ(ApprovalAlert::fuseProgress(100, 120), 0);
    EXPECT_EQ(ApprovalAlert::fuseProgress(100, 500), 0) << "It rests there: a late answer is still possible.";
    EXPECT_EQ(ApprovalAlert::fuseProgress(100, 50), 1);
}
