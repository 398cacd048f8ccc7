// SPDX-License-Identifier: MIT
#include "VesloraUI/Music/MusicLevelsPresenter.h"

#include "VesloraUI/Platform/Appearance.h"

#include <algorithm>
#include <array>

namespace veslora {

namespace {

/// Seconds that one step moves the bars on at most, however long ago the last one was.
constexpr double longestStep = 0.1;

/// The heights of the bars that stand still while something plays.
constexpr std::array standing{0.45, 0.8, 1.0, 0.65, 0.4};

} // namespace

void MusicLevelsPresenter::start() {
    follow(m_music, &MusicModel::trackChanged);
    follow(&environment().appearance(), &Appearance::changed);
}

/// A report of the player between two ticks leaves the bars where they go.
void MusicLevelsPresenter::read() {
    const bool isPlaying = m_music->track() && m_music->track()->isPlaying;
    if (environment().reducesMotion()) {
        stand(isPlaying);
        return;
    }
    moveTo(isPlaying, isPlaying ? m_shown.levels : QList<double>(count, atRest));
}

void MusicLevelsPresenter::setDate(double date) {
    m_date = date;
    if (!isComplete() || !m_shown.isPlaying || environment().reducesMotion()) {
        return;
    }
    std::uniform_real_distribution<double> level(lowest, highest);
    QList<double> levels(count);
    std::ranges::generate(levels, [&] { return level(m_random); });
    moveTo(true, std::move(levels));
}

void MusicLevelsPresenter::moveTo(bool isPlaying, QList<double> levels) {
    for (qsizetype place = 0; place < count; ++place) {
        m_bars[static_cast<std::size_t>(place)].target = levels[place];
    }
    Shown shown = m_shown;
    shown.isPlaying = isPlaying;
    shown.levels = std::move(levels);
    shown.isMoving = isPlaying || !isAtRest();
    show(m_shown, std::move(shown));
}

void MusicLevelsPresenter::stand(bool isPlaying) {
    const QList<double> levels =
        isPlaying ? QList<double>(standing.begin(), standing.end()) : QList<double>(count, atRest);
    for (qsizetype place = 0; place < count; ++place) {
        m_bars[static_cast<std::size_t>(place)] = {.value = levels[place], .target = levels[place]};
    }
    show(m_shown, {.isPlaying = isPlaying, .isMoving = false, .levels = levels, .heights = levels});
}

void MusicLevelsPresenter::setStep(double date) {
    const double seconds = std::clamp(date - m_step, 0.0, longestStep);
    m_step = date;
    if (!isComplete() || !m_shown.isMoving) {
        return;
    }
    Shown shown = m_shown;
    shown.heights.clear();
    for (SpringMotion& bar : m_bars) {
        bar.advance(seconds, VesloraStyle::motionResponse, VesloraStyle::motionDamping);
        if (bar.isAtRest()) {
            bar = {.value = bar.target, .target = bar.target};
        }
        shown.heights.append(std::clamp(bar.value, 0.0, highest));
    }
    shown.isMoving = shown.isPlaying || !isAtRest();
    show(m_shown, std::move(shown));
}

bool MusicLevelsPresenter::isAtRest() const {
    return std::ranges::all_of(m_bars, [](const SpringMotion& bar) { return bar.isAtRest(); });
}

} // namespace veslora
