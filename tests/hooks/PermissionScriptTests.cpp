// SPDX-License-Identifier: MIT
// The scripts that hold an agent's prompt open for an answer, under every shell. Most tests move the clock
// and count the polls by hand; those with processes that come and go use the real one.
#include "tests/VesloraCore/TestData.h"
#include "tests/hooks/HookRoom.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <ctime>
#include <filesystem>
#include <regex>
#include <set>
#include <tuple>

using namespace veslora;
using namespace veslora::test;
using testing::IsEmpty;

namespace {

const std::string allowed =
    R"({"hookSpecificOutput":{"hookEventName":"PermissionRequest","decision":{"behavior":"allow"}}})";
const std::string denied =
    R"({"hookSpecificOutput":{"hookEventName":"PermissionRequest","decision":{"behavior":"deny","message":"Declined from Veslora"}}})";

class PermissionScript : public testing::TestWithParam<std::tuple<Shell, Agent>> {
  protected:
    void SetUp() override { room.write("heartbeat", "1700000000"); }

    Result run(const Options& options = {}) { return room.run(agent.permission, "{\"a\":1}", options); }
    std::unique_ptr<Running> start(const Options& options) {
        return room.start(agent.permission, "{\"a\":1}", options);
    }
    std::vector<std::string> spooled() { return room.names(agent.spool); }
    /// Has the answer come at a poll.
    void answerAt(int poll, const std::string& word) {
        room.atPoll(poll, "printf '" + word + "' >\"$support/" + agent.answers + "/$id\"\n");
    }
    /// The id in a request's file name.
    std::string idOf(const std::string& name) {
        std::smatch parts;
        EXPECT_TRUE(std::regex_match(name, parts, std::regex(agent.permissionPattern))) << name;
        return parts.size() > 1 ? parts[1].str() : std::string();
    }
    /// A heartbeat of now, which stays fresh for as long as any test here runs.
    void beatOnTheRealClock() { room.write("heartbeat", std::to_string(std::time(nullptr) + 300)); }
    bool waitForRequests(std::size_t count) {
        return becomesTrue([&] {
            const auto names = spooled();
            return std::ranges::count_if(names, [](const std::string& name) {
                       return name.starts_with("perm-");
                   }) == static_cast<long>(count);
        });
    }
    void expectNothingLeft() {
        EXPECT_THAT(spooled(), IsEmpty());
        EXPECT_THAT(room.names(agent.answers), IsEmpty());
    }

    HookRoom room{std::get<0>(GetParam())};
    Agent agent = std::get<1>(GetParam());
};

const Options waitsLong = {.environment = {{"VESLORA_PERMISSION_WAIT", "600"}}, .clock = Clock::real};

Options waiting(const std::string& seconds) {
    return {.environment = {{"VESLORA_PERMISSION_WAIT", seconds}}};
}

} // namespace

TEST_P(PermissionScript, WithoutAUsableHeartbeatItEndsAtOnce) {
    for (const char* beat :
         {"", "\n", "letters", "1700000000x", "-1", " 1700000000", "1700000000 ", "1699999993", "0",
          "123456789012345678901234567890", "1700000000\n1700000000", "1.7e9", "$(date)"}) {
        room.write("heartbeat", beat);
        EXPECT_EQ(run(), silence) << beat;
        EXPECT_FALSE(room.exists(agent.spool)) << beat;
    }
    std::filesystem::remove(room.path("heartbeat"));
    EXPECT_EQ(run(), silence);
    std::filesystem::create_symlink("/nonexistent", room.path("heartbeat"));
    EXPECT_EQ(run(), silence);
    std::filesystem::remove(room.path("heartbeat"));
    std::filesystem::create_directory(room.path("heartbeat"));
    EXPECT_EQ(run(), silence);
    EXPECT_FALSE(room.exists(agent.spool));
}

TEST_P(PermissionScript, WithAHeartbeatOfTheLastSixSecondsItAsks) {
    for (const char* beat : {"1699999994", "1700000000", "1700000000\n", "1700000000\n\n", "1800000000",
                             "0001700000000", "999999999999999999"}) {
        room.write("heartbeat", beat);
        EXPECT_EQ(run(waiting("0")), silence) << beat;
        EXPECT_EQ(spooled().size(), 1u) << beat;
        std::filesystem::remove_all(room.path(agent.spool));
    }
}

