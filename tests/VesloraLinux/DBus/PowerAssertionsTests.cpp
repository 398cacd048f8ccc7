// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/InhibitingService.h"
#include "VesloraLinux/DBus/LoginManager.h"
#include "VesloraLinux/DBus/PowerAssertions.h"
#include "VesloraLinux/DBus/SystemBus.h"
#include "VesloraLinux/System/LinuxScheduler.h"
#include "tests/VesloraLinux/DBus/MockInhibitors.h"
#include "tests/VesloraLinux/Support/PrivateBus.h"
#include "tests/VesloraLinux/Support/Waiting.h"
#include "tests/support/ManualScheduler.h"

#include <QDBusPendingCallWatcher>
#include <QElapsedTimer>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using ::testing::ElementsAre;
using testing::waitUntil;
using Kind = InhibitingService::Kind;

constexpr KeepAwakeHold session{false, KeepAwakeHold::Reason::manual};
constexpr KeepAwakeHold sessionWithDisplay{true, KeepAwakeHold::Reason::manual};
constexpr KeepAwakeHold forClaude{false, KeepAwakeHold::Reason::claude};

/// The window system's own way, held in memory.
class FakeDisplay final : public Inhibitor {
  public:
    struct Held final : Inhibition {
        explicit Held(int& sharedCount) : count(sharedCount) { ++count; }
        ~Held() override { --count; }
        Held(const Held&) = delete;
        Held& operator=(const Held&) = delete;
        int& count;
    };
    explicit FakeDisplay(int& sharedCount) : m_count(sharedCount) {}

    [[nodiscard]] QString name() const override { return QStringLiteral("fake"); }
    [[nodiscard]] AwakeNeeds covers() const override { return {.system = false, .display = true}; }
    void inhibit(AwakeNeeds /*needs*/, const QString& /*reason*/, Done done) override {
        done(std::make_unique<Held>(m_count));
    }

  private:
    int& m_count;
};

class PowerAssertionsTests : public ::testing::Test {
  protected:
    PowerAssertionsTests() { make(own, ownSystem); }

    void make(const std::optional<QDBusConnection>& sessionBus,
              const std::optional<QDBusConnection>& systemBus) {
        std::vector<std::unique_ptr<Inhibitor>> ways;
        for (const Kind kind : {Kind::sessionManager, Kind::powerManagement, Kind::screenSaver}) {
            ways.push_back(std::make_unique<InhibitingService>(kind, sessionBus));
        }
        power.reset();
        systemConnection = std::make_unique<SystemBus>(time, [systemBus] { return systemBus; });
        ways.push_back(std::make_unique<LoginManager>(*systemConnection));
        ways.push_back(std::make_unique<FakeDisplay>(display));
        ways.push_back(nullptr); // a window system that has none
        power = std::make_unique<PowerAssertions>(time, std::move(ways));
    }
    /// Handles events and the scheduler's background work until the condition holds, and holds once all that
    /// is under way has happened.
    bool comesTo(const std::function<bool()>& condition) {
        const bool came = waitUntil([&] {
            time.runBackground();
            return condition();
        });
        settle();
        return came && condition();
    }
    /// Lets whatever is under way happen, as many requests after one another as there are ways.
    void settle() {
        for (int i = 0; i < 6; ++i) {
            time.runBackground();
            for (const QDBusConnection& connection : {own, ownSystem, desktop, system}) {
                roundTrip(connection);
            }
        }
    }
    /// Whatever was sent to the connection, or from it, before this was handled after it.
    static void roundTrip(const QDBusConnection& connection) {
        const QString daemon = QStringLiteral("org.freedesktop.DBus");
        const QDBusPendingCallWatcher answer(connection.asyncCall(QDBusMessage::createMethodCall(
            daemon, QStringLiteral("/org/freedesktop/DBus"), daemon, QStringLiteral("GetId"))));
        bool isDone = false;
        QObject::connect(&answer, &QDBusPendingCallWatcher::finished, [&] { isDone = true; });
        waitUntil([&] { return isDone; });
    }
    /// Ends the desktop's connection, as when its services crash.
    void crashDesktop() {
        const QDBusConnection gone = desktop;
        desktop = bus.connect();
        bus.disconnect(gone);
    }

    testing::CoreApplication application;
    testing::PrivateBus bus;
    QDBusConnection own = bus.connect();
    QDBusConnection ownSystem = bus.connect();
    QDBusConnection desktop = bus.connect();
    QDBusConnection system = bus.connect();
    ManualScheduler time;
    testing::MockSessionManager sessionManager;
    testing::MockPowerManagement powerManagement;
    testing::MockScreenSaver screenSaver;
    testing::MockLoginManager loginManager;
    int display = 0;
    std::unique_ptr<SystemBus> systemConnection;
    std::unique_ptr<PowerAssertions> power;
};

