// SPDX-License-Identifier: MIT
// Jumps to the terminal of a session, through a multiplexer too.
#include "tests/VesloraUI/Claude/Monitors/ClaudeMonitorTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TerminalJumpTest : public ClaudeMonitorTest {};

TEST_F(TerminalJumpTest, JumpRaisesTheTerminalAndCountsAsSeen) {
    putSession("s1", "waiting", now(), R"(,"waitingFor":"permission prompt")");
    platform.hosts.apps[10] = HostApp{99, 7};
    monitor.start();
    monitor.jump("s1");
    EXPECT_THAT(platform.hosts.activated, ElementsAre(HostApp{99, 7}));
    EXPECT_FALSE(waits());
}

TEST_F(TerminalJumpTest, JumpLeadsThroughThePaneThatTheSessionNames) {
    putSession("s1", "waiting", now(), R"(,"waitingFor":"permission prompt","tmux":"-t %9:@0.%3")");
    platform.multiplexer.clients[10] = 77;
    platform.hosts.apps[77] = HostApp{99, 7};
    monitor.start();
    monitor.jump("s1");
    EXPECT_THAT(platform.multiplexer.calls, ElementsAre(FakeMultiplexer::Call{10, "%3"}));
    EXPECT_FALSE(waits()) << "seen at once, whatever the multiplexer does";
    EXPECT_THAT(platform.hosts.activated, IsEmpty());
    platform.advance(0);
    EXPECT_THAT(platform.hosts.activated, ElementsAre(HostApp{99, 7}));
}

TEST_F(TerminalJumpTest, JumpWithoutAnAttachedClientFallsBackToTheProcess) {
    putSession("s1", "busy", now(), R"(,"tmux":"main:@0.%3")");
    platform.hosts.apps[10] = HostApp{98, 6};
    monitor.start();
    monitor.jump("s1");
    platform.advance(0);
    EXPECT_THAT(platform.hosts.activated, ElementsAre(HostApp{98, 6}));
}

TEST_F(TerminalJumpTest, AnOddPaneReachesNoMultiplexer) {
    putSession("s1", "busy", now(), R"(,"tmux":"main:@0.%3;kill-server")");
    platform.hosts.apps[10] = HostApp{98, 6};
    monitor.start();
    monitor.jump("s1");
    EXPECT_THAT(platform.hosts.activated, ElementsAre(HostApp{98, 6}));
    EXPECT_THAT(platform.multiplexer.calls, IsEmpty());
}

TEST_F(TerminalJumpTest, NothingIsRaisedAfterTheEnd) {
    putSession("s1", "busy", now(), R"(,"tmux":"main:@0.%3")");
    platform.multiplexer.clients[10] = 77;
    platform.hosts.apps[77] = HostApp{99, 7};
    monitor.start();
    monitor.jump("s1");
    monitor.stop();
    platform.advance(0);
    EXPECT_THAT(platform.hosts.activated, IsEmpty());
}

TEST_F(TerminalJumpTest, JumpingToAnUnseenSessionStillDismissesIt) {
    monitor.start();
    putEvent("tmp.aaaaaa.json", "Notification", R"(,"notification_type":"permission_prompt")");
    monitor.refresh();
    monitor.jump("s1");
    EXPECT_THAT(platform.hosts.activated, IsEmpty());
    putSession("s1", "busy", now() - 1);
    monitor.refresh();
    EXPECT_FALSE(waits());
}

} // namespace
} // namespace veslora
