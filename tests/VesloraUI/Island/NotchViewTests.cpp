// SPDX-License-Identifier: MIT
// The whole island, drawn and pressed: what shows in which state, and what happens between two.
#include "VesloraUI/Style/VesloraStyle.h"
#include "tests/VesloraUI/Fixtures/AnimationTime.h"
#include "tests/VesloraUI/Fixtures/SceneIsland.h"

#include <QPainter>
#include <QRawFont>
#include <QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::Pair;

class NotchViewTest : public ::testing::Test {
  protected:
    void SetUp() override {
        island.show();
        shape = &island.outline();
    }

    void ask(const std::string& id) {
        scene.claude.publish({}, {FakeMonitor::request(id, scene.platform.time.now(), "text of " + id)});
    }
    [[nodiscard]] bool settles() const { return island.settles(); }
    [[nodiscard]] bool hasLeaving() const { return island.hasLeaving(); }

    Scene scene;
    SceneIsland island{scene};
    NotchViewModel& model{island.model};
    NotchOutline* shape = nullptr;
};

TEST_F(NotchViewTest, ClosedItIsTheNotchAndNothingElse) {
    ASSERT_TRUE(settles());
    EXPECT_THAT(scene.texts(), IsEmpty());
    EXPECT_EQ(shape->width(), 212);
    EXPECT_EQ(shape->height(), 28);
    EXPECT_EQ(shape->property("strokeOpacity").toDouble(), 0);
}

TEST_F(NotchViewTest, ARequestDropsDownAndGoesAgain) {
    ask("r1");
    ASSERT_TRUE(settles());
    EXPECT_EQ(shape->width(), 520);
    EXPECT_EQ(shape->height(), 132);
    EXPECT_THAT(scene.texts(), Contains("text of r1"));
    scene.advance(1);
    scene.press("Allow");
    EXPECT_THAT(scene.claude.answered, ElementsAre(Pair("r1", ClaudeDecision::allow)));
    ASSERT_TRUE(settles());
    EXPECT_THAT(scene.texts(), IsEmpty());
}

TEST_F(NotchViewTest, APressBegunOnOneRequestNeverEndsOnAnother) {
    ask("r1");
    ASSERT_TRUE(settles());
    scene.advance(1);
    const QPointF allow = scene.centerOf("Allow");
    scene.pressDown("Allow");
    ask("r2");
    ASSERT_TRUE(settles());
    scene.advance(1);
    ASSERT_TRUE(scene.isEnabled("Allow"));
    scene.release(allow);
    EXPECT_THAT(scene.claude.answered, IsEmpty());
}

TEST_F(NotchViewTest, TheNextRequestIsUnarmedAgain) {
    ask("r1");
    ASSERT_TRUE(settles());
    scene.advance(1);
    ask("r2");
    QCoreApplication::processEvents();
    ASSERT_TRUE(settles());
    EXPECT_THAT(scene.texts(), Contains("text of r2"));
    EXPECT_FALSE(scene.isEnabled("Allow"));
    scene.advance(0.7);
    EXPECT_TRUE(scene.isEnabled("Allow"));
}

TEST_F(NotchViewTest, ARequestGoesBeforeAWaitingSession) {
    scene.claude.publish({FakeMonitor::session("s9", ClaudeStatus::NeedsApproval{"m", 1})},
                         {FakeMonitor::request("r1", scene.platform.time.now()),
                          FakeMonitor::request("r2", scene.platform.time.now())});
    ASSERT_TRUE(settles());
    EXPECT_THAT(scene.texts(), Contains("+1 waiting"));
    EXPECT_THAT(scene.texts(), Not(Contains("Dismiss")));
    scene.claude.publish(scene.claude.summaries(), {});
    ASSERT_TRUE(settles());
    EXPECT_THAT(scene.texts(), Contains("Dismiss"));
    EXPECT_EQ(shape->width(), 360);
}

