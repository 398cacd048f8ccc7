// SPDX-License-Identifier: MIT
#include "tests/VesloraLinux/Support/Desktop.h"

#include "tests/VesloraLinux/Support/Waiting.h"

#include <sys/resource.h>
#include <xcb/xcbext.h>

#include <chrono>
#include <cstring>
#include <stdexcept>

namespace veslora::testing {
namespace {

void require(bool holds, const char* what) {
    if (!holds) {
        throw std::runtime_error(what);
    }
}

/// Nothing of the machine's own session may reach a test, or the other way round.
void cleanEnvironment(const TemporaryFolder& home, const std::string& display,
                      const DesktopOptions& options) {
    for (const char* const name : {"WAYLAND_DISPLAY", "XDG_SESSION_TYPE", "XAUTHORITY", "SESSION_MANAGER",
                                   "XDG_CURRENT_DESKTOP", "DESKTOP_SESSION"}) {
        unsetenv(name);
    }
    setenv("DISPLAY", display.c_str(), 1);
    setenv("HOME", home.path().c_str(), 1);
    setenv("XDG_RUNTIME_DIR", home.path().c_str(), 1);
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
    m_server =
        std::make_unique<Program>(std::vector<std::string>{"Xvfb", "-displayfd", "3", "-screen", "0",
                                                           "1600x900x24", "-noreset", "-nolisten", "tcp"},
                                  3);
    cleanEnvironment(m_home, ":" + m_server->firstLine(), options);
    for (std::size_t index = 0; index < options.monitors.size(); ++index) {
        const std::string& monitor = options.monitors[index];
        const std::size_t space = monitor.find(' ');
        xrandr({"--setmonitor", monitor.substr(0, space), monitor.substr(space + 1),
                index == 0 ? "screen" : "none"});
    }
    if (!options.resources.empty()) {
        require(Program({"xrdb", "-nocpp", m_home.put("resources", options.resources + "\n")}).wait() == 0,
                "xrdb failed");
    }
    m_application = std::make_unique<QGuiApplication>(m_count, m_arguments);
    m_application->setQuitOnLastWindowClosed(false);
    m_scheduler = std::make_unique<LinuxScheduler>();
    m_connection = X11Connection::open(*m_scheduler);
    m_own = X11Connection::open(*m_scheduler);
    require(m_connection && m_own, "no display");
    if (options.hasWindowManager) {
        m_windowManager = std::make_unique<Program>(
            std::vector<std::string>{"openbox", "--sm-disable", "--config-file", "/etc/xdg/openbox/rc.xml"});
        require(waitUntil([this] { return managesWindows(); }), "no window manager");
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
    m_compositor.reset();
    m_windowManager.reset();
}

/// Shows a window for trial: a window manager that is still starting forgets those that come too early.
bool Desktop::managesWindows() {
    constexpr int trialMilliseconds = 100;
    xcb_connection_t* const xcb = m_own->xcb();
    const xcb_window_t window = xcb_generate_id(xcb);
    xcb_create_window(xcb, XCB_COPY_FROM_PARENT, window, m_own->root(), 0, 0, 10, 10, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_map_window(xcb, window);
    m_own->flush();
    const auto isManaged = [&] {
        return rootValues("_NET_CLIENT_LIST") == std::vector<std::uint32_t>{window};
    };
    const bool result = waitUntil(isManaged, trialMilliseconds);
    xcb_destroy_window(xcb, window);
    m_own->flush();
    return result && waitUntil([&] { return rootValues("_NET_CLIENT_LIST").empty(); });
}

void Desktop::startCompositor() {
    m_compositor = std::make_unique<Program>(std::vector<std::string>{
        "picom", "--config", "/dev/null", "--backend", "xrender", "--no-fading-openclose"});
    waitForCompositor(true);
}

void Desktop::killCompositor() {
    m_compositor->kill();
    m_compositor.reset();
    waitForCompositor(false);
}

void Desktop::waitForCompositor(bool isThere) {
    const xcb_atom_t selection = m_own->atom("_NET_WM_CM_S0");
    const auto hasOwner = [&] {
        const auto cookie = xcb_get_selection_owner(m_own->xcb(), selection);
        const X11Reply<xcb_get_selection_owner_reply_t> reply(
            xcb_get_selection_owner_reply(m_own->xcb(), cookie, nullptr));
        return reply && reply->owner != XCB_WINDOW_NONE;
    };
    require(waitUntil([&] { return hasOwner() == isThere; }), "the compositor did not come or go");
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
