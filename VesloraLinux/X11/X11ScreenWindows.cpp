// SPDX-License-Identifier: MIT
// States, types and lists as in the Extended Window Manager Hints, 1.5.
#include "VesloraLinux/X11/X11ScreenWindows.h"

#include <QGuiApplication>
#include <QWindow>

#include <algorithm>
#include <iterator>

namespace veslora {
namespace {

constexpr std::uint32_t onAllDesktops = 0xffffffff;

/// What of a window may change without any change of its place.
constexpr const char* propertiesOfWindows[] = {"_NET_WM_STATE", "_NET_WM_DESKTOP", "_NET_WM_WINDOW_TYPE",
                                               "_NET_FRAME_EXTENTS"};
constexpr const char* propertiesOfRoot[] = {"_NET_CLIENT_LIST_STACKING", "_NET_CLIENT_LIST",
                                            "_NET_ACTIVE_WINDOW", "_NET_CURRENT_DESKTOP"};

bool isOwn(xcb_window_t window) {
    return std::ranges::any_of(QGuiApplication::allWindows(), [window](const QWindow* own) {
        return own->handle() && own->winId() == window;
    });
}

std::vector<xcb_window_t> idsOf(const std::vector<X11Window>& windows) {
    std::vector<xcb_window_t> ids;
    std::ranges::transform(windows, std::back_inserter(ids), &X11Window::id);
    return ids;
}

/// Window managers without desktops name none.
bool isElsewhere(const std::vector<std::uint32_t>& desktop, const std::vector<std::uint32_t>& current) {
    return !desktop.empty() && !current.empty() && desktop.front() != onAllDesktops &&
           desktop.front() != current.front();
}

/// As the older conventions tell it: not put away, for whatever reason.
bool isNormal(const std::vector<std::uint32_t>& state) {
    constexpr std::uint32_t normal = 1;
    return !state.empty() && state.front() == normal;
}

DesktopWindow::Role roleOf(const std::vector<std::uint32_t>& types, X11Connection& connection) {
    // The first one that is known counts, as programs name them in the order of their preference.
    for (const xcb_atom_t type : types) {
        if (type == connection.atom("_NET_WM_WINDOW_TYPE_DOCK")) {
            return DesktopWindow::Role::bar;
        }
        if (type == connection.atom("_NET_WM_WINDOW_TYPE_NORMAL")) {
            return DesktopWindow::Role::application;
        }
    }
    return types.empty() ? DesktopWindow::Role::application : DesktopWindow::Role::other;
}

} // namespace

X11ScreenWindows::X11ScreenWindows(X11Connection& connection, const X11Screens& screens)
    : m_connection(connection), m_screens(screens) {
    connect(&m_connection, &X11Connection::eventArrived, this,
            [this](const xcb_generic_event_t* event) { eventArrived(*event); });
    connect(&m_connection, &X11Connection::batchEnded, this, [this] {
        if (std::exchange(m_isDirty, false) && m_isWatching) {
            emit changed();
        }
    });
}

void X11ScreenWindows::setWatching(bool isWatching) {
    m_isWatching = isWatching;
    if (isWatching) {
        m_connection.selectRootEvents(XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
    } else {
        hear({});
    }
}

std::vector<WindowFrame> X11ScreenWindows::windowsOn(const ScreenInfo& screen) {
    const auto nativeFrame = m_screens.nativeFrame(screen.name);
    auto result = nativeFrame ? FilledScreen::windowsThatCount(look(*nativeFrame), screen, *nativeFrame)
                              : std::vector<WindowFrame>();
    m_isFilled = std::ranges::any_of(
        result, [](const WindowFrame& window) { return window.layer == WindowFrame::normalLayer; });
    return result;
}

/// Those that the window manager keeps, or all where there is none; topmost first.
std::vector<X11Window> X11ScreenWindows::viewable() {
    auto ids = X11Windows::managed(m_connection);
    if (ids.empty()) {
        ids = X11Windows::childrenOf(m_connection, m_connection.root());
    }
    std::ranges::reverse(ids);
    auto windows = X11Windows::describe(m_connection, ids);
    // The panel stays beneath a screen locker by itself, and menus fill nothing.
    std::erase_if(windows,
                  [](const X11Window& window) { return !window.isViewable || window.isOverrideRedirect; });
    return windows;
}

std::vector<DesktopWindow> X11ScreenWindows::look(const QRect& nativeFrame) {
    const auto windows = viewable();
    const auto isLarge = [&nativeFrame](const X11Window& window) {
        return FilledScreen::isLarge(window.frame.size(), nativeFrame);
    };
    if (std::ranges::none_of(windows, isLarge)) {
        hear({});
        return {};
    }
    const auto types = m_connection.values(idsOf(windows), "_NET_WM_WINDOW_TYPE");
    std::vector<X11Window> counting;
    std::vector<DesktopWindow::Role> roles;
    std::set<xcb_window_t> heard;
    for (std::size_t index = 0; index < windows.size(); ++index) {
        const auto role = roleOf(types[index], m_connection);
        const bool isBar = role == DesktopWindow::Role::bar;
        if (isBar || isLarge(windows[index])) {
            counting.push_back(windows[index]);
            roles.push_back(role);
        }
        // A bar's properties are heard already, for what it reserves.
        if (!isBar && isLarge(windows[index])) {
            heard.insert(windows[index].id);
        }
    }
    // Before their states are read, so that no change of them is missed.
    hear(std::move(heard));
    return describe(std::move(counting), roles);
}

/// Leaves out what is minimised or on another desktop: some window managers keep that mapped.
std::vector<DesktopWindow> X11ScreenWindows::describe(std::vector<X11Window> windows,
                                                      const std::vector<DesktopWindow::Role>& roles) {
    X11Windows::placeOnRoot(m_connection, windows);
    const auto ids = idsOf(windows);
    const auto states = m_connection.values(ids, "_NET_WM_STATE");
    const auto desktops = m_connection.values(ids, "_NET_WM_DESKTOP");
    const auto extents = m_connection.values(ids, "_NET_FRAME_EXTENTS");
    const auto current = m_connection.values(m_connection.root(), "_NET_CURRENT_DESKTOP");
    // Some window managers show one desktop on each screen, and call that of the focus the current one.
    const auto icccmStates = m_connection.values(ids, "WM_STATE");
    const bool isOneOfSeveral = m_screens.nativeFrames().size() > 1;
    std::vector<DesktopWindow> result;
    for (std::size_t index = 0; index < windows.size(); ++index) {
        const auto& state = states[index];
        const bool mayBeBeside = isOneOfSeveral && isNormal(icccmStates[index]);
        if (!windows[index].isViewable || has(state, "_NET_WM_STATE_HIDDEN") ||
            (isElsewhere(desktops[index], current) && !mayBeBeside)) {
            continue;
        }
        result.push_back({.frame = windows[index].frame,
                          .role = roles[index],
                          .isFullscreen = has(state, "_NET_WM_STATE_FULLSCREEN"),
                          .isMaximised = has(state, "_NET_WM_STATE_MAXIMIZED_VERT") ||
                                         has(state, "_NET_WM_STATE_MAXIMIZED_HORZ"),
                          .isFramed = std::ranges::any_of(extents[index],
                                                          [](std::uint32_t extent) { return extent != 0; }),
                          .isBelow = has(state, "_NET_WM_STATE_BELOW"),
                          .isOwn = isOwn(ids[index])});
    }
    return result;
}

bool X11ScreenWindows::has(const std::vector<std::uint32_t>& states, const char* state) {
    return std::ranges::find(states, m_connection.atom(state)) != states.end();
}

/// A window becomes fullscreen without moving where it was maximised before. Each title of it wakes the
/// program then, so that only large windows are listened to.
void X11ScreenWindows::hear(std::set<xcb_window_t> windows) {
    if (!m_isWatching) {
        windows.clear();
    }
    const auto select = [this](xcb_window_t window, std::uint32_t mask) {
        xcb_change_window_attributes(m_connection.xcb(), window, XCB_CW_EVENT_MASK, &mask);
    };
    // Again for those that are heard: the server gives the number of a window that has gone to another one.
    for (const xcb_window_t window : windows) {
        select(window, XCB_EVENT_MASK_PROPERTY_CHANGE);
    }
    for (const xcb_window_t window : m_heard) {
        if (!windows.contains(window)) {
            select(window, XCB_EVENT_MASK_NO_EVENT);
        }
    }
    m_heard = std::move(windows);
    m_connection.flush();
}

void X11ScreenWindows::eventArrived(const xcb_generic_event_t& event) {
    if (!m_isWatching || m_isDirty) {
        return;
    }
    switch (event.response_type & 0x7f) {
    case XCB_MAP_NOTIFY:
    case XCB_UNMAP_NOTIFY:
        m_isDirty = true;
        break;
    case XCB_CONFIGURE_NOTIFY:
        m_isDirty = matters(reinterpret_cast<const xcb_configure_notify_event_t&>(event));
        break;
    case XCB_PROPERTY_NOTIFY:
        m_isDirty = matters(reinterpret_cast<const xcb_property_notify_event_t&>(event));
        break;
    default:
        break;
    }
}

bool X11ScreenWindows::matters(const xcb_property_notify_event_t& event) {
    const auto isNamed = [this, &event](const char* name) { return event.atom == m_connection.atom(name); };
    return event.window == m_connection.root()
               ? std::ranges::any_of(propertiesOfRoot, isNamed)
               : m_heard.contains(event.window) && std::ranges::any_of(propertiesOfWindows, isNamed);
}

/// While no window fills the screen only a large one can come to do so: others that are dragged about cost
/// nothing.
bool X11ScreenWindows::matters(const xcb_configure_notify_event_t& event) const {
    return m_isFilled || std::ranges::any_of(m_screens.nativeFrames(), [&event](const QRect& screen) {
               return FilledScreen::isLarge({event.width, event.height}, screen);
           });
}

} // namespace veslora