TEST_P(PermissionScript, TheHeartbeatMayBeALink) {
    std::filesystem::rename(room.path("heartbeat"), room.path("elsewhere"));
    std::filesystem::create_symlink("elsewhere", room.path("heartbeat"));
    answerAt(1, "allow");
    EXPECT_EQ(run(), (Result{0, allowed, ""}));
}

TEST_P(PermissionScript, FilesTheRequestByteForByteUnderItsName) {
    for (const std::string& path : dataFiles("agents/" + agent.name + "/hooks", ".json")) {
        EXPECT_EQ(room.run(agent.permission, dataFile(path), waiting("0")), silence);
        ASSERT_EQ(spooled().size(), 1u);
        const std::string name = spooled().front();
        EXPECT_FALSE(idOf(name).empty());
        EXPECT_EQ(room.read(agent.spool + "/" + name), dataFile(path));
        EXPECT_EQ(room.mode(agent.spool + "/" + name), 0600u);
        std::filesystem::remove(room.path(agent.spool + "/" + name));
    }
    EXPECT_EQ(room.mode(agent.spool), 0700u);
    EXPECT_EQ(room.mode(agent.answers), 0700u);
}

TEST_P(PermissionScript, PrintsTheDocumentOfAnAnswerAndTakesItAway) {
    answerAt(3, "allow");
    EXPECT_EQ(run(), (Result{0, allowed, ""}));
    EXPECT_THAT(room.names(agent.answers), IsEmpty());
    EXPECT_EQ(room.polls(), 3);
}

TEST_P(PermissionScript, OnlyTheExactWordsDecide) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"deny", denied}, {"pass", ""},   {"ALLOW", ""},       {"allowed", ""},
        {" allow", ""},   {"allow ", ""}, {"allow\\nx", ""},   {"\\nallow", ""},
        {"", ""},         {"*", ""},      {"deny\\n", denied}, {"allow deny", ""}};
    int poll = 0;
    for (const auto& [word, printed] : cases) {
        answerAt(++poll, word);
        EXPECT_EQ(run(), (Result{0, printed, ""})) << word;
        EXPECT_THAT(room.names(agent.answers), IsEmpty()) << word;
        EXPECT_EQ(room.polls(), poll) << word;
        std::filesystem::remove_all(room.path(agent.spool));
    }
}

TEST_P(PermissionScript, ADirectoryInThePlaceOfTheAnswerDecidesNothing) {
    room.atPoll(1, "mkdir \"$support/" + agent.answers + "/$id\"\n");
    EXPECT_EQ(run(), silence);
    EXPECT_EQ(room.polls(), 1);
}

TEST_P(PermissionScript, AWaitOfOneSecondPollsFiveTimes) {
    answerAt(4, "allow");
    EXPECT_EQ(run(waiting("1")), (Result{0, allowed, ""}));
    std::filesystem::remove_all(room.path(agent.spool));
    room.atPoll(9, "printf allow >\"$support/" + agent.answers + "/$id\"\n");
    EXPECT_EQ(run(waiting("1")), silence);
    EXPECT_EQ(room.polls(), 9);
    EXPECT_EQ(room.names(agent.answers).size(), 1u) << "the answer came too late to be read";
}

TEST_P(PermissionScript, AWaitOfNoSecondsFilesTheRequestAndReturns) {
    EXPECT_EQ(run(waiting("0")), silence);
    EXPECT_EQ(spooled().size(), 1u);
    EXPECT_EQ(room.polls(), 0);
}

TEST_P(PermissionScript, WaitsTwentySecondsUnlessToldOtherwise) {
    answerAt(99, "allow");
    EXPECT_EQ(run(), (Result{0, allowed, ""}));
    std::filesystem::remove_all(room.path(agent.spool));
    EXPECT_EQ(run(waiting("nonsense")), silence);
    EXPECT_EQ(room.polls(), 199);
    EXPECT_EQ(spooled().size(), 1u) << "a script that runs out of time leaves the request as it is";
}

TEST_P(PermissionScript, AnOddWaitCountsAsTwentySeconds) {
    int before = 0;
    for (const char* wait : {"", "-5", "1.5", "123456789012345678901234567890"}) {
        EXPECT_EQ(run(waiting(wait)), silence) << wait;
        EXPECT_EQ(room.polls() - before, 100) << wait;
        before = room.polls();
    }
}

TEST_P(PermissionScript, LeadingZerosDoNotMakeTheWaitOctal) {
    EXPECT_EQ(run(waiting("008")), silence);
    EXPECT_EQ(room.polls(), 40);
    EXPECT_EQ(run(waiting("000")), silence);
    EXPECT_EQ(room.polls(), 40);
}

