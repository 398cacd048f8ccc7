// SPDX-License-Identifier: MIT
#include "VesloraUI/Music/MusicLevelsPresenter.h"

#include <algorithm>

namespace veslora {

void MusicLevelsPresenter::start() {
    follow(m_music, &MusicModel::trackChanged);
}

/// A report of the player between two ticks leaves the bars where they are.
void MusicLevelsPresenter::read() {
    const bool isPlaying = m_music->track() && m_music->track()->isPlaying;
    show(m_shown, isPlaying ? Shown{.isPlaying = true, .levels = m_shown.levels} : Shown{});
}

void MusicLevelsPresenter::setDate(double date) {
    m_date = date;
    if (!isComplete() || !m_shown.isPlaying) {
        return;
    }
    std::uniform_real_distribution<double> level(lowest, highest);
    Shown shown = m_shown;
    std::ranges::generate(shown.levels, [&] { return level(m_random); });
    show(m_shown, std::move(shown));
}

} // namespace veslora
