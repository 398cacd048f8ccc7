// SPDX-License-Identifier: MIT
// What tools/sign-release writes is what the helper takes.
#include "UpdateFetcher/Ed25519.h"
#include "UpdateFetcher/FeedCheck.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"

#include <QProcess>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

namespace veslora {
namespace {

class SignReleaseTests : public ::testing::Test {
  protected:
    /// Runs a program to its end; what it printed, absent where it failed.
    static std::optional<QString> run(const QString& program, const QStringList& arguments) {
        QProcess process;
        process.start(program, arguments);
        const bool isDone = process.waitForFinished(60'000) && process.exitCode() == 0 &&
                            process.exitStatus() == QProcess::NormalExit;
        return isDone ? std::optional(QString::fromUtf8(process.readAllStandardOutput()).trimmed())
                      : std::nullopt;
    }
    static std::optional<QString> sign(const QStringList& arguments) {
        return run(QStringLiteral(VESLORA_TOOLS "/sign-release"), arguments);
    }
    [[nodiscard]] QString path(const std::string& name) const {
        return QString::fromStdString(folder.path(name));
    }

    /// A package with nothing in it.
    QString package(const std::string& version, const std::string& architecture = "amd64") {
        std::filesystem::create_directories(folder.path("tree/DEBIAN"));
        folder.put("tree/DEBIAN/control", "Package: veslora\nVersion: " + version +
                                              "\nArchitecture: " + architecture +
                                              "\nMaintainer: a <a@example.org>\nDescription: a\n");
        QString file = path("veslora_" + version + "_" + architecture + ".deb");
        EXPECT_TRUE(run("dpkg-deb", {"--root-owner-group", "--build", path("tree"), file}));
        return file;
    }
    std::optional<QString> add(const QStringList& packages) {
        return sign(QStringList{"--key", path("key"), "--feed", path("feed.xml"), "--url",
                                "https://example.org/v/", "--notes", path("notes")} +
                    packages);
    }
    UpdateAnswer judged(const std::string& running) {
        const FeedQuestion question{.feed = "https://example.org/feed.xml",
                                    .key = publicKey,
                                    .version = running,
                                    .kind = std::string(Appcast::debianPackage),
                                    .architecture = "amd64"};
        return FeedCheck::judged(question, QByteArray::fromStdString(folder.bytesOf("feed.xml")),
                                 QByteArray::fromStdString(folder.bytesOf("feed.xml.sig")));
    }

    testing::TemporaryFolder folder;
    std::string notes = folder.put("notes", "Quieter & <faster>.\nSecond line.\n");
    std::string publicKey = sign({"--new-key", path("key")}).value_or(QString()).toStdString();
};

TEST_F(SignReleaseTests, TheHelperTakesWhatItWrites) {
    const QString file = package("0.2.0-1");
    ASSERT_TRUE(add({file, package("0.2.0-1", "arm64")}));
    const UpdateAnswer answer = judged("0.1.0");
    const auto* const item = std::get_if<AppcastItem>(&answer);
    ASSERT_TRUE(item);
    EXPECT_EQ(item->version.text(), "0.2.0");
    EXPECT_EQ(item->notes, "Quieter & <faster>.\nSecond line.");
    EXPECT_EQ(item->url, "https://example.org/v/veslora_0.2.0-1_amd64.deb");
    const std::string bytes = folder.bytesOf("veslora_0.2.0-1_amd64.deb");
    EXPECT_EQ(item->length, static_cast<std::int64_t>(bytes.size()));
    EXPECT_TRUE(Ed25519::isSigned(bytes, item->signature, publicKey));
    EXPECT_FALSE(Ed25519::isSigned(bytes + "!", item->signature, publicKey));
}

TEST_F(SignReleaseTests, AddsToWhatIsThere) {
    ASSERT_TRUE(add({package("0.2.0")}));
    ASSERT_TRUE(add({package("0.3~rc1")}));
    ASSERT_TRUE(add({package("0.3~rc1")})) << "once more, in its own place";
    EXPECT_EQ(std::get<AppcastItem>(judged("0.1.0")).version.text(), "0.3~rc1");
    EXPECT_EQ(judged("0.3"), UpdateAnswer(NothingNewer{}));
    const std::string feed = folder.bytesOf("feed.xml");
    EXPECT_NE(feed.find("0.2.0"), std::string::npos);
    EXPECT_EQ(feed.find("<title>Veslora 0.3~rc1"), feed.rfind("<title>Veslora 0.3~rc1"));
}

TEST_F(SignReleaseTests, TakesCareOfTheKey) {
    struct stat status {};
    ASSERT_EQ(stat(folder.path("key").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600U);
    const std::string before = folder.bytesOf("key");
    EXPECT_FALSE(sign({"--new-key", path("key")})) << "never over another";
    EXPECT_EQ(folder.bytesOf("key"), before);
    chmod(folder.path("key").c_str(), 0640);
    EXPECT_FALSE(add({package("0.2.0")}));
    EXPECT_FALSE(std::filesystem::exists(folder.path("feed.xml")));
}

} // namespace
} // namespace veslora
