// SPDX-License-Identifier: MIT
#include "VesloraUI/Platform/Trouble.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

const std::error_code none;
const auto full = std::make_error_code(std::errc::no_space_on_device);
const auto denied = std::make_error_code(std::errc::permission_denied);

TEST(TroubleTests, ARepeatedFailureBeginsOnce) {
    Trouble trouble;
    EXPECT_FALSE(trouble.begins(none));
    EXPECT_TRUE(trouble.begins(full));
    EXPECT_FALSE(trouble.begins(full));
}

TEST(TroubleTests, ItBeginsAgainAfterItWentAway) {
    Trouble trouble;
    EXPECT_TRUE(trouble.begins(full));
    EXPECT_FALSE(trouble.begins(none));
    EXPECT_TRUE(trouble.begins(full));
}

TEST(TroubleTests, AnotherReasonIsAnotherFailure) {
    Trouble trouble;
    EXPECT_TRUE(trouble.begins(full));
    EXPECT_TRUE(trouble.begins(denied));
    EXPECT_FALSE(trouble.begins(denied));
}

TEST(TroubleTests, ManyThingsFailEachForItself) {
    Troubles troubles;
    EXPECT_TRUE(troubles.begins("one", full));
    EXPECT_TRUE(troubles.begins("other", full));
    EXPECT_FALSE(troubles.begins("one", full));
    EXPECT_FALSE(troubles.begins("one", none));
    EXPECT_FALSE(troubles.begins("other", full));
    EXPECT_TRUE(troubles.begins("one", full));
}

TEST(TroubleTests, NothingIsKeptOfWhatWorks) {
    Troubles troubles;
    EXPECT_FALSE(troubles.begins("one", none));
    EXPECT_TRUE(troubles.begins("other", full));
    EXPECT_FALSE(troubles.begins("other", none));
    EXPECT_EQ(troubles.size(), 0U);
}

} // namespace
} // namespace veslora
