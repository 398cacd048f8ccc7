// SPDX-License-Identifier: MIT
#include "VesloraLinux/X11/X11WindowSystem.h"

#include "VesloraLinux/Shared/NoScreenWindows.h"
#include "VesloraLinux/X11/PanelPointer.h"
#include "VesloraLinux/X11/X11Pointer.h"
#include "VesloraLinux/X11/X11ScreenSaver.h"
#include "VesloraLinux/X11/X11ScreenWindows.h"
#include "VesloraUI/Platform/Logs.h"

#include <QGuiApplication>

namespace veslora {

bool X11WindowSystem::hasServer() {
    xcb_connection_t* const connection = xcb_connect(nullptr, nullptr);
    const bool isThere = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return isThere;
}

bool X11WindowSystem::applies() {
    return QGuiApplication::platformName() == QLatin1String("xcb");
}

PanelForm X11WindowSystem::formOfSession() {
    const bool isWayland =
        !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") || qgetenv("XDG_SESSION_TYPE") == "wayland";
    return isWayland ? PanelForm::shrinking : PanelForm::shaped;
}

std::unique_ptr<X11WindowSystem> X11WindowSystem::make(Scheduler& scheduler, PanelForm form) {
    auto connection = X11Connection::open(scheduler);
    return connection
               ? std::unique_ptr<X11WindowSystem>(new X11WindowSystem(scheduler, std::move(connection), form))
               : nullptr;
}

X11WindowSystem::X11WindowSystem(Scheduler& scheduler, std::unique_ptr<X11Connection> connection,
                                 PanelForm form)
    : m_form(form), m_connection(std::move(connection)), m_screens(*m_connection),
      m_panel(*m_connection, m_screens, form), m_frameClock(*m_connection, m_panel),
      m_scrollDevices(*m_connection), m_hostApplications(*m_connection) {
    qCInfo(Logs::start, "window system: X11, with a %s panel",
           form == PanelForm::shaped ? "shaped" : "shrinking");
    if (form == PanelForm::shaped) {
        m_pointer =
            std::make_unique<X11Pointer>(*m_connection, m_screens, [this] { return m_panel.nativeWindow(); });
        m_panel.window()->installEventFilter(m_pointer.get());
        m_screenWindows = std::make_unique<X11ScreenWindows>(*m_connection, m_screens);
    } else {
        m_pointer = std::make_unique<PanelPointer>(m_panel, scheduler);
        m_screenWindows = std::make_unique<NoScreenWindows>();
    }
}

std::unique_ptr<Inhibitor> X11WindowSystem::makeDisplayInhibitor() {
    return m_form == PanelForm::shaped ? std::make_unique<X11ScreenSaver>(*m_connection) : nullptr;
}

} // namespace veslora
