// SPDX-License-Identifier: MIT
// The way through a real tmux server, on a socket of the test's own.
#include "VesloraLinux/System/Tmux.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"
#include "tests/VesloraLinux/Support/Waiting.h"
#include "tests/support/ManualScheduler.h"

#include <QProcess>

#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace veslora {
namespace {

using testing::TemporaryFolder;
using testing::waitUntil;

/// A user who looks at the server through a terminal.
class AttachedClient {
  public:
    AttachedClient(const std::string& socket, const std::string& session)
        : m_pid(forkpty(&m_terminal, nullptr, nullptr, nullptr)) {
        if (m_pid == 0) {
            setenv("TERM", "xterm", 1);
            unsetenv("TMUX");
            execlp("tmux", "tmux", "-S", socket.c_str(), "attach", "-t", session.c_str(), nullptr);
            _exit(127);
        }
    }
    AttachedClient(const AttachedClient&) = delete;
    AttachedClient& operator=(const AttachedClient&) = delete;
    ~AttachedClient() {
        kill(m_pid, SIGKILL);
        waitpid(m_pid, nullptr, 0);
        close(m_terminal);
    }
    [[nodiscard]] std::int32_t pid() const { return m_pid; }

  private:
    int m_terminal = -1;
    pid_t m_pid;
};

class TmuxTest : public ::testing::Test {
  protected:
    void TearDown() override { tmux({"kill-server"}); }

    /// What a command prints, without the end of its last line.
    QString tmux(const QStringList& command) const {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove("TMUX");
        process.setProcessEnvironment(environment);
        process.start("tmux", QStringList{"-f", "/dev/null", "-S", QString::fromStdString(socket)} + command);
        EXPECT_TRUE(process.waitForFinished());
        return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
    }
    void startServer() const {
        tmux({"new-session", "-d", "-s", "main", "-x", "80", "-y", "24", "exec sleep 1000"});
        tmux({"split-window", "-t", "main", "exec sleep 1000"});
        tmux({"new-window", "-t", "main", "exec sleep 1000"});
    }
    [[nodiscard]] std::int32_t processIn(const QString& pane) const {
        return tmux({"display-message", "-p", "-t", pane, "#{pane_pid}"}).toInt();
    }
    [[nodiscard]] QString activePaneOf(const QString& session) const {
        return tmux({"display-message", "-p", "-t", session + ":", "#{pane_id}"});
    }
    [[nodiscard]] bool showsItself(const AttachedClient& client) const {
        return waitUntil([&] {
            return tmux({"list-clients", "-F", "#{client_pid}"})
                .split('\n')
                .contains(QString::number(client.pid()));
        });
    }
    /// Asks, and waits for what comes of it.
    TerminalMultiplexer::Client show(TerminalMultiplexer& asked, std::int32_t pid,
                                     const std::optional<std::string>& pane) {
        int calls = 0;
        TerminalMultiplexer::Client found;
        const Task task = asked.showPane(pid, pane, [&](TerminalMultiplexer::Client client) {
            ++calls;
            found = client;
        });
        EXPECT_EQ(calls, 0) << "never within the call";
        EXPECT_TRUE(waitUntil([&] {
            scheduler.advance(0);
            return calls > 0;
        }));
        EXPECT_EQ(calls, 1);
        return found;
    }
    /// A process 42 that claims to run under that server.
    ProcProcesses claiming(const std::string& variable, const std::string& pane) const {
        std::filesystem::create_directory(folder.path("42"));
        folder.put("42/environ", "TMUX=" + variable + '\0' + "TMUX_PANE=" + pane + '\0');
        return ProcProcesses(folder.path());
    }

    testing::CoreApplication application;
    TemporaryFolder folder;
    std::string socket = folder.path("s");
    ManualScheduler scheduler;
    ProcProcesses processes;
    Tmux multiplexer{scheduler, processes};
};

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
    EXPECT_EQ(activePaneOf("main"), "%0") << "the pane is ready for whoever attaches";
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
    EXPECT_EQ(show(missing, processIn("%0"), "%0"), std::nullopt);
}

TEST_F(TmuxTest, AProgramThatHangsIsEnded) {
    startServer();
    const std::string script = folder.put("hanging", "#!/bin/sh\nexec sleep 1000\n");
    std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    Tmux hanging(scheduler, processes, QString::fromStdString(script));
    bool isDone = false;
    const Task task = hanging.showPane(processIn("%0"), "%0", [&](TerminalMultiplexer::Client client) {
        EXPECT_EQ(client, std::nullopt);
        isDone = true;
    });
    testing::handleEventsFor(50);
    EXPECT_FALSE(isDone);
    scheduler.advance(Tmux::timeLimit);
    EXPECT_TRUE(waitUntil([&] { return isDone; }));
}

TEST_F(TmuxTest, AProgramThatTalksOnIsEnded) {
    startServer();
    const std::string script = folder.put("talking", "#!/bin/sh\nexec yes '9 1 %0'\n");
    std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    Tmux talking(scheduler, processes, QString::fromStdString(script));
    EXPECT_EQ(show(talking, processIn("%0"), "%0"), std::nullopt);
}

TEST_F(TmuxTest, WhoeverCancelsHearsNothing) {
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
