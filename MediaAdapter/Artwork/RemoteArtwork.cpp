// SPDX-License-Identifier: MIT
#include "MediaAdapter/Artwork/RemoteArtwork.h"

#include "MediaAdapter/Artwork/ArtworkFile.h"

#include <utility>

namespace veslora {

RemoteArtwork::RemoteArtwork(const QSslConfiguration& security, std::chrono::milliseconds timeout)
    : m_fetch(security, {.most = ArtworkFile::largest, .whole = timeout, .stall = timeout}) {}

void RemoteArtwork::fetch(const QString& url, Done done) {
    m_fetch.fetch(
        url,
        [this](const QByteArray& bytes) {
            m_bytes += bytes;
            return true;
        },
        [this, done = std::move(done)](std::optional<FetchFailure> failure) {
            done(failure ? QByteArray() : m_bytes);
        });
}

} // namespace veslora
