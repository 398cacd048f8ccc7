// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/CommandListener.h"
#include "VesloraLinux/System/CommandSocket.h"
#include "tests/VesloraLinux/Support/OrdinaryUser.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"
#include "tests/VesloraLinux/Support/Waiting.h"
#include "tests/support/ManualScheduler.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>

#include <cerrno>
#include <string>
#include <vector>

namespace veslora {
namespace {

using ::testing::ElementsAre;
using testing::handleEventsFor;
using ::testing::IsEmpty;
using testing::waitUntil;

class CommandListenerTests : public ::testing::Test {
  protected:
    [[nodiscard]] FileDescriptor connect() const { return CommandSocket::connect(directory); }
    [[nodiscard]] FileDescriptor say(const std::string& text) const {
        FileDescriptor connection = connect();
        EXPECT_EQ(send(connection.value(), text.data(), text.size(), MSG_NOSIGNAL),
                  static_cast<ssize_t>(text.size()));
        return connection;
    }
    /// What has come so far.
    static std::string heard(const FileDescriptor& connection) {
        char bytes[256];
        const ssize_t count = recv(connection.value(), bytes, sizeof bytes, 0);
        return {bytes, static_cast<std::size_t>(std::max<ssize_t>(count, 0))};
    }
    /// The other end has closed it, and nothing was left to read.
    static bool isClosed(const FileDescriptor& connection) {
        char byte = 0;
        const ssize_t count = recv(connection.value(), &byte, 1, 0);
        return count == 0 || (count < 0 && errno != EAGAIN);
    }

