// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/Login1Suspension.h"
#include "VesloraLinux/DBus/SystemBus.h"
#include "tests/VesloraLinux/Support/PrivateBus.h"
#include "tests/VesloraLinux/Support/Waiting.h"

#include <QDBusMessage>

#include <gtest/gtest.h>

#include <map>
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

    testing::CoreApplication application;
    testing::PrivateBus bus;
    QDBusConnection manager = bus.connect();
    QDBusConnection own = bus.connect();
    std::string heard;
};

TEST_F(Login1SuspensionTests, TellsOfSleepAndOfWaking) {
    ASSERT_TRUE(manager.registerService(managerName));
    Login1Suspension suspension(own);
    listenTo(suspension);
    tell(manager, {true});
    EXPECT_TRUE(waitUntil([this] { return heard == "s"; }));
    tell(manager, {false});
    EXPECT_TRUE(waitUntil([this] { return heard == "sw"; }));
}

TEST_F(Login1SuspensionTests, HearsAManagerThatComesLaterAndOneThatComesBack) {
    Login1Suspension suspension(own);
    listenTo(suspension);
    ASSERT_TRUE(manager.registerService(managerName));
    handleEventsFor(50);
    tell(manager, {false});
    EXPECT_TRUE(waitUntil([this] { return heard == "w"; }));
    ASSERT_TRUE(manager.unregisterService(managerName));
    QDBusConnection other = bus.connect();
    ASSERT_TRUE(other.registerService(managerName));
    handleEventsFor(50);
    tell(other, {true});
    EXPECT_TRUE(waitUntil([this] { return heard == "ws"; }));
}

TEST_F(Login1SuspensionTests, HearsNobodyElseAndNothingElse) {
    ASSERT_TRUE(manager.registerService(managerName));
    Login1Suspension suspension(own);
    listenTo(suspension);
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

TEST_F(Login1SuspensionTests, IsSilentWithoutABus) {
    Login1Suspension suspension(std::nullopt);
    listenTo(suspension);
    handleEventsFor(20);
    EXPECT_EQ(heard, "");
}

TEST_F(Login1SuspensionTests, ABusThatEndsIsNoMatter) {
    Login1Suspension suspension(own);
    listenTo(suspension);
    bus.disconnect(own);
    handleEventsFor(20);
    EXPECT_EQ(heard, "");
}

TEST(SystemBusTests, IsOnlyLookedForWhereItIsNamed) {
    std::map<std::string, std::string> variables;
    const auto environment = [&variables](const std::string& name) -> std::optional<std::string> {
        const auto found = variables.find(name);
        return found == variables.end() ? std::nullopt : std::optional(found->second);
    };
    variables["DBUS_SYSTEM_BUS_ADDRESS"] = "unix:path=/somewhere";
    EXPECT_TRUE(SystemBus::isNamed(environment));
    variables["DBUS_SYSTEM_BUS_ADDRESS"] = "disabled:";
    EXPECT_FALSE(SystemBus::isNamed(environment));
}

} // namespace
} // namespace veslora
