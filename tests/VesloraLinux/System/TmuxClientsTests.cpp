// SPDX-License-Identifier: MIT
// Which clients of a real tmux server show a pane.
#include "tests/VesloraLinux/System/TmuxTest.h"

#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <vector>

namespace veslora {
namespace {

using testing::AttachedClient;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;
using testing::waitUntil;

class TmuxClientsTest : public testing::TmuxTest {};

TEST_F(TmuxClientsTest, FindsTheClientThatShowsThePaneAndSelectsNothing) {
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

TEST_F(TmuxClientsTest, AnotherPaneOfTheSameWindowIsNotTheOneThatIsUsed) {
    startServer();
    const AttachedClient client(socket, "main");
    ASSERT_TRUE(showsItself(client));
    tmux({"select-window", "-t", "@0", ";", "select-pane", "-t", "%1"});
    EXPECT_THAT(find(multiplexer, processIn("%0")), IsEmpty());
    EXPECT_THAT(find(multiplexer, processIn("%1")), ElementsAre(client.pid()));
    EXPECT_EQ(activePaneOf("main"), "%1");
}

TEST_F(TmuxClientsTest, AZoomedPaneHidesTheOthers) {
    startServer();
    const AttachedClient client(socket, "main");
    ASSERT_TRUE(showsItself(client));
    tmux({"select-window", "-t", "@0", ";", "select-pane", "-t", "%1", ";", "resize-pane", "-Z", "-t", "%1"});
    ASSERT_EQ(tmux({"display-message", "-p", "-t", "%1", "#{window_zoomed_flag}"}), "1");
    EXPECT_THAT(find(multiplexer, processIn("%1")), ElementsAre(client.pid()));
    EXPECT_THAT(find(multiplexer, processIn("%0")), IsEmpty());
    EXPECT_EQ(tmux({"display-message", "-p", "-t", "%1", "#{window_zoomed_flag}"}), "1") << "as it was";
}

TEST_F(TmuxClientsTest, EveryClientThatShowsThePaneIsFound) {
    startServer();
    tmux({"new-session", "-d", "-s", "other", "-x", "80", "-y", "24", "exec sleep 1000"});
    const AttachedClient first(socket, "main");
    const AttachedClient second(socket, "main");
    const AttachedClient elsewhere(socket, "other");
    ASSERT_TRUE(showsItself(first) && showsItself(second) && showsItself(elsewhere));
    EXPECT_THAT(find(multiplexer, processIn("%2")), UnorderedElementsAre(first.pid(), second.pid()));
    EXPECT_THAT(find(multiplexer, processIn("%3")), ElementsAre(elsewhere.pid()));
}

TEST_F(TmuxClientsTest, ASessionOfTheSameWindowsHasAnActiveWindowOfItsOwn) {
    startServer();
    tmux({"new-session", "-d", "-s", "beside", "-t", "main"});
    tmux({"select-window", "-t", "beside:@0"});
    const AttachedClient client(socket, "main");
    const AttachedClient beside(socket, "beside");
    ASSERT_TRUE(showsItself(client) && showsItself(beside));
    EXPECT_THAT(find(multiplexer, processIn("%2")), ElementsAre(client.pid()));
    EXPECT_THAT(find(multiplexer, processIn("%1")), ElementsAre(beside.pid()));
}

TEST_F(TmuxClientsTest, NobodySeesADetachedSession) {
    startServer();
    EXPECT_THAT(find(multiplexer, processIn("%2")), IsEmpty());
    {
        const AttachedClient client(socket, "main");
        ASSERT_TRUE(showsItself(client));
        EXPECT_THAT(find(multiplexer, processIn("%2")), ElementsAre(client.pid()));
        tmux({"detach-client", "-s", "main"});
        // The server lets it go once it has answered.
        ASSERT_TRUE(waitUntil([this] { return tmux({"list-clients"}).isEmpty(); }));
        EXPECT_THAT(find(multiplexer, processIn("%2")), IsEmpty());
    }
}

TEST_F(TmuxClientsTest, AClientThatMayOnlyWatchSeesThePaneToo) {
    startServer();
    const AttachedClient client(socket, "main", "-r");
    ASSERT_TRUE(showsItself(client));
    ASSERT_EQ(tmux({"list-clients", "-F", "#{client_readonly}"}), "1");
    EXPECT_THAT(find(multiplexer, processIn("%2")), ElementsAre(client.pid()));
}

TEST_F(TmuxClientsTest, FindsNothingOutsideOfTmux) {
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

TEST_F(TmuxClientsTest, AServerThatNeverAnswersHoldsNobodyUpAndLeavesNoProcess) {
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

TEST_F(TmuxClientsTest, ALookThatWasCancelledEndsAtItsLimit) {
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

TEST_F(TmuxClientsTest, TheEndOfTheProgramEndsALook) {
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

} // namespace
} // namespace veslora
