// SPDX-License-Identifier: MIT
// _NET_CLIENT_LIST_STACKING, _NET_WM_PID and _NET_ACTIVE_WINDOW as in the Extended Window Manager Hints, 1.5.
#include "VesloraLinux/X11/X11HostApplications.h"

#include "VesloraLinux/System/ProcessTree.h"
#include "VesloraLinux/X11/X11Windows.h"
#include "VesloraUI/Platform/Logs.h"

#include <unistd.h>

#include <algorithm>

namespace veslora {
namespace {

constexpr int mostSteps = 10;

std::string hostName() {
    char name[256] = {};
    return gethostname(name, sizeof name - 1) == 0 ? name : "";
}

} // namespace

std::optional<HostApp> X11HostApplications::hostAppOf(std::int32_t pid) {
    const auto windows = windowsByProcess();
    for (int step = 0; step < mostSteps; ++step) {
        if (const auto found = windows.find(pid); found != windows.end()) {
            return HostApp{pid, found->second};
        }
        const auto stat = ProcessTree::statOf(pid);
        // Process 1 adopts what has lost its own parent and hosts nothing.
        if (!stat || stat->parent < 2) {
            return std::nullopt;
        }
        pid = stat->parent;
    }
    return std::nullopt;
}

bool X11HostApplications::isFrontmost(std::int32_t pid) {
    const auto active = m_connection.values(m_connection.root(), "_NET_ACTIVE_WINDOW");
    if (active.empty() || active.front() == XCB_WINDOW_NONE) {
        return false;
    }
    const auto app = hostAppOf(pid);
    return app && processesOf({active.front()}).front() == app->pid;
}

void X11HostApplications::activate(const HostApp& app) {
    auto window = static_cast<xcb_window_t>(app.window);
    if (processesOf({window}).front() != app.pid) {
        const auto windows = windowsByProcess();
        const auto other = windows.find(app.pid);
        if (other == windows.end()) {
            qCWarning(Logs::x11, "process %d has no window to be activated", app.pid);
            return;
        }
        window = other->second;
    }
    restoreIfIconic(window);
    constexpr std::uint32_t requestOfPager = 2;
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = m_connection.atom("_NET_ACTIVE_WINDOW");
    message.data.data32[0] = requestOfPager;
    message.data.data32[1] = XCB_CURRENT_TIME;
    xcb_send_event(m_connection.xcb(), 0, m_connection.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
    m_connection.flush();
}

std::map<std::int32_t, xcb_window_t> X11HostApplications::windowsByProcess() {
    // From the bottom of the stack to its top, so that the topmost of a process is the last one written.
    const auto windows = X11Windows::managed(m_connection);
    const auto processes = processesOf(windows);
    const auto types = m_connection.values(windows, "_NET_WM_WINDOW_TYPE");
    std::map<std::int32_t, xcb_window_t> result;
    for (std::size_t index = 0; index < windows.size(); ++index) {
        // A panel or a desktop may have started a program, but it does not show it.
        const bool isFurniture = std::ranges::any_of(types[index], [this](xcb_atom_t type) {
            return type == m_connection.atom("_NET_WM_WINDOW_TYPE_DOCK") ||
                   type == m_connection.atom("_NET_WM_WINDOW_TYPE_DESKTOP");
        });
        if (processes[index] != 0 && !isFurniture) {
            result[processes[index]] = windows[index];
        }
    }
    return result;
}

std::vector<std::int32_t> X11HostApplications::processesOf(const std::vector<xcb_window_t>& windows) {
    const std::string host = hostName();
    const auto pids = m_connection.values(windows, "_NET_WM_PID");
    const auto machines = m_connection.texts(windows, "WM_CLIENT_MACHINE");
    std::vector<std::int32_t> result;
    for (std::size_t index = 0; index < windows.size(); ++index) {
        // The id of a window that another machine shows here belongs to that machine's processes.
        const bool isLocal = machines[index].empty() || machines[index] == host;
        result.push_back(isLocal && !pids[index].empty() ? static_cast<std::int32_t>(pids[index].front())
                                                         : 0);
    }
    return result;
}

/// Most window managers restore an activated window by themselves; mapping it is the older way to ask.
void X11HostApplications::restoreIfIconic(xcb_window_t window) {
    constexpr std::uint32_t iconic = 3;
    const auto state = m_connection.values(window, "WM_STATE");
    if (!state.empty() && state.front() == iconic) {
        xcb_map_window(m_connection.xcb(), window);
    }
}

} // namespace veslora
