// SPDX-License-Identifier: MIT
// The scripts that file an event of their agent, under every shell.
#include "VesloraCore/Agents/Hooks/HookScripts.h"
#include "tests/VesloraCore/TestData.h"
#include "tests/VesloraCore/TestText.h"
#include "tests/hooks/HookRoom.h"

#include <gmock/gmock.h>
#include <sys/mount.h>

#include <filesystem>
#include <set>
#include <tuple>

using namespace veslora;
using namespace veslora::test;
using namespace std::string_literals;
using testing::ContainsRegex;
using testing::IsEmpty;

namespace {

class EventScript : public testing::TestWithParam<std::tuple<Shell, Agent>> {
  protected:
    Result run(std::string_view input, const Options& options = {}) {
        return room.run(agent.hook, input, options);
    }
    /// The one file of the spool; empty, with a failed test, when there is not exactly one.
    std::string onlyFile() {
        const auto files = room.names(agent.spool);
        EXPECT_EQ(files.size(), 1u);
        return files.size() == 1 ? agent.spool + "/" + files.front() : std::string();
    }
    void fillSpool(int count) {
        for (int i = 0; i < count; ++i) {
            room.write(agent.spool + "/old-" + std::to_string(i) + ".json", "{}");
        }
    }

    HookRoom room{std::get<0>(GetParam())};
    Agent agent = std::get<1>(GetParam());
};

// A disk of two pages, mounted for as long as this lives.
class SmallDisk {
  public:
    explicit SmallDisk(std::string path)
        : m_path(std::move(path)), m_isMounted(mount("tmpfs", m_path.c_str(), "tmpfs", 0, "size=8k") == 0) {}
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;
    ~SmallDisk() {
        if (m_isMounted) {
            EXPECT_EQ(umount(m_path.c_str()), 0);
        }
    }
    [[nodiscard]] bool isMounted() const { return m_isMounted; }

  private:
    std::string m_path;
    bool m_isMounted;
};

} // namespace

TEST_P(EventScript, FilesThePayloadByteForByteUnderItsName) {
    const std::string payload = "\0{\xFF\r\n\\n %s $HOME `x` \"'\"} no final newline"s;
    EXPECT_EQ(run(payload), silence);
    EXPECT_EQ(room.read(onlyFile()), payload);
    EXPECT_THAT(room.names(agent.spool).at(0), ContainsRegex("^" + agent.eventPattern + "$"));
}

TEST_P(EventScript, FilesEveryCapturedPayload) {
    const std::vector<std::string> captured = dataFiles("agents/" + agent.name + "/hooks", ".json");
    std::multiset<std::string> expected;
    for (const std::string& path : captured) {
        expected.insert(dataFile(path));
        EXPECT_EQ(run(dataFile(path)), silence) << path;
    }
    std::multiset<std::string> filed;
    for (const std::string& name : room.names(agent.spool)) {
        filed.insert(room.read(agent.spool + "/" + name));
    }
    EXPECT_EQ(filed, expected);
}

