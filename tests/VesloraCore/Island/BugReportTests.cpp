// SPDX-License-Identifier: MIT
#include "VesloraCore/Island/BugReport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace veslora {
namespace {

using testing::HasSubstr;
using testing::Not;

TEST(BugReportTests, TellsEachFactOnALineOfItsOwn) {
    BugReport report{.version = "1.2",
                     .toolkit = "6.4.2",
                     .system = "Debian 12, Linux 6.1",
                     .session = "x11",
                     .desktop = "XFCE"};
    report.display = BugReport::Display{
        .windowManager = "Xfwm4",
        .isComposited = true,
        .screens = {{.name = "eDP-1", .width = 1440, .height = 900, .scale = 1.25, .isBuiltIn = true},
                    {.name = "DP-1", .width = 2560, .height = 1440, .scale = 1.5, .hasNotch = true},
                    {.name = "DP-2", .width = 640, .height = 480, .scale = 2}}};
    report.services = {{"org.freedesktop.Notifications", true}, {"org.kde.StatusNotifierWatcher", false}};
    report.agents = {{.name = "Claude Code", .hasHooks = true, .version = "2.1.329"},
                     {.name = "Codex", .areHooksOutdated = true},
                     {.name = "Other"}};
    report.running = R"({"island":"closed"})";
    EXPECT_EQ(text(report), R"(Veslora: 1.2
Qt: 6.4.2
system: Debian 12, Linux 6.1
session: x11
desktop: XFCE
display: X11
window manager: Xfwm4
compositor: yes
screen: eDP-1 1440x900 at 1.25, built in
screen: DP-1 2560x1440 at 1.5, notch
screen: DP-2 640x480 at 2
session bus: yes
service: org.freedesktop.Notifications, there
service: org.kde.StatusNotifierWatcher, missing
agent: Claude Code 2.1.329, hooks installed
agent: Codex unknown, hooks incomplete
agent: Other unknown, no hooks
running: {"island":"closed"}
)");
}

TEST(BugReportTests, SaysWhatIsNotThere) {
    const std::string lines = text(BugReport{});
    EXPECT_THAT(lines, HasSubstr("Veslora: unknown\n"));
    EXPECT_THAT(lines, HasSubstr("display: none\n"));
    EXPECT_THAT(lines, HasSubstr("session bus: none\n"));
    EXPECT_THAT(lines, HasSubstr("running: no\n"));
}

TEST(BugReportTests, WhatComesFromOutsideCannotMakeALineOfItsOwn) {
    const std::string lines = text({.desktop = "a\nrunning: \x1b[31mno" + std::string(5000, 'x')});
    EXPECT_THAT(lines, Not(HasSubstr("\x1b")));
    EXPECT_THAT(lines, Not(HasSubstr("\nrunning: \\")));
    EXPECT_EQ(std::ranges::count(lines, '\n'), 8);
    EXPECT_LT(lines.size(), 600U);
}

} // namespace
} // namespace veslora