TEST_P(PermissionScript, AnOldAnswerOfItsIdIsNotItsAnswer) {
    room.setSuffix("aB3xYz");
    const std::string id = agent.name == "claude" ? "aB3xYz" : std::to_string(getpid()) + "-aB3xYz";
    room.write(agent.answers + "/" + id, "allow");
    EXPECT_EQ(run(waiting("1")), silence);
    EXPECT_EQ(room.polls(), 5);
    EXPECT_THAT(room.names(agent.answers), IsEmpty());
}

TEST_P(PermissionScript, ASignalInMidWaitTakesTheRequestBack) {
    int poll = 0;
    for (const char* signal : {"TERM", "INT", "HUP"}) {
        poll += 3;
        room.atPoll(poll,
                    "printf allow >\"$support/" + agent.answers + "/$id\"\nkill -" + signal + " $PPID\n");
        EXPECT_EQ(run(), silence) << signal;
        expectNothingLeft();
        EXPECT_EQ(room.polls(), poll) << signal;
    }
}

TEST_P(PermissionScript, ASignalAfterTheRequestWasTakenPrintsNothing) {
    room.atPoll(2, "rm \"$support/" + agent.spool + "/perm-$id.json\"\nkill -TERM $PPID\n");
    EXPECT_EQ(run(), silence);
    EXPECT_EQ(room.polls(), 2);
    expectNothingLeft();
}

TEST_P(PermissionScript, ASignalWhileThePayloadStillArrivesLeavesNothing) {
    beatOnTheRealClock();
    const auto hook = start({.clock = Clock::real, .inputStaysOpen = true});
    ASSERT_TRUE(becomesTrue([&] {
        const auto names = spooled();
        return names.size() == 1 && room.read(agent.spool + "/" + names.front()) == "{\"a\":1}";
    }));
    hook->signalGroup(SIGTERM);
    EXPECT_EQ(hook->result(), silence);
    expectNothingLeft();
}

TEST_P(PermissionScript, ASignalOnTheRealClockEndsTheWait) {
    beatOnTheRealClock();
    const auto hook = start(waitsLong);
    ASSERT_TRUE(waitForRequests(1));
    hook->signal(SIGTERM);
    EXPECT_EQ(hook->result(), silence);
    expectNothingLeft();
}

TEST_P(PermissionScript, AHeartbeatThatVanishesEndsTheWaitAtOnce) {
    room.atPoll(2, "rm \"$support/heartbeat\"\n");
    EXPECT_EQ(run(), silence);
    EXPECT_EQ(room.polls(), 2);
    expectNothingLeft();
}

TEST_P(PermissionScript, AHeartbeatThatGrowsOldEndsTheWaitWithinASecond) {
    room.atPoll(6, "echo 1700000007 >\"$scratch/clock\"\n");
    EXPECT_EQ(run(), silence);
    EXPECT_GE(room.polls(), 6);
    EXPECT_LE(room.polls(), 11);
    expectNothingLeft();
}

TEST_P(PermissionScript, AHeartbeatThatGoesOnKeepsTheWait) {
    room.atPoll(6, "echo 1700000007 >\"$scratch/clock\"\nprintf 1700000006 >\"$support/heartbeat\"\n");
    answerAt(60, "deny");
    EXPECT_EQ(run(), (Result{0, denied, ""}));
}

TEST_P(PermissionScript, AnAnswerCountsEvenIfTheProgramIsGoneSince) {
    room.atPoll(2, "printf allow >\"$support/" + agent.answers + "/$id\"\nrm \"$support/heartbeat\"\n");
    EXPECT_EQ(run(), (Result{0, allowed, ""}));
}

TEST_P(PermissionScript, TheEndOfTheProgramsProcessEndsTheWait) {
    beatOnTheRealClock();
    const pid_t program = fork();
    if (program == 0) {
        pause();
        _exit(0);
    }
    room.write("pid", std::to_string(program) + "\n");
    const auto hook = start(waitsLong);
    const bool hasAsked = waitForRequests(1);
    kill(program, SIGKILL);
    waitpid(program, nullptr, 0);
    ASSERT_TRUE(hasAsked);
    EXPECT_EQ(hook->result(), silence);
    expectNothingLeft();
}

