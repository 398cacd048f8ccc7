// SPDX-License-Identifier: MIT
// A package on its way into its folder, and whether it is still the same when it is to be installed.
#include "UpdateFetcher/PackageFetch.h"
#include "tests/UpdateFetcher/ReleaseServer.h"
#include "tests/VesloraLinux/Support/Waiting.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

namespace veslora {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Sets how long this process's files may grow, and tells what was before.
rlimit limitFiles(const rlimit& limit) {
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    setrlimit(RLIMIT_FSIZE, &limit);
    return before;
}

class PackageFetchTests : public ::testing::Test {
  protected:
    using Job = PackageQuestion::Job;

    std::optional<UpdateAnswer> download(const AppcastItem& wanted, int limit = 20'000) {
        return server.ask(server.question(Job::download, wanted), limit);
    }
    std::optional<UpdateAnswer> verify() { return server.ask(server.question(Job::verify, item)); }
    /// The same item at another place of the server, with a file there.
    AppcastItem at(const std::string& place) {
        server.web().put(place, package);
        AppcastItem moved = item;
        moved.url = server.web().secure(place);
        return moved;
    }
    [[nodiscard]] std::vector<std::string> files() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(server.packages().path())) {
            names.push_back(entry.path().filename());
        }
        return names;
    }
    static std::optional<UpdateAnswer> failure(UpdateFailure why) { return why; }

    testing::CoreApplication application;
    testing::ReleaseServer server;
    const std::string package = std::string(100'000, 'v') + "eslora";
    const AppcastItem item = server.itemFor("0.2.0", package);
    const std::string name = "veslora_0.2.0_amd64.deb";
    const std::optional<UpdateAnswer> ready = PackageReady{};
};

