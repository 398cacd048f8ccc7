// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/SessionBus.h"
#include "VesloraLinux/DBus/SingleInstance.h"
#include "VesloraLinux/System/PosixFiles.h"
#include "tests/VesloraLinux/Support/PrivateBus.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"
#include "tests/VesloraLinux/Support/Waiting.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QElapsedTimer>

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <map>

namespace veslora {
namespace {

using testing::waitUntil;

const std::function<void()> never = [] { ADD_FAILURE(); };

class SingleInstanceTests : public ::testing::Test {
  protected:
    testing::CoreApplication application;
    testing::TemporaryFolder folder;
    PosixFiles files;
    std::string support = folder.path("data/Veslora");
    int opened = 0;
    std::function<void()> open = [this] { ++opened; };
};

TEST_F(SingleInstanceTests, LetsTheFirstRunAndMakesItOpenItsSettingsForTheSecond) {
    SingleInstance first(files, support, {});
    EXPECT_TRUE(first.claim(open));
    SingleInstance second(files, support, {});
    EXPECT_FALSE(second.claim(never));
    EXPECT_TRUE(waitUntil([&] { return opened == 1; }));
    SingleInstance third(files, support, {});
    EXPECT_FALSE(third.claim(never));
    EXPECT_TRUE(waitUntil([&] { return opened == 2; }));
}

TEST_F(SingleInstanceTests, KeepsItsFolderPrivateAndLeavesNoSocketBehind) {
    {
        SingleInstance first(files, support, {});
        ASSERT_TRUE(first.claim(open));
        EXPECT_EQ(files.stat(support, Links::refuse)->mode, 0700U);
        EXPECT_EQ(files.stat(support + "/lock", Links::refuse)->mode, 0600U);
        EXPECT_TRUE(files.stat(support + "/socket", Links::refuse));
    }
    EXPECT_FALSE(files.stat(support + "/socket", Links::refuse));
}

TEST_F(SingleInstanceTests, LetsTheNextOneRunWhenTheFirstHasEnded) {
    {
        SingleInstance first(files, support, {});
        ASSERT_TRUE(first.claim(never));
    }
    SingleInstance second(files, support, {});
    EXPECT_TRUE(second.claim(open));
}

TEST_F(SingleInstanceTests, TakesOverTheSocketOfOneThatWasEndedByForce) {
    ASSERT_FALSE(files.makeDirectory(support, 0700));
    const int left = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::snprintf(address.sun_path, sizeof address.sun_path, "%s/socket", support.c_str());
    ASSERT_EQ(bind(left, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    close(left);
    SingleInstance first(files, support, {});
    ASSERT_TRUE(first.claim(open));
    SingleInstance second(files, support, {});
    EXPECT_FALSE(second.claim(never));
    EXPECT_TRUE(waitUntil([&] { return opened == 1; }));
}

TEST_F(SingleInstanceTests, ReachesTheFirstThroughAPathLongerThanAnAddress) {
    support = folder.path(std::string(100, 'a') + "/" + std::string(100, 'b'));
    SingleInstance first(files, support, {});
    ASSERT_TRUE(first.claim(open));
    SingleInstance second(files, support, {});
    EXPECT_FALSE(second.claim(never));
    EXPECT_TRUE(waitUntil([&] { return opened == 1; }));
}

TEST_F(SingleInstanceTests, RunsWhereNoLockCanBeMade) {
    folder.put("file", "");
    SingleInstance only(files, folder.path("file/Veslora"), {});
    EXPECT_TRUE(only.claim(open));
}

TEST_F(SingleInstanceTests, FollowsNoLinkInPlaceOfTheLock) {
    ASSERT_FALSE(files.makeDirectory(support, 0700));
    ASSERT_FALSE(files.makeLink(folder.path("target"), support + "/lock"));
    SingleInstance only(files, support, {});
    EXPECT_TRUE(only.claim(open));
    EXPECT_FALSE(files.stat(folder.path("target"), Links::refuse));
}

class SingleInstanceBusTests : public SingleInstanceTests {
  protected:
    testing::PrivateBus bus;
    std::string other = folder.path("other/Veslora");
};

TEST_F(SingleInstanceBusTests, SecondStartReachesTheFirstOverTheBus) {
    SingleInstance first(files, support, bus.connect());
    ASSERT_TRUE(first.claim(open));
    // The socket is not needed then.
    ASSERT_FALSE(files.remove(support + "/socket"));
    // Nobody answers while this thread waits, so the second asks from a connection of its own without a
    // reply.
    QDBusConnection asker = bus.connect();
    asker.asyncCall(QDBusMessage::createMethodCall("org.veslora.Veslora", "/org/veslora/Veslora",
                                                   "org.veslora.Veslora", "OpenSettings"));
    EXPECT_TRUE(waitUntil([&] { return opened == 1; }));
}

TEST_F(SingleInstanceBusTests, AStartWithAnotherSupportDirectoryIsASecondOneToo) {
    SingleInstance first(files, support, bus.connect());
    ASSERT_TRUE(first.claim(open));
    SingleInstance second(files, other, bus.connect());
    EXPECT_FALSE(second.claim(never));
    EXPECT_TRUE(waitUntil([&] { return opened >= 1; }));
}

TEST_F(SingleInstanceBusTests, GivesTheNameBackWhenItEnds) {
    {
        SingleInstance first(files, support, bus.connect());
        ASSERT_TRUE(first.claim(never));
    }
    SingleInstance second(files, other, bus.connect());
    EXPECT_TRUE(second.claim(open));
}

TEST(SessionBusTests, IsThereOnlyWhereTheEnvironmentOrTheRuntimeDirectoryNamesIt) {
    const testing::TemporaryFolder runtime;
    std::map<std::string, std::string> variables;
    const auto environment = [&](const std::string& name) -> std::optional<std::string> {
        return variables.contains(name) ? std::optional(variables[name]) : std::nullopt;
    };
    EXPECT_FALSE(SessionBus::isNamed(environment));
    variables["XDG_RUNTIME_DIR"] = runtime.path();
    EXPECT_FALSE(SessionBus::isNamed(environment));
    runtime.put("bus", "no socket");
    EXPECT_FALSE(SessionBus::isNamed(environment));
    variables["DBUS_SESSION_BUS_ADDRESS"] = "";
    EXPECT_FALSE(SessionBus::isNamed(environment));
    variables["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=/somewhere";
    EXPECT_TRUE(SessionBus::isNamed(environment));
    variables["DBUS_SESSION_BUS_ADDRESS"] = "disabled:";
    EXPECT_FALSE(SessionBus::isNamed(environment));
}

TEST(SessionBusTests, FindsTheBusAtItsUsualPlace) {
    const testing::TemporaryFolder runtime;
    const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::snprintf(address.sun_path, sizeof address.sun_path, "%s/bus", runtime.path().c_str());
    ASSERT_EQ(bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    close(listener);
    EXPECT_TRUE(SessionBus::isNamed([&](const std::string& name) -> std::optional<std::string> {
        return name == "XDG_RUNTIME_DIR" ? std::optional(runtime.path()) : std::nullopt;
    }));
}

} // namespace
} // namespace veslora