TEST_P(PermissionScript, AProgramThatStartsDuringTheWaitIsWatchedToo) {
    // Its parent lets it vanish as soon as it is killed.
    int ends[2] = {-1, -1};
    ASSERT_EQ(pipe(ends), 0);
    const pid_t parent = fork();
    if (parent == 0) {
        signal(SIGCHLD, SIG_IGN);
        const pid_t program = fork();
        if (program > 0 && write(ends[1], &program, sizeof program) != sizeof program) {
            _exit(1);
        }
        pause();
        _exit(0);
    }
    pid_t program = 0;
    ASSERT_EQ(read(ends[0], &program, sizeof program), static_cast<ssize_t>(sizeof program));
    const std::string id = std::to_string(program);
    room.write("pid", "99999999");
    room.atPoll(2, "echo " + id + " >\"$support/pid\"\n");
    room.atPoll(8, "kill -9 " + id + "\nwhile [ -d /proc/" + id + " ]; do :; done\n");
    EXPECT_EQ(run(), silence);
    EXPECT_EQ(room.polls(), 8);
    expectNothingLeft();
    kill(parent, SIGKILL);
    waitpid(parent, nullptr, 0);
    close(ends[0]);
    close(ends[1]);
}

TEST_P(PermissionScript, AnOddPidFileChangesNothing) {
    int poll = 0;
    for (const char* pid : {"", "letters", "0", "-1", "99999999", "123456789012345678901234567890", "1\n2",
                            "1", "self", "../../tmp"}) {
        room.write("pid", pid);
        answerAt(poll += 8, "allow");
        EXPECT_EQ(run(), (Result{0, allowed, ""})) << pid;
        EXPECT_EQ(room.polls(), poll) << pid;
        std::filesystem::remove_all(room.path(agent.spool));
    }
}

/// The id of a process that has ended and whose id is free.
pid_t endedProcess() {
    const pid_t ended = fork();
    if (ended == 0) {
        _exit(0);
    }
    waitpid(ended, nullptr, 0);
    return ended;
}

std::string ownNamespace() {
    return std::filesystem::read_symlink("/proc/self/ns/pid").string();
}

TEST_P(PermissionScript, AProgramThatIsDeadDoesNotHoldThePromptDespiteAFreshHeartbeat) {
    room.write("pid", std::to_string(endedProcess()) + "\n" + ownNamespace() + "\n");
    EXPECT_EQ(run(), silence);
    EXPECT_FALSE(room.exists(agent.spool));
    EXPECT_EQ(room.polls(), 0);
}

TEST_P(PermissionScript, AProgramThatDiesAndIsNeverSeenAliveEndsTheWait) {
    const std::string dead = std::to_string(endedProcess());
    room.atPoll(2, "printf '" + dead + "\\n" + ownNamespace() + "\\n' >\"$support/pid\"\n");
    EXPECT_EQ(run(), silence);
    EXPECT_LE(room.polls(), 5);
    expectNothingLeft();
}

TEST_P(PermissionScript, AProcessThatIsMissingProvesNothingInAnotherNamespace) {
    int poll = 0;
    for (const std::string& space : {std::string("\npid:[1]\n"), std::string("\n"), std::string("\n\n"),
                                     "\n" + ownNamespace() + "x\n", "\nx\n" + ownNamespace() + "\n"}) {
        room.write("pid", std::to_string(endedProcess()) + space);
        answerAt(poll += 8, "allow");
        EXPECT_EQ(run(), (Result{0, allowed, ""})) << space;
        EXPECT_EQ(room.polls(), poll) << space;
        std::filesystem::remove_all(room.path(agent.spool));
    }
}

TEST_P(PermissionScript, AProgramThatLivesIsWatchedWhateverItsNamespace) {
    int poll = 0;
    for (const std::string& space : {std::string("pid:[1]"), ownNamespace()}) {
        room.write("pid", std::to_string(getpid()) + "\n" + space + "\n");
        answerAt(poll += 8, "allow");
        EXPECT_EQ(run(), (Result{0, allowed, ""})) << space;
        EXPECT_EQ(room.polls(), poll) << space;
        std::filesystem::remove_all(room.path(agent.spool));
    }
}

