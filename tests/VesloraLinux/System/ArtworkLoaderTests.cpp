// SPDX-License-Identifier: MIT
// The loader of covers, with small programs in the place of the helper that fetches them.
#include "VesloraLinux/System/ArtworkLoader.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"
#include "tests/VesloraLinux/Support/Waiting.h"
#include "tests/support/ManualScheduler.h"

#include <QUrl>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

namespace veslora {
namespace {

using testing::handleEventsFor;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using testing::waitUntil;

class ArtworkLoaderTest : public ::testing::Test {
  protected:
    ArtworkLoaderTest() {
        QImage cover(40, 30, QImage::Format_RGB32);
        cover.fill(Qt::red);
        cover.save(QString::fromStdString(folder.path("cover.png")));
    }
    /// What the helper does; it finds the address on its input.
    void put(const std::string& script) {
        folder.put("fetch", "#!/bin/sh\ncd '" + folder.path() + "'\n" + script);
        std::filesystem::permissions(folder.path("fetch"), std::filesystem::perms::owner_all);
    }
    void load(const QString& address = QStringLiteral("https://covers.example/a b?c=d")) {
        tasks.push_back(
            loader->load(QUrl(address), [this](const QImage& image) { images.push_back(image); }));
    }
    /// Runs events, background work and whatever is due until so many loads have ended.
    [[nodiscard]] bool waitFor(std::size_t count) {
        return waitUntil([this, count] {
            time.runBackground();
            time.advance(0);
            return images.size() >= count;
        });
    }

    testing::CoreApplication application;
    testing::TemporaryFolder folder;
    ManualScheduler time;
    std::unique_ptr<ArtworkLoader> loader =
        std::make_unique<ArtworkLoader>(time, QString::fromStdString(folder.path("fetch")));
    std::vector<Task> tasks;
    std::vector<QImage> images;
};

TEST_F(ArtworkLoaderTest, GivesThePictureThatTheHelperPrints) {
    put("cat > asked; cat cover.png");
    load();
    EXPECT_THAT(images, IsEmpty()) << "never within the call";
    ASSERT_TRUE(waitFor(1));
    EXPECT_EQ(images.front().size(), QSize(40, 30));
    EXPECT_EQ(images.front().pixelColor(20, 15), QColor(Qt::red));
    EXPECT_EQ(folder.bytesOf("asked"), "https://covers.example/a%20b?c=d");
    EXPECT_EQ(time.pending(), 0U);
}

TEST_F(ArtworkLoaderTest, FailuresGiveNone) {
    for (const char* script : {"cat > asked; exit 1", "cat > asked; cat cover.png; exit 1", "cat > asked",
                               "cat > asked; echo no picture", "cat > asked; head -c 20 cover.png",
                               "cat > asked; kill -9 $$", "exit 0"}) {
        images.clear();
        put(script);
        load();
        ASSERT_TRUE(waitFor(1)) << script;
        EXPECT_TRUE(images.front().isNull()) << script;
    }
}

TEST_F(ArtworkLoaderTest, AHelperThatPrintsWithoutEndIsEnded) {
    put("cat > asked; exec cat /dev/zero");
    load();
    ASSERT_TRUE(waitFor(1));
    EXPECT_TRUE(images.front().isNull());
}

TEST_F(ArtworkLoaderTest, AHelperThatHangsIsEndedInTime) {
    put("cat > asked; echo $$ > pid; exec sleep 1000");
    load();
    ASSERT_TRUE(waitUntil([this] { return folder.bytesOf("pid").ends_with('\n'); }));
    const pid_t pid = std::stoi(folder.bytesOf("pid"));
    time.advance(ArtworkLoader::timeLimit - 0.1);
    handleEventsFor(50);
    EXPECT_EQ(kill(pid, 0), 0);
    time.advance(0.1);
    ASSERT_TRUE(waitFor(1));
    EXPECT_TRUE(images.front().isNull());
    EXPECT_NE(kill(pid, 0), 0);
}

TEST_F(ArtworkLoaderTest, OnlySafeAddressesAreEverHandedOver) {
    put("cat > asked; cat cover.png");
    for (const char* address : {"http://covers.example/a", "file:///etc/passwd", "", "https://", "HTTPS",
                                "ftp://covers.example/a", "data:image/png;base64,AAAA"}) {
        load(address);
    }
    ASSERT_TRUE(waitFor(7));
    for (const QImage& image : images) {
        EXPECT_TRUE(image.isNull());
    }
    EXPECT_EQ(folder.bytesOf("asked"), "");
}

TEST_F(ArtworkLoaderTest, AMissingHelperGivesNone) {
    load();
    ASSERT_TRUE(waitFor(1));
    EXPECT_TRUE(images.front().isNull());
}

TEST_F(ArtworkLoaderTest, AFewAtATime) {
    put("cat > asked; echo x >> started; exec sleep 1000");
    for (int count = 0; count < ArtworkLoader::mostAtOnce + 3; ++count) {
        load();
    }
    ASSERT_TRUE(waitFor(3));
    EXPECT_THAT(images, SizeIs(3));
    const std::string all(2 * std::size_t{ArtworkLoader::mostAtOnce}, 'x');
    ASSERT_TRUE(waitUntil([&] { return folder.bytesOf("started").size() == all.size(); }));
    handleEventsFor(50);
    EXPECT_EQ(folder.bytesOf("started").size(), all.size());
}

TEST_F(ArtworkLoaderTest, ADroppedLoadAndALoaderThatGoesTellNobody) {
    put("cat > asked; cat cover.png");
    load();
    tasks.front().cancel();
    load();
    ASSERT_TRUE(waitFor(1));
    handleEventsFor(50);
    time.runBackground();
    EXPECT_THAT(images, SizeIs(1));
    load();
    loader.reset();
    handleEventsFor(50);
    time.advance(100);
    EXPECT_THAT(images, SizeIs(1));
}

} // namespace
} // namespace veslora
