// SPDX-License-Identifier: MIT
// Fetching by a program of the test's own, which gives an address back as if it were the picture.
#include "MediaAdapter/ArtworkFetcher.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"
#include "tests/VesloraLinux/Support/Waiting.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>

namespace veslora {
namespace {

using testing::handleEventsFor;
using testing::waitUntil;

/// "slow" in an address never ends and leaves its process id, "fail" gives half a picture and an error.
constexpr const char* script = R"(#!/bin/sh
address=$(cat)
echo "$address" >>"${0%/*}/asked"
case $address in
*slow*) echo $$ >"${0%/*}/slow.new" && mv "${0%/*}/slow.new" "${0%/*}/slow" && exec sleep 1000 ;;
*fail*) printf half; exit 1 ;;
*large*) head -c 2000000 /dev/zero ;;
*) printf %s "$address" ;;
esac
)";

std::string encoded(const char* picture) {
    return QByteArray(picture).toBase64().toStdString();
}

class ArtworkFetcherTests : public ::testing::Test {
  protected:
    ArtworkFetcherTests() {
        std::filesystem::permissions(folder.put("program", script), std::filesystem::perms::owner_all);
        QObject::connect(&fetcher, &ArtworkFetcher::changed, [this] { ++changes; });
    }

    [[nodiscard]] bool shows(const std::string& artwork) {
        return waitUntil([&] { return fetcher.artwork() == artwork; });
    }

    /// A process that stays would grow the helper with each track.
    [[nodiscard]] bool letsGoOfProcesses() {
        return waitUntil([&] { return fetcher.findChildren<QProcess*>().isEmpty(); });
    }

    testing::CoreApplication application;
    testing::TemporaryFolder folder;
    ArtworkFetcher fetcher{QString::fromStdString(folder.path("program"))};
    int changes = 0;
};

TEST_F(ArtworkFetcherTests, GivesThePictureAsBase64) {
    fetcher.want("file:///one", "track");
    EXPECT_EQ(fetcher.artwork(), "");
    EXPECT_TRUE(shows(encoded("file:///one")));
    EXPECT_EQ(changes, 1);
    EXPECT_TRUE(letsGoOfProcesses());
}

TEST_F(ArtworkFetcherTests, DropsWhatIsLateForAFormerTrackAndEndsItsProcess) {
    fetcher.want("https://slow", "one");
    ASSERT_TRUE(waitUntil([&] { return !folder.bytesOf("slow").empty(); }));
    const pid_t process = std::stoi(folder.bytesOf("slow"));
    fetcher.want("https://quick", "two");
    EXPECT_TRUE(shows(encoded("https://quick")));
    EXPECT_TRUE(waitUntil([&] { return kill(process, 0) != 0; }));
    EXPECT_EQ(changes, 1);
    EXPECT_TRUE(letsGoOfProcesses());
}

TEST_F(ArtworkFetcherTests, DropsThePictureOfAnotherAddressAtOnce) {
    fetcher.want("https://one", "one");
    ASSERT_TRUE(shows(encoded("https://one")));
    fetcher.want("https://slow", "two");
    EXPECT_EQ(fetcher.artwork(), "");
    fetcher.want("", "two");
    EXPECT_EQ(fetcher.artwork(), "");
}

TEST_F(ArtworkFetcherTests, ReadsAFileAgainForEachTrackAndAWebAddressOnce) {
    for (const char* track : {"one", "one", "two"}) {
        fetcher.want("https://same", track);
        EXPECT_TRUE(shows(encoded("https://same")));
    }
    for (const char* track : {"one", "one", "two"}) {
        fetcher.want("file:///same", track);
        EXPECT_TRUE(shows(encoded("file:///same")));
    }
    EXPECT_TRUE(waitUntil([&] { return changes == 3; }));
    handleEventsFor(300);
    EXPECT_EQ(folder.bytesOf("asked"), "https://same\nfile:///same\nfile:///same\n");
}

TEST_F(ArtworkFetcherTests, ShowsNothingForAFailureAndForTooMuch) {
    for (const char* url : {"file:///fail", "file:///large"}) {
        const int before = changes;
        fetcher.want(url, url);
        EXPECT_TRUE(waitUntil([&] { return changes > before; })) << url;
        EXPECT_EQ(fetcher.artwork(), "") << url;
    }
}

TEST_F(ArtworkFetcherTests, AsksForNoOtherKindOfAddress) {
    for (const char* url : {"http://plain", "data:image/png;base64,AAAA", "/cover.png", "ftp://cover"}) {
        fetcher.want(url, url);
        handleEventsFor(20);
    }
    EXPECT_EQ(folder.bytesOf("asked"), "");
}

TEST_F(ArtworkFetcherTests, SurvivesThatThereIsNoProgram) {
    ArtworkFetcher lost(QStringLiteral("/nowhere/program"));
    bool hasAnswered = false;
    QObject::connect(&lost, &ArtworkFetcher::changed, [&] { hasAnswered = true; });
    lost.want("file:///one", "one");
    EXPECT_TRUE(waitUntil([&] { return hasAnswered; }));
    EXPECT_EQ(lost.artwork(), "");
    EXPECT_TRUE(waitUntil([&] { return lost.findChildren<QProcess*>().isEmpty(); }));
}

} // namespace
} // namespace veslora
