// SPDX-License-Identifier: MIT
#include "MediaAdapter/Artwork/RemoteArtwork.h"

#include "MediaAdapter/Artwork/ArtworkFile.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTimer>
#include <QUrl>

#include <utility>

namespace veslora {
namespace {

constexpr int mostRedirects = 5;

bool isHttps(const QUrl& url) {
    return url.isValid() && url.scheme() == QLatin1String("https") && !url.host().isEmpty();
}

} // namespace

RemoteArtwork::RemoteArtwork(const QSslConfiguration& security, std::chrono::milliseconds timeout)
    : m_security(security), m_timeout(timeout), m_manager(std::make_unique<QNetworkAccessManager>()) {}

RemoteArtwork::~RemoteArtwork() = default;

void RemoteArtwork::fetch(const QString& url) {
    const QUrl address(url, QUrl::StrictMode);
    if (!isHttps(address)) {
        finish({});
        return;
    }
    QNetworkRequest request(address);
    request.setSslConfiguration(m_security);
    request.setMaximumRedirectsAllowed(mostRedirects);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    // Each redirect is looked at here, so that none leads off https.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::UserVerifiedRedirectPolicy);
    m_reply = m_manager->get(request);
    connect(m_reply, &QNetworkReply::redirected, this, [this](const QUrl& target) {
        if (isHttps(target)) {
            emit m_reply->redirectAllowed();
        } else {
            finish({});
        }
    });
    connect(m_reply, &QNetworkReply::readyRead, this, &RemoteArtwork::read);
    connect(m_reply, &QNetworkReply::finished, this, [this] {
        read();
        if (m_reply != nullptr) {
            finish(m_reply->error() == QNetworkReply::NoError ? m_bytes : QByteArray());
        }
    });
    QTimer::singleShot(m_timeout, this, [this] {
        if (m_reply != nullptr) {
            finish({});
        }
    });
}

/// Counts what came, whatever length was announced.
void RemoteArtwork::read() {
    if (m_reply == nullptr) {
        return;
    }
    m_bytes += m_reply->read(ArtworkFile::largest + 1 - m_bytes.size());
    if (m_bytes.size() > ArtworkFile::largest) {
        finish({});
    }
}

void RemoteArtwork::finish(const QByteArray& bytes) {
    if (QNetworkReply* const reply = std::exchange(m_reply, nullptr)) {
        reply->disconnect(this);
        reply->deleteLater();
    }
    emit fetched(bytes);
}

} // namespace veslora