TEST_P(PermissionScript, AnEndlessHeartbeatHoldsNobody) {
    // A gigabyte of digits that takes no room on the disk, and one without a newline.
    room.write("heartbeat", "1700000000");
    std::filesystem::resize_file(room.path("heartbeat"), std::uintmax_t{1} << 30);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(run({.environment = {{"VESLORA_PERMISSION_WAIT", "0"}}}).status, 0);
    room.write("heartbeat", std::string(std::size_t{1} << 24, '7'));
    EXPECT_EQ(run(), silence);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

TEST_P(PermissionScript, NothingButARegularFileIsOpened) {
    for (const char* name : {"heartbeat", "pid"}) {
        std::filesystem::remove(room.path(name));
        ASSERT_EQ(mkfifo(room.path(name).c_str(), 0600), 0);
        EXPECT_EQ(run(waiting("0")), silence) << name;
        std::filesystem::remove(room.path(name));
        std::filesystem::create_symlink("/dev/zero", room.path(name));
        EXPECT_EQ(run(waiting("0")), silence) << name;
        std::filesystem::remove(room.path(name));
        room.write("heartbeat", "1700000000");
        std::filesystem::remove_all(room.path(agent.spool));
    }
}

TEST_P(PermissionScript, AnAgentNeverWritesIntoAClosedPipe) {
    const std::string rest(1'000'000, 'x');
    room.write("heartbeat", "0");
    const auto early = start({.inputStaysOpen = true});
    EXPECT_TRUE(early->feed(rest)) << "no program";
    EXPECT_EQ(early->result(), silence);
    room.write("heartbeat", "1700000000");
    for (const FullDisk disk : {FullDisk::writeFails, FullDisk::writerIsKilled}) {
        const auto full = start({.disk = disk, .inputStaysOpen = true});
        EXPECT_TRUE(full->feed(rest)) << "a full disk";
        EXPECT_EQ(full->result(), silence);
    }
    std::filesystem::remove_all(room.path(agent.spool));
    room.write(agent.spool, "no folder");
    const auto odd = start({.inputStaysOpen = true});
    EXPECT_TRUE(odd->feed(rest)) << "no spool";
    EXPECT_EQ(odd->result(), silence);
}

TEST_P(PermissionScript, AnAgentThatNeverEndsItsInputIsLeft) {
    room.write("heartbeat", "0");
    const auto hook = start({.inputStaysOpen = true});
    EXPECT_EQ(hook->result(), silence);
}

TEST_P(PermissionScript, NothingIsFiledThroughALink) {
    for (const std::string& name : {agent.spool, agent.answers}) {
        std::filesystem::create_directory(room.path("elsewhere"));
        std::filesystem::create_directory_symlink("elsewhere", room.path(name));
        EXPECT_EQ(run(), silence) << name;
        EXPECT_THAT(room.names("elsewhere"), IsEmpty());
        EXPECT_EQ(room.polls(), 0);
        std::filesystem::remove(room.path(name));
        std::filesystem::remove(room.path("elsewhere"));
    }
}

TEST_P(PermissionScript, EightAtOnceGetTheirOwnAnswers) {
    beatOnTheRealClock();
    std::vector<std::unique_ptr<Running>> hooks;
    for (int i = 0; i < 8; ++i) {
        hooks.push_back(room.start(agent.permission, std::to_string(i), waitsLong));
    }
    ASSERT_TRUE(waitForRequests(8));
    std::set<std::string> ids;
    for (const std::string& name : spooled()) {
        const bool isEven = std::stoi(room.read(agent.spool + "/" + name)) % 2 == 0;
        ids.insert(idOf(name));
        room.write(agent.answers + "/answer.tmp", isEven ? "allow" : "deny");
        std::filesystem::rename(room.path(agent.answers + "/answer.tmp"),
                                room.path(agent.answers + "/" + idOf(name)));
    }
    EXPECT_EQ(ids.size(), 8u);
    for (std::size_t i = 0; i < hooks.size(); ++i) {
        EXPECT_EQ(hooks[i]->result(), (Result{0, i % 2 == 0 ? allowed : denied, ""})) << i;
    }
    EXPECT_THAT(room.names(agent.answers), IsEmpty());
}

TEST_P(PermissionScript, AFullDiskLeavesThePromptToTheAgent) {
    for (const FullDisk disk : {FullDisk::writeFails, FullDisk::writerIsKilled}) {
        EXPECT_EQ(run({.disk = disk}), silence);
        expectNothingLeft();
        EXPECT_EQ(room.polls(), 0);
    }
}

TEST_P(PermissionScript, ADirectoryThatMayNotBeWrittenLeavesThePromptToTheAgent) {
    EXPECT_EQ(run({.user = User::stranger}), silence);
    EXPECT_FALSE(room.exists(agent.spool));
    EXPECT_EQ(room.polls(), 0);
}

INSTANTIATE_TEST_SUITE_P(Shells, PermissionScript,
                         testing::Combine(testing::ValuesIn(shells()), testing::ValuesIn(agents())),
                         [](const auto& test) {
                             return std::get<0>(test.param).name + "_" + std::get<1>(test.param).name;
                         });
