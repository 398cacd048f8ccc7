// SPDX-License-Identifier: MIT
#include "tests/VesloraLinux/Support/Desktop.h"

#include "tests/VesloraLinux/Support/Bystander.h"

#include <sys/resource.h>
#include <xcb/xcbext.h>

#include <chrono>
#include <cstring>
#include <fstream>
#include <stdexcept>

namespace veslora::testing {
namespace {

void require(bool holds, const char* what) {
    if (!holds) {
        throw std::runtime_error(what);
    }
}

/// Nothing of the machine's own session may reach a test, or the other way round.
void cleanEnvironment(const PrivateDisplay& display, const DesktopOptions& options) {
    for (const char* const name : {"WAYLAND_DISPLAY", "XDG_SESSION_TYPE", "XAUTHORITY", "SESSION_MANAGER",
                                   "XDG_CURRENT_DESKTOP", "DESKTOP_SESSION"}) {
        unsetenv(name);
    }
    setenv("DISPLAY", display.name().c_str(), 1);
    setenv("HOME", display.folder().c_str(), 1);
    setenv("XDG_RUNTIME_DIR", display.folder().c_str(), 1);
    setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
    setenv("DBUS_SYSTEM_BUS_ADDRESS", "disabled:", 1);
    setenv("QT_QPA_PLATFORM", "xcb", 1);
    setenv("QT_QUICK_BACKEND", "software", 1);
    setenv("QT_SCALE_FACTOR", options.scale.c_str(), 1);
    setenv("QT_SCREEN_SCALE_FACTORS", options.screenScales.c_str(), 1);
}

/// The server's test extension, of which only one request is needed here: FakeInput, as its protocol 2.2 has
/// it.
struct FakeInputRequest {
    std::uint8_t majorOpcode = 0;
    std::uint8_t minorOpcode = 2;
    std::uint16_t length = 0;
    std::uint8_t type = 0;
    std::uint8_t detail = 0;
    std::uint16_t unused1 = 0;
    std::uint32_t delay = 0;
    std::uint32_t root = 0;
    std::uint32_t unused2[2] = {0, 0};
    std::int16_t x = 0;
    std::int16_t y = 0;
    std::uint8_t unused3[7] = {0, 0, 0, 0, 0, 0, 0};
    std::uint8_t device = 0;
};
static_assert(sizeof(FakeInputRequest) == 36);

xcb_extension_t testExtension{"XTEST", 0};

void sendFakeInput(xcb_connection_t* connection, std::uint8_t type, std::uint8_t detail, int x, int y) {
    FakeInputRequest request;
    request.type = type;
    request.detail = detail;
    request.x = static_cast<std::int16_t>(x);
    request.y = static_cast<std::int16_t>(y);
    const xcb_protocol_request_t protocol{2, &testExtension, 2, 1};
    iovec parts[4] = {{}, {}, {&request, sizeof request}, {nullptr, 0}};
    xcb_send_request(connection, 0, parts + 2, &protocol);
    xcb_flush(connection);
}

} // namespace

Desktop::Desktop(const DesktopOptions& options) {
    cleanEnvironment(m_display, options);
    placeMonitors(options.monitors);
    readResources(options.resources);
    m_application = std::make_unique<QGuiApplication>(m_count, m_arguments);
    m_application->setQuitOnLastWindowClosed(false);
    m_scheduler = std::make_unique<LinuxScheduler>();
    m_connection = X11Connection::open(*m_scheduler);
    m_own = X11Connection::open(*m_scheduler);
    require(m_connection && m_own, "no display");
    if (options.hasWindowManager) {
        m_display.startWindowManager(options.windowManager);
    }
    if (options.hasCompositor) {
        startCompositor();
    }
}

Desktop::~Desktop() {
    m_own.reset();
    m_connection.reset();
    m_scheduler.reset();
    m_application.reset();
}

void Desktop::placeMonitors(const std::vector<std::string>& monitors) {
    const char* output = "screen";
    for (const std::string& monitor : monitors) {
        const std::size_t space = monitor.find(' ');
        xrandr({"--setmonitor", monitor.substr(0, space), monitor.substr(space + 1), output});
        output = "none";
    }
}

void Desktop::readResources(const std::string& lines) const {
    if (lines.empty()) {
        return;
    }
    const std::string path = m_display.folder() + "/resources";
    std::ofstream(path) << lines << '\n';
    require(Program({"xrdb", "-nocpp", path}).wait() == 0, "xrdb failed");
}

void Desktop::xrandr(const std::vector<std::string>& arguments) {
    std::vector<std::string> command{"xrandr"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    require(Program(command).wait() == 0, "xrandr failed");
}

QColor Desktop::pixelAt(int x, int y) {
    const auto cookie = xcb_get_image(m_own->xcb(), XCB_IMAGE_FORMAT_Z_PIXMAP, m_own->root(),
                                      static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 1, 1, ~0U);
    const X11Reply<xcb_get_image_reply_t> image(xcb_get_image_reply(m_own->xcb(), cookie, nullptr));
    require(image && xcb_get_image_data_length(image.get()) >= 4, "no image");
    std::uint32_t pixel = 0;
    std::memcpy(&pixel, xcb_get_image_data(image.get()), sizeof pixel);
    return QColor::fromRgb(pixel | 0xff000000U);
}

/// The server takes the connections in no fixed order, so what was asked of it has to be done before more
/// happens.
void Desktop::settle() const {
    xcb_connection_t* const ofQt =
        m_application->nativeInterface<QNativeInterface::QX11Application>()->connection();
    for (xcb_connection_t* const xcb : {ofQt, m_connection->xcb()}) {
        const X11Reply<xcb_get_input_focus_reply_t> done(
            xcb_get_input_focus_reply(xcb, xcb_get_input_focus(xcb), nullptr));
    }
    m_connection->takeQueuedEvents();
}

void Desktop::fakeInput(std::uint8_t type, std::uint8_t detail, int x, int y) const {
    settle();
    sendFakeInput(m_own->xcb(), type, detail, x, y);
}

void Desktop::movePointerBy(int x, int y) {
    fakeInput(XCB_MOTION_NOTIFY, 1, x, y);
}

void Desktop::movePointerTo(int x, int y) {
    // Two relative steps, the first into the corner: a jump to a place would be no movement of any device.
    movePointerBy(-10000, -10000);
    movePointerBy(x, y);
}

void Desktop::press(int button) {
    fakeInput(XCB_BUTTON_PRESS, static_cast<std::uint8_t>(button), 0, 0);
}

void Desktop::release(int button) {
    fakeInput(XCB_BUTTON_RELEASE, static_cast<std::uint8_t>(button), 0, 0);
}

void Desktop::click(int button) {
    press(button);
    release(button);
}

std::vector<std::uint32_t> Desktop::rootValues(const std::string& property) {
    return m_own->values(m_own->root(), property);
}

void Desktop::switchToDesktop(std::uint32_t desktop) {
    askWindowManager(m_own->xcb(), m_own->root(), "_NET_CURRENT_DESKTOP", {desktop, XCB_CURRENT_TIME});
}

void Desktop::writeCurrentDesktop(std::uint32_t desktop) {
    xcb_change_property(m_own->xcb(), XCB_PROP_MODE_REPLACE, m_own->root(),
                        m_own->atom("_NET_CURRENT_DESKTOP"), XCB_ATOM_CARDINAL, 32, 1, &desktop);
    m_own->flush();
}

RestlessMouse::RestlessMouse(int eventsPerSecond)
    : m_thread([this, eventsPerSecond] { run(eventsPerSecond); }) {}

void RestlessMouse::stop() {
    m_stops = true;
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

void RestlessMouse::run(int eventsPerSecond) {
    xcb_connection_t* const connection = xcb_connect(nullptr, nullptr);
    auto next = std::chrono::steady_clock::now();
    while (!m_stops) {
        sendFakeInput(connection, XCB_MOTION_NOTIFY, 1, m_events % 2 == 0 ? 3 : -3, 0);
        ++m_events;
        next += std::chrono::microseconds(1000000 / eventsPerSecond);
        std::this_thread::sleep_until(next);
    }
    xcb_disconnect(connection);
    m_processorSeconds = testing::processorSeconds(RUSAGE_THREAD);
}

double processorSeconds(int who) {
    rusage usage{};
    getrusage(who, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

} // namespace veslora::testing
