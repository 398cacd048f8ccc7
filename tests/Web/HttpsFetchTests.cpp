// SPDX-License-Identifier: MIT
// A file from a server that is well, broken, hostile or not there.
#include "Web/HttpsFetch.h"
#include "tests/VesloraLinux/Support/Waiting.h"
#include "tests/Web/WebServer.h"

#include <gtest/gtest.h>

#include <optional>
#include <variant>

namespace veslora {
namespace {

using namespace std::chrono_literals;

class HttpsFetchTests : public ::testing::Test {
  protected:
    /// What came, or why nothing did.
    using Answer = std::variant<QByteArray, FetchFailure>;

    HttpsFetchTests() { server.put("file", "bytes"); }

    /// Absent if it says nothing, or more than once.
    std::optional<Answer> fetched(const std::string& url) {
        HttpsFetch fetch(security, limits);
        std::vector<Answer> answers;
        received.clear();
        fetch.fetch(
            QString::fromStdString(url),
            [this](const QByteArray& bytes) {
                received += bytes;
                return received.size() <= room;
            },
            [&](std::optional<FetchFailure> failure) {
                answers.push_back(failure ? Answer(*failure) : Answer(received));
            });
        EXPECT_TRUE(answers.empty()) << "never within the call";
        testing::waitUntil([&answers] { return !answers.empty(); });
        testing::handleEventsFor(20);
        return answers.size() == 1 ? std::optional(answers.front()) : std::nullopt;
    }

    static std::optional<Answer> bytes(const char* text) { return QByteArray(text); }
    static std::optional<Answer> bytes(const std::string& text) { return QByteArray::fromStdString(text); }

    testing::CoreApplication application;
    testing::WebServer server;
    QSslConfiguration security = server.trusting();
    HttpsFetch::Limits limits{.most = 1000, .whole = 60s, .stall = 60s};
    QByteArray received;
    qsizetype room = 1 << 20; ///< how much the sink takes
};

TEST_F(HttpsFetchTests, BringsAFileAndAnEmptyOne) {
    server.put("empty", "");
    EXPECT_EQ(fetched(server.secure("file")), bytes("bytes"));
    EXPECT_EQ(fetched(server.secure("empty")), bytes(""));
}

TEST_F(HttpsFetchTests, FollowsARedirectThatStaysOnHttpsAndNoneWithoutEnd) {
    EXPECT_EQ(fetched(server.secure("around-file")), bytes("bytes"));
    EXPECT_EQ(fetched(server.secure("loop-file")), Answer(FetchFailure::missing));
}

TEST_F(HttpsFetchTests, FollowsNoRedirectOffHttps) {
    EXPECT_EQ(fetched(server.secure("off-file")), Answer(FetchFailure::insecure));
    EXPECT_EQ(fetched(server.secure("local-file")), Answer(FetchFailure::insecure));
}

TEST_F(HttpsFetchTests, AsksForNothingButHttps) {
    for (const std::string& url :
         {server.plain("file"), std::string("file:///etc/hostname"), std::string("https:///file"),
          std::string("no address"), std::string(), std::string("data:,bytes")}) {
        EXPECT_EQ(fetched(url), Answer(FetchFailure::insecure)) << url;
    }
}

TEST_F(HttpsFetchTests, TrustsNoServerThatNobodyVouchesFor) {
    security = QSslConfiguration::defaultConfiguration();
    EXPECT_EQ(fetched(server.secure("file")), Answer(FetchFailure::insecure));
}

TEST_F(HttpsFetchTests, AnErrorsPageIsNoFile) {
    server.put("broken-file", "bytes");
    EXPECT_EQ(fetched(server.secure("missing")), Answer(FetchFailure::missing));
    EXPECT_EQ(fetched(server.secure("broken-file")), Answer(FetchFailure::missing));
    EXPECT_EQ(received, "") << "not even handed over";
}

TEST_F(HttpsFetchTests, WithoutAServerNothingIsReached) {
    EXPECT_EQ(fetched("https://localhost:1/file"), Answer(FetchFailure::unreachable));
    EXPECT_EQ(fetched("https://nowhere.invalid/file"), Answer(FetchFailure::unreachable));
}

TEST_F(HttpsFetchTests, TakesAsMuchAsItMayAndNoByteMore) {
    const std::string most(1000, 'b');
    server.put("file", most);
    EXPECT_EQ(fetched(server.secure("file")), bytes(most));
    server.put("file", most + "b");
    EXPECT_EQ(fetched(server.secure("file")), Answer(FetchFailure::tooLarge));
    EXPECT_LE(received.size(), limits.most);
    server.put("endless-file", "");
    EXPECT_EQ(fetched(server.secure("endless-file")), Answer(FetchFailure::tooLarge));
    EXPECT_LE(received.size(), limits.most);
}

TEST_F(HttpsFetchTests, LessThanWasAnnouncedIsNoFile) {
    server.put("short-file", "bytes");
    EXPECT_EQ(fetched(server.secure("short-file")), Answer(FetchFailure::incomplete));
}

TEST_F(HttpsFetchTests, NothingIsUnpacked) {
    server.put("zipped-file", "bytes");
    EXPECT_EQ(fetched(server.secure("zipped-file")), bytes("bytes"));
}

TEST_F(HttpsFetchTests, BringsNoCookieBack) {
    EXPECT_EQ(fetched(server.secure("cookie-file")), bytes("no cookie"))
        << "the redirect that sets one leads to what tells of it";
}

TEST_F(HttpsFetchTests, GivesUpOnAServerThatHangs) {
    server.put("hang-file", "bytes");
    server.put("hang-before-it", "b");
    limits.stall = 200ms;
    EXPECT_EQ(fetched(server.secure("hang-file")), Answer(FetchFailure::slow));
    EXPECT_EQ(fetched(server.secure("hang-before-it")), Answer(FetchFailure::slow)) << "half of one is none";
    limits = {.most = 1000, .whole = 200ms, .stall = 60s};
    EXPECT_EQ(fetched(server.secure("hang-file")), Answer(FetchFailure::slow));
}

TEST_F(HttpsFetchTests, EndsWhereWhatCameCantBeKept) {
    room = 4;
    EXPECT_EQ(fetched(server.secure("file")), Answer(FetchFailure::notKept));
    limits.most = 1 << 30;
    server.put("endless-file", "");
    EXPECT_EQ(fetched(server.secure("endless-file")), Answer(FetchFailure::notKept)) << "at once";
}

} // namespace
} // namespace veslora
