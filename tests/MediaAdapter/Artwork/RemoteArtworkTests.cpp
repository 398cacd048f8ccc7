// SPDX-License-Identifier: MIT
// Pictures by https from a server on this machine, whose certificate the tests alone trust.
#include "MediaAdapter/Artwork/RemoteArtwork.h"
#include "tests/VesloraLinux/Support/Program.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"
#include "tests/VesloraLinux/Support/Waiting.h"

#include <QSslCertificate>

#include <gtest/gtest.h>

#include <optional>
#include <sstream>

namespace veslora {
namespace {

class RemoteArtworkTests : public ::testing::Test {
  protected:
    RemoteArtworkTests() {
        std::istringstream(m_server.nextLine()) >> m_securePort >> m_plainPort;
        m_security.setCaCertificates(
            QSslCertificate::fromPath(QString::fromStdString(m_folder.path("certificate.pem")), QSsl::Pem));
    }

    [[nodiscard]] QString secure(const QString& path) const {
        return QStringLiteral("https://localhost:%1%2").arg(m_securePort).arg(path);
    }
    [[nodiscard]] QString plain(const QString& path) const {
        return QStringLiteral("http://localhost:%1%2").arg(m_plainPort).arg(path);
    }

    /// What is fetched; absent if it says nothing, or more than once.
    std::optional<QByteArray> fetched(const QString& url,
                                      std::chrono::milliseconds timeout = std::chrono::seconds(60)) {
        RemoteArtwork artwork(m_security, timeout);
        std::vector<QByteArray> answers;
        QObject::connect(&artwork, &RemoteArtwork::fetched,
                         [&answers](const QByteArray& bytes) { answers.push_back(bytes); });
        artwork.fetch(url);
        testing::waitUntil([&answers] { return !answers.empty(); });
        testing::handleEventsFor(20);
        return answers.size() == 1 ? std::optional(answers.front()) : std::nullopt;
    }

    void trustTheWorld() { m_security = QSslConfiguration::defaultConfiguration(); }

  private:
    testing::CoreApplication m_application;
    testing::TemporaryFolder m_folder;
    testing::Program m_server{
        {VESLORA_TEST_SCRIPTS "/Artwork/server.py", m_folder.path()}, 3, testing::ProgramInput::told};
    int m_securePort = 0;
    int m_plainPort = 0;
    QSslConfiguration m_security = QSslConfiguration::defaultConfiguration();
};

TEST_F(RemoteArtworkTests, FetchesByHttpsAndFollowsARedirectThatStaysThere) {
    EXPECT_EQ(fetched(secure(QStringLiteral("/picture"))), "picture");
    EXPECT_EQ(fetched(secure(QStringLiteral("/around"))), "picture");
}

TEST_F(RemoteArtworkTests, FetchesByNothingElse) {
    EXPECT_EQ(fetched(plain(QStringLiteral("/picture"))), "");
    EXPECT_EQ(fetched(QStringLiteral("file:///etc/hostname")), "");
    EXPECT_EQ(fetched(QStringLiteral("https:///picture")), "");
    EXPECT_EQ(fetched(QStringLiteral("no address")), "");
    EXPECT_EQ(fetched(QString()), "");
}

TEST_F(RemoteArtworkTests, FollowsNoRedirectOffHttpsAndNoneWithoutEnd) {
    EXPECT_EQ(fetched(secure(QStringLiteral("/off"))), "");
    EXPECT_EQ(fetched(secure(QStringLiteral("/file"))), "");
    EXPECT_EQ(fetched(secure(QStringLiteral("/loop"))), "");
}

TEST_F(RemoteArtworkTests, TrustsNoServerWithoutACertificateOfTheWorlds) {
    trustTheWorld();
    EXPECT_EQ(fetched(secure(QStringLiteral("/picture"))), "");
}

TEST_F(RemoteArtworkTests, AnErrorIsNoPicture) {
    EXPECT_EQ(fetched(secure(QStringLiteral("/missing"))), "");
}

TEST_F(RemoteArtworkTests, ReadsNoMoreThanAPictureMayHave) {
    EXPECT_EQ(fetched(secure(QStringLiteral("/large"))), "");
    EXPECT_EQ(fetched(secure(QStringLiteral("/endless"))), "");
}

TEST_F(RemoteArtworkTests, GivesUpAfterTheTimeout) {
    EXPECT_EQ(fetched(secure(QStringLiteral("/slow")), std::chrono::milliseconds(200)), "");
}

} // namespace
} // namespace veslora
