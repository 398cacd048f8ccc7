// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/ServiceManager.h"
#include "tests/VesloraLinux/Support/ManagerSocket.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>

namespace veslora {
namespace {

using namespace std::chrono_literals;
using testing::ManagerSocket;

ServiceManager managerAt(const std::string& socket) {
    return {{.socket = socket, .watchdogMicroseconds = {}, .watchdogProcess = {}}, getpid()};
}

std::optional<double> interval(const std::string& microseconds, const std::optional<std::string>& process) {
    return ServiceManager(
               {.socket = "/run/manager", .watchdogMicroseconds = microseconds, .watchdogProcess = process},
               42)
        .watchdogInterval();
}

TEST(ServiceManagerTests, TellsASocketAtAPath) {
    const testing::TemporaryFolder folder;
    const ManagerSocket socket(folder.path("notify"));
    EXPECT_FALSE(managerAt(folder.path("notify")).tell("READY=1"));
    EXPECT_EQ(socket.next(1min), "READY=1");
}

TEST(ServiceManagerTests, TellsAnAbstractSocketByItsExactName) {
    const std::string name = "@veslora-test-" + std::to_string(getpid());
    const ManagerSocket socket(name);
    EXPECT_FALSE(managerAt(name).tell("WATCHDOG=1"));
    EXPECT_EQ(socket.next(1min), "WATCHDOG=1");
    EXPECT_TRUE(managerAt(name + "x").tell("WATCHDOG=1"));
    EXPECT_EQ(socket.next(0ms), std::nullopt);
}

TEST(ServiceManagerTests, WithoutAManagerThereIsNothingToTell) {
    for (const std::string& socket :
         {std::string(), std::string("@"), std::string("relative"), std::string("vsock:2:1"),
          "/" + std::string(200, 'x'), "@" + std::string(200, 'x')}) {
        EXPECT_FALSE(managerAt(socket).isThere()) << socket.substr(0, 12);
        EXPECT_FALSE(managerAt(socket).tell("READY=1"));
    }
}

TEST(ServiceManagerTests, AManagerThatHasGoneOrTakesNothingIsNotWaitedFor) {
    const testing::TemporaryFolder folder;
    EXPECT_EQ(managerAt(folder.path("none")).tell("READY=1"), std::errc::no_such_file_or_directory);
    const ManagerSocket socket(folder.path("notify"));
    const ServiceManager manager = managerAt(folder.path("notify"));
    std::error_code error;
    for (int told = 0; told < 100'000 && !error; ++told) {
        error = manager.tell("WATCHDOG=1");
    }
    EXPECT_EQ(error, std::errc::resource_unavailable_try_again);
}

TEST(ServiceManagerTests, AnIntervalIsANumberAndForThisProcess) {
    EXPECT_EQ(interval("30000000", std::nullopt), 30.0);
    EXPECT_EQ(interval("500000", "42"), 0.5);
    EXPECT_EQ(interval("30000000", "43"), std::nullopt);
    EXPECT_EQ(interval("30000000", "x"), std::nullopt);
    for (const char* text : {"", "0", "-5", "1e6", "30 ", "99999999999999999999"}) {
        EXPECT_EQ(interval(text, std::nullopt), std::nullopt) << text;
    }
    EXPECT_EQ(ServiceManager({.socket = {}, .watchdogMicroseconds = "1000", .watchdogProcess = {}}, 42)
                  .watchdogInterval(),
              std::nullopt);
}

TEST(ServiceManagerTests, WhatTheProgramStartsIsNoService) {
    ASSERT_EQ(setenv("NOTIFY_SOCKET", "/run/manager", 1), 0);
    ASSERT_EQ(setenv("WATCHDOG_USEC", "2000000", 1), 0);
    ASSERT_EQ(setenv("WATCHDOG_PID", std::to_string(getpid()).c_str(), 1), 0);
    const ServiceManager manager = ServiceManager::fromEnvironment();
    EXPECT_TRUE(manager.isThere());
    EXPECT_EQ(manager.watchdogInterval(), 2.0);
    for (const char* name : {"NOTIFY_SOCKET", "WATCHDOG_USEC", "WATCHDOG_PID"}) {
        EXPECT_EQ(getenv(name), nullptr) << name;
    }
    EXPECT_FALSE(ServiceManager::fromEnvironment().isThere());
}

} // namespace
} // namespace veslora
