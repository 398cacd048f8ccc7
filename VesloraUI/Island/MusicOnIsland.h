// SPDX-License-Identifier: MIT
// What the island has to do with music: has players watched while something may show them, and tells when
// what plays, or that it has paused for long enough, may change what a closed island shows. Main thread only.
#pragma once

#include "VesloraUI/Platform/Task.h"

#include <functional>

namespace veslora {

class Defaults;
class MusicModel;
class RackModel;
class Scheduler;

class MusicOnIsland {
  public:
    MusicOnIsland(MusicModel& music, const RackModel& rack, const Defaults& settings, Scheduler& scheduler,
                  std::function<void()> onChange);
    ~MusicOnIsland();
    MusicOnIsland(const MusicOnIsland&) = delete;
    MusicOnIsland& operator=(const MusicOnIsland&) = delete;

    /// From now on the music's changes are heard. Once, at launch.
    void start();
    /// Once, at the end: no player is watched any more and no change is told.
    void stop();
    /// To be called when the settings, the rack's widgets among them, may have changed.
    void settingsChanged();

  private:
    void changed();
    void updateNeed();

    MusicModel& m_music;
    const RackModel& m_rack;
    const Defaults& m_settings;
    Scheduler& m_scheduler;
    std::function<void()> m_onChange;
    Task m_grace; ///< ends the wings of music that was paused
};

} // namespace veslora
