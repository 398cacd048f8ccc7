// SPDX-License-Identifier: MIT
// A timer's end on the bus, before a service that remembers what it was asked to show.
#include "VesloraLinux/DBus/TimerNotifier.h"
#include "tests/VesloraLinux/Support/PrivateBus.h"
#include "tests/VesloraLinux/Support/Waiting.h"

#include <QDBusContext>
#include <QElapsedTimer>
#include <QTranslator>

#include <gtest/gtest.h>

#include <vector>

namespace veslora {
namespace {

using testing::handleEventsFor;
using testing::waitUntil;

const QString serviceName = QStringLiteral("org.freedesktop.Notifications");
const QString servicePath = QStringLiteral("/org/freedesktop/Notifications");

struct Notification {
    QString application;
    quint32 replaced = 0;
    QString icon;
    QString summary;
    QString body;
    QStringList actions;
    QVariantMap hints;
    int milliseconds = 0;
};

class MockNotifications : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

  public:
    void comeTo(QDBusConnection bus) {
        EXPECT_TRUE(bus.registerObject(servicePath, this, QDBusConnection::ExportAllSlots));
        EXPECT_TRUE(bus.registerService(serviceName));
    }
    void leave(QDBusConnection bus) {
        bus.unregisterService(serviceName);
        bus.unregisterObject(servicePath);
    }

    QStringList capabilities{QStringLiteral("body")};
    quint32 nextId = 41;
    bool hangs = false;
    bool refuses = false;
    int questions = 0;
    std::vector<Notification> shown;

  public slots:
    QStringList GetCapabilities() {
        ++questions;
        setDelayedReply(hangs);
        return capabilities;
    }
    uint Notify(const QString& application, uint replaced, const QString& icon, const QString& summary,
                const QString& body, const QStringList& actions, const QVariantMap& hints, int milliseconds) {
        shown.push_back({application, replaced, icon, summary, body, actions, hints, milliseconds});
        if (refuses) {
            sendErrorReply(QDBusError::LimitsExceeded, QStringLiteral("too many"));
            return 0;
        }
        return replaced != 0 ? replaced : ++nextId;
    }
};

/// Says everything in words that look like markup.
class SharpWords final : public QTranslator {
  public:
    [[nodiscard]] bool isEmpty() const override { return false; }
    [[nodiscard]] QString translate(const char* /*context*/, const char* source, const char* /*comment*/,
                                    int /*number*/) const override {
        return QString::fromUtf8(source).replace(QStringLiteral("Your"), QStringLiteral("<b>Q&A"));
    }
};

/// Nothing here waits for the answer to a notification: the bus keeps the order, so it is there before the
/// answer to any later question.
class TimerNotifierTests : public ::testing::Test {
  protected:
    [[nodiscard]] bool shows(std::size_t count) {
        return waitUntil([&] { return service.shown.size() == count; });
    }

