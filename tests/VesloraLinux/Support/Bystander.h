// SPDX-License-Identifier: MIT
// A window of another program, as the X server sees it: on a connection of its own, without Qt.
#pragma once

#include <QColor>
#include <QRect>

#include <xcb/xcb.h>

#include <cstdint>
#include <string>
#include <vector>

namespace veslora::testing {

struct BystanderOptions {
    QRect frame{0, 0, 400, 300};
    QColor color = Qt::green;
    bool isOverrideRedirect = false; ///< kept out of the window manager's hands, as menus and lockers are
    bool isFullscreen = false;
    bool isBorderless = false;        ///< it wants nothing of the window manager's around it
    std::int32_t pid = 0;             ///< put into _NET_WM_PID unless 0
    std::string type;                 ///< the name of an atom for _NET_WM_WINDOW_TYPE
    std::string machine;              ///< put into WM_CLIENT_MACHINE unless empty
    std::vector<std::uint32_t> strut; ///< put into _NET_WM_STRUT_PARTIAL unless empty
};

class Bystander {
  public:
    /// Shows the window and waits until it is there.
    explicit Bystander(const BystanderOptions& options = {});
    Bystander(const Bystander&) = delete;
    Bystander& operator=(const Bystander&) = delete;
    ~Bystander();

    [[nodiscard]] xcb_window_t window() const { return m_window; }
    [[nodiscard]] int presses();
    [[nodiscard]] int motions();
    /// Whether the window has the keyboard's focus now.
    [[nodiscard]] bool hasFocus();
    /// How often it lost the focus.
    [[nodiscard]] int focusLosses();
    [[nodiscard]] bool isViewable();

    void raise();
    void iconify();
    /// Shows it again.
    void map();
    /// Asks the window manager to put it into a state and out of it again: "FULLSCREEN", "MAXIMIZED".
    void setState(const std::string& state, bool isOn);
    /// Asks for another desktop; `allDesktops` for all of them.
    void moveToDesktop(std::uint32_t desktop);
    static constexpr std::uint32_t allDesktops = 0xffffffff;
    void place(const QRect& frame);
    void setTitle(const std::string& title);
    /// Writes its states, or its desktop, as a window manager does.
    void writeStates(const std::vector<std::string>& states);
    void writeDesktop(std::uint32_t desktop);
    void setStrut(const std::vector<std::uint32_t>& strut);
    /// Goes up again whenever something is put over it, as long as `pump` is called.
    void fight() { m_fights = true; }
    void pump();

  private:
    [[nodiscard]] xcb_atom_t atom(const std::string& name) const;
    void ask(const std::string& type, const std::vector<std::uint32_t>& data);
    void setValues(const std::string& property, xcb_atom_t type, const std::vector<std::uint32_t>& values);
    void show(const BystanderOptions& options);

    xcb_connection_t* m_connection;
    xcb_window_t m_root;
    xcb_window_t m_window;
    int m_presses = 0;
    int m_motions = 0;
    int m_focusLosses = 0;
    bool m_fights = false;
};

/// Asks the window manager for something, as a pager does, of one window or of the root.
void askWindowManager(xcb_connection_t* connection, xcb_window_t window, const std::string& type,
                      const std::vector<std::uint32_t>& data);

/// The windows on screen from the bottom of the stack to its top.
[[nodiscard]] std::vector<xcb_window_t> stackOf(xcb_connection_t* connection, xcb_window_t root);

} // namespace veslora::testing
