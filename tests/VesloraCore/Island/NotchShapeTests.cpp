// SPDX-License-Identifier: MIT
#include "VesloraCore/Island/NotchShape.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

using namespace veslora;
using testing::ElementsAre;

namespace {

/// Where the flare meets the side, and where the side meets the rounded corner.
struct Radii {
    double flare = 0;
    double corner = 0;
};

Radii radiiOf(const NotchShape& shape, const Rect& rect) {
    const auto path = shape.pathIn(rect);
    const Point flareEnd = std::get<CurveTo>(path.at(1)).to;
    const Point sideEnd = std::get<LineTo>(path.at(2)).to;
    return {flareEnd.y - rect.minY(), rect.maxY() - sideEnd.y};
}

} // namespace

TEST(NotchShape, GoesRoundTheIslandFromItsTopLeftCorner) {
    const NotchShape shape{6, 8};
    EXPECT_THAT(
        shape.pathIn({10, 5, 212, 30}),
        ElementsAre(PathCommand(MoveTo{{10, 5}}), PathCommand(CurveTo{.to = {16, 11}, .control = {16, 5}}),
                    PathCommand(LineTo{{16, 27}}), PathCommand(CurveTo{.to = {24, 35}, .control = {16, 35}}),
                    PathCommand(LineTo{{208, 35}}),
                    PathCommand(CurveTo{.to = {216, 27}, .control = {216, 35}}),
                    PathCommand(LineTo{{216, 11}}), PathCommand(CurveTo{.to = {222, 5}, .control = {216, 5}}),
                    PathCommand(ClosePath{})));
}

TEST(NotchShape, BodyLiesRightUnderTheNotchWhenClosed) {
    const auto path = NotchShape{6, 8}.pathIn({0, 0, 212, 30});
    EXPECT_EQ(std::get<LineTo>(path[6]).to.x - std::get<LineTo>(path[2]).to.x, 200);
}

TEST(NotchShape, NarrowFrameLimitsTheFlareToAQuarterAndTheCornersToTheRest) {
    const Radii radii = radiiOf({12, 16}, {0, 0, 40, 100});
    EXPECT_EQ(radii.flare, 10);
    EXPECT_EQ(radii.corner, 10);
}

TEST(NotchShape, LowFrameTakesFromTheCornersAndNeverFromTheFlare) {
    const Radii radii = radiiOf({12, 16}, {0, 0, 520, 20});
    EXPECT_EQ(radii.flare, 12);
    EXPECT_EQ(radii.corner, 8);
}

TEST(NotchShape, ContentStaysInsideTheFlareAndTheCorners) {
    EXPECT_EQ((NotchShape{10, 18}.contentRectIn({5, 7, 520, 132})), (Rect{17, 7, 496, 123}));
    EXPECT_EQ((NotchShape{10, 18}.contentRectIn({0, 0, 0, 0})), (Rect{0, 0, 0, 0}));
}

TEST(NotchShape, TheCornersOfTheContentLieInsideTheOutlinesCurve) {
    const NotchShape shape{6, 8};
    const Rect frame{0, 0, 212, 28};
    const Rect content = shape.contentRectIn(frame);
    // From the tip of the corner, in radii.
    const double across = (content.x - 6) / 8;
    const double up = (frame.maxY() - content.maxY()) / 8;
    EXPECT_GT(std::sqrt(across) + std::sqrt(up), 1);
}
