// SPDX-License-Identifier: MIT
// Each failure of the machine that the program lives with leaves exactly one line, and none unasked.
#include "VesloraLinux/System/CommandListener.h"
#include "VesloraLinux/System/CommandSocket.h"
#include "VesloraLinux/System/InotifyDirectoryWatcher.h"
#include "VesloraLinux/System/ProcSystemReadings.h"
#include "VesloraLinux/System/TimerDescriptor.h"
#include "tests/VesloraLinux/Support/FewDescriptors.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"
#include "tests/VesloraLinux/Support/Waiting.h"
#include "tests/support/ManualScheduler.h"
#include "tests/support/OneLine.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>

#include <cerrno>
#include <filesystem>

namespace veslora {
namespace {

using ::testing::ElementsAre;
using testing::FewDescriptors;
using ::testing::Field;
using testing::handleEventsFor;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing::LogRecorder;
using testing::oneLine;
using testing::waitUntil;

class SystemFailuresTests : public ::testing::Test {
  protected:
    static std::unique_ptr<DirectoryWatch> watch(DirectoryWatcher& watcher, const std::string& path) {
        return watcher.watch(path, DirectoryChanges::any, [] {});
    }

    testing::CoreApplication application;
    testing::TemporaryFolder folder;
};

TEST_F(SystemFailuresTests, AFolderWithoutAWatch) {
    const LogRecorder recorder;
    InotifyDirectoryWatcher watcher;
    {
        const FewDescriptors few;
        for (int look = 0; look < 3; ++look) {
            EXPECT_EQ(watch(watcher, folder.path()), nullptr);
        }
    }
    EXPECT_THAT(recorder.warnings(), oneLine("veslora.system", folder.path(), EMFILE));
    EXPECT_NE(watch(watcher, folder.path()), nullptr);
    const std::string file = folder.put("file", "");
    EXPECT_EQ(watch(watcher, file), nullptr);
    EXPECT_EQ(recorder.warnings().size(), 2U);
}

TEST_F(SystemFailuresTests, AMissingFolderIsAnInformationOnce) {
    const LogRecorder recorder;
    InotifyDirectoryWatcher watcher;
    for (int look = 0; look < 3; ++look) {
        EXPECT_EQ(watch(watcher, folder.path("none")), nullptr);
    }
    EXPECT_THAT(recorder.warnings(), IsEmpty());
    EXPECT_THAT(recorder.decisions(),
                ElementsAre(Field(&LogRecorder::Line::text, HasSubstr(folder.path("none")))));
}

TEST_F(SystemFailuresTests, AConnectionThatCannotBeAccepted) {
    const FileDescriptor directory(open(folder.path().c_str(), O_PATH | O_DIRECTORY));
    ManualScheduler time;
    int asked = 0;
    const CommandListener listener(time, CommandSocket::listen(directory), [&asked](const auto&) {
        ++asked;
        return CommandListener::Answer{};
    });
    const FileDescriptor client = CommandSocket::connect(directory);
    ASSERT_TRUE(client);
    ASSERT_EQ(send(client.value(), "status\n", 7, MSG_NOSIGNAL), 7);
    const LogRecorder recorder;
    {
        const FewDescriptors few;
        for (int attempt = 0; attempt < 3; ++attempt) {
            EXPECT_TRUE(waitUntil([&] { return time.pending() == 1; }));
            time.advance(CommandListener::patience);
        }
    }
    EXPECT_THAT(recorder.warnings(), oneLine("veslora.start", CommandSocket::name, EMFILE));
    EXPECT_TRUE(waitUntil([&] { return asked == 1; }));
    EXPECT_EQ(recorder.warnings().size(), 1U);
}

TEST_F(SystemFailuresTests, ACommandThatIsNone) {
    const FileDescriptor directory(open(folder.path().c_str(), O_PATH | O_DIRECTORY));
    ManualScheduler time;
    const CommandListener listener(time, CommandSocket::listen(directory),
                                   [](const auto&) { return CommandListener::Answer{}; });
    const LogRecorder recorder;
    const FileDescriptor client = CommandSocket::connect(directory);
    const std::string text(CommandSocket::longestQuestion, 'm');
    ASSERT_GT(send(client.value(), text.data(), text.size(), MSG_NOSIGNAL), 0);
    EXPECT_TRUE(waitUntil([&] { return !recorder.warnings().empty(); }));
    handleEventsFor(20);
    EXPECT_THAT(recorder.warnings(), oneLine("veslora.start", CommandSocket::name, "too long"));
    EXPECT_THAT(recorder.lines(),
                Not(::testing::Contains(Field(&LogRecorder::Line::text, HasSubstr("mmm")))));
}

TEST_F(SystemFailuresTests, AFigureThatTheKernelDoesNotGive) {
    const LogRecorder recorder;
    ProcSystemReadings readings(folder.path());
    for (int look = 0; look < 3; ++look) {
        EXPECT_FALSE(readings.ticks());
    }
    EXPECT_THAT(recorder.warnings(), oneLine("veslora.system", folder.path("proc/stat"), ENOENT));
    std::filesystem::create_directory(folder.path("proc"));
    folder.put("proc/stat", "cpu  1 2 3 4 5 6 7 8 9 10\n");
    EXPECT_TRUE(readings.ticks());
    folder.put("proc/stat", "nonsense");
    EXPECT_FALSE(readings.ticks());
    EXPECT_EQ(recorder.warnings().size(), 2U);
}

TEST_F(SystemFailuresTests, ATimerThatCannotBeHad) {
    const LogRecorder recorder;
    {
        const FewDescriptors few;
        const TimerDescriptor timer(CLOCK_BOOTTIME, [] {});
    }
    EXPECT_THAT(recorder.warnings(), oneLine("veslora.system", "timer", EMFILE));
}

TEST_F(SystemFailuresTests, NoneOfThemIsPrintedUnasked) {
    const LogRecorder silent(LogRecorder::Categories::byDefault);
    InotifyDirectoryWatcher watcher;
    EXPECT_EQ(watch(watcher, folder.path("none")), nullptr);
    EXPECT_FALSE(ProcSystemReadings(folder.path()).ticks());
    InotifyDirectoryWatcher other;
    const FewDescriptors few;
    EXPECT_EQ(watch(other, folder.path()), nullptr);
    EXPECT_THAT(silent.lines(), IsEmpty());
}

} // namespace
} // namespace veslora
