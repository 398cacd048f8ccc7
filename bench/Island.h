// SPDX-License-Identifier: MIT
// The program as it runs on the stage, seen from outside: started and ended, its panel found, the island's
// state told from where it takes clicks.
#pragma once

#include "bench/FrameWatch.h"
#include "bench/Home.h"
#include "bench/ProcessMeter.h"
#include "bench/Stage.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veslora::bench {

class Island {
  public:
    /// Starts the program and waits until the island is on screen. `runner` is put before its command and has
    /// to become it, without a process of its own in between.
    Island(const Stage& stage, const Home& home, const std::string& program,
           std::vector<std::string> runner = {});
    /// Ends it and waits until it has left the screen.
    ~Island();
    Island(const Island&) = delete;
    Island& operator=(const Island&) = delete;

    [[nodiscard]] pid_t pid() const { return m_process->pid(); }
    [[nodiscard]] const ProcessMeter& meter() const { return *m_meter; }
    [[nodiscard]] FrameWatch& frames() { return *m_frames; }
    /// Seconds from the start of the program to the first black pixel.
    [[nodiscard]] double startTime() const { return m_startTime; }

    /// The panel that it is drawn into, whatever its state.
    [[nodiscard]] Area panel() const { return m_display.areaOf(m_panel); }
    /// Where it takes clicks: the open island or the alert; absent while it is closed.
    [[nodiscard]] std::optional<Area> area() const;

    /// Lets the pointer rest on the island, or far from it, and waits until the island reacts.
    void open() const;
    void close() const;

    /// Waits until the panel is found closed and has drawn nothing for a while.
    void waitForClosed();

    /// The place in the middle of the closed island's black.
    static constexpr Place notch{Stage::width / 2, 12};
    /// Away from everything.
    static constexpr Place far{Stage::width / 2, Stage::height - 100};

  private:
    const Display& m_display;
    double m_begin;
    std::unique_ptr<testing::Program> m_process;
    double m_startTime = 0;
    xcb_window_t m_panel = XCB_WINDOW_NONE;
    std::optional<ProcessMeter> m_meter;
    std::optional<FrameWatch> m_frames;
};

} // namespace veslora::bench
