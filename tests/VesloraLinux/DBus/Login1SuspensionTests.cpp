// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/Login1Suspension.h"
#include "tests/VesloraLinux/Support/PrivateBus.h"
#include "tests/VesloraLinux/Support/Waiting.h"
#include "tests/support/ManualScheduler.h"

#include <QDBusMessage>

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace veslora {
namespace {

using testing::handleEventsFor;
using testing::waitUntil;

const QString managerName = QStringLiteral("org.freedesktop.login1");
const QString managerPath = QStringLiteral("/org/freedesktop/login1");
const QString managerInterface = QStringLiteral("org.freedesktop.login1.Manager");

class Login1SuspensionTests : public ::testing::Test {
  protected:
    /// On a connection to `connection`, once that is open.
    std::unique_ptr<Login1Suspension> makeOn(const SystemBus::Connection& connection) {
        systemBus = std::make_unique<SystemBus>(time, [connection] { return connection; });
        auto suspension = std::make_unique<Login1Suspension>(*systemBus);
        time.runBackground();
        listenTo(*suspension);
        return suspension;
    }
    void listenTo(Suspension& suspension) {
        QObject::connect(&suspension, &Suspension::willSleep, &suspension, [this] { heard += 's'; });
        QObject::connect(&suspension, &Suspension::didWake, &suspension, [this] { heard += 'w'; });
    }
    static void tell(QDBusConnection from, const QVariantList& arguments, const QString& path = managerPath) {
        QDBusMessage signal =
            QDBusMessage::createSignal(path, managerInterface, QStringLiteral("PrepareForSleep"));
        signal.setArguments(arguments);
        EXPECT_TRUE(from.send(signal));
    }

    /// Told again and again, since nothing shows when a new owner of the name has been noticed.
    bool hearsFrom(const QDBusConnection& from, char what, const QVariantList& arguments) {
        return waitUntil([&] {
            tell(from, arguments);
            return heard.find(what) != std::string::npos;
        });
    }

    testing::CoreApplication application;
    testing::PrivateBus bus;
    QDBusConnection manager = bus.connect();
    QDBusConnection own = bus.connect();
    ManualScheduler time;
    std::unique_ptr<SystemBus> systemBus;
    std::string heard;
};

TEST_F(Login1SuspensionTests, TellsOfSleepAndOfWaking) {
    ASSERT_TRUE(manager.registerService(managerName));
    const auto suspension = makeOn(own);
    tell(manager, {true});
    EXPECT_TRUE(waitUntil([this] { return heard == "s"; }));
    tell(manager, {false});
    EXPECT_TRUE(waitUntil([this] { return heard == "sw"; }));
}

TEST_F(Login1SuspensionTests, HearsAManagerThatComesLaterAndOneThatComesBack) {
    const auto suspension = makeOn(own);
    ASSERT_TRUE(manager.registerService(managerName));
    EXPECT_TRUE(hearsFrom(manager, 'w', {false}));
    ASSERT_TRUE(manager.unregisterService(managerName));
    QDBusConnection other = bus.connect();
    ASSERT_TRUE(other.registerService(managerName));
    EXPECT_TRUE(hearsFrom(other, 's', {true}));
}

TEST_F(Login1SuspensionTests, HearsNobodyElseAndNothingElse) {
    ASSERT_TRUE(manager.registerService(managerName));
    const auto suspension = makeOn(own);
    const QDBusConnection stranger = bus.connect();
    tell(stranger, {true});
    tell(manager, {QStringLiteral("true")});
    tell(manager, {});
    tell(manager, {true}, QStringLiteral("/elsewhere"));
    handleEventsFor(100);
    EXPECT_EQ(heard, "");
    tell(manager, {true});
    EXPECT_TRUE(waitUntil([this] { return heard == "s"; }));
}

TEST_F(Login1SuspensionTests, MayGoBeforeTheConnectionStands) {
    systemBus = std::make_unique<SystemBus>(time, [this] { return SystemBus::Connection(own); });
    auto suspension = std::make_unique<Login1Suspension>(*systemBus);
    suspension.reset();
    time.runBackground();
    EXPECT_EQ(heard, "");
}

TEST_F(Login1SuspensionTests, IsSilentWithoutABus) {
    const auto suspension = makeOn(std::nullopt);
    handleEventsFor(20);
    EXPECT_EQ(heard, "");
}

TEST_F(Login1SuspensionTests, ABusThatEndsIsNoMatter) {
    const auto suspension = makeOn(own);
    bus.disconnect(own);
    handleEventsFor(20);
    EXPECT_EQ(heard, "");
}

} // namespace
} // namespace veslora
