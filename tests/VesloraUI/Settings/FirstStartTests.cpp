// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Monitors/AgentsModel.h"
#include "VesloraUI/Claude/Spool/SupportDirectory.h"
#include "VesloraUI/Settings/FirstStart.h"
#include "tests/VesloraUI/Fixtures/FakeMonitor.h"
#include "tests/VesloraUI/Fixtures/FakePlatform.h"
#include "tests/support/FaultInjectingFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

class FirstStartTest : public testing::Test {
  protected:
    FirstStartTest() { support.create(); }
    /// As one that begins now finds it.
    [[nodiscard]] bool start() {
        const Defaults settings(platform.disk, platform.watches, platform.paths.configuration);
        return takeFirstStart(support, settings, agents);
    }
    void storeASetting(const std::string& text) {
        platform.disk.put(platform.paths.configuration + "/settings.json", text);
    }

    FakePlatform platform;
    FaultInjectingFiles files{platform.disk};
    SupportDirectory support{files, platform.paths.support, platform.paths.runtime};
    FakeMonitor claude;
    FakeMonitor codex{AgentKind::codex};
    AgentsModel agents{{&claude, &codex}};
};

TEST_F(FirstStartTest, IsTakenOnceAndNeverAgain) {
    EXPECT_TRUE(start());
    EXPECT_FALSE(start());
    EXPECT_FALSE(start());
}

TEST_F(FirstStartTest, IsNoneWithTheHooksOfEitherAgentAlsoWithOldOnes) {
    claude.setHooks(true, false);
    EXPECT_FALSE(start());
    claude.setHooks(false, false);
    EXPECT_FALSE(start()) << "who takes the hooks out again knows where they were put in";
}

TEST_F(FirstStartTest, IsNoneWithWhatAnEarlierVersionLeft) {
    codex.setHooks(false, true);
    EXPECT_FALSE(start());
}

TEST_F(FirstStartTest, IsNoneWhereASettingWasStoredHoweverItReads) {
    storeASetting("{}");
    EXPECT_FALSE(start());
}

TEST_F(FirstStartTest, IsNoneWhereTheSettingsAreDamaged) {
    storeASetting("no settings");
    EXPECT_FALSE(start());
}

TEST_F(FirstStartTest, IsNoneWhereItCouldNotBeRemembered) {
    files.writeError = std::errc::no_space_on_device;
    EXPECT_FALSE(start());
    EXPECT_FALSE(start());
    files.writeError.reset();
    EXPECT_TRUE(start()) << "nothing was shown so far";
}

TEST_F(FirstStartTest, IsNoneWithoutASupportDirectory) {
    const SupportDirectory missing(files, "/home/me/missing", "/home/me/missing");
    const Defaults settings(platform.disk, platform.watches, platform.paths.configuration);
    EXPECT_FALSE(takeFirstStart(missing, settings, agents));
}

TEST_F(FirstStartTest, OneAgentAloneIsEnough) {
    const AgentsModel alone({&claude});
    const Defaults settings(platform.disk, platform.watches, platform.paths.configuration);
    EXPECT_TRUE(takeFirstStart(support, settings, alone));
}

} // namespace
} // namespace veslora
