// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Spool/AgentSpool.h"
#include "VesloraUI/Claude/Spool/SupportDirectory.h"
#include "tests/support/FaultInjectingFiles.h"
#include "tests/support/ManualScheduler.h"
#include "tests/support/MemoryFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

namespace veslora {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::SizeIs;

constexpr auto folder = "/home/me/support/spool";

class AgentSpoolTest : public testing::Test {
  protected:
    AgentSpoolTest() { spool->create(); }

    void put(const std::string& name, const std::string& bytes = "x") {
        disk.put(std::string(folder) + "/" + name, bytes);
    }
    void putLarge(const std::string& name) { put(name, std::string(AgentSpool::atOnce.longest + 1, 'x')); }
    /// So many files with names in the order of their numbers.
    void putMany(int count) {
        for (int number = 0; number < count; ++number) {
            put(std::to_string(100'000 + number) + ".json");
        }
    }
    [[nodiscard]] std::vector<std::string> left() { return disk.list(folder).value(); }
    /// Until nothing is left to do; how often the main thread was asked meanwhile.
    int finish() {
        int turns = 0;
        while (time.runBackground() > 0) {
            ++turns;
        }
        return turns;
    }
    SpoolNews understand(const SpoolFile& file) {
        ++understood;
        if (onUnderstand) {
            onUnderstand(file);
        }
        const std::string error = file.content ? "" : file.content.error.message();
        return
            [this, name = file.name, error] { taken.push_back(error.empty() ? name : name + ": " + error); };
    }
    [[nodiscard]] std::unique_ptr<AgentSpool> make() {
        return std::make_unique<AgentSpool>(
            time, support, "spool", [this](const SpoolFile& file) { return understand(file); },
            [this] { ++calls; });
    }

    ManualScheduler time;
    MemoryFiles disk;
    FaultInjectingFiles files{disk};
    SupportDirectory support{files, "/home/me/support", "/run/me"};
    std::function<void(const SpoolFile&)> onUnderstand;
    std::vector<std::string> taken;
    int understood = 0;
    int calls = 0;
    std::unique_ptr<AgentSpool> spool = make();
};

TEST_F(AgentSpoolTest, SmallFilesAreTakenAtOnceAndInOrder) {
    put("b.json");
    put("a.json");
    put("c");
    disk.clock -= 1;
    put("z.json");
    spool->take();
    EXPECT_THAT(taken, ElementsAre("z.json", "a.json", "b.json"));
    EXPECT_THAT(left(), ElementsAre("c"));
    EXPECT_EQ(time.pendingBackground(), 0u);
    EXPECT_EQ(calls, 0) << "who asked knows";
}

TEST_F(AgentSpoolTest, NothingOvertakesALargeFile) {
    put("1.json");
    putLarge("2.json");
    put("3.json");
    putLarge("4.json");
    spool->take();
    EXPECT_THAT(taken, ElementsAre("1.json"));
    EXPECT_EQ(understood, 1) << "a large file is not even understood on the main thread";
    disk.clock -= 10;
    put("0.json");
    spool->take();
    EXPECT_THAT(taken, ElementsAre("1.json")) << "what comes meanwhile waits, whatever its time";
    finish();
    EXPECT_THAT(taken, ElementsAre("1.json", "2.json", "3.json", "4.json", "0.json"));
    EXPECT_THAT(left(), IsEmpty());
    EXPECT_GT(calls, 0);
}

TEST_F(AgentSpoolTest, AFileOfExactlyTheLimitIsSmall) {
    put("1.json", std::string(AgentSpool::atOnce.longest, 'x'));
    spool->take();
    EXPECT_THAT(taken, ElementsAre("1.json"));
}

TEST_F(AgentSpoolTest, ManySmallFilesDoNotAddUpToALongWait) {
    const std::string quarter(AgentSpool::atOnce.bytes / 4, 'x');
    for (int number = 10; number < 30; ++number) {
        put(std::to_string(number) + ".json", quarter);
    }
    spool->take();
    EXPECT_THAT(taken, SizeIs(4));
    finish();
    EXPECT_THAT(taken, SizeIs(20));
    EXPECT_TRUE(std::ranges::is_sorted(taken));
}

TEST_F(AgentSpoolTest, AFloodIsTakenAPortionAtATime) {
    constexpr int flood = 5000;
    putMany(flood);
    spool->take();
    EXPECT_THAT(taken, IsEmpty()) << "the order of so many is found out in the background";
    std::size_t before = 0;
    while (time.runBackground() > 0) {
        EXPECT_LE(taken.size() - before, AgentSpool::aside.files);
        before = taken.size();
    }
    EXPECT_THAT(taken, SizeIs(flood));
    EXPECT_TRUE(std::ranges::is_sorted(taken));
    EXPECT_THAT(left(), IsEmpty());
}

TEST_F(AgentSpoolTest, LeftoversAreSweptAlsoInAFlood) {
    disk.clock = time.now() - AgentSpool::eventLifetime - 1;
    putMany(200);
    put("tmp.oldold");
    disk.clock = time.now();
    put("tmp.newnew");
    spool->take();
    finish();
    EXPECT_THAT(left(), ElementsAre("tmp.newnew"));
}

TEST_F(AgentSpoolTest, AFileThatNeedsTooMuchMemoryEndsNothingButItself) {
    onUnderstand = [](const SpoolFile& file) {
        if (file.content && file.name == "2.json") {
            throw std::bad_alloc();
        }
        if (file.content && file.name == "4.json") {
            throw std::length_error("too long");
        }
    };
    for (const char* name : {"1.json", "2.json", "5.json"}) {
        put(name);
    }
    putLarge("3.json");
    put("4.json");
    spool->take();
    finish();
    const std::string error = ": " + std::make_error_code(std::errc::not_enough_memory).message();
    EXPECT_THAT(taken, ElementsAre("1.json", "2.json" + error, "3.json", "4.json" + error, "5.json"));
    EXPECT_THAT(left(), IsEmpty());
}

TEST_F(AgentSpoolTest, WhatIsBeyondTheCapIsTakenUnread) {
    put("1.json", std::string(SpoolRound::payloadCap + 1, 'x'));
    put("2.json", std::string(SpoolRound::payloadCap, 'x'));
    spool->take();
    finish();
    EXPECT_THAT(
        taken, ElementsAre("1.json: " + std::make_error_code(std::errc::file_too_large).message(), "2.json"));
}

TEST_F(AgentSpoolTest, AFileThatVanishesMeanwhileIsNobodysBusiness) {
    putLarge("1.json");
    put("2.json");
    put("3.json");
    spool->take();
    disk.remove(std::string(folder) + "/1.json");
    disk.remove(std::string(folder) + "/2.json");
    finish();
    EXPECT_THAT(taken, ElementsAre("3.json"));
    put("2.json");
    spool->take();
    EXPECT_THAT(taken, ElementsAre("3.json", "2.json")) << "another file of that name is a new one";
}

TEST_F(AgentSpoolTest, WhatIsLeftWhenItStopsIsTakenOnceItStartsAgain) {
    put("1.json");
    putLarge("2.json");
    put("3.json");
    spool->take();
    spool->stop();
    finish();
    EXPECT_THAT(taken, ElementsAre("1.json"));
    EXPECT_THAT(left(), ElementsAre("2.json", "3.json"));
    EXPECT_EQ(calls, 0);
    spool->take();
    finish();
    EXPECT_THAT(taken, ElementsAre("1.json", "2.json", "3.json"));
}

TEST_F(AgentSpoolTest, ItMayEndWhileAFileIsRead) {
    putLarge("1.json");
    put("2.json");
    spool->take();
    spool.reset();
    finish();
    EXPECT_THAT(taken, IsEmpty());
    EXPECT_EQ(understood, 0) << "work that nobody waits for any more ends early";
    EXPECT_THAT(left(), SizeIs(2));
}

TEST_F(AgentSpoolTest, WhatCannotBeDeletedIsTakenOnce) {
    disk.makeDirectory(std::string(folder) + "/1.json", 0700);
    put("2.json");
    spool->take();
    spool->take();
    EXPECT_THAT(taken, SizeIs(2));
    putLarge("3.json");
    spool->take();
    finish();
    EXPECT_THAT(taken, SizeIs(3));
    EXPECT_THAT(left(), ElementsAre("1.json"));
}

TEST_F(AgentSpoolTest, AFolderThatCannotBeListedIsEmpty) {
    put("1.json");
    // Opening the support folder, opening the spool in it, listing that.
    for (const int operation : {1, 2, 3}) {
        files.failOperation(operation, std::errc::io_error);
        spool->take();
        EXPECT_THAT(taken, IsEmpty()) << operation;
    }
    spool->take();
    EXPECT_THAT(taken, ElementsAre("1.json"));
}

TEST_F(AgentSpoolTest, FilesBehindALinkAreNotOurs) {
    putLarge("1.json");
    spool->take();
    disk.put("/home/me/photos/a.json", "precious");
    disk.removeTree(folder);
    disk.makeLink("/home/me/photos", folder);
    finish();
    spool->take();
    finish();
    EXPECT_THAT(taken, IsEmpty());
    EXPECT_EQ(disk.text("/home/me/photos/a.json"), "precious");
}

TEST_F(AgentSpoolTest, ASpoolThatIsReplacedWhileItIsReadLosesNothing) {
    putLarge("1.json");
    put("2.json");
    spool->take();
    disk.move(folder, "/home/me/elsewhere");
    put("1.json", "another");
    finish();
    EXPECT_THAT(taken, ElementsAre("1.json", "2.json"));
    EXPECT_EQ(disk.text(std::string(folder) + "/1.json"), "another") << "not the file that was read";
}

/// Whatever comes when and however large it is: each file is taken once, and those that lay there together in
/// their order.
TEST_F(AgentSpoolTest, TakesEverythingOnceAndInOrder) {
    std::mt19937 random(11);
    const auto pick = [&random](int count) {
        return static_cast<int>(random() % static_cast<unsigned>(count));
    };
    for (int run = 0; run < 200; ++run) {
        taken.clear();
        std::vector<std::string> expected;
        int number = 0;
        for (int step = 0; step < 12; ++step) {
            switch (pick(5)) {
            case 0:
                spool->take();
                break;
            case 1:
                time.runBackground();
                break;
            case 2:
                if (pick(4) == 0) {
                    spool->stop();
                }
                break;
            default:
                for (int count = pick(100); count > 0; --count) {
                    disk.clock += pick(2) * 0.001;
                    const std::string name = std::to_string(run * 10'000 + 1'000'000 + ++number) + ".json";
                    pick(20) == 0 ? putLarge(name) : put(name);
                    expected.push_back(name);
                }
            }
        }
        spool->take();
        finish();
        spool->take();
        finish();
        // Each name is later than all before it, and so is its time or equal.
        ASSERT_THAT(taken, ElementsAreArray(expected)) << "run " << run;
        ASSERT_THAT(left(), IsEmpty());
    }
}

} // namespace
} // namespace veslora
