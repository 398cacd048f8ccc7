// SPDX-License-Identifier: MIT
// The harness's eyes and hands on the X display that $DISPLAY names.
#pragma once

#include <sys/types.h>
#include <xcb/xcb.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace veslora::bench {

/// In native pixels from the display's top left corner.
struct Place {
    int x = 0;
    int y = 0;
};

struct Area {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    [[nodiscard]] int right() const { return x + width; }
    [[nodiscard]] int bottom() const { return y + height; }
};

/// As an X server of depth 24 stores it.
struct Pixel {
    std::uint32_t value = 0;

    [[nodiscard]] int red() const { return static_cast<int>(value >> 16 & 0xff); }
    [[nodiscard]] int green() const { return static_cast<int>(value >> 8 & 0xff); }
    [[nodiscard]] int blue() const { return static_cast<int>(value & 0xff); }
};

class Display {
  public:
    /// Throws when there is no display.
    Display();

    [[nodiscard]] int width() const { return m_screen->width_in_pixels; }
    [[nodiscard]] int height() const { return m_screen->height_in_pixels; }

    /// What is on screen.
    [[nodiscard]] std::vector<Pixel> pixels(const Area& area) const;
    [[nodiscard]] Pixel pixel(Place place) const { return pixels({place.x, place.y, 1, 1}).front(); }

    /// Moves as a mouse does; the server has taken it when this returns.
    void moveBy(int x, int y) const;
    void moveTo(Place place) const;
    [[nodiscard]] Place pointer() const;
    /// As X counts buttons: the main one is 1, a wheel that is tilted to the right is 7.
    void press(std::uint8_t button = 1) const;
    /// Hands the release to the server and does not wait.
    void release(std::uint8_t button = 1) const;

    /// The shown top-level window of a process that no window manager has framed; absent while there is none.
    [[nodiscard]] std::optional<xcb_window_t> panelOf(pid_t process) const;
    /// The window of a process that the window manager has taken; absent while there is none.
    [[nodiscard]] std::optional<xcb_window_t> managedWindowOf(pid_t process) const;
    /// Asks a window to close, as the window manager does for the user.
    void askToClose(xcb_window_t window) const;
    /// The smallest area that holds all of a window's input region, on the display; absent while it takes no
    /// input.
    [[nodiscard]] std::optional<Area> inputOf(xcb_window_t window) const;
    /// Where a window lies on the display.
    [[nodiscard]] Area areaOf(xcb_window_t window) const;

  private:
    struct Close {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };
    void fake(std::uint8_t type, std::uint8_t detail, int x, int y) const;
    [[nodiscard]] xcb_atom_t atom(const char* name) const;
    [[nodiscard]] pid_t processOf(xcb_window_t window) const;
    [[nodiscard]] bool isPanel(xcb_window_t window) const;

    std::unique_ptr<xcb_connection_t, Close> m_connection;
    xcb_screen_t* m_screen = nullptr;
};

} // namespace veslora::bench