TEST_F(NotchViewTest, TheNoticeSaysWhatTheSessionWants) {
    scene.claude.publish(
        {FakeMonitor::session("a",
                              ClaudeStatus::NeedsApproval{"Claude needs your permission to use Bash", 1}),
         FakeMonitor::session("b", ClaudeStatus::NeedsApproval{"", 2})},
        {});
    ASSERT_TRUE(settles());
    EXPECT_THAT(scene.texts(),
                ElementsAre("name of a", "Wants to use Bash", "Approve", "+1", "Jump", "Dismiss"));
    scene.press("Jump");
    scene.press("Dismiss");
    EXPECT_THAT(scene.claude.log, ElementsAre("jump a", "dismiss a"));
}

TEST_F(NotchViewTest, ANoticeThatLeavesKeepsItsSession) {
    const auto wait = [this](const std::string& id) {
        scene.claude.publish({FakeMonitor::session(id, ClaudeStatus::NeedsApproval{"m", 1})}, {});
    };
    wait("a");
    ASSERT_TRUE(settles());
    const QPointF dismiss = scene.centerOf("Dismiss");
    scene.pressDown("Dismiss");
    wait("b");
    EXPECT_TRUE(hasLeaving());
    EXPECT_THAT(scene.texts(), Contains("name of a")) << "on its way out";
    ASSERT_TRUE(settles());
    EXPECT_THAT(scene.texts(), Contains("name of b"));
    EXPECT_THAT(scene.texts(), Not(Contains("name of a")));
    scene.release(dismiss);
    EXPECT_THAT(scene.claude.log, IsEmpty()) << "the press began on the other session";
}

TEST_F(NotchViewTest, WorkingShowsASpinnerAndFinishedSaysDone) {
    scene.claude.publish({FakeMonitor::session("a", ClaudeStatus::Working{1})}, {});
    ASSERT_TRUE(settles());
    ASSERT_EQ(scene.texts().size(), 1);
    const QString first = scene.texts()[0];
    scene.advance(0.12);
    EXPECT_NE(scene.texts()[0], first);
    EXPECT_TRUE(scene.shows("Claude Code"));
    scene.claude.publish({FakeMonitor::session("a", ClaudeStatus::Finished{1})}, {});
    ASSERT_TRUE(settles());
    EXPECT_THAT(scene.texts(), ElementsAre("DONE"));
}

TEST_F(NotchViewTest, ATimelineRestsWhileNothingShowsIt) {
    scene.claude.publish({FakeMonitor::session("a", ClaudeStatus::Working{1})}, {});
    ASSERT_TRUE(settles());
    EXPECT_EQ(scene.platform.time.pending(), 1u);
    scene.claude.publish({}, {});
    ASSERT_TRUE(settles());
    EXPECT_EQ(scene.platform.time.pending(), 0u);
}

TEST_F(NotchViewTest, OpenItShowsTheRack) {
    model.setExpanded(true);
    ASSERT_TRUE(settles());
    EXPECT_EQ(shape->width(), 794);
    EXPECT_EQ(shape->height(), 28 + 18 + 112 + 26);
    EXPECT_THAT(scene.texts(), ::testing::IsSupersetOf({"Timer", "Start", "Nothing playing", "BPM"}));
}

TEST_F(NotchViewTest, AnEmptyRackSaysHowToFillIt) {
    scene.settings.set("widgetLayout", std::string());
    scene.close();
    RackModel empty(scene.settings, scene.platform.taps);
    scene.showRack(empty, {296, 112});
    EXPECT_THAT(scene.texts(), ElementsAre("No widgets · hold or right-click to edit"));
    scene.close();
}

/// The island on a screen of some scale, with the time of its springs moved by hand.
class NotchMotionTest : public NotchViewTest, public ::testing::WithParamInterface<double> {
  protected:
    NotchMotionTest() {
        time.install();
        scene.close();
        scene.scale = GetParam();
        // Whole pixels at each scale: Qt draws no part of one at a window's edge.
        island.show({1136, 252});
        // Nothing that the island shows is blue alone, and its shadow only darkens it.
        scene.window().setColor(Qt::blue);
        shape = &island.outline();
    }