TEST_P(EventScript, FilesAPayloadOfAnySize) {
    const std::string payload = repeated("0123456789abcdef\n", 200'000);
    EXPECT_EQ(run(payload), silence);
    EXPECT_EQ(room.read(onlyFile()), payload);
}

TEST_P(EventScript, FilesAnEmptyPayloadToo) {
    EXPECT_EQ(run(""), silence);
    EXPECT_EQ(room.read(onlyFile()), "");
}

TEST_P(EventScript, NobodyElseMayReadWhatItFiles) {
    EXPECT_EQ(run("{}"), silence);
    EXPECT_EQ(room.mode(agent.spool), 0700u);
    EXPECT_EQ(room.mode(onlyFile()), 0600u);
}

TEST_P(EventScript, FindsItsDirectoryWhenStartedByItsNameAlone) {
    EXPECT_EQ(run("{}", {.byNameAlone = true}), silence);
    EXPECT_EQ(room.read(onlyFile()), "{}");
}

TEST_P(EventScript, FilesNothingOnceTheSpoolIsFull) {
    fillSpool(HookScripts::spoolLimit - 1);
    EXPECT_EQ(run("{}"), silence);
    EXPECT_EQ(room.names(agent.spool).size(), static_cast<std::size_t>(HookScripts::spoolLimit));
    EXPECT_EQ(run("{}"), silence);
    EXPECT_EQ(room.names(agent.spool).size(), static_cast<std::size_t>(HookScripts::spoolLimit));
}

TEST_P(EventScript, EightAtOnceFileEightEvents) {
    std::vector<std::unique_ptr<Running>> hooks;
    std::set<std::string> expected;
    for (int i = 0; i < 8; ++i) {
        const std::string payload = repeated(std::to_string(i), 100'000);
        expected.insert(payload);
        hooks.push_back(room.start(agent.hook, payload));
    }
    for (const auto& hook : hooks) {
        EXPECT_EQ(hook->result(), silence);
    }
    std::set<std::string> filed;
    for (const std::string& name : room.names(agent.spool)) {
        filed.insert(room.read(agent.spool + "/" + name));
    }
    EXPECT_EQ(filed, expected);
    EXPECT_EQ(room.names(agent.spool).size(), 8u);
}

TEST_P(EventScript, AnAgentNeverWritesIntoAClosedPipe) {
    const std::string rest(1'000'000, 'x');
    for (const FullDisk disk : {FullDisk::writeFails, FullDisk::writerIsKilled}) {
        const auto full = room.start(agent.hook, "{}", {.disk = disk, .inputStaysOpen = true});
        EXPECT_TRUE(full->feed(rest)) << "a full disk";
        EXPECT_EQ(full->result(), silence);
    }
    fillSpool(HookScripts::spoolLimit);
    const auto early = room.start(agent.hook, "{}", {.inputStaysOpen = true});
    EXPECT_TRUE(early->feed(rest)) << "a full spool";
    EXPECT_EQ(early->result(), silence);
    std::filesystem::remove_all(room.path(agent.spool));
    room.write(agent.spool, "no folder");
    const auto odd = room.start(agent.hook, "{}", {.inputStaysOpen = true});
    EXPECT_TRUE(odd->feed(rest)) << "no spool";
    EXPECT_EQ(odd->result(), silence);
}

TEST_P(EventScript, AnAgentThatNeverEndsItsInputIsLeft) {
    room.write(agent.spool, "no folder");
    EXPECT_EQ(room.start(agent.hook, "{}", {.inputStaysOpen = true})->result(), silence);
}

TEST_P(EventScript, NothingIsFiledThroughALink) {
    std::filesystem::create_directory(room.path("elsewhere"));
    std::filesystem::create_directory_symlink("elsewhere", room.path(agent.spool));
    EXPECT_EQ(run("{}"), silence);
    EXPECT_THAT(room.names("elsewhere"), IsEmpty());
}

TEST_P(EventScript, AFullDiskLeavesNothingBehind) {
    for (const FullDisk disk : {FullDisk::writeFails, FullDisk::writerIsKilled}) {
        EXPECT_EQ(run("{}", {.disk = disk}), silence);
        EXPECT_THAT(room.names(agent.spool), IsEmpty());
    }
}

TEST_P(EventScript, ADiskThatIsReallyFullLeavesNothingBehind) {
    std::filesystem::create_directory(room.path(agent.spool));
    const SmallDisk disk(room.path(agent.spool));
    if (!disk.isMounted()) {
        GTEST_SKIP() << "only root may mount a disk; the test above does it by a limit";
    }
    EXPECT_EQ(run(repeated("x", 100'000)), silence);
    EXPECT_THAT(room.names(agent.spool), IsEmpty());
    EXPECT_EQ(run("{}"), silence);
    EXPECT_EQ(room.read(onlyFile()), "{}");
}

TEST_P(EventScript, ADirectoryThatMayNotBeWrittenIsLeftAlone) {
    EXPECT_EQ(run("{}", {.user = User::stranger}), silence);
    EXPECT_FALSE(room.exists(agent.spool));
    std::filesystem::create_directory(room.path(agent.spool));
    std::filesystem::permissions(room.path(agent.spool), std::filesystem::perms(0555));
    EXPECT_EQ(run("{}", {.user = User::stranger}), silence);
    EXPECT_THAT(room.names(agent.spool), IsEmpty());
}

TEST_P(EventScript, AFileInThePlaceOfTheSpoolIsLeftAlone) {
    room.write(agent.spool, "mine");
    EXPECT_EQ(run("{}"), silence);
    EXPECT_EQ(room.read(agent.spool), "mine");
}

INSTANTIATE_TEST_SUITE_P(Shells, EventScript,
                         testing::Combine(testing::ValuesIn(shells()), testing::ValuesIn(agents())),
                         [](const auto& test) {
                             return std::get<0>(test.param).name + "_" + std::get<1>(test.param).name;
                         });
