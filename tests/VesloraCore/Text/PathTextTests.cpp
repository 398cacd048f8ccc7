// SPDX-License-Identifier: MIT
#include "VesloraCore/Text/PathText.h"

#include <gtest/gtest.h>

using namespace veslora;

TEST(PathText, LastComponentLeavesClosingSlashesOut) {
    EXPECT_EQ(PathText::lastComponent("/Users/me/proj/"), "proj");
    EXPECT_EQ(PathText::lastComponent("/Users/me/proj"), "proj");
    EXPECT_EQ(PathText::lastComponent("proj///"), "proj");
    EXPECT_EQ(PathText::lastComponent("/"), "/");
    EXPECT_EQ(PathText::lastComponent("///"), "/");
    EXPECT_EQ(PathText::lastComponent(""), "");
}
