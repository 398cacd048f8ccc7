// SPDX-License-Identifier: MIT
// Fetches one file from the web, by https alone, for a process that lives for little else. Main thread only.
#pragma once

#include "Web/FetchFailure.h"

#include <QByteArray>
#include <QObject>
#include <QSslConfiguration>
#include <QString>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

class QNetworkAccessManager;
class QNetworkReply;
class QUrl;

namespace veslora {

class HttpsFetch : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HttpsFetch)

  public:
    static constexpr int mostRedirects = 5;

    struct Limits {
        qint64 most = 0; ///< bytes
        std::chrono::milliseconds whole{0};
        std::chrono::milliseconds stall{0}; ///< without a single byte
    };

    /// Takes the next bytes; false where it can't, which ends the fetch.
    using Sink = std::function<bool(const QByteArray&)>;
    /// Called once, later and never within `fetch`; absent when all of it went into the sink.
    using Done = std::function<void(std::optional<FetchFailure>)>;

    HttpsFetch(const QSslConfiguration& security, Limits limits);
    ~HttpsFetch() override;

    /// Begins. No cookies, no cache, no compression; every redirect must be to https. Called once.
    void fetch(const QString& url, Sink sink, Done done);

  private:
    void listen();
    void follow(const QUrl& target);
    void read();
    void ended();
    void finish(std::optional<FetchFailure> failure);

    QSslConfiguration m_security;
    Limits m_limits;
    std::unique_ptr<QNetworkAccessManager> m_manager;
    QNetworkReply* m_reply = nullptr;
    Sink m_sink;
    Done m_done;
    qint64 m_received = 0;
    QTimer m_whole;
    QTimer m_stall;
};

} // namespace veslora