TEST_F(PowerAssertionsTests, OnGnomeTheSessionManagerServesEverything) {
    sessionManager.comeTo(desktop);
    powerManagement.comeTo(desktop);
    screenSaver.comeTo(desktop);
    loginManager.comeTo(desktop);
    power->apply(session);
    ASSERT_TRUE(comesTo([&] { return sessionManager.held() == 1; }));
    EXPECT_THAT(sessionManager.heldTexts(), ElementsAre("org.veslora.Veslora 0 4 Veslora: Keep Awake"));
    power->apply(sessionWithDisplay);
    ASSERT_TRUE(comesTo([&] {
        return sessionManager.heldTexts() ==
               std::vector<std::string>{"org.veslora.Veslora 0 12 Veslora: Keep Awake"};
    }));
    power->apply(std::nullopt);
    ASSERT_TRUE(comesTo([&] { return sessionManager.held() == 0; }));
    EXPECT_EQ(powerManagement.asked + screenSaver.asked + loginManager.asked, 0);
    EXPECT_EQ(display, 0);
}

TEST_F(PowerAssertionsTests, OnKdeAndXfceTwoServicesShareTheWork) {
    powerManagement.comeTo(desktop);
    screenSaver.comeTo(desktop);
    loginManager.comeTo(desktop);
    power->apply(sessionWithDisplay);
    ASSERT_TRUE(comesTo([&] { return powerManagement.held() == 1 && screenSaver.held() == 1; }));
    EXPECT_THAT(powerManagement.heldTexts(), ElementsAre("Veslora Veslora: Keep Awake"));
    EXPECT_THAT(screenSaver.heldTexts(), ElementsAre("Veslora Veslora: Keep Awake"));
    // The session ends while an agent works: two go, one comes.
    power->apply(forClaude);
    ASSERT_TRUE(comesTo([&] { return screenSaver.held() == 0; }));
    EXPECT_THAT(powerManagement.heldTexts(), ElementsAre("Veslora Veslora: Claude Code is working"));
    EXPECT_EQ(loginManager.asked, 0);
    EXPECT_EQ(display, 0);
}

TEST_F(PowerAssertionsTests, ElsewhereTheLoginManagerAndTheWindowSystemDo) {
    loginManager.comeTo(desktop);
    power->apply(sessionWithDisplay);
    ASSERT_TRUE(comesTo([&] { return loginManager.held() == 1 && display == 1; }));
    EXPECT_THAT(loginManager.log, ElementsAre("idle Veslora block Veslora: Keep Awake"));
    power->apply(session);
    ASSERT_TRUE(comesTo([&] { return display == 0 && loginManager.held() == 1; }));
    power->apply(std::nullopt);
    EXPECT_TRUE(comesTo([&] { return loginManager.held() == 0; }));
}

TEST_F(PowerAssertionsTests, AServiceThatRefusesIsFollowedByTheNext) {
    sessionManager.refuses = true;
    powerManagement.refuses = true;
    sessionManager.comeTo(desktop);
    powerManagement.comeTo(desktop);
    screenSaver.comeTo(desktop);
    loginManager.comeTo(desktop);
    power->apply(sessionWithDisplay);
    ASSERT_TRUE(comesTo([&] { return screenSaver.held() == 1 && loginManager.held() == 1; }));
    EXPECT_EQ(display, 0) << "the screen saver serves the display";
    settle();
    EXPECT_EQ(sessionManager.asked, 1);
    EXPECT_EQ(powerManagement.asked, 1) << "refusing once is enough until the hold changes";
    sessionManager.refuses = false;
    settle();
    EXPECT_EQ(sessionManager.asked, 1);
    power->apply(session);
    ASSERT_TRUE(comesTo([&] { return sessionManager.held() == 1 && loginManager.held() == 0; }));
    EXPECT_EQ(screenSaver.held(), 0u);
}

TEST_F(PowerAssertionsTests, WhereEverythingRefusesNothingIsHeldAndNothingTriedAgain) {
    powerManagement.refuses = true;
    loginManager.refuses = true;
    powerManagement.comeTo(desktop);
    loginManager.comeTo(desktop);
    power->apply(session);
    ASSERT_TRUE(comesTo([&] { return loginManager.asked == 1; }));
    settle();
    time.advance(3600);
    settle();
    EXPECT_EQ(powerManagement.asked, 1);
    EXPECT_EQ(loginManager.asked, 1);
    EXPECT_EQ(time.pending(), 0u);
}

