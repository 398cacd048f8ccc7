// SPDX-License-Identifier: MIT
#include "VesloraUI/Style/Spring.h"
#include "tests/VesloraUI/Fixtures/AnimationTime.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

#include <utility>

namespace veslora {
namespace {

constexpr double response = VesloraStyle::motionResponse;
constexpr double damping = VesloraStyle::motionDamping;

TEST(SpringMotion, ArrivesWithinThreeResponses) {
    SpringMotion motion{.value = 0, .velocity = 0, .target = 500};
    motion.advance(3 * response, response, damping);
    EXPECT_NEAR(motion.value, 500, 0.5);
}

TEST(SpringMotion, DoesNotDependOnHowTimeIsCut) {
    SpringMotion whole{.value = 10, .velocity = -30, .target = 100};
    SpringMotion cut = whole;
    whole.advance(0.12, response, damping);
    for (int i = 0; i < 12; ++i) {
        cut.advance(0.01, response, damping);
    }
    EXPECT_NEAR(whole.value, cut.value, 1e-9);
    EXPECT_NEAR(whole.velocity, cut.velocity, 1e-9);
}

TEST(SpringMotion, KeepsItsVelocityWhenTheTargetMoves) {
    SpringMotion motion{.value = 0, .velocity = 0, .target = 100};
    motion.advance(0.05, response, damping);
    const double velocity = motion.velocity;
    ASSERT_GT(velocity, 0);
    motion.target = 0;
    const double before = motion.value;
    motion.advance(0.001, response, damping);
    EXPECT_GT(motion.value, before) << "it swings on before it turns";
}

TEST(SpringMotion, OvershootsByLessThanAThousandth) {
    SpringMotion motion{.value = 0, .velocity = 0, .target = 1000};
    double highest = 0;
    for (int i = 0; i < 1000; ++i) {
        motion.advance(0.002, response, damping);
        highest = std::max(highest, motion.value);
    }
    EXPECT_LT(highest, 1001);
    EXPECT_TRUE(motion.isAtRest());
}

TEST(SpringMotion, StaysWhereItWouldRest) {
    for (const auto& [itsResponse, itsDamping] : {std::pair{response, damping}, {0.5, 0.85}}) {
        SpringMotion motion{.value = 0, .velocity = 0, .target = 1};
        while (!motion.isAtRest()) {
            motion.advance(0.001, itsResponse, itsDamping);
        }
        for (int i = 0; i < 1000; ++i) {
            motion.advance(0.001, itsResponse, itsDamping);
            ASSERT_NEAR(motion.value, 1, 0.01);
        }
    }
}

/// A spring that is to go from 0 to 1.
class SpringTest : public ::testing::Test {
  protected:
    void setOut() {
        time.install();
        spring.componentComplete();
        spring.setTarget(1);
    }
    /// How many steps it makes until it rests, with 60 frames a second.
    [[nodiscard]] int steps() {
        const QSignalSpy moved(&spring, &Spring::valueChanged);
        for (int frame = 0; frame < 300 && spring.isRunning(); ++frame) {
            time.advance(frame % 3 == 0 ? 16 : 17);
        }
        return static_cast<int>(moved.count());
    }

    testing::AnimationTime time;
    Spring spring;
};

TEST_F(SpringTest, IsThereAtOnceAtFirst) {
    spring.setTarget(7);
    EXPECT_EQ(spring.value(), 7);
    EXPECT_FALSE(spring.isRunning());
}

TEST_F(SpringTest, MakesAStepWithEachFrame) {
    setOut();
    EXPECT_GT(spring.value(), 0) << "the first frame shows that it moves";
    for (int frame = 0; frame < 5; ++frame) {
        const double before = spring.value();
        time.advance(16);
        EXPECT_GT(spring.value(), before) << frame;
    }
    EXPECT_GT(steps(), 0);
    EXPECT_EQ(spring.value(), 1);
    EXPECT_FALSE(spring.isRunning());
}

TEST_F(SpringTest, AnIntervalLeavesOutFramesAndTakesNoLonger) {
    spring.setProperty("interval", 1.0 / 30);
    setOut();
    const int count = steps();
    EXPECT_EQ(spring.value(), 1);
    Spring other;
    other.componentComplete();
    other.setTarget(1);
    const QSignalSpy moved(&other, &Spring::valueChanged);
    for (int frame = 0; frame < 2 * count + 2; ++frame) {
        time.advance(frame % 3 == 0 ? 16 : 17);
    }
    EXPECT_FALSE(other.isRunning());
    EXPECT_NEAR(count, static_cast<double>(moved.count()) / 2, 1);
}

} // namespace
} // namespace veslora
