// SPDX-License-Identifier: MIT
#include "Web/HttpsFetch.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QUrl>

#include <algorithm>
#include <utility>

namespace veslora {

namespace {

constexpr int fine = 200;

bool isHttps(const QUrl& url) {
    return url.isValid() && url.scheme() == QLatin1String("https") && !url.host().isEmpty();
}

FetchFailure failureOf(QNetworkReply::NetworkError error) {
    switch (error) {
    case QNetworkReply::ConnectionRefusedError:
    case QNetworkReply::HostNotFoundError:
    case QNetworkReply::TemporaryNetworkFailureError:
    case QNetworkReply::NetworkSessionFailedError:
    case QNetworkReply::ProxyConnectionRefusedError:
    case QNetworkReply::ProxyNotFoundError:
    case QNetworkReply::UnknownNetworkError:
        return FetchFailure::unreachable;
    case QNetworkReply::TimeoutError:
    case QNetworkReply::OperationCanceledError:
        return FetchFailure::slow;
    case QNetworkReply::SslHandshakeFailedError:
    case QNetworkReply::InsecureRedirectError:
    // A redirect to a file or the like, which the toolkit refuses by itself.
    case QNetworkReply::ProtocolUnknownError:
        return FetchFailure::insecure;
    case QNetworkReply::RemoteHostClosedError:
        return FetchFailure::incomplete;
    default:
        return FetchFailure::missing;
    }
}

} // namespace

HttpsFetch::HttpsFetch(const QSslConfiguration& security, Limits limits)
    : m_security(security), m_limits(limits), m_manager(std::make_unique<QNetworkAccessManager>()) {
    m_whole.setSingleShot(true);
    m_stall.setSingleShot(true);
    connect(&m_whole, &QTimer::timeout, this, [this] { finish(FetchFailure::slow); });
    connect(&m_stall, &QTimer::timeout, this, [this] { finish(FetchFailure::slow); });
}

HttpsFetch::~HttpsFetch() = default;

void HttpsFetch::fetch(const QString& url, Sink sink, Done done) {
    m_sink = std::move(sink);
    m_done = std::move(done);
    const QUrl address(url, QUrl::StrictMode);
    if (!isHttps(address)) {
        QTimer::singleShot(0, this, [this] { finish(FetchFailure::insecure); });
        return;
    }
    QNetworkRequest request(address);
    request.setSslConfiguration(m_security);
    request.setMaximumRedirectsAllowed(mostRedirects);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    // Each redirect is looked at here, so that none leads off https.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::UserVerifiedRedirectPolicy);
    // Nothing is unpacked: a signature is that of the bytes that come, and few of them could become many.
    request.setRawHeader("Accept-Encoding", "identity");
    m_reply = m_manager->get(request);
    listen();
    m_whole.start(m_limits.whole);
    m_stall.start(m_limits.stall);
}

void HttpsFetch::listen() {
    connect(m_reply, &QNetworkReply::redirected, this, &HttpsFetch::follow);
    connect(m_reply, &QNetworkReply::readyRead, this, &HttpsFetch::read);
    connect(m_reply, &QNetworkReply::finished, this, &HttpsFetch::ended);
}

void HttpsFetch::follow(const QUrl& target) {
    if (isHttps(target)) {
        emit m_reply->redirectAllowed();
    } else {
        finish(FetchFailure::insecure);
    }
}

/// Counts what came, whatever length was announced. An error's page is not read.
void HttpsFetch::read() {
    if (m_reply == nullptr || m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() != fine) {
        return;
    }
    m_stall.start(m_limits.stall);
    const QByteArray bytes =
        m_reply->read(std::min(m_reply->bytesAvailable(), m_limits.most + 1 - m_received));
    m_received += bytes.size();
    if (m_received > m_limits.most) {
        finish(FetchFailure::tooLarge);
    } else if (!m_sink(bytes)) {
        finish(FetchFailure::notKept);
    }
}

void HttpsFetch::ended() {
    read();
    if (m_reply == nullptr) {
        return;
    }
    if (m_reply->error() != QNetworkReply::NoError) {
        finish(failureOf(m_reply->error()));
        return;
    }
    const bool isFine = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() == fine;
    finish(isFine ? std::nullopt : std::optional(FetchFailure::missing));
}

void HttpsFetch::finish(std::optional<FetchFailure> failure) {
    m_whole.stop();
    m_stall.stop();
    if (QNetworkReply* const reply = std::exchange(m_reply, nullptr)) {
        reply->disconnect(this);
        reply->abort();
        reply->deleteLater();
    }
    if (const Done done = std::exchange(m_done, nullptr)) {
        done(failure);
    }
}

} // namespace veslora