TEST_F(PackageFetchTests, BringsThePackageAndNothingElse) {
    server.packages().put("veslora_0.1.9_amd64.deb", "old");
    server.packages().put("other.part", "broken off");
    ASSERT_EQ(download(item), ready);
    EXPECT_THAT(files(), ElementsAre(name));
    EXPECT_EQ(server.packages().bytesOf(name), package);
    struct stat status {};
    ASSERT_EQ(stat(server.packages().path(name).c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600U);
    EXPECT_EQ(verify(), ready);
}

TEST_F(PackageFetchTests, TheInstalledHelperHasTheMemoryForTheLargest) {
    const std::string large(static_cast<std::size_t>(AppcastItem::largestPackage), 'v');
    server.packages().put(name, large);
    server.askTheRealOne();
    EXPECT_EQ(server.ask(server.question(Job::verify, server.itemFor("0.2.0", large))), ready);
}

TEST_F(PackageFetchTests, AForgedPackage) {
    AppcastItem forged = item;
    forged.signature = server.signatureOf("another package");
    EXPECT_EQ(download(forged), failure(UpdateFailure::badSignature));
    EXPECT_THAT(files(), IsEmpty());
    server.web().put("veslora.deb", std::string(package.size(), 'w'));
    EXPECT_EQ(download(item), failure(UpdateFailure::badSignature));
    EXPECT_THAT(files(), IsEmpty());
}

TEST_F(PackageFetchTests, APackageThatIsShorterOrLongerThanTold) {
    server.web().put("veslora.deb", package.substr(1));
    EXPECT_EQ(download(item), failure(UpdateFailure::incomplete));
    server.web().put("veslora.deb", package + "!");
    EXPECT_EQ(download(item), failure(UpdateFailure::tooLarge));
    EXPECT_EQ(download(at("short-veslora.deb")), failure(UpdateFailure::incomplete));
    EXPECT_EQ(download(at("endless-veslora.deb")), failure(UpdateFailure::tooLarge));
    EXPECT_THAT(files(), IsEmpty());
}

TEST_F(PackageFetchTests, APackageThatIsGoneOutOfReachOrOffHttps) {
    EXPECT_EQ(download(at("broken-veslora.deb")), failure(UpdateFailure::missing));
    EXPECT_EQ(download(at("off-veslora.deb")), failure(UpdateFailure::insecure));
    AppcastItem gone = item;
    gone.url = "https://localhost:1/veslora.deb";
    EXPECT_EQ(download(gone), failure(UpdateFailure::unreachable));
    gone.url = server.web().plain("veslora.deb");
    EXPECT_EQ(download(gone), std::nullopt) << "never asked for";
    server.web().remove("veslora.deb");
    EXPECT_EQ(download(item), failure(UpdateFailure::missing));
    EXPECT_THAT(files(), IsEmpty());
}

TEST_F(PackageFetchTests, AServerThatHangs) {
    EXPECT_EQ(download(at("hang-veslora.deb"), 300), failure(UpdateFailure::slow));
    EXPECT_THAT(files(), IsEmpty());
}

TEST_F(PackageFetchTests, AFolderThatOthersMayEnterOrThatIsALinkOrGone) {
    const std::string folder = server.packages().path();
    ASSERT_EQ(chmod(folder.c_str(), 0750), 0);
    EXPECT_EQ(download(item), failure(UpdateFailure::folder));
    EXPECT_EQ(verify(), failure(UpdateFailure::folder));
    ASSERT_EQ(chmod(folder.c_str(), 0700), 0);
    EXPECT_THAT(files(), IsEmpty());
    const testing::TemporaryFolder other;
    std::filesystem::create_directory_symlink(folder, other.path("link"));
    PackageQuestion question = server.question(Job::download, item);
    for (const std::string& path : {other.path("link"), other.path("gone"), other.put("file", "")}) {
        question.folder = path;
        EXPECT_EQ(server.ask(question), failure(UpdateFailure::folder)) << path;
    }
    EXPECT_THAT(files(), IsEmpty());
}

TEST_F(PackageFetchTests, AFileThatGoesWhileItIsWritten) {
    PackageFolder folder(server.packages().path());
    ASSERT_TRUE(folder.begin("package"));
    ASSERT_TRUE(folder.add(package));
    std::filesystem::remove(server.packages().path("package.part"));
    EXPECT_FALSE(folder.keep());
    EXPECT_THAT(files(), IsEmpty());
}

/// As on a full disk: the system refuses the next byte.
TEST_F(PackageFetchTests, ADiskThatTakesNoMore) {
    const rlimit before = limitFiles({1000, RLIM_INFINITY});
    PackageFolder folder(server.packages().path());
    ASSERT_TRUE(folder.begin("package"));
    const bool isAdded = folder.add(package);
    limitFiles(before);
    EXPECT_FALSE(isAdded);
    folder.drop();
    EXPECT_THAT(files(), IsEmpty());
}

TEST_F(PackageFetchTests, ADownloadThatTheDiskDoesNotTake) {
    PackageFetch job(server.question(Job::download, item), {.security = server.web().trusting()});
    std::vector<UpdateAnswer> answers;
    const rlimit before = limitFiles({1000, RLIM_INFINITY});
    job.start([&answers](const UpdateAnswer& answer) { answers.push_back(answer); });
    testing::waitUntil([&answers] { return !answers.empty(); });
    limitFiles(before);
    EXPECT_THAT(answers, ElementsAre(UpdateAnswer(UpdateFailure::folder)));
    EXPECT_THAT(files(), IsEmpty());
}

TEST_F(PackageFetchTests, AFileThatWasSwappedAfterItWasChecked) {
    ASSERT_EQ(download(item), ready);
    const std::string path = server.packages().path(name);
    const auto swap = [&](const auto& put) {
        std::filesystem::remove(path);
        put();
        return verify();
    };
    EXPECT_EQ(swap([] {}), failure(UpdateFailure::changed)) << "gone";
    EXPECT_EQ(swap([&] { server.packages().put(name, std::string(package.size(), 'w')); }),
              failure(UpdateFailure::changed))
        << "as long, with other bytes";
    EXPECT_EQ(swap([&] { server.packages().put(name, package + "!"); }), failure(UpdateFailure::changed));
    EXPECT_EQ(swap([&] { server.packages().put(name, ""); }), failure(UpdateFailure::changed));
    const testing::TemporaryFolder other;
    const std::string good = other.put("good.deb", package);
    EXPECT_EQ(swap([&] { std::filesystem::create_symlink(good, path); }), failure(UpdateFailure::changed))
        << "a link, even to the right bytes";
    EXPECT_EQ(swap([&] { std::filesystem::create_hard_link(good, path); }), failure(UpdateFailure::changed))
        << "a second name, by which it may be written";
    EXPECT_EQ(swap([&] { mkfifo(path.c_str(), 0600); }), failure(UpdateFailure::changed))
        << "never waited for";
    EXPECT_EQ(swap([&] { std::filesystem::create_directory(path); }), failure(UpdateFailure::changed));
    EXPECT_EQ(swap([&] { server.packages().put(name, package); }), ready) << "the same again";
}

} // namespace
} // namespace veslora
