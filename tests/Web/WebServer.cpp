// SPDX-License-Identifier: MIT
#include "tests/Web/WebServer.h"

#include <QSslCertificate>

#include <filesystem>
#include <sstream>

namespace veslora::testing {

WebServer::WebServer() : m_program({VESLORA_WEB_SERVER, m_folder.path()}, 3, ProgramInput::told) {
    std::istringstream(m_program.nextLine()) >> m_securePort >> m_plainPort;
    std::filesystem::create_directory(m_folder.path("web"));
}

std::string WebServer::secure(const std::string& name) const {
    return "https://localhost:" + std::to_string(m_securePort) + "/" + name;
}

std::string WebServer::plain(const std::string& name) const {
    return "http://localhost:" + std::to_string(m_plainPort) + "/" + name;
}

void WebServer::put(const std::string& name, const std::string& bytes) const {
    m_folder.put("web/" + name, bytes);
}

void WebServer::remove(const std::string& name) const {
    std::filesystem::remove(m_folder.path("web/" + name));
}

QSslConfiguration WebServer::trusting() const {
    QSslConfiguration security = QSslConfiguration::defaultConfiguration();
    security.setCaCertificates(QSslCertificate::fromPath(QString::fromStdString(certificate()), QSsl::Pem));
    return security;
}

} // namespace veslora::testing
