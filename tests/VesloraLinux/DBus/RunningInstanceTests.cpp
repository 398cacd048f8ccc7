// SPDX-License-Identifier: MIT
// One program that runs, in the test's own thread, and one that asks it, in another.
#include "VesloraCore/Island/StatusLine.h"
#include "VesloraLinux/DBus/RunningInstance.h"
#include "VesloraLinux/DBus/SingleInstance.h"
#include "VesloraLinux/System/CommandSocket.h"
#include "VesloraLinux/System/PosixFiles.h"
#include "tests/VesloraLinux/Support/PrivateBus.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"
#include "tests/VesloraLinux/Support/Waiting.h"
#include "tests/support/ManualScheduler.h"

#include <QDBusPendingCall>
#include <QVariant>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <future>
#include <vector>

namespace veslora {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using Result = RunningInstance::Result;
using Answer = RunningInstance::Answer;
using testing::waitUntil;

/// For what must not come: long enough for nothing to be taken for slowness.
constexpr RunningInstance::Patience short_{300ms, 300ms};

class RunningInstanceTests : public ::testing::Test {
  protected:
    void run() {
        auto attempt = SupportLock::take(files, support);
        running = std::make_unique<SingleInstance>(time, std::move(std::get<SupportLock>(attempt)), server);
        ASSERT_TRUE(running->claim(perform));
    }

    /// Asks while this thread handles events.
    Answer ask(const CommandLine::Ask& question, RunningInstance::Patience patience = {}) {
        auto answer = std::async(std::launch::async, [=, this] {
            return RunningInstance(support, client, patience).ask(question);
        });
        waitUntil([&] {
            if (whileWaiting) {
                whileWaiting();
            }
            return answer.wait_for(0s) == std::future_status::ready;
        });
        return answer.get();
    }
    /// Asks while nobody answers.
    Answer askInVain(Command command) {
        return std::async(std::launch::async,
                          [=, this] { return RunningInstance(support, client, short_).ask({command}); })
            .get();
    }

