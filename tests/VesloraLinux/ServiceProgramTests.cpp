// SPDX-License-Identifier: MIT
// The program as a service whose manager waits to hear that it lives.
#include "tests/VesloraLinux/Support/ManagerSocket.h"
#include "tests/VesloraLinux/Support/ProgramFixture.h"

#include <sys/ptrace.h>
#include <sys/wait.h>

#include <chrono>
#include <csignal>

namespace veslora {
namespace {

using namespace std::chrono_literals;
using ::testing::IsEmpty;

class ServiceProgramTests : public testing::RunningProgramFixture {
  protected:
    ServiceProgramTests() { more = {"NOTIFY_SOCKET=" + folder.path("notify"), "WATCHDOG_USEC=1000000"}; }
    /// Lets go of all that has come so far.
    void forget() const {
        while (manager.next(0ms)) {
        }
    }

    testing::ManagerSocket manager{folder.path("notify")};
};

TEST_P(ServiceProgramTests, TellsThatItIsReadyThenThatItLivesAndAtLastThatItStops) {
    start();
    EXPECT_EQ(manager.next(1min), "READY=1");
    for (int beat = 0; beat < 4; ++beat) {
        EXPECT_EQ(manager.next(1min), "WATCHDOG=1");
    }
    expectDone("quit");
    std::optional<std::string> last;
    while (const auto next = manager.next(0ms)) {
        last = next;
    }
    EXPECT_EQ(last, "STOPPING=1");
}

TEST_P(ServiceProgramTests, FallsSilentWhileItsMainThreadIsHeld) {
    start();
    // This thread alone, as one that is stuck: a signal would stop all of them.
    ASSERT_EQ(ptrace(PTRACE_SEIZE, program->pid(), nullptr, nullptr), 0);
    ASSERT_EQ(ptrace(PTRACE_INTERRUPT, program->pid(), nullptr, nullptr), 0);
    int state = 0;
    ASSERT_EQ(waitpid(program->pid(), &state, __WALL), program->pid());
    forget();
    EXPECT_EQ(manager.next(2s), std::nullopt) << "two of the manager's intervals";
    ASSERT_EQ(ptrace(PTRACE_DETACH, program->pid(), nullptr, nullptr), 0);
    EXPECT_EQ(manager.next(1min), "WATCHDOG=1");
}

TEST_P(ServiceProgramTests, ASecondOneIsReadyAtOnceSoThatNobodyStartsItAgain) {
    more.clear();
    start();
    more = {"NOTIFY_SOCKET=" + folder.path("notify"), "WATCHDOG_USEC=1000000"};
    const Ended second = run({}, session());
    EXPECT_EQ(second.status, 0);
    EXPECT_THAT(second.error, IsEmpty());
    EXPECT_EQ(manager.next(0ms), "READY=1");
    EXPECT_EQ(manager.next(0ms), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(WithAndWithoutABus, ServiceProgramTests, ::testing::Bool(),
                         [](const auto& tested) { return tested.param ? "Bus" : "Socket"; });

} // namespace
} // namespace veslora
