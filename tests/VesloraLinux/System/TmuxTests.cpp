// SPDX-License-Identifier: MIT
// The way through a real tmux server to the pane of a session.
#include "tests/VesloraLinux/System/TmuxTest.h"
#include "tests/support/OneLine.h"

namespace veslora {
namespace {

using testing::AttachedClient;
using testing::LogRecorder;
using testing::oneLine;
using testing::TmuxTest;
using testing::waitUntil;

TEST_F(TmuxTest, SelectsTheWindowAndThePaneAndTellsTheClient) {
    startServer();
    ASSERT_EQ(activePaneOf("main"), "%2");
    const AttachedClient client(socket, "main");
    ASSERT_TRUE(showsItself(client));
    EXPECT_EQ(show(multiplexer, processIn("%0"), "%0"), client.pid());
    EXPECT_EQ(activePaneOf("main"), "%0");
    EXPECT_EQ(show(multiplexer, processIn("%1"), "main:@0.%1"), client.pid());
    EXPECT_EQ(activePaneOf("main"), "%1");
}

TEST_F(TmuxTest, TheProcessKnowsItsPaneItself) {
    startServer();
    const AttachedClient client(socket, "main");
    ASSERT_TRUE(showsItself(client));
    EXPECT_EQ(show(multiplexer, processIn("%1"), std::nullopt), client.pid());
    EXPECT_EQ(activePaneOf("main"), "%1");
}

TEST_F(TmuxTest, AClientOfAnotherSessionIsLeftAlone) {
    startServer();
    tmux({"new-session", "-d", "-s", "other", "-x", "80", "-y", "24", "exec sleep 1000"});
    const AttachedClient elsewhere(socket, "other");
    ASSERT_TRUE(showsItself(elsewhere));
    EXPECT_EQ(show(multiplexer, processIn("%0"), "%0"), std::nullopt);
    EXPECT_EQ(activePaneOf("main"), "%0") << "the pane is ready for a client that attaches";
    const AttachedClient client(socket, "main");
    ASSERT_TRUE(showsItself(client));
    EXPECT_EQ(show(multiplexer, processIn("%0"), "%0"), client.pid());
}

TEST_F(TmuxTest, NothingOfAProcessOutsideOfTmux) {
    startServer();
    EXPECT_EQ(show(multiplexer, 0, "%0"), std::nullopt);
    EXPECT_EQ(show(multiplexer, -1, std::nullopt), std::nullopt);
    const ProcProcesses without(folder.path());
    Tmux other(scheduler, without);
    EXPECT_EQ(show(other, 42, "%0"), std::nullopt);
    EXPECT_EQ(activePaneOf("main"), "%2");
}

TEST_F(TmuxTest, HostileNamesBecomeNoCommand) {
    startServer();
    for (const char* pane : {"%0;kill-server", "-t%0", "%0 ; kill-server", "$(kill-server)", "", "%"}) {
        const ProcProcesses hostile = claiming(socket + ",1,0", pane);
        Tmux other(scheduler, hostile);
        EXPECT_EQ(show(other, 42, std::nullopt), std::nullopt) << pane;
    }
    EXPECT_EQ(show(multiplexer, processIn("%0"), "%0;kill-server"), std::nullopt);
    EXPECT_EQ(activePaneOf("main"), "%2") << "the server is there, and nothing was selected";
}

TEST_F(TmuxTest, OnlyASocketOfOurOwnIsAsked) {
    folder.put("file", "");
    for (const std::string& path :
         {folder.path("file"), folder.path("nothing"), std::string("-Lmain"), std::string("/dev/null")}) {
        const ProcProcesses processesWithIt = claiming(path + ",1,0", "%0");
        Tmux other(scheduler, processesWithIt, "/nonexistent/tmux");
        EXPECT_EQ(show(other, 42, std::nullopt), std::nullopt) << path;
    }
}

TEST_F(TmuxTest, AServerThatIsGoneGivesNothing) {
    startServer();
    const std::int32_t pid = processIn("%0");
    const ProcProcesses claimed = claiming(socket + ",1,0", "%0");
    ASSERT_GT(pid, 0);
    tmux({"kill-server"});
    Tmux other(scheduler, claimed);
    EXPECT_EQ(show(other, 42, std::nullopt), std::nullopt);
}

TEST_F(TmuxTest, WithoutTheProgramThereIsNothing) {
    startServer();
    Tmux missing(scheduler, processes, "/nonexistent/tmux");
    const LogRecorder recorder;
    EXPECT_EQ(show(missing, processIn("%0"), "%0"), std::nullopt);
    EXPECT_THAT(recorder.warnings(), oneLine("veslora.system", "/nonexistent/tmux", ENOENT));
}

TEST_F(TmuxTest, AProgramThatHangsIsEnded) {
    startServer();
    const std::string script = folder.put("hanging", "#!/bin/sh\nexec sleep 1000\n");
    std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    Tmux hanging(scheduler, processes, QString::fromStdString(script));
    bool isDone = false;
    const LogRecorder recorder;
    const Task task = hanging.showPane(processIn("%0"), "%0", [&](TerminalMultiplexer::Client client) {
        EXPECT_EQ(client, std::nullopt);
        isDone = true;
    });
    testing::handleEventsFor(50);
    EXPECT_FALSE(isDone);
    scheduler.advance(Tmux::timeLimit);
    EXPECT_TRUE(waitUntil([&] { return isDone; }));
    EXPECT_THAT(recorder.warnings(), oneLine("veslora.system", "hanging", "did not end"));
}

TEST_F(TmuxTest, AProgramThatFailsIsTold) {
    startServer();
    const std::string script = folder.put("failing", "#!/bin/sh\nexit 3\n");
    std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    Tmux failing(scheduler, processes, QString::fromStdString(script));
    const LogRecorder recorder;
    EXPECT_EQ(show(failing, processIn("%0"), "%0"), std::nullopt);
    EXPECT_THAT(recorder.warnings(), oneLine("veslora.system", "failing", "exit status 3"));
}

TEST_F(TmuxTest, AProgramThatTalksOnIsEnded) {
    startServer();
    const std::string script = folder.put("talking", "#!/bin/sh\nexec yes '9 1 %0'\n");
    std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    Tmux talking(scheduler, processes, QString::fromStdString(script));
    EXPECT_EQ(show(talking, processIn("%0"), "%0"), std::nullopt);
}

TEST_F(TmuxTest, ACallerThatCancelsHearsNothing) {
    startServer();
    bool isDone = false;
    Task task =
        multiplexer.showPane(processIn("%0"), "%0", [&](TerminalMultiplexer::Client) { isDone = true; });
    EXPECT_TRUE(task.isActive());
    task.cancel();
    EXPECT_TRUE(waitUntil([this] { return activePaneOf("main") == "%0"; }));
    testing::handleEventsFor(20);
    EXPECT_FALSE(isDone);
}

} // namespace
} // namespace veslora
