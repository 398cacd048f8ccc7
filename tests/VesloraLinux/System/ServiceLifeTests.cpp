// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/ServiceLife.h"
#include "tests/support/LogRecorder.h"
#include "tests/support/ManualScheduler.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace veslora {
namespace {

using ::testing::ElementsAre;

class ServiceLifeTests : public ::testing::Test {
  protected:
    void begin(std::optional<double> interval) {
        life.emplace(time, interval, [this](std::string_view lines) {
            said.emplace_back(lines);
            return error;
        });
    }
    [[nodiscard]] auto beats() const { return std::ranges::count(said, "WATCHDOG=1"); }

    ManualScheduler time;
    std::vector<std::string> said;
    std::error_code error;
    std::optional<ServiceLife> life;
};

TEST_F(ServiceLifeTests, TellsThatItIsReadyLivesAndStops) {
    begin(30);
    EXPECT_THAT(said, ElementsAre("READY=1", "WATCHDOG=1"));
    time.advance(60);
    EXPECT_EQ(beats(), 5) << "twice within each interval";
    life->stop();
    EXPECT_EQ(said.back(), "STOPPING=1");
    const auto before = said.size();
    time.advance(60);
    EXPECT_EQ(said.size(), before);
}

TEST_F(ServiceLifeTests, WithoutAWatchdogItNeverWakesUp) {
    begin(std::nullopt);
    EXPECT_EQ(time.pending(), 0U);
    life->stop();
    EXPECT_THAT(said, ElementsAre("READY=1", "STOPPING=1"));
}

TEST_F(ServiceLifeTests, WhereAnotherVersionGoesOnNothingStops) {
    begin(30);
    life.reset();
    time.advance(60);
    EXPECT_THAT(said, ElementsAre("READY=1", "WATCHDOG=1"));
}

TEST_F(ServiceLifeTests, AHeldMainThreadSaysNothingAndMakesUpForNothing) {
    begin(30);
    time.suspend(300);
    EXPECT_EQ(beats(), 1);
    time.advance(0);
    EXPECT_LE(beats(), 2);
}

TEST_F(ServiceLifeTests, AManagerThatCantBeReachedIsLoggedOnce) {
    const testing::LogRecorder recorder;
    error = std::make_error_code(std::errc::connection_refused);
    begin(2);
    time.advance(60);
    EXPECT_EQ(recorder.warnings().size(), 1U);
    EXPECT_GT(beats(), 50) << "it may come back";
}

} // namespace
} // namespace veslora
