// SPDX-License-Identifier: MIT
// Opening Spotify, with the desktop's commands replaced by some that write down what they are told.
#include "VesloraLinux/System/XdgApplications.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"
#include "tests/VesloraLinux/Support/Waiting.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace veslora {
namespace {

using testing::handleEventsFor;
using testing::waitUntil;

class XdgApplicationsTest : public ::testing::Test {
  protected:
    void SetUp() override {
        qputenv("PATH", QByteArray::fromStdString(folder.path()) + ':' + m_path);
        put("xdg-open", "echo \"$*\" >> '" + folder.path("opened") + "'");
    }
    void TearDown() override { qputenv("PATH", m_path); }

    void put(const std::string& name, const std::string& script) {
        folder.put(name, "#!/bin/sh\n" + script);
        std::filesystem::permissions(folder.path(name), std::filesystem::perms::owner_all);
    }
    void answerQueriesWith(const std::string& entry) {
        put("xdg-mime", "echo \"$*\" >> '" + folder.path("asked") + "'; echo " + entry);
    }

    testing::CoreApplication application;
    testing::TemporaryFolder folder;
    XdgApplications applications;

  private:
    QByteArray m_path = qgetenv("PATH");
};

TEST_F(XdgApplicationsTest, OpensWhatTheDesktopHasForSpotifysAddresses) {
    answerQueriesWith("com.spotify.Client.desktop");
    applications.open("com.spotify.client");
    applications.open("com.spotify.client"); // a second press while the first is under way
    ASSERT_TRUE(waitUntil([this] { return folder.bytesOf("opened").ends_with('\n'); }));
    EXPECT_EQ(folder.bytesOf("opened"), "spotify:\n");
    EXPECT_EQ(folder.bytesOf("asked"), "query default x-scheme-handler/spotify\n");
}

TEST_F(XdgApplicationsTest, OpensNothingWhereNothingDoes) {
    answerQueriesWith("");
    applications.open("com.spotify.client");
    ASSERT_TRUE(waitUntil([this] { return !folder.bytesOf("asked").empty(); }));
    handleEventsFor(100);
    EXPECT_EQ(folder.bytesOf("opened"), "");
}

TEST_F(XdgApplicationsTest, KnowsNoOtherApplication) {
    answerQueriesWith("something.desktop");
    applications.open("org.mozilla.firefox; rm");
    applications.open("");
    handleEventsFor(100);
    EXPECT_EQ(folder.bytesOf("asked"), "");
}

TEST_F(XdgApplicationsTest, CanBePressedAgainAfterACommandThatIsMissing) {
    qputenv("PATH", QByteArray::fromStdString(folder.path()));
    applications.open("com.spotify.client");
    handleEventsFor(100);
    answerQueriesWith("com.spotify.Client.desktop");
    applications.open("com.spotify.client");
    EXPECT_TRUE(waitUntil([this] { return !folder.bytesOf("opened").empty(); }));
}

} // namespace
} // namespace veslora
