// SPDX-License-Identifier: MIT
// Each failure of the X server leaves exactly one line, and none unasked.
#include "VesloraLinux/System/LinuxScheduler.h"
#include "VesloraLinux/X11/CompositorWatch.h"
#include "VesloraLinux/X11/X11Connection.h"
#include "tests/VesloraLinux/Support/Desktop.h"
#include "tests/VesloraLinux/Support/PrivateDisplay.h"
#include "tests/VesloraLinux/Support/Waiting.h"
#include "tests/support/OneLine.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::Desktop;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing::LogRecorder;
using testing::oneLine;
using testing::waitUntil;

/// The environment names this display while it lives.
class NamedDisplay {
  public:
    explicit NamedDisplay(const std::string& name) : m_former(qgetenv("DISPLAY")) {
        qputenv("DISPLAY", QByteArray::fromStdString(name));
    }
    NamedDisplay(const NamedDisplay&) = delete;
    NamedDisplay& operator=(const NamedDisplay&) = delete;
    ~NamedDisplay() { qputenv("DISPLAY", m_former); }

  private:
    QByteArray m_former;
};

void makeBadRequest(X11Connection& connection, xcb_window_t window, xcb_atom_t atom) {
    const std::uint32_t value = 0;
    xcb_change_property(connection.xcb(), XCB_PROP_MODE_REPLACE, window, atom, XCB_ATOM_CARDINAL, 32, 1,
                        &value);
    connection.flush();
}

TEST(DisplayFailuresTests, ADisplayThatIsNotThere) {
    const testing::CoreApplication application;
    LinuxScheduler scheduler;
    const NamedDisplay display(":7654321");
    const LogRecorder recorder;
    EXPECT_EQ(X11Connection::open(scheduler), nullptr);
    EXPECT_THAT(recorder.warnings(), oneLine("veslora.x11", ":7654321", "error 1 of xcb"));
}

TEST(DisplayFailuresTests, AServerThatDies) {
    const testing::CoreApplication application;
    LinuxScheduler scheduler;
    const testing::PrivateDisplay server("800x600");
    const NamedDisplay display(server.name());
    const auto connection = X11Connection::open(scheduler);
    ASSERT_TRUE(connection);
    const LogRecorder recorder;
    server.kill();
    EXPECT_TRUE(waitUntil([&] { return !recorder.warnings().empty(); }));
    testing::handleEventsFor(50);
    EXPECT_THAT(recorder.warnings(), oneLine("veslora.x11", "the X server is lost", "error 1 of xcb"));
}

TEST(DisplayFailuresTests, ARequestThatTheServerRefuses) {
    Desktop desktop({.hasWindowManager = false});
    const LogRecorder recorder;
    makeBadRequest(desktop.connection(), desktop.connection().root(), 0xfffff);
    EXPECT_TRUE(waitUntil([&] { return !recorder.warnings().empty(); }));
    EXPECT_THAT(recorder.warnings(), oneLine("veslora.x11", "0xfffff", "X error 5 at request 18"));
}

TEST(DisplayFailuresTests, AWindowThatHasGoneIsAnInformation) {
    Desktop desktop({.hasWindowManager = false});
    const LogRecorder recorder;
    makeBadRequest(desktop.connection(), 0xfffff, XCB_ATOM_WM_NAME);
    EXPECT_TRUE(waitUntil([&] { return !recorder.lines().empty(); }));
    EXPECT_THAT(recorder.lines(),
                ElementsAre(Field(&LogRecorder::Line::text, HasSubstr("0xfffff was gone"))));
    EXPECT_THAT(recorder.warnings(), IsEmpty());
}

TEST(DisplayFailuresTests, ACompositorThatIsLostIsToldOfOnce) {
    Desktop desktop({.hasWindowManager = false, .hasCompositor = true});
    const CompositorWatch watch(desktop.connection());
    ASSERT_TRUE(watch.isComposited());
    const LogRecorder recorder;
    desktop.killCompositor();
    EXPECT_TRUE(waitUntil([&] { return !watch.isComposited(); }));
    EXPECT_THAT(recorder.lines(), ElementsAre(Field(&LogRecorder::Line::text, "the compositor has gone")));
}

TEST(DisplayFailuresTests, NoneOfThemIsPrintedUnasked) {
    const LogRecorder silent(LogRecorder::Categories::byDefault);
    Desktop desktop({.hasWindowManager = false});
    makeBadRequest(desktop.connection(), desktop.connection().root(), 0xfffff);
    testing::handleEventsFor(50);
    EXPECT_THAT(silent.lines(), IsEmpty());
}

} // namespace
} // namespace veslora
