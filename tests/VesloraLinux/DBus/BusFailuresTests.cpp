// SPDX-License-Identifier: MIT
// Each service that refuses, hangs or goes leaves exactly one line, and none unasked.
#include "VesloraLinux/DBus/DBusStatusMenu.h"
#include "VesloraLinux/DBus/InhibitingService.h"
#include "VesloraLinux/DBus/PowerAssertions.h"
#include "VesloraLinux/DBus/SystemBus.h"
#include "VesloraLinux/DBus/TimerNotifier.h"
#include "tests/VesloraLinux/DBus/MockInhibitors.h"
#include "tests/VesloraLinux/Support/PrivateBus.h"
#include "tests/VesloraLinux/Support/Waiting.h"
#include "tests/support/ManualScheduler.h"
#include "tests/support/OneLine.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::handleEventsFor;
using ::testing::IsEmpty;
using testing::LogRecorder;
using testing::oneLine;
using testing::waitUntil;

const std::string manager = "org.gnome.SessionManager";

class BusFailuresTests : public ::testing::Test {
  protected:
    /// True once an answer to a request to keep awake has come.
    [[nodiscard]] bool isAnswered(InhibitingService& service) {
        bool isAnswered = false;
        service.inhibit({.system = true}, QStringLiteral("test"), [&](const auto&) { isAnswered = true; });
        return waitUntil([&] { return isAnswered; });
    }
    /// Takes a name on the bus without serving anything under it.
    void takeName(const char* name) { EXPECT_TRUE(desktop.registerService(QString::fromUtf8(name))); }

    testing::CoreApplication application;
    testing::PrivateBus bus;
    QDBusConnection own = bus.connect();
    QDBusConnection desktop = bus.connect();
    ManualScheduler time;
};

TEST_F(BusFailuresTests, AServiceThatRefusesToKeepAwake) {
    testing::MockSessionManager sessionManager;
    sessionManager.comeTo(desktop);
    sessionManager.refuses = true;
    const LogRecorder recorder;
    InhibitingService service(InhibitingService::Kind::sessionManager, own);
    EXPECT_TRUE(isAnswered(service));
    EXPECT_THAT(recorder.warnings(),
                oneLine("veslora.power", manager, "org.freedesktop.DBus.Error.AccessDenied"));
}

TEST_F(BusFailuresTests, ABusThatVanishesUnderARequest) {
    testing::MockSessionManager sessionManager;
    sessionManager.comeTo(desktop);
    sessionManager.hesitates = true;
    const LogRecorder recorder;
    InhibitingService service(InhibitingService::Kind::sessionManager, own);
    bool isAnswered = false;
    service.inhibit({.system = true}, QStringLiteral("test"), [&](const auto&) { isAnswered = true; });
    ASSERT_TRUE(waitUntil([&] { return sessionManager.asked == 1; }));
    bus.kill();
    EXPECT_TRUE(waitUntil([&] { return isAnswered; }));
    EXPECT_THAT(recorder.warnings(), oneLine("veslora.power", manager, "org.freedesktop.DBus.Error."));
}

TEST_F(BusFailuresTests, AServiceThatIsNotThereIsAnInformation) {
    const LogRecorder recorder;
    InhibitingService service(InhibitingService::Kind::sessionManager, own);
    EXPECT_TRUE(isAnswered(service));
    EXPECT_THAT(recorder.warnings(), IsEmpty());
    EXPECT_EQ(recorder.decisions().size(), 1U);
}

TEST_F(BusFailuresTests, AServiceThatDoesNotAnswer) {
    testing::MockSessionManager sessionManager;
    sessionManager.comeTo(desktop);
    sessionManager.hesitates = true;
    std::vector<std::unique_ptr<Inhibitor>> ways;
    ways.push_back(std::make_unique<InhibitingService>(InhibitingService::Kind::sessionManager, own));
    PowerAssertions power(time, std::move(ways));
    const LogRecorder recorder;
    power.apply(KeepAwakeHold{false, KeepAwakeHold::Reason::manual});
    time.advance(PowerAssertions::patience);
    EXPECT_THAT(recorder.warnings(), oneLine("veslora.power", manager, "has not answered"));
    sessionManager.forgetUnanswered();
}

TEST_F(BusFailuresTests, ANotificationThatIsNotShown) {
    takeName("org.freedesktop.Notifications");
    const LogRecorder recorder;
    TimerNotifier notifier(own);
    notifier.timerFinished(1500);
    EXPECT_TRUE(waitUntil([&] { return !recorder.warnings().empty(); }));
    EXPECT_THAT(recorder.warnings(), oneLine("veslora.bus", "org.freedesktop.Notifications.GetCapabilities",
                                             "org.freedesktop.DBus.Error.UnknownObject"));
}

TEST_F(BusFailuresTests, AStatusIconThatNobodyTakes) {
    takeName("org.kde.StatusNotifierWatcher");
    const LogRecorder recorder;
    DBusStatusMenu menu(own);
    // The symbol that it has from the beginning: drawing one would take a display.
    menu.show(QStringLiteral("Veslora"), QString(), {});
    EXPECT_TRUE(waitUntil([&] { return !recorder.warnings().empty(); }));
    handleEventsFor(20);
    EXPECT_THAT(recorder.warnings(), oneLine("veslora.bus", "org.kde.StatusNotifierWatcher",
                                             "org.freedesktop.DBus.Error.UnknownObject"));
}

TEST_F(BusFailuresTests, ASystemBusThatDoesNotAnswer) {
    const QByteArray former = qgetenv("DBUS_SYSTEM_BUS_ADDRESS");
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/bus");
    const LogRecorder recorder;
    SystemBus systemBus(time);
    QObject receiver;
    int told = 0;
    for (int attempt = 0; attempt < 3; ++attempt) {
        systemBus.whenConnected(receiver, [&](const auto& connection) { told += connection ? 0 : 1; });
        time.runBackground();
    }
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", former);
    EXPECT_EQ(told, 3);
    EXPECT_THAT(recorder.warnings(),
                oneLine("veslora.bus", "system bus", "org.freedesktop.DBus.Error.FileNotFound"));
}

TEST_F(BusFailuresTests, NoneOfThemIsPrintedUnasked) {
    testing::MockSessionManager sessionManager;
    sessionManager.comeTo(desktop);
    sessionManager.refuses = true;
    takeName("org.freedesktop.Notifications");
    const LogRecorder silent(LogRecorder::Categories::byDefault);
    TimerNotifier notifier(own);
    notifier.timerFinished(1500);
    InhibitingService service(InhibitingService::Kind::sessionManager, own);
    EXPECT_TRUE(isAnswered(service));
    handleEventsFor(20);
    EXPECT_THAT(silent.lines(), IsEmpty());
}

} // namespace
} // namespace veslora
