// SPDX-License-Identifier: MIT
#include "VesloraCore/Widgets/ScrollStepper.h"

#include <gtest/gtest.h>

#include <limits>

using namespace veslora;

TEST(ScrollStepper, NotchesOfAWheelAreOneStepEach) {
    ScrollStepper stepper;
    EXPECT_EQ(stepper.steps(0.1, false), 1);
    EXPECT_EQ(stepper.steps(500, false), 1);
    EXPECT_EQ(stepper.steps(-3, false), -1);
    EXPECT_EQ(stepper.steps(0, false), 0);
    EXPECT_EQ(stepper.accumulated, 0);
}

TEST(ScrollStepper, PreciseMovementGathersUntilAStepIsFull) {
    ScrollStepper stepper;
    EXPECT_EQ(stepper.steps(59, true), 0);
    EXPECT_EQ(stepper.accumulated, 59);
    EXPECT_EQ(stepper.steps(2, true), 1);
    EXPECT_EQ(stepper.accumulated, 1);
    EXPECT_EQ(stepper.steps(150, true), 2);
    EXPECT_EQ(stepper.accumulated, 31);
}

TEST(ScrollStepper, NegativeMovementIsCutTowardsZero) {
    ScrollStepper stepper;
    EXPECT_EQ(stepper.steps(-59, true), 0);
    EXPECT_EQ(stepper.accumulated, -59);
    EXPECT_EQ(stepper.steps(-1, true), -1);
    EXPECT_EQ(stepper.accumulated, 0);
}

TEST(ScrollStepper, NotchLeavesWhatWasGatheredAlone) {
    ScrollStepper stepper;
    stepper.steps(30, true);
    EXPECT_EQ(stepper.steps(-1, false), -1);
    EXPECT_EQ(stepper.accumulated, 30);
}

TEST(ScrollStepper, DeltasBeyondReasonDoNoHarm) {
    ScrollStepper stepper;
    EXPECT_EQ(stepper.steps(std::numeric_limits<double>::quiet_NaN(), true), 0);
    EXPECT_EQ(stepper.steps(std::numeric_limits<double>::infinity(), false), 0);
    EXPECT_GT(stepper.steps(std::numeric_limits<double>::max(), true), 0);
    EXPECT_LT(stepper.accumulated, 60);
}
