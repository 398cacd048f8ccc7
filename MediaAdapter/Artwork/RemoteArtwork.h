// SPDX-License-Identifier: MIT
// Fetches a picture from the web. Main thread only.
#pragma once

#include "Web/HttpsFetch.h"

#include <QByteArray>
#include <QString>

#include <chrono>
#include <functional>

namespace veslora {

class RemoteArtwork {
  public:
    static constexpr std::chrono::milliseconds longestFetch{5000};

    /// Called once, later and never within `fetch`, with the bytes, or with nothing for an error, for more
    /// than is read of a file, and after the timeout.
    using Done = std::function<void(const QByteArray&)>;

    explicit RemoteArtwork(const QSslConfiguration& security = QSslConfiguration::defaultConfiguration(),
                           std::chrono::milliseconds timeout = longestFetch);

    /// Begins to fetch, by https alone, redirects included. Called once.
    void fetch(const QString& url, Done done);

  private:
    HttpsFetch m_fetch;
    QByteArray m_bytes;
};

} // namespace veslora
