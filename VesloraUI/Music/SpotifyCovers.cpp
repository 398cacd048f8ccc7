// SPDX-License-Identifier: MIT
#include "VesloraUI/Music/SpotifyCovers.h"

#include "VesloraUI/Platform/Logs.h"
#include "VesloraUI/Platform/SpotifyScripts.h"

namespace veslora {

namespace {

constexpr qsizetype longestUrl = 4096;

/// The address in the answer; empty for anything but one of https.
QUrl addressIn(const ScriptRunning::Result& answer) {
    const auto* said = std::get_if<std::string>(&answer);
    const QString text = said ? QString::fromStdString(*said).trimmed() : QString();
    // The scheme is compared as it was written, since reading an address puts it into lower case.
    if (text.size() > longestUrl || !text.startsWith(QStringLiteral("https:"))) {
        return {};
    }
    const QUrl url(text, QUrl::StrictMode);
    return url.isValid() && !url.host().isEmpty() ? url : QUrl();
}

} // namespace

SpotifyCovers::SpotifyCovers(ScriptRunning& scripts, ArtworkLoading& loading, Owner owner)
    : m_scripts(scripts), m_loading(loading), m_owner(std::move(owner)) {}

void SpotifyCovers::fetch(const std::string& trackID) {
    if (m_fetches.contains(trackID)) {
        return;
    }
    m_fetches[trackID] =
        m_scripts.run(std::string(SpotifyScripts::artworkUrl),
                      [this, trackID](const ScriptRunning::Result& answer) { load(trackID, answer); });
}

void SpotifyCovers::load(const std::string& trackID, const ScriptRunning::Result& answer) {
    const QUrl url = addressIn(answer);
    // The address is that of the track which plays when Spotify answers. Once that is another one, it must
    // not be kept as this one's.
    if (url.isEmpty() || !m_owner.isCurrent(trackID)) {
        qCInfo(Logs::music, "no address for a cover");
        m_fetches.erase(trackID);
        return;
    }
    m_fetches[trackID] = m_loading.load(url, [this, trackID](const QImage& cover) { store(trackID, cover); });
}

void SpotifyCovers::store(const std::string& trackID, const QImage& cover) {
    m_fetches.erase(trackID);
    if (cover.isNull()) {
        qCInfo(Logs::music, "a cover could not be loaded");
        return;
    }
    m_cache.store(trackID, cover);
    m_owner.fetched(trackID);
}

} // namespace veslora
