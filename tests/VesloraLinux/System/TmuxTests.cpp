// SPDX-License-Identifier: MIT
// The way through a real tmux server, on a socket of the test's own.
#include "VesloraLinux/System/ProcessTree.h"
#include "VesloraLinux/System/Tmux.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"
#include "tests/VesloraLinux/Support/Waiting.h"
#include "tests/support/ManualScheduler.h"

#include <QProcess>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace veslora {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::TemporaryFolder;
using ::testing::UnorderedElementsAre;
using testing::waitUntil;

/// A user who looks at the server through a terminal.
class AttachedClient {
  public:
    /// One that may only watch has its flag in `more`.
    AttachedClient(const std::string& socket, const std::string& session, const char* more = nullptr)
        : m_pid(forkpty(&m_terminal, nullptr, nullptr, nullptr)) {
        if (m_pid == 0) {
            setenv("TERM", "xterm", 1);
            unsetenv("TMUX");
            execlp("tmux", "tmux", "-S", socket.c_str(), "attach", "-t", session.c_str(), more, nullptr);
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
    /// Looks, and waits for what is found.
    TerminalMultiplexer::Clients find(TerminalMultiplexer& asked, std::int32_t pid,
                                      const std::optional<std::string>& pane = std::nullopt) {
        std::optional<TerminalMultiplexer::Clients> found;
        const Task task = asked.findClients(
            pid, pane, [&](const TerminalMultiplexer::Clients& clients) { found = clients; });
        EXPECT_FALSE(found) << "never within the call";
        EXPECT_TRUE(waitUntil([&] {
            scheduler.advance(0);
            return found.has_value();
        }));
        return found.value_or(TerminalMultiplexer::Clients());
    }
    /// Processes of ours that run now or wait to be collected, of that name.
    static int childrenNamed(const std::string& name) {
        int count = 0;
        for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
            const std::int32_t pid = std::atoi(entry.path().filename().c_str());
            const auto stat = pid > 0 ? ProcessTree::statOf(pid) : std::nullopt;
            std::ifstream file(entry.path() / "comm");
            std::string text;
            count += stat && stat->parent == getpid() && std::getline(file, text) && text.starts_with(name);
        }
        return count;
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

TEST_F(TmuxTest, FindsTheClientThatShowsThePaneAndSelectsNothing) {
    startServer();
    const AttachedClient client(socket, "main");
    ASSERT_TRUE(showsItself(client));
    EXPECT_TRUE(multiplexer.mayHold(processIn("%0")));
    EXPECT_THAT(find(multiplexer, processIn("%2")), ElementsAre(client.pid()));
    EXPECT_THAT(find(multiplexer, processIn("%0"), "main:@1.%2"), ElementsAre(client.pid()))
        << "the pane that the session names counts";
    EXPECT_THAT(find(multiplexer, processIn("%0")), IsEmpty()) << "in another window";
    EXPECT_EQ(activePaneOf("main"), "%2");
}

TEST_F(TmuxTest, AnotherPaneOfTheSameWindowIsNotTheOneThatIsUsed) {
    startServer();
    const AttachedClient client(socket, "main");
    ASSERT_TRUE(showsItself(client));
    tmux({"select-window", "-t", "@0", ";", "select-pane", "-t", "%1"});
    EXPECT_THAT(find(multiplexer, processIn("%0")), IsEmpty());
    EXPECT_THAT(find(multiplexer, processIn("%1")), ElementsAre(client.pid()));
    EXPECT_EQ(activePaneOf("main"), "%1");
}

TEST_F(TmuxTest, AZoomedPaneHidesTheOthers) {
    startServer();
    const AttachedClient client(socket, "main");
    ASSERT_TRUE(showsItself(client));
    tmux({"select-window", "-t", "@0", ";", "select-pane", "-t", "%1", ";", "resize-pane", "-Z", "-t", "%1"});
    ASSERT_EQ(tmux({"display-message", "-p", "-t", "%1", "#{window_zoomed_flag}"}), "1");
    EXPECT_THAT(find(multiplexer, processIn("%1")), ElementsAre(client.pid()));
    EXPECT_THAT(find(multiplexer, processIn("%0")), IsEmpty());
    EXPECT_EQ(tmux({"display-message", "-p", "-t", "%1", "#{window_zoomed_flag}"}), "1") << "as it was";
}

TEST_F(TmuxTest, EveryClientThatShowsThePaneIsFound) {
    startServer();
    tmux({"new-session", "-d", "-s", "other", "-x", "80", "-y", "24", "exec sleep 1000"});
    const AttachedClient first(socket, "main");
    const AttachedClient second(socket, "main");
    const AttachedClient elsewhere(socket, "other");
    ASSERT_TRUE(showsItself(first) && showsItself(second) && showsItself(elsewhere));
    EXPECT_THAT(find(multiplexer, processIn("%2")), UnorderedElementsAre(first.pid(), second.pid()));
    EXPECT_THAT(find(multiplexer, processIn("%3")), ElementsAre(elsewhere.pid()));
}

TEST_F(TmuxTest, ASessionOfTheSameWindowsHasAnActiveWindowOfItsOwn) {
    startServer();
    tmux({"new-session", "-d", "-s", "beside", "-t", "main"});
    tmux({"select-window", "-t", "beside:@0"});
    const AttachedClient client(socket, "main");
    const AttachedClient beside(socket, "beside");
    ASSERT_TRUE(showsItself(client) && showsItself(beside));
    EXPECT_THAT(find(multiplexer, processIn("%2")), ElementsAre(client.pid()));
    EXPECT_THAT(find(multiplexer, processIn("%1")), ElementsAre(beside.pid()));
}

TEST_F(TmuxTest, NobodySeesADetachedSession) {
    startServer();
    EXPECT_THAT(find(multiplexer, processIn("%2")), IsEmpty());
    {
        const AttachedClient client(socket, "main");
        ASSERT_TRUE(showsItself(client));
        EXPECT_THAT(find(multiplexer, processIn("%2")), ElementsAre(client.pid()));
        tmux({"detach-client", "-s", "main"});
        EXPECT_THAT(find(multiplexer, processIn("%2")), IsEmpty());
    }
}

TEST_F(TmuxTest, AClientThatMayOnlyWatchSeesThePaneToo) {
    startServer();
    const AttachedClient client(socket, "main", "-r");
    ASSERT_TRUE(showsItself(client));
    ASSERT_EQ(tmux({"list-clients", "-F", "#{client_readonly}"}), "1");
    EXPECT_THAT(find(multiplexer, processIn("%2")), ElementsAre(client.pid()));
}

TEST_F(TmuxTest, FindsNothingOutsideOfTmux) {
    EXPECT_FALSE(multiplexer.mayHold(0));
    EXPECT_FALSE(multiplexer.mayHold(-1));
    const ProcProcesses hostile = claiming("-Lmain,1,0", "%0");
    Tmux other(scheduler, hostile);
    EXPECT_FALSE(other.mayHold(42));
    EXPECT_THAT(find(other, 42), IsEmpty());
    EXPECT_THAT(find(multiplexer, 0, "%0"), IsEmpty());
}

/// A socket that takes connections and never says a word.
class SilentServer {
  public:
    explicit SilentServer(const std::string& path)
        : m_socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        EXPECT_EQ(bind(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        EXPECT_EQ(listen(m_socket, 64), 0);
    }
    SilentServer(const SilentServer&) = delete;
    SilentServer& operator=(const SilentServer&) = delete;
    ~SilentServer() { close(m_socket); }

  private:
    int m_socket;
};

TEST_F(TmuxTest, AServerThatNeverAnswersHoldsNobodyUpAndLeavesNoProcess) {
    const SilentServer silent(socket);
    const ProcProcesses claimed = claiming(socket + ",1,0", "%0");
    {
        Tmux hung(scheduler, claimed);
        ASSERT_TRUE(hung.mayHold(42));
        int answers = 0;
        std::vector<Task> tasks;
        for (int count = 0; count < 2 * Tmux::mostAtOnce; ++count) {
            tasks.push_back(
                hung.findClients(42, std::nullopt, [&](const TerminalMultiplexer::Clients& clients) {
                    EXPECT_THAT(clients, IsEmpty());
                    ++answers;
                }));
        }
        ASSERT_TRUE(waitUntil([] { return childrenNamed("tmux") == Tmux::mostAtOnce; }));
        scheduler.advance(0);
        EXPECT_EQ(answers, Tmux::mostAtOnce) << "those that were too many";
        testing::handleEventsFor(50);
        scheduler.advance(TerminalMultiplexer::findLimit - 0.01);
        EXPECT_EQ(answers, Tmux::mostAtOnce);
        scheduler.advance(0.01);
        EXPECT_EQ(answers, 2 * Tmux::mostAtOnce) << "at the limit itself, not when the process has ended";
        EXPECT_TRUE(waitUntil([] { return childrenNamed("tmux") == 0; }));
        EXPECT_EQ(scheduler.pending(), 0u);
    }
}

TEST_F(TmuxTest, ALookThatWasCancelledEndsAtItsLimit) {
    const SilentServer silent(socket);
    const ProcProcesses claimed = claiming(socket + ",1,0", "%0");
    Tmux hung(scheduler, claimed);
    Task task = hung.findClients(42, std::nullopt,
                                 [](const TerminalMultiplexer::Clients&) { ADD_FAILURE() << "cancelled"; });
    ASSERT_TRUE(waitUntil([] { return childrenNamed("tmux") == 1; }));
    task.cancel();
    scheduler.advance(TerminalMultiplexer::findLimit);
    EXPECT_TRUE(waitUntil([] { return childrenNamed("tmux") == 0; }));
}

TEST_F(TmuxTest, TheEndOfTheProgramEndsALook) {
    const SilentServer silent(socket);
    const ProcProcesses claimed = claiming(socket + ",1,0", "%0");
    Task task;
    {
        Tmux hung(scheduler, claimed);
        task = hung.findClients(42, std::nullopt,
                                [](const TerminalMultiplexer::Clients&) { ADD_FAILURE() << "too late"; });
        ASSERT_TRUE(waitUntil([] { return childrenNamed("tmux") == 1; }));
        task.cancel();
    }
    EXPECT_EQ(childrenNamed("tmux"), 0);
    scheduler.advance(10);
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
