// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/ProcessTree.h"
#include "VesloraLinux/X11/X11HostApplications.h"
#include "tests/VesloraLinux/Support/Bystander.h"
#include "tests/VesloraLinux/Support/Desktop.h"
#include "tests/VesloraLinux/Support/Waiting.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace veslora {
namespace {

using testing::Bystander;
using testing::Program;
using testing::waitUntil;

class X11HostApplicationsTests : public ::testing::Test {
  protected:
    std::int32_t parent() { return ProcessTree::statOf(getpid())->parent; }
    bool isActive(const Bystander& window) {
        return desktop.rootValues("_NET_ACTIVE_WINDOW") == std::vector<std::uint32_t>{window.window()};
    }

    testing::Desktop desktop;
    X11HostApplications applications{desktop.connection()};
};

TEST_F(X11HostApplicationsTests, FindsTheTerminalThatAShellRunsIn) {
    // The line is what the shell says of itself once it runs inside the terminal.
    const Program terminal({"xterm", "-e", "sh", "-c", "echo $$ >&9; exec sleep 1000"}, 9);
    const auto shell = static_cast<std::int32_t>(std::stol(terminal.nextLine()));
    EXPECT_TRUE(waitUntil([&] { return applications.hostAppOf(shell).has_value(); }));
    const auto app = applications.hostAppOf(shell);
    ASSERT_TRUE(app);
    EXPECT_EQ(app->pid, terminal.pid());
    EXPECT_EQ(applications.hostAppOf(terminal.pid()), app);
    EXPECT_TRUE(waitUntil([&] { return applications.isFrontmost(shell); }));
    const Bystander other({.pid = 1});
    EXPECT_TRUE(waitUntil([&] { return !applications.isFrontmost(shell); }));
    applications.activate(*app);
    EXPECT_TRUE(waitUntil([&] { return applications.isFrontmost(shell); }));
}

TEST_F(X11HostApplicationsTests, FindsNothingForAProcessWithoutAWindowAbove) {
    EXPECT_EQ(applications.hostAppOf(getpid()), std::nullopt);
    EXPECT_EQ(applications.hostAppOf(0), std::nullopt);
    EXPECT_EQ(applications.hostAppOf(-5), std::nullopt);
    EXPECT_FALSE(applications.isFrontmost(getpid()));
}

TEST_F(X11HostApplicationsTests, PrefersTheWindowThatLiesOnTop) {
    const Bystander first({.frame = {0, 0, 300, 300}, .pid = getpid()});
    EXPECT_TRUE(waitUntil([&] { return isActive(first); }));
    const Bystander second({.frame = {400, 0, 300, 300}, .pid = getpid()});
    EXPECT_TRUE(waitUntil([&] { return isActive(second); }));
    EXPECT_EQ(applications.hostAppOf(getpid()), (HostApp{getpid(), second.window()}));
    applications.activate({getpid(), first.window()});
    EXPECT_TRUE(waitUntil([&] { return isActive(first); }));
    EXPECT_TRUE(waitUntil([&] {
        return applications.hostAppOf(getpid()) == HostApp{getpid(), first.window()};
    }));
}

TEST_F(X11HostApplicationsTests, WalksUpToAParent) {
    const Bystander window({.pid = parent()});
    EXPECT_TRUE(waitUntil([&] { return isActive(window); }));
    EXPECT_EQ(applications.hostAppOf(getpid()), (HostApp{parent(), window.window()}));
    EXPECT_TRUE(applications.isFrontmost(getpid()));
}

TEST_F(X11HostApplicationsTests, WalksTenStepsAndNoFurther) {
    // Nested shells, each the child of the one before: the last says its own id.
    std::string command = "echo $$ >&9; sleep 1000 & wait";
    for (int level = 0; level < 10; ++level) {
        setenv(("LEVEL" + std::to_string(level)).c_str(), command.c_str(), 1);
        command = "sh -c \"$LEVEL" + std::to_string(level) + "\"; true";
    }
    const Program outermost({"sh", "-c", command}, 9);
    const auto innermost = static_cast<std::int32_t>(std::stol(outermost.nextLine()));
    std::int32_t ninthParent = innermost;
    for (int step = 0; step < 9; ++step) {
        ninthParent = ProcessTree::statOf(ninthParent)->parent;
    }
    const std::int32_t tenthParent = ProcessTree::statOf(ninthParent)->parent;
    EXPECT_EQ(tenthParent, outermost.pid());
    {
        const Bystander tooFar({.pid = tenthParent});
        EXPECT_TRUE(waitUntil([&] { return isActive(tooFar); }));
        EXPECT_EQ(applications.hostAppOf(innermost), std::nullopt);
    }
    const Bystander near({.pid = ninthParent});
    EXPECT_TRUE(waitUntil([&] { return isActive(near); }));
    EXPECT_EQ(applications.hostAppOf(innermost), (HostApp{ninthParent, near.window()}));
}

TEST_F(X11HostApplicationsTests, TakesNoPanelForAHostAndNoOtherMachinesWindow) {
    const Bystander bar({.frame = {0, 0, 1600, 30}, .pid = getpid(), .type = "_NET_WM_WINDOW_TYPE_DOCK"});
    const Bystander remote({.pid = getpid(), .machine = "some.other.machine"});
    EXPECT_TRUE(waitUntil([&] { return desktop.rootValues("_NET_CLIENT_LIST").size() == 2; }));
    EXPECT_EQ(applications.hostAppOf(getpid()), std::nullopt);
    EXPECT_FALSE(applications.isFrontmost(getpid()));
}

TEST_F(X11HostApplicationsTests, BringsBackAWindowThatWasPutAway) {
    Bystander window({.pid = getpid()});
    EXPECT_TRUE(waitUntil([&] { return isActive(window); }));
    window.iconify();
    ASSERT_TRUE(waitUntil([&] { return !window.isViewable(); }));
    applications.activate({getpid(), window.window()});
    EXPECT_TRUE(waitUntil([&] { return window.isViewable() && isActive(window); }));
}

TEST_F(X11HostApplicationsTests, ActivatesAnotherWindowWhenTheNamedOneHasGone) {
    std::uint64_t gone = 0;
    {
        const Bystander first({.pid = getpid()});
        gone = first.window();
    }
    const Bystander second({.pid = getpid()});
    const Bystander foreign({.pid = 1});
    ASSERT_TRUE(waitUntil([&] { return isActive(foreign); }));
    applications.activate({getpid(), gone});
    EXPECT_TRUE(waitUntil([&] { return isActive(second); }));
    // Nothing is left to activate: nothing happens.
    applications.activate({4711, gone});
}

} // namespace
} // namespace veslora