    testing::CoreApplication application;
    testing::TemporaryFolder folder;
    FileDescriptor directory{open(folder.path().c_str(), O_PATH | O_DIRECTORY)};
    ManualScheduler time;
    std::vector<std::string> asked; ///< "-" for one who said nothing
    bool isLast = false;
    CommandListener listener{time, CommandSocket::listen(directory),
                             [this](const std::optional<std::string>& line) -> CommandListener::Answer {
                                 asked.push_back(line.value_or("-"));
                                 return {"echo " + line.value_or("-"), isLast};
                             }};
};

TEST_F(CommandListenerTests, AnswersALineWithALineAndCloses) {
    const FileDescriptor client = say("toggle\n");
    std::string text;
    EXPECT_TRUE(waitUntil([&] { return !(text += heard(client)).empty(); }));
    EXPECT_EQ(text, "echo toggle\n");
    EXPECT_TRUE(waitUntil([&] { return isClosed(client); }));
    EXPECT_THAT(asked, ElementsAre("toggle"));
    EXPECT_EQ(time.pending(), 0U);
}

TEST_F(CommandListenerTests, TakesALineInPiecesAndNothingBehindIt) {
    const FileDescriptor client = say("tog");
    EXPECT_TRUE(waitUntil([&] { return time.pending() == 1; }));
    ASSERT_EQ(send(client.value(), "gle\nquit\nquit\n", 14, MSG_NOSIGNAL), 14);
    EXPECT_TRUE(waitUntil([&] { return !asked.empty(); }));
    handleEventsFor(20);
    EXPECT_THAT(asked, ElementsAre("toggle"));
}

TEST_F(CommandListenerTests, WhoGoesWithoutAWordCountsAsAskingInTheOldWay) {
    { const FileDescriptor client = connect(); }
    EXPECT_TRUE(waitUntil([&] { return !asked.empty(); }));
    EXPECT_THAT(asked, ElementsAre("-"));
}

TEST_F(CommandListenerTests, WhoSaysNothingAndStaysIsLeftAfterAWhile) {
    const FileDescriptor client = connect();
    EXPECT_TRUE(waitUntil([&] { return time.pending() == 1; }));
    time.advance(CommandListener::patience - 0.1);
    handleEventsFor(20);
    EXPECT_FALSE(isClosed(client));
    time.advance(0.1);
    EXPECT_TRUE(waitUntil([&] { return isClosed(client); }));
    EXPECT_THAT(asked, IsEmpty());
    EXPECT_EQ(time.pending(), 0U);
}

TEST_F(CommandListenerTests, HalfALineIsNothing) {
    { const FileDescriptor client = say("quit"); }
    const FileDescriptor other = say("quit");
    EXPECT_TRUE(waitUntil([&] { return time.pending() == 1; }));
    time.advance(CommandListener::patience);
    EXPECT_TRUE(waitUntil([&] { return isClosed(other); }));
    EXPECT_THAT(asked, IsEmpty());
}

TEST_F(CommandListenerTests, ALineThatHasNoEndIsReadNoFurther) {
    const FileDescriptor client = connect();
    const std::string much(1 << 20, 'q');
    std::size_t sent = 0;
    // Until the listener has closed it.
    EXPECT_TRUE(waitUntil([&] {
        const ssize_t count = send(client.value(), much.data(), much.size(), MSG_NOSIGNAL);
        sent += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
        return count < 0 && errno != EAGAIN;
    }));
    EXPECT_GT(sent, CommandSocket::longestQuestion);
    EXPECT_THAT(asked, IsEmpty());
    EXPECT_EQ(time.pending(), 0U);
}

TEST_F(CommandListenerTests, ALineMayBeAsLongAsThereIsRoomForItsEnd) {
    const std::string most(CommandSocket::longestQuestion - 1, 'a');
    const FileDescriptor longest = say(most + "\n");
    const FileDescriptor longer = say(most + "b\n");
    EXPECT_TRUE(waitUntil([&] { return isClosed(longer); }));
    EXPECT_TRUE(waitUntil([&] { return !asked.empty(); }));
    EXPECT_THAT(asked, ElementsAre(most));
}

TEST_F(CommandListenerTests, WhoGoesBeforeTheAnswerHurtsNobody) {
    { const FileDescriptor client = say("status\n"); }
    EXPECT_TRUE(waitUntil([&] { return !asked.empty(); }));
    const FileDescriptor next = say("toggle\n");
    EXPECT_TRUE(waitUntil([&] { return asked.size() == 2; }));
}

TEST_F(CommandListenerTests, ManyWhoSayNothingKeepTheNextWaitingAndNoLonger) {
    std::vector<FileDescriptor> silent;
    for (std::size_t count = 0; count < CommandListener::mostClients; ++count) {
        silent.push_back(connect());
    }
    EXPECT_TRUE(waitUntil([&] { return time.pending() == CommandListener::mostClients; }));
    const FileDescriptor next = say("toggle\n");
    handleEventsFor(20);
    EXPECT_THAT(asked, IsEmpty());
    EXPECT_EQ(time.pending(), CommandListener::mostClients);
    time.advance(CommandListener::patience);
    EXPECT_TRUE(waitUntil([&] { return !asked.empty(); }));
    EXPECT_THAT(asked, ElementsAre("toggle"));
}

TEST_F(CommandListenerTests, TheLastAnswersConnectionStays) {
    isLast = true;
    const FileDescriptor client = say("quit\n");
    EXPECT_TRUE(waitUntil([&] { return heard(client) == "echo quit\n"; }));
    handleEventsFor(20);
    EXPECT_FALSE(isClosed(client));
}

TEST_F(CommandListenerTests, AnotherUserIsNotHeardAlsoWhereTheFolderIsOpenToThem) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can become another user";
    }
    ASSERT_EQ(chmod(folder.path().c_str(), 0777), 0);
    ASSERT_EQ(chmod(folder.path(CommandSocket::name).c_str(), 0777), 0);
    const FileDescriptor client = [&] {
        const testing::AsOrdinaryUser other(folder.path("socket"));
        return connect();
    }();
    ASSERT_TRUE(client);
    EXPECT_TRUE(waitUntil([&] { return isClosed(client); }));
    EXPECT_THAT(asked, IsEmpty());
}

} // namespace
} // namespace veslora
