// SPDX-License-Identifier: MIT
// What moves on the island where the desktop wants less motion: places and sizes are taken at once, what
// comes and goes fades, and spinners stand still.
#include "tests/VesloraUI/Fixtures/AnimationTime.h"
#include "tests/VesloraUI/Fixtures/Scene.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

class ReducedMotionTests : public ::testing::Test {
  protected:
    void TearDown() override { scene.close(); }

    void reduce(bool isReduced = true) {
        scene.platform.look.change({.isTold = true, .reducedMotion = isReduced});
    }
    void showNumbers() {
        scene.showText(R"(Item {
            id: root
            property real to: 0
            property alias place: placeSpring.value
            property alias presence: presenceSpring.value
            property alias length: lengthGlide.value
            property alias moves: placeSpring.isRunning
            property alias fades: presenceSpring.isRunning
            Spring { id: placeSpring; target: 100 * root.to }
            Spring { id: presenceSpring; isFade: true; target: root.to }
            Glide { id: lengthGlide; target: 100 * root.to }
        })",
                       {100, 100});
        time.install();
    }
    void setOut(double to) { scene.view().setProperty("to", to); }
    [[nodiscard]] double number(const char* name) const { return scene.view().property(name).toDouble(); }
    [[nodiscard]] bool is(const char* name) const { return scene.view().property(name).toBool(); }

    testing::AnimationTime time;
    Scene scene;
};

TEST_F(ReducedMotionTests, OtherwiseEverythingIsOnItsWay) {
    showNumbers();
    setOut(1);
    time.advance(50);
    for (const char* name : {"place", "length"}) {
        EXPECT_GT(number(name), 0) << name;
        EXPECT_LT(number(name), 100) << name;
    }
    EXPECT_GT(number("presence"), 0);
    EXPECT_LT(number("presence"), 1);
}

TEST_F(ReducedMotionTests, PlacesAndLengthsAreTakenAtOnce) {
    reduce();
    showNumbers();
    setOut(1);
    EXPECT_EQ(number("place"), 100);
    EXPECT_EQ(number("length"), 100);
    EXPECT_FALSE(is("moves"));
}

TEST_F(ReducedMotionTests, WhatComesAndGoesFadesInATenthOfASecond) {
    reduce();
    showNumbers();
    for (const double end : {1.0, 0.0}) {
        const double begin = 1 - end;
        setOut(end);
        EXPECT_TRUE(is("fades"));
        EXPECT_EQ(number("presence"), begin);
        time.advance(50);
        EXPECT_NEAR(number("presence"), 0.5, 1e-9);
        time.advance(40);
        EXPECT_NEAR(number("presence"), begin + 0.9 * (end - begin), 1e-9);
        time.advance(16);
        EXPECT_EQ(number("presence"), end);
        EXPECT_FALSE(is("fades"));
    }
}

TEST_F(ReducedMotionTests, TheDesktopMayChangeItsMind) {
    showNumbers();
    reduce();
    setOut(1);
    EXPECT_EQ(number("place"), 100);
    reduce(false);
    setOut(0);
    time.advance(50);
    EXPECT_GT(number("place"), 0);
    EXPECT_LT(number("place"), 100);
}

TEST_F(ReducedMotionTests, WhatIsOnItsWayWhenMotionIsReducedArrives) {
    showNumbers();
    setOut(1);
    time.advance(50);
    reduce();
    for (int frame = 0; frame < 100; ++frame) {
        time.advance(16);
    }
    EXPECT_EQ(number("place"), 100);
    EXPECT_EQ(number("length"), 100);
    EXPECT_EQ(number("presence"), 1);
    EXPECT_FALSE(is("moves"));
    EXPECT_FALSE(is("fades"));
}

TEST_F(ReducedMotionTests, ASpinnerStandsStill) {
    scene.claude.publish({FakeMonitor::session("s1", ClaudeStatus::Working{})}, {});
    reduce();
    scene.show("Claude/Views/ClaudeWorkingActivityView.qml", {{"agents", QVariant::fromValue(&scene.agents)},
                                                              {"notchWidth", 180},
                                                              {"notchHeight", 32},
                                                              {"wingWidth", 60}});
    for (int i = 0; i < 12; ++i) {
        EXPECT_TRUE(scene.texts().contains("✻")) << i;
        scene.advance(0.12);
    }
    reduce(false);
    int marks = 0;
    for (int i = 0; i < 12; ++i) {
        scene.advance(0.12);
        marks += scene.texts().contains("✻") ? 1 : 0;
    }
    EXPECT_EQ(marks, 2) << "it turns again";
}

} // namespace
} // namespace veslora
