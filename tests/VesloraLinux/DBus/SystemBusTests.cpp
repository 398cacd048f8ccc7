// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/SystemBus.h"
#include "tests/VesloraLinux/Support/PrivateBus.h"
#include "tests/VesloraLinux/Support/Waiting.h"
#include "tests/support/ManualScheduler.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>

namespace veslora {
namespace {

class SystemBusTests : public ::testing::Test {
  protected:
    /// Writes down what it is told.
    void ask() {
        systemBus.whenConnected(
            receiver, [this](const SystemBus::Connection& connection) { told += connection ? 'c' : 'n'; });
    }

    testing::CoreApplication application;
    testing::PrivateBus bus;
    ManualScheduler time;
    SystemBus::Connection answer = bus.connect();
    int attempts = 0;
    SystemBus systemBus{time, [this] {
                            ++attempts;
                            return answer;
                        }};
    QObject receiver;
    std::string told;
};

TEST_F(SystemBusTests, ConnectsInTheBackgroundAndOnlyOnce) {
    EXPECT_EQ(attempts, 0);
    ask();
    ask();
    EXPECT_EQ(told, "") << "nobody waits for the bus";
    time.runBackground();
    EXPECT_EQ(told, "cc");
    ask();
    EXPECT_EQ(told, "ccc") << "it is open already";
    EXPECT_EQ(attempts, 1);
}

TEST_F(SystemBusTests, TriesAgainWithTheNextCall) {
    const auto later = std::exchange(answer, std::nullopt);
    ask();
    time.runBackground();
    EXPECT_EQ(told, "n");
    time.runBackground();
    EXPECT_EQ(attempts, 1) << "nobody asks";
    answer = later;
    ask();
    time.runBackground();
    EXPECT_EQ(told, "nc");
}

TEST_F(SystemBusTests, WhoAsksWhileBeingToldIsToldToo) {
    answer.reset();
    systemBus.whenConnected(receiver, [this](const SystemBus::Connection& /*none*/) { ask(); });
    time.runBackground();
    EXPECT_EQ(told, "");
    time.runBackground();
    EXPECT_EQ(told, "n");
}

TEST_F(SystemBusTests, TellsNobodyWhoIsGone) {
    auto gone = std::make_unique<QObject>();
    systemBus.whenConnected(*gone, [this](const SystemBus::Connection& /*connection*/) { told += '!'; });
    ask();
    gone.reset();
    time.runBackground();
    EXPECT_EQ(told, "c");
}

TEST_F(SystemBusTests, MayGoWhileItConnects) {
    auto shortLived = std::make_unique<SystemBus>(time, [this] { return answer; });
    shortLived->whenConnected(receiver, [this](const SystemBus::Connection& /*connection*/) { told += '!'; });
    shortLived.reset();
    time.runBackground();
    EXPECT_EQ(told, "");
}

TEST_F(SystemBusTests, IsOnlyLookedForWhereItIsNamed) {
    std::map<std::string, std::string> variables;
    const auto environment = [&variables](const std::string& name) -> std::optional<std::string> {
        const auto found = variables.find(name);
        return found == variables.end() ? std::nullopt : std::optional(found->second);
    };
    variables["DBUS_SYSTEM_BUS_ADDRESS"] = "unix:path=/somewhere";
    EXPECT_TRUE(SystemBus::isNamed(environment));
    variables["DBUS_SYSTEM_BUS_ADDRESS"] = "disabled:";
    EXPECT_FALSE(SystemBus::isNamed(environment));
}

} // namespace
} // namespace veslora
