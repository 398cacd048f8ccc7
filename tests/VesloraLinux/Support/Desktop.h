// SPDX-License-Identifier: MIT
// A private X desktop for one test: server, window manager, compositor, and an application object on it.
#pragma once

#include "VesloraLinux/System/LinuxScheduler.h"
#include "VesloraLinux/X11/X11Connection.h"
#include "tests/VesloraLinux/Support/PrivateDisplay.h"

#include <QColor>
#include <QGuiApplication>
#include <QRect>

#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace veslora::testing {

struct DesktopOptions {
    std::string scale = "1"; ///< native pixels of a point, as QT_SCALE_FACTOR takes it
    bool hasWindowManager = true;
    bool hasCompositor = false;
    std::string screenScales; ///< scales of single monitors, as QT_SCREEN_SCALE_FACTORS takes them
    std::string resources;    ///< lines for the X resources, such as "Xft.dpi: 144"
    /// Monitors as xrandr names and places them: "eDP-1 800/200x900/225+0+0". None for a single one of 1600
    /// by 900.
    std::vector<std::string> monitors;
    std::string windowManager = "openbox";
};

class Desktop {
  public:
    explicit Desktop(const DesktopOptions& options = {});
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;
    ~Desktop();

    [[nodiscard]] LinuxScheduler& scheduler() { return *m_scheduler; }
    /// The connection that the code under test works with.
    [[nodiscard]] X11Connection& connection() { return *m_connection; }

    void startCompositor() const { m_display.startCompositor(); }
    /// Ends it without giving it the time to say goodbye.
    void killCompositor() const { m_display.killCompositor(); }

    /// Runs xrandr with these arguments and waits for its end.
    void xrandr(const std::vector<std::string>& arguments);

    /// What is on screen at a native place.
    [[nodiscard]] QColor pixelAt(int x, int y);

    void movePointerBy(int x, int y);
    void movePointerTo(int x, int y);
    void press(int button = 1);
    void release(int button = 1);
    void click(int button = 1);

    /// The values of a root window's property.
    [[nodiscard]] std::vector<std::uint32_t> rootValues(const std::string& property);

    void switchToDesktop(std::uint32_t desktop);
    /// Writes which desktop is in sight, as a window manager does.
    void writeCurrentDesktop(std::uint32_t desktop);

    /// Waits until the server has done all that it was asked to.
    void settle() const;

  private:
    void placeMonitors(const std::vector<std::string>& monitors);
    void readResources(const std::string& lines) const;
    void fakeInput(std::uint8_t type, std::uint8_t detail, int x, int y) const;

    PrivateDisplay m_display;
    int m_count = 1;
    char m_name[8] = "veslora";
    char* m_arguments[2] = {m_name, nullptr};
    std::unique_ptr<QGuiApplication> m_application;
    std::unique_ptr<LinuxScheduler> m_scheduler;
    std::unique_ptr<X11Connection> m_connection;
    std::unique_ptr<X11Connection> m_own; ///< the test's eyes and hands
};

/// A mouse that never rests, moved by a thread on a connection of its own.
class RestlessMouse {
  public:
    explicit RestlessMouse(int eventsPerSecond);
    RestlessMouse(const RestlessMouse&) = delete;
    RestlessMouse& operator=(const RestlessMouse&) = delete;
    ~RestlessMouse() { stop(); }

    void stop();
    [[nodiscard]] int events() const { return m_events; }
    /// The processor time that the mouse itself took, in seconds; known once it has stopped.
    [[nodiscard]] double processorSeconds() const { return m_processorSeconds; }

  private:
    void run(int eventsPerSecond);

    std::atomic<bool> m_stops = false;
    std::atomic<int> m_events = 0;
    double m_processorSeconds = 0;
    std::thread m_thread;
};

/// The processor time of all of this process, or of the calling thread alone, in seconds.
[[nodiscard]] double processorSeconds(int who);

} // namespace veslora::testing