    void expectsEachCommandToBeDone() {
        const std::vector<CommandLine::Ask> questions{{Command::settings},
                                                      {Command::toggle},
                                                      {Command::nextPage},
                                                      {Command::previousPage},
                                                      {Command::edit},
                                                      {Command::pause},
                                                      {Command::pause, AlertPause::For{9000}},
                                                      {Command::pause, AlertPause::UntilTomorrow{}},
                                                      {Command::resume}};
        for (const CommandLine::Ask& question : questions) {
            EXPECT_EQ(ask(question).result, Result::done) << CommandLine::lineFor(question);
        }
        EXPECT_EQ(asked, questions);
        outcome.text = StatusLine::make(true, LiveActivityKind::none, {});
        const Answer status = ask({Command::status});
        EXPECT_EQ(status.result, Result::done);
        EXPECT_EQ(status.text, outcome.text);
        EXPECT_EQ(asked.back(), CommandLine::Ask{Command::status});
    }
    void expectTextsToGoBothWays() {
        const CommandLine::Ask import{Command::importSettings, {}, R"({"displayOutput": "DP-1 ä"})"};
        EXPECT_EQ(ask(import).result, Result::done);
        EXPECT_EQ(asked.back(), import);
        outcome.text = R"({"accent":"cyan"})";
        EXPECT_EQ(ask({Command::exportSettings}).text, outcome.text);
        outcome.text = "claude: installed";
        for (const Command command : {Command::installHooks, Command::removeHooks, Command::hooksStatus}) {
            const CommandLine::Ask question{command, {}, "claude"};
            EXPECT_EQ(ask(question).text, outcome.text);
            EXPECT_EQ(asked.back(), question);
        }
        for (const std::string& text : {std::string(), std::string("\x1b[2J"), std::string(100'000, 'x')}) {
            outcome.text = text;
            EXPECT_EQ(ask({Command::exportSettings}).result, Result::strange) << text.substr(0, 9);
            EXPECT_EQ(ask({Command::hooksStatus, {}, "codex"}).result, Result::strange);
        }
    }
    void expectFailureToBeTold() {
        outcome = {false, "The island is not on screen."};
        const Answer answer = ask({Command::toggle});
        EXPECT_EQ(answer.result, Result::failed);
        EXPECT_EQ(RunningInstance::explain(answer), "The island is not on screen.");
        outcome.text = "\x1b]0;gone\a" + std::string(100'000, 'x');
        const Answer wild = ask({Command::toggle});
        EXPECT_NE(wild.result, Result::done);
        EXPECT_EQ(RunningInstance::explain(wild).find('\x1b'), std::string::npos);
        EXPECT_LT(RunningInstance::explain(wild).size(), 1100U);
    }
    void expectAStrangeStatus() {
        for (const std::string& text : {std::string(), std::string("{}"), std::string("\x1b[2J")}) {
            outcome.text = text;
            EXPECT_EQ(ask({Command::status}).result, Result::strange) << text;
        }
    }

    testing::CoreApplication application;
    testing::TemporaryFolder folder;
    PosixFiles files;
    ManualScheduler time;
    std::string support = folder.path("data/Veslora");
    std::optional<QDBusConnection> server; ///< the way on which the one that runs is to be found
    std::optional<QDBusConnection> client;
    std::function<void()> whileWaiting;
    std::vector<CommandLine::Ask> asked;
    CommandOutcome outcome;
    SingleInstance::Perform perform = [this](const CommandLine::Ask& question) {
        asked.push_back(question);
        return outcome;
    };
    std::unique_ptr<SingleInstance> running;
};

TEST_F(RunningInstanceTests, TellsThatNoneRuns) {
    for (const Command command : {Command::settings, Command::toggle, Command::nextPage, Command::edit,
                                  Command::pause, Command::resume, Command::quit, Command::status}) {
        EXPECT_EQ(askInVain(command).result, Result::notThere);
    }
    EXPECT_FALSE(files.stat(support, Links::refuse)) << "to ask makes nothing";
    run();
    running.reset();
    EXPECT_EQ(askInVain(Command::toggle).result, Result::notThere);
}

TEST_F(RunningInstanceTests, TellsThatNoneRunsWhereOneWasKilled) {
    ASSERT_FALSE(files.makeDirectory(support, 0700));
    const FileDescriptor directory(open(support.c_str(), O_PATH | O_DIRECTORY));
    { const FileDescriptor left = CommandSocket::listen(directory); }
    ASSERT_TRUE(files.stat(support + "/socket", Links::refuse));
    EXPECT_EQ(askInVain(Command::quit).result, Result::notThere);
}

TEST_F(RunningInstanceTests, OverTheSocketEachCommandIsDone) {
    run();
    expectsEachCommandToBeDone();
}

TEST_F(RunningInstanceTests, OverTheSocketTextsGoBothWays) {
    run();
    expectTextsToGoBothWays();
}

TEST_F(RunningInstanceTests, OverTheSocketWhatFailedIsTold) {
    run();
    expectFailureToBeTold();
}

TEST_F(RunningInstanceTests, OverTheSocketAStatusOfAnotherFormIsNotPrinted) {
    run();
    expectAStrangeStatus();
}

TEST_F(RunningInstanceTests, OverTheSocketOneThatHangsIsGivenUp) {
    run();
    EXPECT_EQ(askInVain(Command::status).result, Result::silent);
    EXPECT_EQ(askInVain(Command::quit).result, Result::silent);
}

TEST_F(RunningInstanceTests, OneThatHangsAndWasAskedTooOftenIsGivenUpAtOnce) {
    run();
    const FileDescriptor directory(open(support.c_str(), O_PATH | O_DIRECTORY));
    std::vector<FileDescriptor> waiting;
    while (FileDescriptor next = CommandSocket::connect(directory)) {
        waiting.push_back(std::move(next));
    }
    EXPECT_THAT(waiting, Not(IsEmpty()));
    EXPECT_EQ(askInVain(Command::status).result, Result::silent);
}

TEST_F(RunningInstanceTests, OverTheSocketQuitIsDoneOnlyOnceTheProcessIsGone) {
    run();
    // This process stays.
    EXPECT_EQ(ask({Command::quit}, {5s, 300ms}).result, Result::stillThere);
    EXPECT_THAT(asked, ElementsAre(CommandLine::Ask{Command::quit}));
}

TEST_F(RunningInstanceTests, AnAnswerThatIsNoneIsStrange) {
    ASSERT_FALSE(files.makeDirectory(support, 0700));
    const FileDescriptor directory(open(support.c_str(), O_PATH | O_DIRECTORY));
    std::string answer;
    CommandListener other(time, CommandSocket::listen(directory),
                          [&](const auto&) { return CommandListener::Answer{answer}; });
    for (const std::string& text :
         {std::string(), std::string("OK"), std::string("doner"), std::string("done x"),
          std::string("done\nfailed"), std::string(100'000, 'd')}) {
        answer = text;
        const bool isRight = text == "done\nfailed";
        EXPECT_EQ(ask({Command::toggle}).result, isRight ? Result::done : Result::strange)
            << text.substr(0, 20);
    }
}

TEST_F(RunningInstanceTests, ALinkInPlaceOfTheFolderLeadsToNobody) {
    run();
    ASSERT_FALSE(files.makeLink(support, folder.path("link")));
    support = folder.path("link");
    EXPECT_EQ(askInVain(Command::toggle).result, Result::notThere);
}

/// Holds the name and knows nothing of what it is asked.
class Impostor : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.veslora.Veslora")

  public slots:
    int Status() { return 7; }
    QString Toggle() { return QStringLiteral("toggled"); }
};

class RunningInstanceBusTests : public RunningInstanceTests {
  protected:
    RunningInstanceBusTests() {
        server = bus.connect();
        client = bus.connect();
    }
    /// The socket is not to be what answered.
    void runOnBusAlone() {
        run();
        ASSERT_FALSE(files.remove(support + "/socket"));
    }

    testing::PrivateBus bus;
};

TEST_F(RunningInstanceBusTests, TellsThatNoneRuns) {
    EXPECT_EQ(askInVain(Command::quit).result, Result::notThere);
}

TEST_F(RunningInstanceBusTests, EachCommandIsDone) {
    runOnBusAlone();
    expectsEachCommandToBeDone();
}

TEST_F(RunningInstanceBusTests, TextsGoBothWays) {
    runOnBusAlone();
    expectTextsToGoBothWays();
}

TEST_F(RunningInstanceBusTests, AnAgentThatNobodyKnowsIsRefused) {
    runOnBusAlone();
    EXPECT_EQ(ask({Command::installHooks, {}, "nobody"}).result, Result::failed);
    EXPECT_EQ(ask({Command::importSettings, {}, " "}).result, Result::done) << "that is for its performer";
    EXPECT_EQ(asked.size(), 1U);
}

TEST_F(RunningInstanceBusTests, WhatFailedIsTold) {
    runOnBusAlone();
    expectFailureToBeTold();
}

TEST_F(RunningInstanceBusTests, AStatusOfAnotherFormIsNotPrinted) {
    runOnBusAlone();
    expectAStrangeStatus();
}

TEST_F(RunningInstanceBusTests, OneThatHangsIsGivenUpAndNotAskedAgainByTheSocket) {
    run();
    EXPECT_EQ(askInVain(Command::status).result, Result::silent);
    EXPECT_TRUE(waitUntil([&] { return !asked.empty(); }));
    testing::handleEventsFor(50);
    EXPECT_THAT(asked, ElementsAre(CommandLine::Ask{Command::status}));
}

TEST_F(RunningInstanceBusTests, QuitIsDoneOnceTheConnectionHasGone) {
    runOnBusAlone();
    whileWaiting = [&] {
        if (!asked.empty() && running) {
            // As a process does that ends; its answer was sent before.
            running.reset();
            const QString name = server->name();
            server.reset();
            QDBusConnection::disconnectFromBus(name);
        }
    };
    EXPECT_EQ(ask({Command::quit}).result, Result::done);
}

TEST_F(RunningInstanceBusTests, QuitIsNotDoneWhileTheConnectionStays) {
    runOnBusAlone();
    whileWaiting = [&] {
        if (!asked.empty()) {
            running.reset();
        }
    };
    EXPECT_EQ(ask({Command::quit}, {5s, 300ms}).result, Result::stillThere);
}

TEST_F(RunningInstanceBusTests, OneOfASessionWithoutThisBusIsReachedByTheSocket) {
    server.reset();
    run();
    expectsEachCommandToBeDone();
}

TEST_F(RunningInstanceBusTests, ABusThatHasDiedLeavesTheSocket) {
    run();
    bus.kill();
    expectsEachCommandToBeDone();
}

TEST_F(RunningInstanceBusTests, NoOtherTextIsTheLengthOfAPause) {
    run();
    for (const char* length : {"", "nonsense", "8d", "tomorrow ", "1h 30m"}) {
        auto call = QDBusMessage::createMethodCall(RunningName::bus, RunningName::path, RunningName::bus,
                                                   QStringLiteral("Pause"));
        call.setArguments({QString::fromUtf8(length)});
        const QDBusPendingCall pending = client->asyncCall(call);
        ASSERT_TRUE(waitUntil([&] { return pending.isFinished(); }));
        EXPECT_EQ(pending.reply().errorName(), RunningName::failure) << length;
    }
    EXPECT_TRUE(asked.empty());
}

TEST_F(RunningInstanceBusTests, WhoHoldsTheNameAndKnowsNoCommandIsStrange) {
    ASSERT_TRUE(server->registerService(RunningName::bus));
    EXPECT_EQ(ask({Command::toggle}).result, Result::strange) << "no object";
    Impostor impostor;
    ASSERT_TRUE(server->registerObject(RunningName::path, &impostor, QDBusConnection::ExportAllSlots));
    EXPECT_EQ(ask({Command::settings}).result, Result::strange) << "no such method";
    EXPECT_EQ(ask({Command::status}).result, Result::strange) << "a number";
    EXPECT_EQ(ask({Command::toggle}).result, Result::strange) << "a text where there is none";
}

} // namespace
} // namespace veslora

#include "RunningInstanceTests.moc"
