// SPDX-License-Identifier: MIT
// An X server, be it the desktop's own or the one that a Wayland compositor keeps for X programs. Main thread
// only.
#pragma once

#include "VesloraLinux/Shared/WindowSystem.h"
#include "VesloraLinux/X11/X11FrameClock.h"
#include "VesloraLinux/X11/X11HostApplications.h"
#include "VesloraLinux/X11/X11Panel.h"
#include "VesloraLinux/X11/X11Screens.h"
#include "VesloraLinux/X11/X11ScrollDevices.h"

#include <memory>

namespace veslora {

class X11WindowSystem final : public WindowSystem {
  public:
    /// Whether an X server answers at the address in DISPLAY.
    [[nodiscard]] static bool hasServer();
    /// Whether the application object runs on X.
    [[nodiscard]] static bool applies();
    /// The form that fits the session: shrinking when the desktop itself is a Wayland compositor's.
    [[nodiscard]] static PanelForm formOfSession();

    /// Null when no second connection to the server can be had.
    [[nodiscard]] static std::unique_ptr<X11WindowSystem> make(Scheduler& scheduler, PanelForm form);

    [[nodiscard]] Screens& screens() override { return m_screens; }
    /// On a Wayland desktop its X server knows some of the windows and nothing of which of them is on screen,
    /// so it gives none.
    [[nodiscard]] ScreenWindows& screenWindows() override { return *m_screenWindows; }
    [[nodiscard]] Pointer& pointer() override { return *m_pointer; }
    [[nodiscard]] ScrollDevices& scrollDevices() override { return m_scrollDevices; }
    [[nodiscard]] Panel& panel() override { return m_panel; }
    [[nodiscard]] FrameClock& frameClock() override { return m_frameClock; }
    [[nodiscard]] HostApplications& hostApplications() override { return m_hostApplications; }
    /// None on a Wayland desktop: its compositor does not ask its X server when to blank the screen.
    [[nodiscard]] std::unique_ptr<Inhibitor> makeDisplayInhibitor() override;

  private:
    X11WindowSystem(Scheduler& scheduler, std::unique_ptr<X11Connection> connection, PanelForm form);

    PanelForm m_form;
    std::unique_ptr<X11Connection> m_connection;
    X11Screens m_screens;
    std::unique_ptr<ScreenWindows> m_screenWindows;
    X11Panel m_panel;
    X11FrameClock m_frameClock;
    std::unique_ptr<Pointer> m_pointer;
    X11ScrollDevices m_scrollDevices;
    X11HostApplications m_hostApplications;
};

} // namespace veslora
