// SPDX-License-Identifier: MIT
#include "VesloraUI/Settings/AccentPreview.h"

#include "VesloraUI/Platform/TextMeasuring.h"
#include "VesloraUI/Store/SettingsKeys.h"

namespace veslora {

namespace {

/// A screen as wide as the preview, without a notch: it gets the made-up one.
ScreenMetrics madeUpScreen() {
    return {.frame = {0, 0, AccentPreview::width(), AccentPreview::width()},
            .menuBarHeight = AccentPreview::height()};
}

} // namespace

AccentPreview::Settings::Settings(const Seams& seams)
    : Defaults(seams.files, seams.directoryWatcher, seams.configuration, "VesloraAccentPreview") {
    SettingsKeys::registerDefaults(*this);
    registerDefaults({{SettingsKeys::timerSound, "None"}, {SettingsKeys::timerNotifications, false}});
}

AccentPreview::AccentPreview(const Seams& seams)
    : m_scheduler(seams.scheduler), m_settings(seams), m_agents({}),
      m_keepAwake(m_settings, m_silence.power, seams.scheduler),
      m_metronome(m_settings, {seams.scheduler, m_silence.metronome, m_silence.suspension}),
      m_music(m_settings, {seams.scheduler, m_silence.spotify, m_silence.scripts, m_silence.adapter,
                           m_silence.artwork, m_silence.apps}),
      m_timer(m_settings, {seams.scheduler, m_silence.sounds, m_silence.haptics}),
      m_rack(m_settings, m_silence.haptics), m_sampler(seams.scheduler, m_silence.readings),
      m_models({m_agents, m_keepAwake, m_metronome, m_music, m_timer, m_rack, m_sampler}),
      m_judge(m_models, m_settings, seams.measuring),
      m_model(NotchGeometry(madeUpScreen()), m_models, m_judge.judge(seams.scheduler.now())) {
    m_timer.onPresentationChange = [this] { refresh(); };
    m_timer.select(minutes);
    m_timer.start();
}

/// A timer that is over would drop down as an alert, for which there is no room: it begins again instead.
void AccentPreview::refresh() {
    if (m_timer.isShowingDone()) {
        m_timer.restart();
        return;
    }
    m_judge.judge(m_scheduler.now());
    m_model.refresh();
}

} // namespace veslora
