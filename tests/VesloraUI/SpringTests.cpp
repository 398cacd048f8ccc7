// SPDX-License-Identifier: MIT
#include "VesloraUI/Style/Spring.h"

#include <gtest/gtest.h>

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

} // namespace
} // namespace veslora