TEST_F(PowerAssertionsTests, TheNewHoldStandsBeforeTheOldOneGoes) {
    powerManagement.comeTo(desktop);
    power->apply(session);
    ASSERT_TRUE(comesTo([&] { return powerManagement.held() == 1; }));
    power->apply(forClaude);
    ASSERT_TRUE(comesTo([&] { return powerManagement.log.size() == 3; }));
    EXPECT_THAT(powerManagement.log, ElementsAre("Veslora Veslora: Keep Awake",
                                                 "Veslora Veslora: Claude Code is working", "release 1"));
}

TEST_F(PowerAssertionsTests, ARequestUnderWayIsNotLostButReleasedWhenItComes) {
    powerManagement.hesitates = true;
    powerManagement.comeTo(desktop);
    power->apply(session);
    ASSERT_TRUE(comesTo([&] { return powerManagement.asked == 1; }));
    power->apply(std::nullopt);
    settle();
    EXPECT_THAT(powerManagement.log, ElementsAre("Veslora Veslora: Keep Awake"));
    powerManagement.answerAll();
    EXPECT_TRUE(comesTo([&] { return powerManagement.log.back() == "release 1"; }));
    EXPECT_EQ(powerManagement.held(), 0u);
}

TEST_F(PowerAssertionsTests, ADescriptorUnderWayIsClosedWhenItComes) {
    loginManager.hesitates = true;
    loginManager.comeTo(desktop);
    power->apply(session);
    ASSERT_TRUE(comesTo([&] { return loginManager.asked == 1; }));
    power->apply(std::nullopt);
    loginManager.answerAll();
    settle();
    EXPECT_EQ(loginManager.held(), 0);
}

TEST_F(PowerAssertionsTests, ChangesWhileRequestsAreUnderWayLeaveOnlyTheLast) {
    powerManagement.hesitates = true;
    screenSaver.hesitates = true;
    powerManagement.comeTo(desktop);
    screenSaver.comeTo(desktop);
    for (const auto& hold : {std::optional(session), std::optional(sessionWithDisplay),
                             std::optional<KeepAwakeHold>(), std::optional(forClaude)}) {
        power->apply(hold);
        settle();
    }
    ASSERT_TRUE(comesTo([&] { return powerManagement.asked == 3; }));
    powerManagement.answerAll();
    ASSERT_TRUE(comesTo([&] { return powerManagement.held() == 1; }));
    EXPECT_THAT(powerManagement.log, ::testing::Contains("release 1"));
    EXPECT_THAT(powerManagement.log, ::testing::Contains("release 2"));
    EXPECT_EQ(screenSaver.asked, 0);
}

TEST_F(PowerAssertionsTests, AServiceThatKeepsSilentIsPassedOverAndMayStillTakeOver) {
    sessionManager.hesitates = true;
    sessionManager.comeTo(desktop);
    loginManager.comeTo(desktop);
    power->apply(session);
    ASSERT_TRUE(comesTo([&] { return sessionManager.asked == 1; }));
    settle();
    EXPECT_EQ(loginManager.asked, 0);
    time.advance(PowerAssertions::patience);
    ASSERT_TRUE(comesTo([&] { return loginManager.held() == 1; }));
    sessionManager.answerAll();
    ASSERT_TRUE(comesTo([&] { return loginManager.held() == 0; }));
    EXPECT_EQ(sessionManager.held(), 1u);
    power->apply(std::nullopt);
    EXPECT_TRUE(comesTo([&] { return sessionManager.held() == 0; }));
}

TEST_F(PowerAssertionsTests, AServiceThatVanishesAndReturnsIsAskedAgain) {
    powerManagement.comeTo(desktop);
    power->apply(session);
    ASSERT_TRUE(comesTo([&] { return powerManagement.held() == 1; }));
    // Its next life, on a connection of its own, knows nothing of the first and counts from elsewhere.
    crashDesktop();
    testing::MockPowerManagement next;
    next.nextNumber = 70;
    settle();
    next.comeTo(desktop);
    ASSERT_TRUE(comesTo([&] { return next.held() == 1; }));
    power->apply(std::nullopt);
    ASSERT_TRUE(comesTo([&] { return next.held() == 0; }));
    EXPECT_THAT(next.log, ElementsAre("Veslora Veslora: Keep Awake", "release 70"))
        << "the number of the first life is not given to the second";
}

TEST_F(PowerAssertionsTests, WhileAServiceIsGoneTheNextOneServes) {
    sessionManager.comeTo(desktop);
    loginManager.comeTo(system);
    power->apply(sessionWithDisplay);
    ASSERT_TRUE(comesTo([&] { return sessionManager.held() == 1; }));
    sessionManager.leave(desktop);
    ASSERT_TRUE(comesTo([&] { return loginManager.held() == 1 && display == 1; }));
    sessionManager.comeTo(desktop);
    ASSERT_TRUE(comesTo([&] { return loginManager.held() == 0 && display == 0; }));
    EXPECT_GE(sessionManager.held(), 1u);
}

