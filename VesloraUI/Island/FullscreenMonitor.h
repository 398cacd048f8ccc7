// SPDX-License-Identifier: MIT
// Knows whether an application fills the island's screen, and decides when to look. Main thread only.
#pragma once

#include "VesloraUI/Platform/Scheduler.h"
#include "VesloraUI/Platform/ScreenWindows.h"

#include <functional>
#include <optional>

namespace veslora {

class FullscreenMonitor {
  public:
    /// Gives the screen that counts; absent while there is none.
    using TargetScreen = std::function<std::optional<ScreenInfo>()>;

    /// Nothing runs before `start`.
    FullscreenMonitor(ScreenWindows& windows, Scheduler& scheduler)
        : m_windows(windows), m_scheduler(scheduler) {}
    ~FullscreenMonitor() { stop(); }
    FullscreenMonitor(const FullscreenMonitor&) = delete;
    FullscreenMonitor& operator=(const FullscreenMonitor&) = delete;

    [[nodiscard]] bool isRunning() const { return m_screen != nullptr; }
    /// The last result, also after `stop`; false before the first.
    [[nodiscard]] bool isFullscreen() const { return m_isFullscreen; }

    /// Looks at once, and again whenever the windows change.
    void start(TargetScreen screen);
    /// Looks at once, and again once the windows have come to rest. Does nothing unless it runs.
    void recheck();
    void stop();

    /// Called on each change of `isFullscreen`, with the new value.
    std::function<void(bool)> onChange;

  private:
    void update();

    ScreenWindows& m_windows;
    Scheduler& m_scheduler;
    TargetScreen m_screen; ///< empty while it does not run
    QMetaObject::Connection m_observer;
    Task m_settleTask;
    bool m_isFullscreen = false;
};

} // namespace veslora
