// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/Signals.h"
#include "tests/VesloraLinux/Support/Waiting.h"
#include "tests/support/LogRecorder.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace veslora {
namespace {

using testing::handleEventsFor;
using testing::waitUntil;

TEST(SignalsTests, EachOfThemAsksTheProgramToEnd) {
    const testing::CoreApplication application;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        int asked = 0;
        const Signals watch([&] { ++asked; });
        ASSERT_EQ(kill(getpid(), signal), 0);
        EXPECT_EQ(asked, 0);
        EXPECT_TRUE(waitUntil([&] { return asked == 1; })) << signal;
    }
}

TEST(SignalsTests, TellsThatASignalAsked) {
    const testing::CoreApplication application;
    const testing::LogRecorder recorder;
    bool isAsked = false;
    const Signals watch([&] { isAsked = true; });
    ASSERT_EQ(kill(getpid(), SIGTERM), 0);
    EXPECT_TRUE(waitUntil([&] { return isAsked; }));
    ASSERT_EQ(recorder.lines().size(), 1U);
    EXPECT_EQ(recorder.lines()[0],
              (testing::LogRecorder::Line{QtInfoMsg, "veslora.start", "a signal asks for the end"}));
}

TEST(SignalsTests, AsksOnceHoweverManyCome) {
    const testing::CoreApplication application;
    int asked = 0;
    const Signals watch([&] { ++asked; });
    kill(getpid(), SIGTERM);
    kill(getpid(), SIGHUP);
    EXPECT_TRUE(waitUntil([&] { return asked == 1; }));
    kill(getpid(), SIGINT);
    handleEventsFor(30);
    EXPECT_EQ(asked, 1);
}

TEST(SignalsTests, LetsTheCallbackEndTheLoopAndTheProgramFinishInOrder) {
    const pid_t child = fork();
    if (child == 0) {
        const testing::CoreApplication application;
        const Signals watch([] { QCoreApplication::quit(); });
        kill(getpid(), SIGTERM);
        _exit(QCoreApplication::exec() == 0 ? 42 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 42);
}

TEST(SignalsTests, GivesTheSignalsTheirMeaningBack) {
    const pid_t child = fork();
    if (child == 0) {
        const testing::CoreApplication application;
        {
            const Signals watch([] {});
        }
        kill(getpid(), SIGTERM);
        _exit(0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGTERM);
}

} // namespace
} // namespace veslora
