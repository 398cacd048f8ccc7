// SPDX-License-Identifier: MIT
// Following transcripts on a real disk, with real watches and threads.
#include "VesloraLinux/System/InotifyDirectoryWatcher.h"
#include "VesloraLinux/System/LinuxScheduler.h"
#include "VesloraLinux/System/PosixFiles.h"
#include "VesloraUI/Claude/Monitors/ClaudeUsageMonitor.h"
#include "VesloraUI/Claude/Spool/SupportDirectory.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"
#include "tests/VesloraLinux/Support/Waiting.h"
#include "tests/support/FixedCalendar.h"

#include <QDateTime>

#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <random>

namespace veslora {
namespace {

using testing::waitUntil;

class TranscriptFollowingTests : public ::testing::Test {
  protected:
    [[nodiscard]] std::unique_ptr<ClaudeUsageMonitor> makeMonitor() {
        return std::make_unique<ClaudeUsageMonitor>(
            TranscriptSeams{scheduler, files, watcher}, support, folder.path("projects"),
            test::fixedCalendar(noonIsFarFromMidnight()), [] { return std::nullopt; });
    }
    /// The test must not begin before midnight and end after it.
    [[nodiscard]] double noonIsFarFromMidnight() const { return scheduler.now() - 43'200; }

    [[nodiscard]] std::string line(const std::string& message, int output) const {
        const QByteArray time = QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs).toUtf8();
        return R"({"type":"assistant","timestamp":")" + time.toStdString() +
               R"(","requestId":"r","message":{"id":")" + message + R"(","usage":{"output_tokens":)" +
               std::to_string(output) + "}}}\n";
    }
    void append(const std::string& name, const std::string& bytes) const {
        const std::string path = folder.path("projects/" + name);
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        std::ofstream(path, std::ios::binary | std::ios::app) << bytes;
    }
    /// What somebody comes to who begins now.
    [[nodiscard]] std::int64_t coldOutput() {
        const auto cold = makeMonitor();
        bool isLoaded = false;
        cold->loadToday();
        const auto read = [&] { isLoaded = cold->today().output > 0; };
        QObject::connect(cold.get(), &AgentUsageMonitor::changed, read);
        EXPECT_TRUE(waitUntil([&] { return isLoaded; }));
        return cold->today().output;
    }

    testing::CoreApplication application;
    testing::TemporaryFolder folder;
    PosixFiles files;
    SupportDirectory support{files, folder.path("support"), folder.path("support")};
    LinuxScheduler scheduler;
    InotifyDirectoryWatcher watcher;
};

TEST_F(TranscriptFollowingTests, HearsOfALineAsSoonAsItIsWritten) {
    append("p/a.jsonl", line("m", 5));
    const auto monitor = makeMonitor();
    monitor->loadToday();
    ASSERT_TRUE(waitUntil([&] { return monitor->today().output == 5; }));
    // The watches are set once the walks have ended; whatever came before is found by them.
    std::ofstream open(folder.path("projects/p/a.jsonl"), std::ios::binary | std::ios::app);
    open << line("n", 7) << std::flush;
    EXPECT_TRUE(waitUntil([&] { return monitor->today().output == 12; }));
    // The agent keeps its file open.
    open << line("o", 20) << std::flush;
    EXPECT_TRUE(waitUntil([&] { return monitor->today().output == 32; }));
    append("q/s/subagents/agent-1.jsonl", line("p", 100));
    EXPECT_TRUE(waitUntil([&] { return monitor->today().output == 132; }));
}

TEST_F(TranscriptFollowingTests, FindsAFolderThatIsMadeLater) {
    const auto monitor = makeMonitor();
    monitor->loadToday();
    append("p/a.jsonl", line("m", 5));
    EXPECT_TRUE(waitUntil([&] {
        monitor->refresh();
        return monitor->today().output == 5;
    }));
}

// Writers that append, replace and move while it reads; none of their lines is ever lost.
TEST_F(TranscriptFollowingTests, ComesToWhatAColdReadComesTo) {
    std::mt19937 random(3);
    append("p/0.jsonl", line("first", 1));
    const auto monitor = makeMonitor();
    monitor->loadToday();
    std::map<std::string, std::string> written = {{"p/0.jsonl", line("first", 1)}};
    std::int64_t sum = 1;
    for (int step = 0; step < 400; ++step) {
        auto file = std::next(written.begin(), static_cast<std::ptrdiff_t>(random() % written.size()));
        const std::string added = line("m" + std::to_string(step), step);
        switch (random() % 8) {
        case 0: { // a new file, perhaps in a new folder
            const std::string name = "d" + std::to_string(step % 7) + "/s/" + std::to_string(step) + ".jsonl";
            append(name, added);
            written[name] += added;
            break;
        }
        case 1: { // a file of another inode with one line more
            folder.put("next", file->second += added);
            std::filesystem::rename(folder.path("next"), folder.path("projects/" + file->first));
            break;
        }
        case 2: { // another name, and a line under it
            const std::string name = "moved/" + std::to_string(step) + ".jsonl";
            std::filesystem::create_directories(folder.path("projects/moved"));
            std::filesystem::rename(folder.path("projects/" + file->first), folder.path("projects/" + name));
            append(name, added);
            written[name] = file->second + added;
            written.erase(file);
            break;
        }
        default: // in two pieces
            append(file->first, added.substr(0, 50));
            testing::handleEventsFor(static_cast<int>(random() % 3));
            append(file->first, added.substr(50));
            file->second += added;
        }
        sum += step;
        if (random() % 10 == 0) {
            monitor->refresh();
        }
    }
    EXPECT_TRUE(waitUntil([&] { return monitor->today().output == sum; })) << monitor->today().output;
    EXPECT_EQ(coldOutput(), sum);
}

TEST_F(TranscriptFollowingTests, EndsAtOnceWhileItReads) {
    for (int index = 0; index < 50; ++index) {
        append("p/" + std::to_string(index) + ".jsonl", line("m" + std::to_string(index), 1));
    }
    for (int round = 0; round < 20; ++round) {
        const auto monitor = makeMonitor();
        monitor->loadToday();
        testing::handleEventsFor(round % 3);
    }
    EXPECT_EQ(coldOutput(), 50);
}

} // namespace
} // namespace veslora