    testing::CoreApplication application;
    testing::PrivateBus bus;
    QDBusConnection desktop = bus.connect();
    MockNotifications service;
    TimerNotifier notifier{bus.connect()};
};

TEST_F(TimerNotifierTests, TellsOfTheEnd) {
    service.comeTo(desktop);
    notifier.timerFinished(1500);
    ASSERT_TRUE(shows(1));
    const Notification& shown = service.shown.front();
    EXPECT_EQ(shown.application, QStringLiteral("Veslora"));
    EXPECT_EQ(shown.summary, QStringLiteral("Timer done"));
    EXPECT_EQ(shown.body, QStringLiteral("Your 25 min timer finished."));
    EXPECT_EQ(shown.replaced, 0U);
    EXPECT_EQ(shown.icon, QString());
    EXPECT_TRUE(shown.actions.isEmpty());
    EXPECT_EQ(shown.hints.value(QStringLiteral("suppress-sound")), true);
    EXPECT_EQ(shown.hints.value(QStringLiteral("desktop-entry")), QStringLiteral("org.veslora.Veslora"));
    EXPECT_EQ(shown.milliseconds, -1);
}

TEST_F(TimerNotifierTests, TellsOfTheEndInGerman) {
    QTranslator german;
    ASSERT_TRUE(german.load(QStringLiteral(":/translations/veslora_de.qm")));
    QCoreApplication::installTranslator(&german);
    service.comeTo(desktop);
    notifier.timerFinished(1500);
    ASSERT_TRUE(shows(1));
    EXPECT_EQ(service.shown.front().summary, QStringLiteral("Timer fertig"));
    EXPECT_TRUE(service.shown.front().body.startsWith(QStringLiteral("Der Timer über 25\u00a0Min. ")));
    QCoreApplication::removeTranslator(&german);
}

TEST_F(TimerNotifierTests, ReplacesTheLastOne) {
    service.comeTo(desktop);
    for (std::size_t round = 1; round <= 3; ++round) {
        notifier.timerFinished(60);
        ASSERT_TRUE(shows(round));
    }
    EXPECT_EQ(service.shown[1].replaced, 42U);
    EXPECT_EQ(service.shown[2].replaced, 42U);
}

TEST_F(TimerNotifierTests, ReplacesNothingOfAServiceThatTookTheOthersPlace) {
    service.comeTo(desktop);
    notifier.timerFinished(60);
    ASSERT_TRUE(shows(1));
    service.leave(desktop);
    QDBusConnection other = bus.connect();
    MockNotifications successor;
    successor.comeTo(other);
    notifier.timerFinished(60);
    ASSERT_TRUE(waitUntil([&] { return successor.shown.size() == 1; }));
    EXPECT_EQ(successor.shown.front().replaced, 0U) << "its ids are another program's";
}

TEST_F(TimerNotifierTests, EscapesMarkupOnlyWhereItIsKnown) {
    SharpWords words;
    QCoreApplication::installTranslator(&words);
    service.comeTo(desktop);
    notifier.timerFinished(60);
    ASSERT_TRUE(shows(1));
    EXPECT_EQ(service.shown.back().body, QStringLiteral("<b>Q&A 1 min timer finished."));
    service.capabilities << QStringLiteral("body-markup");
    notifier.timerFinished(60);
    ASSERT_TRUE(shows(2));
    EXPECT_EQ(service.shown.back().body, QStringLiteral("&lt;b&gt;Q&amp;A 1 min timer finished."));
    EXPECT_EQ(service.questions, 2) << "asked each time";
    QCoreApplication::removeTranslator(&words);
}

TEST_F(TimerNotifierTests, IsSilentWithoutAServiceAndTellsTheNextOne) {
    notifier.timerFinished(60);
    handleEventsFor(50);
    service.comeTo(desktop);
    handleEventsFor(50);
    EXPECT_TRUE(service.shown.empty()) << "an old end is no news";
    notifier.timerFinished(120);
    ASSERT_TRUE(shows(1));
    EXPECT_EQ(service.shown.front().body, QStringLiteral("Your 2 min timer finished."));
}

TEST_F(TimerNotifierTests, IsSilentWithoutABus) {
    TimerNotifier alone(std::nullopt);
    alone.requestPermission();
    alone.timerFinished(60);
    handleEventsFor(20);
    EXPECT_TRUE(service.shown.empty());
}

TEST_F(TimerNotifierTests, NeverWaitsForAServiceThatHangs) {
    service.hangs = true;
    service.comeTo(desktop);
    QElapsedTimer passed;
    passed.start();
    notifier.timerFinished(60);
    EXPECT_LT(passed.elapsed(), 1000);
    ASSERT_TRUE(waitUntil([&] { return service.questions == 1; }));
    EXPECT_TRUE(service.shown.empty());
    service.hangs = false;
    notifier.timerFinished(60);
    EXPECT_TRUE(shows(1));
}

TEST_F(TimerNotifierTests, ARefusalIsNoMatter) {
    service.refuses = true;
    service.comeTo(desktop);
    notifier.timerFinished(60);
    ASSERT_TRUE(shows(1));
    service.refuses = false;
    notifier.timerFinished(60);
    ASSERT_TRUE(shows(2));
    EXPECT_EQ(service.shown.back().replaced, 0U);
}

TEST_F(TimerNotifierTests, MayGoWhileItWaitsForAnAnswer) {
    service.comeTo(desktop);
    {
        TimerNotifier brief(bus.connect());
        brief.timerFinished(60);
    }
    ASSERT_TRUE(waitUntil([&] { return service.questions == 1; }));
    handleEventsFor(20);
    EXPECT_TRUE(service.shown.empty());
}

TEST_F(TimerNotifierTests, AsksForNoPermission) {
    service.comeTo(desktop);
    notifier.requestPermission();
    handleEventsFor(50);
    EXPECT_EQ(service.questions, 0);
}

} // namespace
} // namespace veslora

#include "TimerNotifierTests.moc"
