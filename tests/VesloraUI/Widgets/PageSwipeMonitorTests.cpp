// SPDX-License-Identifier: MIT
// Movements over the rack, as the window system tells of them, and the keys that lie in their way.
#include "tests/VesloraUI/Fixtures/Scene.h"

#include <QQmlContext>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

namespace veslora {
namespace {

constexpr int notch = 120;
/// What servers tell of so many points under fingers.
constexpr int anglesOf(int points) {
    return points * notch / 15;
}

class PageSwipeMonitorTest : public ::testing::Test {
  protected:
    void SetUp() override {
        scene.showText(R"(
            PageSwipeMonitor {
                id: monitor

                property int clicks: 0
                property int scrolled: 0

                isActive: true

                KeyButton {
                    text: "Key"
                    width: 80
                    height: 80
                    onClicked: monitor.clicks += 1
                }
                ScrollWheelCatcher {
                    x: 200
                    width: 100
                    height: 100
                    onStepped: monitor.scrolled += 1
                }
            })",
                       {400, 120});
        spy = std::make_unique<QSignalSpy>(&scene.view(), SIGNAL(stepped(int)));
    }
    void TearDown() override {
        spy.reset();
        scene.close();
    }

    struct Turn {
        QPoint angle;
        QPoint pixels;
        Qt::ScrollPhase phase = Qt::NoScrollPhase;
        bool isInverted = false;
        int after = 10; ///< milliseconds since the last
        QPoint at{150, 50};
    };
    /// Whether somebody took it.
    bool wheel(const Turn& turn) {
        now += turn.after;
        QWheelEvent event(turn.at, scene.window().mapToGlobal(turn.at), turn.pixels, turn.angle, Qt::NoButton,
                          Qt::NoModifier, turn.phase, turn.isInverted);
        event.setTimestamp(static_cast<quint64>(now));
        QCoreApplication::sendEvent(&scene.window(), &event);
        return event.isAccepted();
    }
    bool notches(int count) { return wheel({.angle = {-count * notch, 0}}); }
    /// To the left, on a touchpad of which the window system tells as of a wheel.
    bool fingers(int points, int after = 10) {
        return wheel({.angle = {-anglesOf(points), 0}, .after = after});
    }
    [[nodiscard]] QList<int> steps() const {
        QList<int> steps;
        for (const auto& arguments : *spy) {
            steps << arguments.front().toInt();
        }
        return steps;
    }
    [[nodiscard]] int number(const char* name) const { return scene.view().property(name).toInt(); }

    void down(QPoint place) { QTest::touchEvent(&scene.window(), touchscreen.get()).press(1, place); }
    void move(QPoint place) { QTest::touchEvent(&scene.window(), touchscreen.get()).move(1, place); }
    void up(QPoint place) { QTest::touchEvent(&scene.window(), touchscreen.get()).release(1, place); }
    /// One finger from place to place, with some in between.
    void draw(QPoint from, QPoint to) {
        constexpr int parts = 10;
        down(from);
        for (int part = 1; part <= parts; ++part) {
            move(from + (to - from) * part / parts);
        }
        up(to);
    }

