// SPDX-License-Identifier: MIT
// Fetches a picture from the web. Main thread only.
#pragma once

#include <QByteArray>
#include <QObject>
#include <QSslConfiguration>
#include <QString>

#include <chrono>
#include <memory>

class QNetworkAccessManager;
class QNetworkReply;

namespace veslora {

class RemoteArtwork : public QObject {
    Q_OBJECT

  public:
    static constexpr std::chrono::milliseconds longestFetch{5000};

    explicit RemoteArtwork(const QSslConfiguration& security = QSslConfiguration::defaultConfiguration(),
                           std::chrono::milliseconds timeout = longestFetch);
    ~RemoteArtwork() override;
    RemoteArtwork(const RemoteArtwork&) = delete;
    RemoteArtwork& operator=(const RemoteArtwork&) = delete;

    /// Begins to fetch, by https alone, redirects included.
    void fetch(const QString& url);

  signals:
    /// Said once: the bytes, or nothing for an error, for more than is read of a file, and after
    /// the timeout.
    void fetched(const QByteArray& bytes);

  private:
    void read();
    void finish(const QByteArray& bytes);

    QSslConfiguration m_security;
    std::chrono::milliseconds m_timeout;
    std::unique_ptr<QNetworkAccessManager> m_manager;
    QNetworkReply* m_reply = nullptr;
    QByteArray m_bytes;
};

} // namespace veslora
