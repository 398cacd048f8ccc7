// SPDX-License-Identifier: MIT
// A real tmux server, on a socket of the test's own, and users who look at it.
#pragma once

#include "VesloraLinux/System/ProcessTree.h"
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
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

namespace veslora::testing {

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
    /// The pane's, once it is what runs there for good: the process that begins there has the server's
    /// environment, and while it becomes another program it has none.
    [[nodiscard]] std::int32_t processIn(const QString& pane) const {
        const std::int32_t pid = tmux({"display-message", "-p", "-t", pane, "#{pane_pid}"}).toInt();
        EXPECT_TRUE(
            waitUntil([&] { return nameOf(pid) == "sleep" && processes.environmentOf(pid, "TMUX_PANE"); }));
        return pid;
    }
    [[nodiscard]] static std::string nameOf(std::int32_t pid) {
        std::ifstream file("/proc/" + std::to_string(pid) + "/comm");
        std::string name;
        std::getline(file, name);
        return name;
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
            count += stat && stat->parent == getpid() && nameOf(pid).starts_with(name);
        }
        return count;
    }
    /// A process 42 that claims to run under that server.
    ProcProcesses claiming(const std::string& variable, const std::string& pane) const {
        std::filesystem::create_directory(folder.path("42"));
        folder.put("42/environ", "TMUX=" + variable + '\0' + "TMUX_PANE=" + pane + '\0');
        return ProcProcesses(folder.path());
    }

    CoreApplication application;
    TemporaryFolder folder;
    std::string socket = folder.path("s");
    ManualScheduler scheduler;
    ProcProcesses processes;
    Tmux multiplexer{scheduler, processes};
};

} // namespace veslora::testing