    Scene scene;
    std::unique_ptr<QSignalSpy> spy;
    std::unique_ptr<QPointingDevice> touchscreen{QTest::createTouchDevice()};
    int now = 1000;
};

TEST_F(PageSwipeMonitorTest, WithOnePageEverythingIsPassedOn) {
    scene.view().setProperty("isActive", false);
    EXPECT_FALSE(notches(1));
    scene.platform.scrolling.source = ScrollSource::fingers;
    EXPECT_FALSE(fingers(100));
    draw({150, 50}, {20, 50});
    EXPECT_EQ(steps(), QList<int>());
}

TEST_F(PageSwipeMonitorTest, VerticalMovementIsNeverSwallowed) {
    EXPECT_FALSE(wheel({.angle = {0, notch}}));
    EXPECT_FALSE(wheel({.angle = {20, -21}}));
    EXPECT_FALSE(wheel({.angle = {notch, notch}})) << "diagonal";
    EXPECT_TRUE(wheel({.angle = {0, notch}, .at = {250, 50}}));
    EXPECT_EQ(number("scrolled"), 1);
    EXPECT_EQ(steps(), QList<int>());
}

TEST_F(PageSwipeMonitorTest, SidewaysMovementOverAControlThatScrollsTurnsThePage) {
    EXPECT_TRUE(wheel({.angle = {-notch, 0}, .at = {250, 50}}));
    EXPECT_EQ(number("scrolled"), 0);
    EXPECT_EQ(steps(), QList({1}));
}

TEST_F(PageSwipeMonitorTest, EachNotchOfATiltedWheelTurnsAPage) {
    for (const ScrollSource source : {ScrollSource::unknown, ScrollSource::wheel}) {
        scene.platform.scrolling.source = source;
        spy->clear();
        EXPECT_TRUE(notches(1));
        EXPECT_TRUE(notches(1));
        EXPECT_TRUE(notches(-1));
        EXPECT_EQ(steps(), QList({1, 1, -1}));
    }
}

TEST_F(PageSwipeMonitorTest, FractionsOfAKnownWheelAddUpToANotch) {
    scene.platform.scrolling.source = ScrollSource::wheel;
    for (int part = 0; part < 16; ++part) {
        EXPECT_TRUE(wheel({.angle = {-15, 0}}));
        EXPECT_EQ(steps().size(), (part + 1) / 8) << part;
    }
}

TEST_F(PageSwipeMonitorTest, DistancesInPixelsMakeNoTouchpadOfAWheel) {
    scene.platform.scrolling.source = ScrollSource::wheel;
    EXPECT_TRUE(wheel({.angle = {-notch, 0}, .pixels = {-notch, 0}}));
    EXPECT_TRUE(wheel({.angle = {-notch, 0}, .pixels = {-notch, 0}}));
    EXPECT_EQ(steps(), QList({1, 1}));
}

TEST_F(PageSwipeMonitorTest, OneGestureTurnsOnePageHoweverLong) {
    for (const ScrollSource source : {ScrollSource::unknown, ScrollSource::fingers}) {
        scene.platform.scrolling.source = source;
        now += 1000;
        spy->clear();
        for (int move = 0; move < 100; ++move) {
            EXPECT_TRUE(fingers(7));
        }
        EXPECT_EQ(steps(), QList({1}));
    }
}

TEST_F(PageSwipeMonitorTest, AWholeNotchAmidFractionsIsOfFingersToo) {
    EXPECT_TRUE(fingers(62));
    for (int move = 0; move < 5; ++move) {
        EXPECT_TRUE(fingers(15, 150));
    }
    EXPECT_EQ(steps(), QList({1}));
    EXPECT_TRUE(fingers(15, 201)) << "but not of a wheel that is turned later";
    EXPECT_EQ(steps(), QList({1, 1}));
}

TEST_F(PageSwipeMonitorTest, WithoutPhasesAPauseBeginsAGesture) {
    scene.platform.scrolling.source = ScrollSource::fingers;
    EXPECT_TRUE(fingers(60));
    EXPECT_TRUE(fingers(60, 199));
    EXPECT_EQ(steps(), QList({1}));
    EXPECT_TRUE(fingers(60, 201));
    EXPECT_EQ(steps(), QList({1, 1}));
    scene.platform.advance(100);
    EXPECT_TRUE(fingers(60));
    EXPECT_EQ(steps(), QList({1, 1})) << "the events' own times count, not when they are dealt with";
}

TEST_F(PageSwipeMonitorTest, WherePhasesAreToldTheyBeginGestures) {
    for (const int turned : {1, 2}) {
        EXPECT_FALSE(wheel({.phase = Qt::ScrollBegin}));
        EXPECT_FALSE(wheel({.angle = {0, -24}, .pixels = {0, -2}, .phase = Qt::ScrollUpdate}));
        for (int move = 0; move < 20; ++move) {
            const int after = move == 10 ? 1000 : 10;
            EXPECT_TRUE(
                wheel({.angle = {-600, 0}, .pixels = {-50, 0}, .phase = Qt::ScrollUpdate, .after = after}));
        }
        EXPECT_FALSE(wheel({.phase = Qt::ScrollEnd}));
        EXPECT_EQ(steps().size(), turned);
    }
}

TEST_F(PageSwipeMonitorTest, AGestureMayBeginOverAControlThatScrolls) {
    for (const int turned : {1, 2}) {
        EXPECT_FALSE(wheel({.phase = Qt::ScrollBegin, .at = {250, 50}}));
        EXPECT_TRUE(
            wheel({.angle = {-720, 0}, .pixels = {-60, 0}, .phase = Qt::ScrollUpdate, .at = {250, 50}}));
        EXPECT_EQ(steps().size(), turned);
    }
    EXPECT_EQ(number("scrolled"), 0);
}

TEST_F(PageSwipeMonitorTest, WhatGoesOnByItselfTurnsNothing) {
    EXPECT_FALSE(wheel({.phase = Qt::ScrollBegin}));
    EXPECT_TRUE(wheel({.angle = {-708, 0}, .pixels = {-59, 0}, .phase = Qt::ScrollUpdate}));
    for (int move = 0; move < 20; ++move) {
        EXPECT_TRUE(wheel({.angle = {-600, 0}, .pixels = {-50, 0}, .phase = Qt::ScrollMomentum}));
    }
    EXPECT_EQ(steps(), QList<int>());
}

TEST_F(PageSwipeMonitorTest, ADesktopThatTurnsTheMovementRoundChangesNothingForTheFingers) {
    EXPECT_TRUE(wheel({.angle = {-notch, 0}}));
    EXPECT_TRUE(wheel({.angle = {notch, 0}, .isInverted = true}));
    EXPECT_EQ(steps(), QList({1, 1}));
}

TEST_F(PageSwipeMonitorTest, ATouchpadThatTheToolkitKnowsIsOne) {
    scene.platform.scrolling.source = ScrollSource::wheel;
    const QPointingDevice touchpad(QStringLiteral("touchpad"), 7, QInputDevice::DeviceType::TouchPad,
                                   QPointingDevice::PointerType::Finger, QInputDevice::Capability::Scroll, 2,
                                   3);
    const QPointF at(150, 50);
    for (int move = 0; move < 10; ++move) {
        QWheelEvent event(at, at, {-notch, 0}, {-notch, 0}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                          false, Qt::MouseEventNotSynthesized, &touchpad);
        event.setTimestamp(static_cast<quint64>(++now));
        QCoreApplication::sendEvent(&scene.window(), &event);
    }
    EXPECT_EQ(steps(), QList({1}));
}

TEST_F(PageSwipeMonitorTest, AFingerDrawsOnePageAlong) {
    draw({350, 50}, {110, 60});
    EXPECT_EQ(steps(), QList({1}));
    draw({110, 50}, {350, 60});
    EXPECT_EQ(steps(), QList({1, -1}));
    draw({150, 50}, {100, 50});
    EXPECT_EQ(steps().size(), 2) << "not far enough";
}

TEST_F(PageSwipeMonitorTest, AFingerThatGoesDownOnAKeyTurnsThePageAndPressesNothing) {
    draw({70, 40}, {5, 40});
    EXPECT_EQ(steps(), QList({1}));
    EXPECT_EQ(number("clicks"), 0);
    EXPECT_FALSE(scene.itemNamed("Key")->property("isPressed").toBool());
    down({70, 40});
    up({5, 40});
    EXPECT_EQ(steps(), QList({1, 1})) << "in one go";
    EXPECT_EQ(number("clicks"), 0);
}

TEST_F(PageSwipeMonitorTest, AKeyIsLetGoAsSoonAsTheFingerMeansThePage) {
    down({70, 40});
    EXPECT_TRUE(scene.itemNamed("Key")->property("isPressed").toBool());
    move({58, 40});
    EXPECT_TRUE(QTest::qWaitFor([this] { return !scene.itemNamed("Key")->property("isPressed").toBool(); }));
    up({58, 40});
    EXPECT_EQ(steps(), QList<int>());
    EXPECT_EQ(number("clicks"), 0);
}

TEST_F(PageSwipeMonitorTest, AFingerThatStaysOrMovesUpOrDownPressesTheKey) {
    draw({40, 40}, {44, 43});
    EXPECT_EQ(number("clicks"), 1);
    draw({40, 10}, {55, 70});
    EXPECT_EQ(number("clicks"), 2);
    EXPECT_EQ(steps(), QList<int>());
}

TEST_F(PageSwipeMonitorTest, FingersThatMoveTheModulesTurnNoPage) {
    scene.view().setProperty("takesTouch", false);
    draw({40, 40}, {110, 40});
    draw({350, 50}, {110, 50});
    EXPECT_EQ(steps(), QList<int>());
    EXPECT_TRUE(notches(1)) << "a wheel does";
}

TEST_F(PageSwipeMonitorTest, ASecondFingerChangesNothing) {
    const auto touch = [this] { return QTest::touchEvent(&scene.window(), touchscreen.get()); };
    for (const int first : {340, 280}) {
        EXPECT_EQ(steps(), QList<int>());
        down({350, 50});
        touch().move(1, QPoint(350, 50)).press(2, QPoint(100, 50));
        touch().move(1, QPoint(350, 50)).move(2, QPoint(300, 50));
        touch().move(1, QPoint(first, 50)).move(2, QPoint(300, 50));
        touch().release(1, QPoint(first, 50)).release(2, QPoint(300, 50));
    }
    EXPECT_EQ(steps(), QList({1}));
}

TEST_F(PageSwipeMonitorTest, AFingerThatTurnsThePageIsNoLongPressAndOneThatRestsIs) {
    for (const WidgetID id : allWidgetIDs) {
        scene.rack.remove(id);
    }
    spy.reset();
    scene.engine.rootContext()->setContextProperty("model", &scene.rack);
    scene.showText(R"(
        PageSwipeMonitor {
            isActive: true

            RackGestures {
                anchors.fill: parent
                rack: model

                KeyButton {
                    text: "Key"
                    width: 80
                    height: 80
                }
            }
        })",
                   {400, 120});
    spy = std::make_unique<QSignalSpy>(&scene.view(), SIGNAL(stepped(int)));
    for (const QPoint start : {QPoint(70, 40), QPoint(350, 40)}) {
        down(start);
        move(start - QPoint(65, 0));
        EXPECT_TRUE(QTest::qWaitFor([this] { return !steps().isEmpty(); }));
        scene.platform.advance(1);
        EXPECT_FALSE(scene.rack.isEditing());
        up(start - QPoint(65, 0));
        EXPECT_EQ(steps(), QList({1}));
        spy->clear();
        down(start);
        scene.platform.advance(1);
        EXPECT_TRUE(scene.rack.isEditing());
        up(start);
        scene.rack.exitEditing();
        EXPECT_EQ(steps(), QList<int>());
    }
}

TEST_F(PageSwipeMonitorTest, AMouseThatDragsAcrossAKeyIsNoFinger) {
    QTest::mousePress(&scene.window(), Qt::LeftButton, {}, {70, 40});
    QTest::mouseMove(&scene.window(), {5, 40});
    QTest::mouseRelease(&scene.window(), Qt::LeftButton, {}, {5, 40});
    EXPECT_EQ(number("clicks"), 1);
    EXPECT_EQ(steps(), QList<int>());
}

} // namespace
} // namespace veslora
