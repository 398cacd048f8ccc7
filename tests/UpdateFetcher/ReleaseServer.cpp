// SPDX-License-Identifier: MIT
#include "tests/UpdateFetcher/ReleaseServer.h"

#include <QProcess>

#include <sodium.h>

#include <stdexcept>
#include <vector>

namespace veslora::testing {

namespace {

using Bytes = std::vector<unsigned char>;

std::string base64(const Bytes& bytes) {
    return QByteArray(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()))
        .toBase64()
        .toStdString();
}

} // namespace

ReleaseServer::ReleaseServer() {
    Bytes publicKey(crypto_sign_PUBLICKEYBYTES);
    m_secretKey.resize(crypto_sign_SECRETKEYBYTES);
    if (sodium_init() < 0 ||
        crypto_sign_keypair(publicKey.data(), reinterpret_cast<unsigned char*>(m_secretKey.data())) != 0) {
        throw std::runtime_error("no key");
    }
    m_publicKey = base64(publicKey);
}

void ReleaseServer::putSigned(const std::string& name, const std::string& bytes) const {
    m_web.put(name, bytes);
    m_web.put(name + ".sig", signatureOf(bytes) + "\n");
}

std::string ReleaseServer::signatureOf(const std::string& bytes) const {
    Bytes signature(crypto_sign_BYTES);
    crypto_sign_detached(signature.data(), nullptr, reinterpret_cast<const unsigned char*>(bytes.data()),
                         bytes.size(), reinterpret_cast<const unsigned char*>(m_secretKey.data()));
    return base64(signature);
}

AppcastItem ReleaseServer::itemFor(const std::string& version, const std::string& package) const {
    m_web.put("veslora.deb", package);
    return {.version = *ReleaseVersion::parse(version),
            .notes = "Quieter.",
            .url = m_web.secure("veslora.deb"),
            .length = static_cast<std::int64_t>(package.size()),
            .signature = signatureOf(package),
            .kind = std::string(Appcast::debianPackage),
            .architecture = "amd64"};
}

std::string ReleaseServer::feedOf(const AppcastItem& item) {
    return "<?xml version='1.0' encoding='utf-8'?>\n"
           "<rss version='2.0' xmlns:veslora='urn:veslora:appcast'><channel><title>Veslora</title><item>"
           "<title>Veslora " +
           item.version.text() + "</title><description>" + item.notes + "</description><enclosure url='" +
           item.url + "' length='" + std::to_string(item.length) + "' type='" + item.kind +
           "' veslora:version='" + item.version.text() + "' veslora:architecture='" + item.architecture +
           "' veslora:signature='" + item.signature + "'/></item></channel></rss>\n";
}

FeedQuestion ReleaseServer::question(const std::string& feed, const std::string& version) const {
    return {.feed = feed,
            .key = m_publicKey,
            .version = version,
            .kind = std::string(Appcast::debianPackage),
            .architecture = "amd64"};
}

PackageQuestion ReleaseServer::question(PackageQuestion::Job job, const AppcastItem& item) const {
    return {.job = job, .key = m_publicKey, .folder = m_packages.path(), .item = item};
}

std::optional<UpdateAnswer> ReleaseServer::ask(const UpdateQuestion& question, int limit) const {
    QProcess helper;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("VESLORA_TEST_CERTIFICATE"), QString::fromStdString(m_certificate));
    environment.insert(QStringLiteral("VESLORA_TEST_LIMIT"), QString::number(limit));
    helper.setProcessEnvironment(environment);
    helper.start(QString::fromStdString(m_helper), {});
    helper.write(QByteArray::fromStdString(UpdateMessages::print(question)));
    helper.closeWriteChannel();
    constexpr int patience = 60'000;
    if (!helper.waitForFinished(patience) || helper.exitStatus() != QProcess::NormalExit ||
        helper.exitCode() != 0) {
        return std::nullopt;
    }
    return UpdateMessages::parseAnswer(helper.readAllStandardOutput().toStdString());
}

} // namespace veslora::testing
