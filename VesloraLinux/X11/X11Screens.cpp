// SPDX-License-Identifier: MIT
#include "VesloraLinux/X11/X11Screens.h"

#include "VesloraLinux/X11/TopInsets.h"
#include "VesloraUI/Platform/Logs.h"

#include <QGuiApplication>
#include <QScreen>

#include <xcb/randr.h>

#include <algorithm>

namespace veslora {
namespace {

/// Connectors inside a laptop's lid, by the kernel's names.
bool isBuiltInConnector(const std::string& name) {
    return name.starts_with("eDP") || name.starts_with("LVDS") || name.starts_with("DSI");
}

ScreenInfo infoOf(const QScreen& screen, const QRect& nativeFrame, int nativeTopInset) {
    ScreenInfo info;
    info.name = screen.name().toStdString();
    info.scale = screen.devicePixelRatio();
    info.metrics.frame = {0, 0, nativeFrame.width() / info.scale, nativeFrame.height() / info.scale};
    info.metrics.menuBarHeight = nativeTopInset / info.scale;
    info.isBuiltIn = isBuiltInConnector(info.name);
    return info;
}

} // namespace

X11Screens::X11Screens(X11Connection& connection) : m_connection(connection) {
    m_connection.selectRootEvents(XCB_EVENT_MASK_PROPERTY_CHANGE);
    connect(&m_connection, &X11Connection::eventArrived, this,
            [this](const xcb_generic_event_t* event) { eventArrived(*event); });
    connect(qGuiApp, &QGuiApplication::screenAdded, this, [this](QScreen* screen) {
        watch(screen);
        lookAgain();
    });
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &X11Screens::lookAgain);
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, &X11Screens::lookAgain);
    for (QScreen* const screen : QGuiApplication::screens()) {
        watch(screen);
    }
    m_entries = read();
    tell();
}

std::vector<ScreenInfo> X11Screens::list() const {
    std::vector<ScreenInfo> result;
    for (const Entry& entry : m_entries) {
        result.push_back(entry.info);
    }
    return result;
}

std::optional<QRect> X11Screens::nativeFrame(const std::string& name) const {
    const auto found = std::ranges::find(m_entries, name, [](const Entry& entry) { return entry.info.name; });
    return found != m_entries.end() ? std::optional(found->nativeFrame) : std::nullopt;
}

std::vector<QRect> X11Screens::nativeFrames() const {
    std::vector<QRect> result;
    for (const Entry& entry : m_entries) {
        result.push_back(entry.nativeFrame);
    }
    return result;
}

void X11Screens::watch(QScreen* screen) const {
    connect(screen, &QScreen::geometryChanged, this, &X11Screens::lookAgain);
    connect(screen, &QScreen::physicalDotsPerInchChanged, this, &X11Screens::lookAgain);
    // Qt tells of a new scale only by the dots of its logical inch.
    connect(screen, &QScreen::logicalDotsPerInchChanged, this, &X11Screens::lookAgain);
}

void X11Screens::eventArrived(const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7f) != XCB_PROPERTY_NOTIFY) {
        return;
    }
    const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    for (const char* const name : {"_NET_WORKAREA", "_NET_CLIENT_LIST", "_NET_CURRENT_DESKTOP",
                                   "_NET_WM_STRUT_PARTIAL", "_NET_WM_STRUT"}) {
        if (property.atom == m_connection.atom(name)) {
            lookAgain();
        }
    }
}

/// Several signals tell of one change; they are answered once, when all of them have been given.
void X11Screens::lookAgain() {
    if (!m_lookingAgain.isActive()) {
        m_lookingAgain = m_connection.scheduler().after(0, [this] { update(); });
    }
}

void X11Screens::update() {
    auto entries = read();
    if (entries != m_entries) {
        m_entries = std::move(entries);
        tell();
        emit changed();
    }
}

void X11Screens::tell() const {
    for (const auto& [info, frame] : m_entries) {
        qCInfo(Logs::x11, "screen %s: %d x %d at %d, %d, scale %g, bar of %g%s", info.name.c_str(),
               frame.width(), frame.height(), frame.x(), frame.y(), info.scale, info.metrics.menuBarHeight,
               info.isBuiltIn ? ", built in" : "");
    }
    if (m_entries.empty()) {
        qCInfo(Logs::x11, "no screen is connected");
    }
}

std::vector<X11Screens::Entry> X11Screens::read() {
    const TopInsets insets(m_connection);
    hearChangesOf(insets.reservingWindows());
    const auto sizes = monitorSizes();
    std::vector<Entry> entries;
    // Qt gives the primary screen first.
    for (const QScreen* const screen : QGuiApplication::screens()) {
        // Qt scales a screen about its own top left corner, so that corner is a native one.
        const QPoint corner = screen->geometry().topLeft();
        const auto size = sizes.find({corner.x(), corner.y()});
        const QRect frame(corner, size != sizes.end()
                                      ? size->second
                                      : screen->geometry().size() * screen->devicePixelRatio());
        if (!frame.isEmpty()) {
            entries.push_back({infoOf(*screen, frame, insets.of(frame, entries.empty())), frame});
        }
    }
    return entries;
}

/// Sizes in native pixels by place. Qt's own sizes are in whole points, too coarse where a scale is a
/// fraction.
std::map<std::pair<int, int>, QSize> X11Screens::monitorSizes() {
    std::map<std::pair<int, int>, QSize> sizes;
    xcb_connection_t* const xcb = m_connection.xcb();
    const auto* const extension = xcb_get_extension_data(xcb, &xcb_randr_id);
    const bool isThere = extension != nullptr && extension->present != 0;
    if (m_trouble.begins(isThere ? std::error_code() : std::make_error_code(std::errc::not_supported))) {
        qCWarning(Logs::x11, "the sizes of the screens are rounded: the server lacks RANDR");
    }
    if (!isThere) {
        return sizes;
    }
    const auto cookie = xcb_randr_get_monitors(xcb, m_connection.root(), 1);
    const X11Reply<xcb_randr_get_monitors_reply_t> reply(xcb_randr_get_monitors_reply(xcb, cookie, nullptr));
    m_connection.takeQueuedEvents();
    if (reply) {
        for (auto monitor = xcb_randr_get_monitors_monitors_iterator(reply.get()); monitor.rem > 0;
             xcb_randr_monitor_info_next(&monitor)) {
            sizes[{monitor.data->x, monitor.data->y}] = QSize(monitor.data->width, monitor.data->height);
        }
    }
    return sizes;
}

/// A bar may reserve more or less without anything on the root window telling so.
void X11Screens::hearChangesOf(const std::vector<xcb_window_t>& windows) {
    constexpr std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    std::set<xcb_window_t> heard;
    for (const xcb_window_t window : windows) {
        if (!m_heardWindows.contains(window)) {
            xcb_change_window_attributes(m_connection.xcb(), window, XCB_CW_EVENT_MASK, &mask);
        }
        heard.insert(window);
    }
    m_heardWindows = std::move(heard);
    m_connection.flush();
}

} // namespace veslora
