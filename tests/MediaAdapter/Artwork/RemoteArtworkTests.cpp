// SPDX-License-Identifier: MIT
// Pictures by https, within the bounds of a picture; the fetch itself has tests of its own.
#include "MediaAdapter/Artwork/ArtworkFile.h"
#include "MediaAdapter/Artwork/RemoteArtwork.h"
#include "tests/VesloraLinux/Support/Waiting.h"
#include "tests/Web/WebServer.h"

#include <gtest/gtest.h>

#include <optional>
#include <vector>

namespace veslora {
namespace {

class RemoteArtworkTests : public ::testing::Test {
  protected:
    /// What is fetched; absent if it says nothing, or more than once.
    std::optional<QByteArray> fetched(const std::string& url,
                                      std::chrono::milliseconds timeout = std::chrono::seconds(60)) {
        RemoteArtwork artwork(server.trusting(), timeout);
        std::vector<QByteArray> answers;
        artwork.fetch(QString::fromStdString(url),
                      [&answers](const QByteArray& bytes) { answers.push_back(bytes); });
        EXPECT_TRUE(answers.empty()) << "never within the call";
        testing::waitUntil([&answers] { return !answers.empty(); });
        testing::handleEventsFor(20);
        return answers.size() == 1 ? std::optional(answers.front()) : std::nullopt;
    }

    testing::CoreApplication application;
    testing::WebServer server;
};

TEST_F(RemoteArtworkTests, FetchesByHttpsAndFollowsARedirectThatStaysThere) {
    server.put("picture", "picture");
    EXPECT_EQ(fetched(server.secure("picture")), "picture");
    EXPECT_EQ(fetched(server.secure("around-picture")), "picture");
}

TEST_F(RemoteArtworkTests, AnErrorAndWhatIsNotByHttpsIsNoPicture) {
    server.put("picture", "picture");
    server.put("short-picture", "picture");
    EXPECT_EQ(fetched(server.secure("missing")), "");
    EXPECT_EQ(fetched(server.secure("short-picture")), "") << "not half of one either";
    EXPECT_EQ(fetched(server.plain("picture")), "");
    EXPECT_EQ(fetched({}), "");
}

TEST_F(RemoteArtworkTests, ReadsAsMuchAsAPictureMayHaveAndNoMore) {
    const std::string largest(static_cast<std::size_t>(ArtworkFile::largest), 'p');
    server.put("picture", largest);
    EXPECT_EQ(fetched(server.secure("picture")), QByteArray::fromStdString(largest));
    server.put("picture", largest + "p");
    EXPECT_EQ(fetched(server.secure("picture")), "");
    server.put("endless-picture", "");
    EXPECT_EQ(fetched(server.secure("endless-picture")), "");
}

TEST_F(RemoteArtworkTests, GivesUpAfterTheTimeout) {
    server.put("hang-picture", "picture");
    EXPECT_EQ(fetched(server.secure("hang-picture"), std::chrono::milliseconds(200)), "");
}

} // namespace
} // namespace veslora
