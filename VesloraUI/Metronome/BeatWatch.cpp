// SPDX-License-Identifier: MIT
#include "VesloraUI/Metronome/BeatWatch.h"

#include "VesloraUI/Platform/Observable.h"
#include "VesloraUI/Style/ViewEnvironment.h"

#include <QQmlEngine>

#include <algorithm>
#include <cmath>

namespace veslora {

namespace {

constexpr double secondsPerMinute = 60;
/// Seconds between two looks where nobody knows when the next beat will be heard: before the first one.
constexpr double impatience = 0.01;
/// The player's clock and this one differ a little: so many seconds after the moment it is surely there.
constexpr double lateness = 0.001;

} // namespace

double BeatWatch::lightAt(double seconds) {
    if (seconds < flash) {
        return 1;
    }
    const double step = std::floor((seconds - flash) / (fade / fadeSteps));
    return std::max(0.0, 1 - (step + 1) / (fadeSteps + 1));
}

std::optional<double> BeatWatch::nextStepAfter(double seconds) {
    for (int step = 0; step <= fadeSteps; ++step) {
        const double moment = flash + step * fade / fadeSteps;
        if (seconds < moment) {
            return moment;
        }
    }
    return std::nullopt;
}

void BeatWatch::componentComplete() {
    QQuickItem::componentComplete();
    m_isComplete = true;
    for (const auto change : {&MetronomeModel::isRunningChanged, &MetronomeModel::bpmChanged,
                              &MetronomeModel::signatureChanged}) {
        connect(m_metronome, change, this, &BeatWatch::look);
    }
    look();
}

void BeatWatch::itemChange(ItemChange change, const ItemChangeData& data) {
    if (m_isComplete && (change == ItemVisibleHasChanged || change == ItemSceneChange)) {
        look();
    }
    QQuickItem::itemChange(change, data);
}

void BeatWatch::look() {
    m_next.cancel();
    const bool isWanted = isVisible() && window() && m_metronome && m_metronome->isRunning();
    const auto phase = isWanted ? m_metronome->beatPhase() : std::nullopt;
    const bool isLit = phase && m_hasLight;
    const Shown shown{.beat = phase ? phase->inBar : -1,
                      .light = isLit ? lightAt(phase->secondsIntoBeat) : 0};
    assign(this, m_shown, shown, &BeatWatch::changed);
    if (isWanted) {
        m_next = ViewEnvironment::of(qmlEngine(this)).scheduler().after(rest(phase), [this] { look(); });
    }
}

double BeatWatch::rest(const std::optional<MetronomeModel::BeatPhase>& phase) const {
    if (!phase) {
        return impatience;
    }
    const double beat = secondsPerMinute / m_metronome->bpm();
    const double next = m_hasLight ? nextStepAfter(phase->secondsIntoBeat).value_or(beat) : beat;
    // Where the tempo changes, this beat may last longer than one of the new tempo.
    const double left = std::min(next, beat) - phase->secondsIntoBeat;
    return left > 0 ? left + lateness : impatience;
}

} // namespace veslora