    /// Pixels of what the island shows that lie more than half a pixel outside its outline. The hairline
    /// along the outline is too dark to count.
    [[nodiscard]] int spilledPixels() const {
        const QImage picture = scene.picture().convertToFormat(QImage::Format_RGB32);
        QImage inside(picture.size(), QImage::Format_Grayscale8);
        inside.fill(0);
        QPainter painter(&inside);
        painter.scale(GetParam(), GetParam());
        const QPainterPath path = shape->path().translated(shape->mapToScene({}));
        painter.fillPath(path, Qt::white);
        painter.strokePath(path, QPen(Qt::white, 1 / GetParam()));
        painter.end();
        int spilled = 0;
        for (int y = 0; y < picture.height(); ++y) {
            const auto* pixels = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
            const uchar* within = inside.constScanLine(y);
            for (int x = 0; x < picture.width(); ++x) {
                spilled += within[x] == 0 && std::max(qRed(pixels[x]), qGreen(pixels[x])) > 40 ? 1 : 0;
            }
        }
        return spilled;
    }
    /// Every frame until the island has its size. The most that one of them spills.
    [[nodiscard]] int mostSpilled() {
        int most = 0;
        for (int frame = 0;
             frame < 60 && (frame < 2 || shape->height() != model.islandHeight() || hasLeaving()); ++frame) {
            time.advance(16);
            most = std::max(most, spilledPixels());
        }
        EXPECT_EQ(shape->height(), model.islandHeight()) << "it did not come to rest";
        return most;
    }

    testing::AnimationTime time;
};

TEST_P(NotchMotionTest, NothingSpillsOverTheOutlineWhileTheRackOpensAndCloses) {
    model.setExpanded(true);
    EXPECT_EQ(mostSpilled(), 0);
    EXPECT_FALSE(scene.texts().isEmpty());
    model.setExpanded(false);
    EXPECT_EQ(mostSpilled(), 0);
}

TEST_P(NotchMotionTest, NothingSpillsOverTheOutlineWhileARequestComesAndGoes) {
    ask("a text that is long enough to reach from the one side of the request to its other side and wraps "
        "there");
    EXPECT_EQ(mostSpilled(), 0);
    EXPECT_FALSE(scene.texts().isEmpty());
    scene.claude.publish({}, {});
    EXPECT_EQ(mostSpilled(), 0);
}

INSTANTIATE_TEST_SUITE_P(AtEveryScale, NotchMotionTest, ::testing::ValuesIn(Scene::screenScales));

TEST_F(NotchViewTest, TheAccentFollowsTheSetting) {
    scene.claude.publish({FakeMonitor::session("a", ClaudeStatus::Finished{1})}, {});
    ASSERT_TRUE(settles());
    const auto* done = scene.itemWith("text", "DONE");
    ASSERT_TRUE(done);
    EXPECT_EQ(done->property("color").value<QColor>(), QColor(200, 255, 61));
    scene.settings.set("accent", std::string("amber"));
    EXPECT_EQ(done->property("color").value<QColor>(), QColor(255, 176, 32));
}

TEST(Fonts, EverySpinnerGlyphHasAPicture) {
    const QRawFont font = QRawFont::fromFont(QFont(VesloraStyle::symbolFont()));
    for (const char* glyph :
         {"·", "✢", "✳", "✶", "✻", "✽", "⠋", "⠙", "⠹", "⠸", "⠼", "⠴", "⠦", "⠧", "⠇", "⠏"}) {
        EXPECT_TRUE(font.supportsCharacter(QString::fromUtf8(glyph).at(0))) << glyph;
    }
}

} // namespace
} // namespace veslora
