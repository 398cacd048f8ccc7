// SPDX-License-Identifier: MIT
// A web server on this machine for what a test puts there, by https and without; nobody but tests trusts it.
#pragma once

#include "tests/VesloraLinux/Support/Program.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"

#include <QSslConfiguration>

#include <string>

namespace veslora::testing {

class WebServer {
  public:
    WebServer();

    /// The address of a file; see server.py for what a name may begin with.
    [[nodiscard]] std::string secure(const std::string& name) const;
    [[nodiscard]] std::string plain(const std::string& name) const;

    /// Puts a file where the server finds it.
    void put(const std::string& name, const std::string& bytes) const;
    void remove(const std::string& name) const;

    /// The path of its certificate, and a configuration that trusts nothing else.
    [[nodiscard]] std::string certificate() const { return m_folder.path("certificate.pem"); }
    [[nodiscard]] QSslConfiguration trusting() const;

  private:
    TemporaryFolder m_folder;
    Program m_program;
    int m_securePort = 0;
    int m_plainPort = 0;
};

} // namespace veslora::testing
