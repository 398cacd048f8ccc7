// SPDX-License-Identifier: MIT
#include "VesloraUI/Music/MusicWidgetPresenter.h"

#include "VesloraCore/Timer/TimerFormat.h"

#include <algorithm>
#include <cmath>

namespace veslora {

namespace {

/// On one line, and no longer than can ever be seen.
QString lineOf(const std::string& text) {
    QString line = QString::fromStdString(text).simplified();
    if (line.size() > MusicWidgetPresenter::longest) {
        line.truncate(MusicWidgetPresenter::longest);
        if (line.back().isHighSurrogate()) {
            line.chop(1);
        }
    }
    return line;
}

QString nameOf(const MusicSource& source) {
    const auto* app = std::get_if<MusicSource::App>(&source.kind);
    return app ? lineOf(app->name) : QStringLiteral("Spotify");
}

QString timeOf(double seconds) {
    return QString::fromStdString(TimerFormat::remaining(seconds));
}

} // namespace

void MusicWidgetPresenter::start() {
    follow(m_music, &MusicModel::trackChanged);
}

void MusicWidgetPresenter::setDate(double date) {
    m_date = date;
    refresh();
}

void MusicWidgetPresenter::read() {
    const auto& track = m_music->track();
    show(m_shown, track ? look(*track) : Shown{.source = tr("Nothing playing")});
}

MusicWidgetPresenter::Shown MusicWidgetPresenter::look(const NowPlaying& track) const {
    const bool isTimed = track.duration > 0;
    const double played = std::max(track.positionAt(m_date), 0.0);
    const double position = isTimed ? std::min(played, track.duration) : played;
    return {.hasTrack = true,
            .isPlaying = track.isPlaying,
            .source = nameOf(track.source),
            .title = lineOf(track.title),
            .detail = lineOf(track.artist.empty() ? track.album : track.artist),
            .position = timeOf(position),
            .duration = timeOf(track.duration),
            .progress = isTimed ? std::ceil(position / track.duration * segments) / segments : 0};
}

} // namespace veslora