TEST_F(PowerAssertionsTests, AServiceThatMakesWayForAnotherGetsItsNumberBack) {
    QDBusConnection other = bus.connect();
    testing::MockPowerManagement successor;
    successor.nextNumber = 70;
    powerManagement.comeTo(desktop);
    power->apply(session);
    ASSERT_TRUE(comesTo([&] { return powerManagement.held() == 1; }));
    desktop.unregisterService(QStringLiteral("org.freedesktop.PowerManagement"));
    successor.comeTo(other);
    ASSERT_TRUE(comesTo([&] { return successor.held() == 1 && powerManagement.held() == 0; }));
    EXPECT_THAT(successor.heldTexts(), ElementsAre("Veslora Veslora: Keep Awake"));
}

TEST_F(PowerAssertionsTests, AServiceThatStartsAfterUsIsAsked) {
    power->apply(session);
    settle();
    powerManagement.comeTo(desktop);
    EXPECT_TRUE(comesTo([&] { return powerManagement.held() == 1; }));
}

TEST_F(PowerAssertionsTests, AServiceThatComesWhileNothingIsHeldIsLeftAlone) {
    power->apply(session);
    settle();
    power->apply(std::nullopt);
    powerManagement.comeTo(desktop);
    settle();
    EXPECT_EQ(powerManagement.asked, 0);
}

TEST_F(PowerAssertionsTests, AServiceThatGoesWithARequestUnderWayIsFollowedByTheNext) {
    sessionManager.hesitates = true;
    sessionManager.comeTo(desktop);
    loginManager.comeTo(system);
    power->apply(session);
    ASSERT_TRUE(comesTo([&] { return sessionManager.asked == 1; }));
    sessionManager.forgetUnanswered();
    crashDesktop();
    EXPECT_TRUE(comesTo([&] { return loginManager.held() == 1; }));
}

TEST_F(PowerAssertionsTests, ALoginManagerThatComesBackIsAskedAgain) {
    loginManager.comeTo(desktop);
    power->apply(session);
    ASSERT_TRUE(comesTo([&] { return loginManager.held() == 1; }));
    loginManager.leave(desktop);
    loginManager.comeTo(desktop);
    ASSERT_TRUE(comesTo([&] { return loginManager.asked >= 2; }));
    settle();
    EXPECT_EQ(loginManager.held(), 1) << "the former descriptor is closed";
}

TEST_F(PowerAssertionsTests, EverythingIsLetGoAtTheEnd) {
    powerManagement.comeTo(desktop);
    power->apply(sessionWithDisplay);
    ASSERT_TRUE(comesTo([&] { return powerManagement.held() == 1 && display == 1; }));
    power.reset();
    EXPECT_EQ(display, 0);
    EXPECT_TRUE(comesTo([&] { return powerManagement.held() == 0; }));
}

TEST_F(PowerAssertionsTests, AnAnswerAfterTheEndIsNoMatter) {
    powerManagement.hesitates = true;
    loginManager.comeTo(desktop);
    powerManagement.comeTo(desktop);
    power->apply(session);
    ASSERT_TRUE(comesTo([&] { return powerManagement.asked == 1; }));
    power.reset();
    powerManagement.answerAll();
    settle();
    EXPECT_EQ(loginManager.asked, 0);
}

TEST_F(PowerAssertionsTests, WithoutAnyBusOnlyTheWindowSystemServes) {
    make(std::nullopt, std::nullopt);
    power->apply(sessionWithDisplay);
    settle();
    EXPECT_EQ(display, 1);
    power->apply(session);
    settle();
    EXPECT_EQ(display, 0);
    EXPECT_EQ(time.pending(), 0u);
}

TEST_F(PowerAssertionsTests, ABusThatDiesIsNoMatter) {
    powerManagement.comeTo(desktop);
    power->apply(session);
    ASSERT_TRUE(comesTo([&] { return powerManagement.held() == 1; }));
    bus.kill();
    power->apply(sessionWithDisplay);
    EXPECT_TRUE(waitUntil([&] {
        time.runBackground();
        return display == 1;
    }));
    power.reset();
    EXPECT_EQ(display, 0);
}

TEST_F(PowerAssertionsTests, NeverWaitsForAnAnswer) {
    QElapsedTimer clock;
    clock.start();
    sessionManager.hesitates = true;
    sessionManager.comeTo(desktop);
    for (int i = 0; i < 100; ++i) {
        power->apply(sessionWithDisplay);
        power->apply(std::nullopt);
    }
    EXPECT_LT(clock.elapsed(), 2000) << "a single wait would take longer";
}

} // namespace
} // namespace veslora
