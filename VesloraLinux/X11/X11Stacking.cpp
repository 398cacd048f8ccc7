// SPDX-License-Identifier: MIT
#include "VesloraLinux/X11/X11Stacking.h"

#include "VesloraUI/Platform/Logs.h"

#include <algorithm>

namespace veslora {
namespace {

// Two programs that both want to be on top would raise themselves against each other forever: so many raises
// in so many seconds, and then a pause that doubles each time.
constexpr std::size_t mostRaises = 5;
constexpr double raisesWithin = 2;
constexpr double shortestPause = 4;
constexpr double longestPause = 256;

} // namespace

X11Stacking::X11Stacking(X11Connection& connection, const X11Screens& screens, xcb_window_t window)
    : m_connection(connection), m_screens(screens), m_window(window), m_pause(shortestPause) {
    m_connection.selectRootEvents(XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
    connect(&m_connection, &X11Connection::eventArrived, this,
            [this](const xcb_generic_event_t* event) { eventArrived(*event); });
    connect(&m_connection, &X11Connection::batchEnded, this, [this] {
        if (std::exchange(m_isDirty, false)) {
            check();
        }
    });
}

void X11Stacking::setShown(bool isShown) {
    m_isShown = isShown;
    m_retry.cancel();
    if (isShown) {
        raise();
    }
}

/// Goes above all others but a screen locker.
void X11Stacking::raise() {
    const auto stack =
        X11Windows::describe(m_connection, X11Windows::childrenOf(m_connection, m_connection.root()));
    const auto locker = std::ranges::find_if(stack, [this](const X11Window& neighbour) {
        return neighbour.isViewable && hidesWholeScreen(neighbour);
    });
    if (locker == stack.end()) {
        constexpr std::uint32_t above = XCB_STACK_MODE_ABOVE;
        xcb_configure_window(m_connection.xcb(), m_window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
        m_connection.flush();
    } else {
        qCInfo(Logs::x11, "the panel stays below window 0x%x, which hides a screen", locker->id);
        putBeside(locker->id, XCB_STACK_MODE_BELOW);
    }
}

void X11Stacking::eventArrived(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7f) {
    case XCB_MAP_NOTIFY:
    case XCB_CONFIGURE_NOTIFY:
    case XCB_CIRCULATE_NOTIFY:
    case XCB_REPARENT_NOTIFY:
        m_isDirty = true;
        break;
    default:
        break;
    }
}

void X11Stacking::check() {
    if (!m_isShown) {
        return;
    }
    // From the bottom of the stack to its top.
    auto stack = X11Windows::childrenOf(m_connection, m_connection.root());
    const auto own = std::ranges::find(stack, m_window);
    if (own == stack.end() || own + 1 == stack.end()) {
        return;
    }
    auto neighbours = X11Windows::describe(m_connection, {own, stack.end()});
    const QRect frame = neighbours.front().frame;
    neighbours.erase(neighbours.begin());
    const auto sibling = highestToPass(neighbours, frame);
    if (!sibling) {
        return;
    }
    if (mayRaise()) {
        putBeside(*sibling, XCB_STACK_MODE_ABOVE);
        m_recentRaises.push_back(m_connection.scheduler().now());
        ++m_raises;
    } else if (!m_retry.isActive()) {
        qCInfo(Logs::x11, "window 0x%x raises itself again and again: a pause of %g s", *sibling, m_pause);
        m_retry = m_connection.scheduler().after(m_pause, [this] { check(); });
        m_pause = std::min(m_pause * 2, longestPause);
    }
}

std::optional<xcb_window_t> X11Stacking::highestToPass(const std::vector<X11Window>& above,
                                                       const QRect& frame) {
    std::optional<xcb_window_t> highest;
    for (const X11Window& neighbour : above) {
        if (!neighbour.isViewable || !neighbour.frame.intersects(frame)) {
            continue;
        }
        if (hidesWholeScreen(neighbour)) {
            break;
        }
        highest = neighbour.id;
    }
    return highest;
}

/// A screen locker, above which nothing may be seen or pressed, let alone a prompt of an agent's. It keeps
/// itself out of the window manager's hands as we do, and unlike the frame around a fullscreen window it
/// holds no managed one.
bool X11Stacking::hidesWholeScreen(const X11Window& window) {
    return window.isOverrideRedirect &&
           std::ranges::any_of(m_screens.nativeFrames(),
                               [&window](const QRect& screen) { return window.frame.contains(screen); }) &&
           !isManaged(window.id);
}

bool X11Stacking::isManaged(xcb_window_t window) {
    // A frame holds its client as a child or a grandchild.
    constexpr int deepest = 3;
    std::vector<xcb_window_t> level{window};
    for (int depth = 0; depth < deepest && !level.empty(); ++depth) {
        const auto states = m_connection.values(level, "WM_STATE");
        if (!std::ranges::all_of(states, [](const auto& state) { return state.empty(); })) {
            return true;
        }
        std::vector<xcb_window_t> next;
        for (const xcb_window_t parent : level) {
            const auto children = X11Windows::childrenOf(m_connection, parent);
            next.insert(next.end(), children.begin(), children.end());
        }
        level = std::move(next);
    }
    return false;
}

bool X11Stacking::mayRaise() {
    const Timestamp now = m_connection.scheduler().now();
    std::erase_if(m_recentRaises, [now](Timestamp time) { return time < now - raisesWithin || time > now; });
    if (m_recentRaises.empty() && !m_retry.isActive()) {
        m_pause = shortestPause;
    }
    return m_recentRaises.size() < mostRaises && !m_retry.isActive();
}

void X11Stacking::putBeside(xcb_window_t sibling, std::uint32_t mode) {
    const std::uint32_t values[] = {sibling, mode};
    xcb_configure_window(m_connection.xcb(), m_window,
                         XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE, values);
    m_connection.flush();
}

} // namespace veslora
