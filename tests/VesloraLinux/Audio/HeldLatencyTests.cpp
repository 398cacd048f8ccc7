// SPDX-License-Identifier: MIT
#include "VesloraLinux/Audio/HeldLatency.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

TEST(HeldLatency, IsTheMedianOfTheFirstMeasurements) {
    HeldLatency latency;
    EXPECT_EQ(latency.value(), 0);
    for (std::size_t count = 0; count < HeldLatency::measurements; ++count) {
        latency.add(count % 5 == 0 ? 90000 : 9600);
    }
    EXPECT_EQ(latency.value(), 9600);
}

TEST(HeldLatency, IsWhatIsExpectedUntilItIsMeasured) {
    HeldLatency latency;
    latency.expect(4800);
    EXPECT_EQ(latency.value(), 4800);
    latency.add(9600);
    EXPECT_EQ(latency.value(), 9600);
}

TEST(HeldLatency, StaysWhatItWas) {
    HeldLatency latency;
    for (std::size_t count = 0; count < HeldLatency::measurements; ++count) {
        latency.add(9600);
    }
    for (int count = 0; count < 100; ++count) {
        latency.add(20000);
    }
    EXPECT_EQ(latency.value(), 9600);
}

TEST(HeldLatency, IsKnownAsSoonAsAnythingIs) {
    HeldLatency latency;
    latency.add(700);
    EXPECT_EQ(latency.value(), 700);
    latency.add(900);
    latency.add(800);
    EXPECT_EQ(latency.value(), 800);
}

TEST(HeldLatency, IsNeverNegative) {
    HeldLatency latency;
    latency.add(-700);
    EXPECT_EQ(latency.value(), 0);
}

TEST(HeldLatency, OnAnotherDeviceItIsMeasuredAgain) {
    HeldLatency latency;
    for (std::size_t count = 0; count < HeldLatency::measurements; ++count) {
        latency.add(9600);
    }
    latency.measureAgain();
    EXPECT_EQ(latency.value(), 9600);
    latency.add(12000);
    EXPECT_EQ(latency.value(), 12000);
}

} // namespace
} // namespace veslora
