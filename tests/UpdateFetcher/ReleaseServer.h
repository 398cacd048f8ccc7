// SPDX-License-Identifier: MIT
// Releases on the tests' web server, signed by a key of the test's own, and the helper that asks for them.
#pragma once

#include "VesloraCore/Updates/UpdateMessages.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"
#include "tests/Web/WebServer.h"

#include <optional>
#include <string>

namespace veslora::testing {

class ReleaseServer {
  public:
    ReleaseServer();

    /// Where the files lie.
    [[nodiscard]] const WebServer& web() const { return m_web; }
    /// Puts a file with its signature beside it.
    void putSigned(const std::string& name, const std::string& bytes) const;

    /// Base64 of the signature of these bytes, and of the key that it is checked by.
    [[nodiscard]] std::string signatureOf(const std::string& bytes) const;
    [[nodiscard]] const std::string& key() const { return m_publicKey; }

    /// An item for a package of those bytes, which the server has as "veslora.deb".
    [[nodiscard]] AppcastItem itemFor(const std::string& version, const std::string& package) const;
    /// A feed of one release, as tools/sign-release writes it.
    [[nodiscard]] static std::string feedOf(const AppcastItem& item);

    /// What a program of that version asks.
    [[nodiscard]] FeedQuestion question(const std::string& feed, const std::string& version = "0.1.0") const;
    [[nodiscard]] PackageQuestion question(PackageQuestion::Job job, const AppcastItem& item) const;

    /// What the helper answers; absent where it gives none. `limit` is all that it waits, in milliseconds.
    [[nodiscard]] std::optional<UpdateAnswer> ask(const UpdateQuestion& question, int limit = 20'000) const;
    /// The same, without a trusted certificate.
    void trustTheWorld() { m_certificate.clear(); }
    /// From now on asks the helper that is installed, which knows nothing of tests.
    void askTheRealOne() { m_helper = VESLORA_BINARIES "/veslora-updates"; }

    /// Where packages come to lie.
    [[nodiscard]] const TemporaryFolder& packages() const { return m_packages; }

  private:
    WebServer m_web;
    TemporaryFolder m_packages;
    std::string m_certificate = m_web.certificate();
    std::string m_helper = VESLORA_TRUSTING_HELPER;
    std::string m_secretKey;
    std::string m_publicKey;
};

} // namespace veslora::testing
