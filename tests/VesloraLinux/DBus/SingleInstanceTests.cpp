// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/SessionBus.h"
#include "VesloraLinux/DBus/SingleInstance.h"
#include "VesloraLinux/System/CommandSocket.h"
#include "VesloraLinux/System/PosixFiles.h"
#include "tests/VesloraLinux/Support/PrivateBus.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"
#include "tests/VesloraLinux/Support/Waiting.h"
#include "tests/support/ManualScheduler.h"

#include <QDBusMessage>
#include <QDBusPendingCall>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <map>
#include <vector>

namespace veslora {
namespace {

using testing::waitUntil;

const SingleInstance::Perform never = [](const CommandLine::Ask&) {
    ADD_FAILURE();
    return CommandOutcome();
};

class SingleInstanceTests : public ::testing::Test {
  protected:
    [[nodiscard]] SupportLock lock(const std::string& directory) {
        return std::get<SupportLock>(SupportLock::take(files, directory));
    }
    /// Leaves without a word, as earlier versions do.
    void knock() const {
        const FileDescriptor directory(open(support.c_str(), O_PATH | O_DIRECTORY));
        EXPECT_TRUE(CommandSocket::connect(directory));
    }

    testing::CoreApplication application;
    testing::TemporaryFolder folder;
    PosixFiles files;
    ManualScheduler time;
    std::string support = folder.path("data/Veslora");
    std::vector<CommandLine::Ask> asked;
    SingleInstance::Perform perform = [this](const CommandLine::Ask& ask) {
        asked.push_back(ask);
        return CommandOutcome();
    };
};

TEST_F(SingleInstanceTests, AnEarlierVersionThatConnectsAndGoesOpensTheSettings) {
    SingleInstance first(time, lock(support), {});
    ASSERT_TRUE(first.claim(perform));
    knock();
    EXPECT_TRUE(waitUntil([&] { return !asked.empty(); }));
    EXPECT_EQ(asked, std::vector{CommandLine::Ask{Command::settings}});
}

TEST_F(SingleInstanceTests, KeepsItsSocketToItselfAndLeavesNoneBehind) {
    {
        SingleInstance first(time, lock(support), {});
        ASSERT_TRUE(first.claim(perform));
        EXPECT_EQ(files.stat(support + "/socket", Links::refuse)->mode, 0600U);
    }
    EXPECT_FALSE(files.stat(support + "/socket", Links::refuse));
}

TEST_F(SingleInstanceTests, TakesOverTheSocketOfOneThatWasEndedByForce) {
    ASSERT_FALSE(files.makeDirectory(support, 0700));
    const int left = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::snprintf(address.sun_path, sizeof address.sun_path, "%s/socket", support.c_str());
    ASSERT_EQ(bind(left, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    close(left);
    SingleInstance first(time, lock(support), {});
    ASSERT_TRUE(first.claim(perform));
    knock();
    EXPECT_TRUE(waitUntil([&] { return asked.size() == 1; }));
}

TEST_F(SingleInstanceTests, IsReachedThroughAPathLongerThanAnAddress) {
    support = folder.path(std::string(100, 'a') + "/" + std::string(100, 'b'));
    SingleInstance first(time, lock(support), {});
    ASSERT_TRUE(first.claim(perform));
    knock();
    EXPECT_TRUE(waitUntil([&] { return asked.size() == 1; }));
}

class SingleInstanceBusTests : public SingleInstanceTests {
  protected:
    testing::PrivateBus bus;
    std::string other = folder.path("other/Veslora");
};

TEST_F(SingleInstanceBusTests, IsReachedOverTheBus) {
    SingleInstance first(time, lock(support), bus.connect());
    ASSERT_TRUE(first.claim(perform));
    // The socket is not needed then.
    ASSERT_FALSE(files.remove(support + "/socket"));
    QDBusConnection asker = bus.connect();
    asker.asyncCall(QDBusMessage::createMethodCall("org.veslora.Veslora", "/org/veslora/Veslora",
                                                   "org.veslora.Veslora", "OpenSettings"));
    EXPECT_TRUE(waitUntil([&] { return asked.size() == 1; }));
}

TEST_F(SingleInstanceBusTests, AStartWithAnotherSupportDirectoryIsASecondOneToo) {
    SingleInstance first(time, lock(support), bus.connect());
    ASSERT_TRUE(first.claim(perform));
    SingleInstance second(time, lock(other), bus.connect());
    EXPECT_FALSE(second.claim(never));
    EXPECT_FALSE(files.stat(other + "/socket", Links::refuse)) << "nobody is reached there";
}

TEST_F(SingleInstanceBusTests, GivesTheNameBackWhenItEnds) {
    {
        SingleInstance first(time, lock(support), bus.connect());
        ASSERT_TRUE(first.claim(never));
    }
    SingleInstance second(time, lock(other), bus.connect());
    EXPECT_TRUE(second.claim(perform));
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
