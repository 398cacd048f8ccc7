// SPDX-License-Identifier: MIT
// A metronome's player whose device runs by the test's own time, and that remembers what was queued.
#pragma once

#include "VesloraUI/Platform/MetronomePlaying.h"
#include "VesloraUI/Platform/Scheduler.h"

#include <cmath>
#include <vector>

namespace veslora {

class FakeMetronomePlayer final : public MetronomePlaying {
  public:
    struct Hit {
        MetronomeSound sound = MetronomeSound::click;
        bool accent = false;
        std::int64_t atSample = 0;
        bool operator==(const Hit&) const = default;
    };

    bool canStart = true;
    double beginsAfter = 0; ///< seconds from a start to the device's first sample
    std::int64_t latency = 0;
    int starts = 0; ///< attempts included
    int stops = 0;
    std::vector<Hit> hits; ///< of all starts
    std::vector<float> volumes;

    explicit FakeMetronomePlayer(Scheduler& scheduler) : m_scheduler(scheduler) {}

    [[nodiscard]] bool isStarted() const { return m_startedAt.has_value(); }

    [[nodiscard]] std::optional<std::int64_t> currentSample() const override {
        const double passed = m_startedAt ? m_scheduler.steadyNow() - *m_startedAt - beginsAfter : -1;
        return passed < 0 ? std::nullopt : std::optional<std::int64_t>(std::llround(passed * 48000));
    }
    [[nodiscard]] double sampleRate() const override { return 48000; }
    [[nodiscard]] std::int64_t outputLatency() const override { return latency; }
    [[nodiscard]] StartResult start() override {
        ++starts;
        if (!canStart) {
            return MetronomeError::engineFailed;
        }
        m_startedAt = m_startedAt.value_or(m_scheduler.steadyNow());
        return currentSample().value_or(0) + 4800;
    }
    void stop() override {
        ++stops;
        m_startedAt = std::nullopt;
    }
    void schedule(MetronomeSound sound, bool accent, std::int64_t atSample) override {
        hits.push_back({sound, accent, atSample});
    }
    void setVolume(float volume) override { volumes.push_back(volume); }

    /// Stops by itself, as when headphones are unplugged, and says so.
    void changeConfiguration() {
        m_startedAt = std::nullopt;
        if (onConfigurationChange) {
            onConfigurationChange();
        }
    }
    /// Finds that there are no loudspeakers, and says so.
    void fail() {
        m_startedAt = std::nullopt;
        if (onFailure) {
            onFailure();
        }
    }

  private:
    Scheduler& m_scheduler;
    std::optional<double> m_startedAt; ///< absent while it is stopped
};

} // namespace veslora
