// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/AnswerGate.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

namespace veslora {
namespace {

/// A gate with two clocks that run together until a test moves one of them alone.
class AnswerGateTest : public testing::Test {
  protected:
    static constexpr std::uint32_t start = 1000;

    void pass(double seconds) {
        steady += seconds;
        event += static_cast<std::uint32_t>(seconds * 1000);
    }
    /// Lets time pass in a program that is not held up.
    void live(double seconds) {
        for (int tick = 0; tick < std::lround(seconds * 10); ++tick) {
            pass(0.1);
            gate.tick(steady);
        }
    }
    bool click() { return gate.press(event, steady) && gate.release(event, steady); }

    double steady = 50;
    std::uint32_t event = start;
    AnswerGate gate{steady};
};

TEST_F(AnswerGateTest, NothingAnswersBeforeTheFrame) {
    live(5);
    EXPECT_FALSE(gate.isShown());
    EXPECT_FALSE(gate.isArmed(steady));
    EXPECT_FALSE(click());
    EXPECT_FALSE(gate.act(steady));
}

TEST_F(AnswerGateTest, AnswersFromSixTenthsOfASecondAfterTheFrame) {
    gate.frameShown(event, steady);
    EXPECT_FALSE(gate.press(start + 599, steady));
    EXPECT_TRUE(gate.press(start + 600, steady));
    EXPECT_TRUE(gate.release(start + 600, steady));
    EXPECT_FALSE(gate.isArmed(steady + 0.599));
    EXPECT_TRUE(gate.isArmed(steady + 0.6));
}

TEST_F(AnswerGateTest, AClickOfBeforeTheFrameThatIsHandledLateDoesNotAnswer) {
    gate.frameShown(event, steady);
    live(2);
    EXPECT_FALSE(gate.press(start - 200, steady));
    EXPECT_FALSE(gate.press(start + 250, steady));
    EXPECT_FALSE(gate.release(event, steady)) << "its press was not accepted";
}

TEST_F(AnswerGateTest, AStallArmsAgainFromZero) {
    gate.frameShown(event, steady);
    live(1);
    pass(0.31);
    EXPECT_FALSE(gate.tick(steady));
    EXPECT_FALSE(gate.isShown());
    EXPECT_FALSE(click());
    gate.frameShown(event, steady);
    live(0.5);
    EXPECT_FALSE(click());
    live(0.1);
    EXPECT_TRUE(click());
}

TEST_F(AnswerGateTest, APressThatIsHandledBeforeTheTickSeesTheStallItself) {
    gate.frameShown(event, steady);
    live(1);
    pass(0.5);
    EXPECT_FALSE(gate.press(event, steady));
    EXPECT_FALSE(gate.isShown());
}

TEST_F(AnswerGateTest, AFrameWhoseTimeWaitedThroughAStallDoesNotArm) {
    const std::uint32_t shown = event;
    pass(2);
    gate.frameShown(shown, steady);
    EXPECT_FALSE(gate.press(event, steady)) << "it was old enough, but nothing was drawn meanwhile";
}

TEST_F(AnswerGateTest, AStallBetweenPressAndReleaseUndoesBoth) {
    gate.frameShown(event, steady);
    live(1);
    EXPECT_TRUE(gate.press(event, steady));
    pass(0.5);
    EXPECT_FALSE(gate.release(event, steady));
}

TEST_F(AnswerGateTest, AReleaseNeedsItsPressOnTheSameFrame) {
    gate.frameShown(event, steady);
    live(1);
    EXPECT_FALSE(gate.release(event, steady));
    EXPECT_TRUE(gate.press(event, steady));
    gate.frameShown(start, steady);
    EXPECT_FALSE(gate.release(event, steady));
    EXPECT_TRUE(gate.press(event, steady));
    EXPECT_FALSE(gate.release(event - 1, steady)) << "a release from before its press";
    EXPECT_TRUE(gate.press(event, steady));
    EXPECT_TRUE(gate.release(event, steady));
    EXPECT_FALSE(gate.release(event, steady)) << "one press answers once";
}

TEST_F(AnswerGateTest, StopsShorterThanAStallDoNoHarm) {
    gate.frameShown(event, steady);
    pass(0.3);
    EXPECT_TRUE(gate.tick(steady));
    pass(0.3);
    EXPECT_TRUE(click());
}

TEST_F(AnswerGateTest, TheEventsClockMayWrap) {
    constexpr auto last = std::numeric_limits<std::uint32_t>::max();
    gate.frameShown(last - 99, steady);
    EXPECT_FALSE(gate.press(499, steady));
    EXPECT_TRUE(gate.press(500, steady));
    EXPECT_TRUE(gate.release(501, steady));
    gate.frameShown(100, steady);
    EXPECT_FALSE(gate.press(last - 1000, steady)) << "before the frame, not 49 days after it";
}

TEST_F(AnswerGateTest, TheEventsClockHasNoRelationToOurs) {
    event = 4'000'000'000U;
    gate.frameShown(event, steady);
    live(0.6);
    EXPECT_TRUE(click());
}

TEST_F(AnswerGateTest, AnActionWithoutATimeWaitsForAStallLonger) {
    gate.frameShown(event, steady);
    live(0.8);
    EXPECT_FALSE(gate.act(steady));
    live(0.2);
    EXPECT_TRUE(gate.act(steady));
    pass(0.4);
    EXPECT_FALSE(gate.act(steady)) << "it came in a stall";
}

TEST_F(AnswerGateTest, ASteadyClockThatGoesBackCountsAsAStall) {
    gate.frameShown(event, steady);
    live(1);
    EXPECT_FALSE(gate.tick(steady - 10));
    EXPECT_FALSE(click());
}

/// Whatever happens in whatever order: an answer needs a frame, 0.6 s of the events' clock after it, and no
/// gap of over 0.3 s since.
TEST_F(AnswerGateTest, NoHistoryAnswersUnseen) {
    std::mt19937 random(7);
    int answers = 0;
    // Milliseconds of the events' clock; negative while there is none.
    std::int64_t frame = -1;
    bool isDown = false;
    double lastAlive = steady;
    for (int step = 0; step < 200'000; ++step) {
        const double wait = std::uniform_int_distribution(0, 9)(random) == 0 ? 0.4 : 0.05;
        pass(wait);
        const bool isStall = steady - lastAlive > AnswerGate::stall;
        const auto alive = [&] {
            lastAlive = steady;
            if (isStall) {
                frame = -1;
                isDown = false;
            }
        };
        switch (std::uniform_int_distribution(0, 5)(random)) {
        case 0:
            if (frame < 0) {
                gate.frameShown(event, steady);
                frame = event;
            }
            break;
        case 1:
            gate.press(event, steady);
            alive();
            isDown = frame >= 0 && event - frame >= 600;
            break;
        case 2: {
            const bool isAnswer = gate.release(event, steady);
            alive();
            const bool isRight = frame >= 0 && isDown && event - frame >= 600;
            ASSERT_EQ(isAnswer, isRight) << step;
            answers += isAnswer ? 1 : 0;
            isDown = false;
            break;
        }
        default:
            gate.tick(steady);
            alive();
        }
    }
    EXPECT_GT(answers, 100);
}

} // namespace
} // namespace veslora
