// SPDX-License-Identifier: MIT
// The strip beside the notch while the rack is edited, and the dots of its pages, drawn and pressed.
#include "VesloraUI/Style/VesloraStyle.h"
#include "tests/VesloraUI/Fixtures/LongTexts.h"
#include "tests/VesloraUI/Fixtures/Pixels.h"
#include "tests/VesloraUI/Fixtures/Scene.h"

#include <QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>

namespace veslora {
namespace {

using testing::ElementsAre;

class EditHeaderTest : public testing::Test {
  protected:
    void SetUp() override { scene.rack.enterEditing(); }
    void TearDown() override { scene.close(); }

    void showHeader(double height = 32, double width = 730, QPoint origin = {}) {
        scene.close();
        scene.show("Widgets/EditHeader.qml",
                   {{"rack", QVariant::fromValue(&scene.rack)},
                    {"notchWidth", notchWidth},
                    {"x", origin.x()},
                    {"y", origin.y()},
                    {"width", width},
                    {"height", height}},
                   {static_cast<int>(width) + 2 * origin.x(), 60 + 2 * origin.y()});
    }
    [[nodiscard]] QRectF placeOf(const QString& name) const {
        const auto* item = scene.itemNamed(name);
        return item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
    }
    void clickAt(QPointF point) {
        QTest::mouseClick(&scene.window(), Qt::LeftButton, {}, point.toPoint());
        scene.advance(0);
    }
    void leaveOnePage() {
        for (const WidgetID id :
             {WidgetID::claude, WidgetID::claudeUsage, WidgetID::meters, WidgetID::keepAwake}) {
            scene.rack.remove(id);
        }
        ASSERT_EQ(scene.rack.pageCount(), 1);
        scene.advance(0);
    }

    Scene scene;
    static constexpr double notchWidth = 200;
};

TEST_F(EditHeaderTest, SaysWhatGoesOnAndWhatCanBeDone) {
    showHeader();
    EXPECT_THAT(scene.texts(), ElementsAre("Edit widgets", "+ Add", "Done"));
    EXPECT_THAT(scene.names(), ElementsAre("Edit widgets", "Page 1 of 2", "Page 2 of 2", "+ Add", "Done"));
    EXPECT_EQ(scene.itemNamed("Edit widgets")->property("color").value<QColor>().rgb(),
              VesloraStyle::textSecondary().rgb());
    EXPECT_FALSE(scene.itemNamed("+ Add")->property("isPrimary").toBool());
    EXPECT_TRUE(scene.itemNamed("Done")->property("isPrimary").toBool());
}

TEST_F(EditHeaderTest, DoneEndsEditing) {
    showHeader();
    scene.press("Done");
    EXPECT_FALSE(scene.rack.isEditing());
}

TEST_F(EditHeaderTest, AddOpensTheLibraryAndGoesUntilThatIsClosed) {
    showHeader();
    scene.press("+ Add");
    scene.advance(0);
    EXPECT_TRUE(scene.rack.isShowingLibrary());
    EXPECT_TRUE(scene.rack.isEditing());
    EXPECT_FALSE(scene.shows("+ Add"));
    EXPECT_TRUE(scene.shows("Done"));
    scene.rack.setShowingLibrary(false);
    EXPECT_TRUE(scene.shows("+ Add"));
}

TEST_F(EditHeaderTest, AddGoesOnceEveryWidgetIsInTheRack) {
    showHeader();
    scene.rack.add(WidgetID::clock);
    scene.advance(0);
    EXPECT_FALSE(scene.shows("+ Add"));
    scene.rack.remove(WidgetID::music);
    scene.advance(0);
    EXPECT_TRUE(scene.shows("+ Add"));
}

TEST_F(EditHeaderTest, DotsShowOnlyWhereThereIsAPageToTurnTo) {
    showHeader();
    EXPECT_TRUE(scene.shows("Page 2 of 2"));
    leaveOnePage();
    EXPECT_FALSE(scene.shows("Page 1 of 1"));
    EXPECT_THAT(scene.names(), ElementsAre("Edit widgets", "+ Add", "Done"));
    scene.rack.add(WidgetID::claude, WidgetSize::wide);
    scene.advance(0);
    EXPECT_TRUE(scene.shows("Page 1 of 2"));
}

TEST_F(EditHeaderTest, AnEmptyRackHasNoDots) {
    for (const WidgetID id : allWidgetIDs) {
        scene.rack.remove(id);
    }
    showHeader();
    EXPECT_THAT(scene.names(), ElementsAre("Edit widgets", "+ Add", "Done"));
}

TEST_F(EditHeaderTest, ADotLeadsToItsPage) {
    showHeader();
    const auto colorOf = [&](const QString& name) {
        return scene.itemNamed(name)->parentItem()->property("color").value<QColor>().rgba();
    };
    EXPECT_EQ(colorOf("Page 1 of 2"), AccentColors::color(Accent::lime).rgba());
    EXPECT_EQ(colorOf("Page 2 of 2"), VesloraStyle::unlitTick().rgba());
    scene.press("Page 2 of 2");
    EXPECT_EQ(scene.rack.page(), 1);
    EXPECT_EQ(colorOf("Page 1 of 2"), VesloraStyle::unlitTick().rgba());
    EXPECT_EQ(colorOf("Page 2 of 2"), AccentColors::color(Accent::lime).rgba());
    scene.press("Page 1 of 2");
    EXPECT_EQ(scene.rack.page(), 0);
}

TEST_F(EditHeaderTest, ADotIsPressedThreePointsBesideItToo) {
    scene.showText("Item { property var asked: []; PageDots { x: 20; y: 20; count: 3; current: 0;"
                   " onSelect: index => parent.asked = parent.asked.concat(index) } }",
                   {100, 60});
    EXPECT_EQ(placeOf("Page 1 of 3"), QRectF(17, 17, 11, 11));
    EXPECT_EQ(placeOf("Page 2 of 3"), QRectF(27, 17, 11, 11));
    EXPECT_EQ(placeOf("Page 3 of 3"), QRectF(37, 17, 11, 11));
    for (const QPoint point :
         {QPoint(17, 17), QPoint(30, 27), QPoint(47, 20), QPoint(15, 22), QPoint(50, 22)}) {
        clickAt(point);
    }
    EXPECT_EQ(scene.view().property("asked").value<QVariantList>(), QVariantList({0, 1, 2}));
}

TEST_F(EditHeaderTest, ItemsStandEightPointsApartFromTheRightEdge) {
    showHeader();
    EXPECT_EQ(placeOf("Edit widgets").left(), 0);
    EXPECT_NEAR(placeOf("Done").right(), 730, 1e-6);
    EXPECT_NEAR(placeOf("Done").left() - placeOf("+ Add").right(), 8, 1e-6);
    // The keys of the dots reach 3 points beyond them.
    EXPECT_NEAR(placeOf("+ Add").left() - placeOf("Page 2 of 2").right(), 8 - 3, 1e-6);
}

TEST_F(EditHeaderTest, StandsInTheMiddleOfTheNotchButNeverAboveTheScreen) {
    for (const auto& [height, top] :
         {std::pair(24.0, 0.0), std::pair(26.0, 0.0), std::pair(32.0, 3.0), std::pair(37.0, 6.0)}) {
        showHeader(height);
        EXPECT_EQ(placeOf("Done"), QRectF(placeOf("Done").left(), top, placeOf("Done").width(), 26));
        EXPECT_EQ(placeOf("+ Add").top(), top);
        EXPECT_EQ(placeOf("Edit widgets").center().y(), top + 13);
        EXPECT_EQ(placeOf("Page 1 of 2").center().y(), top + 13);
    }
}

TEST_F(EditHeaderTest, KeepsTheNotchsRoomFreeAtEveryWidthAndInEveryLanguage) {
    for (const bool isLong : {false, true}) {
        const std::optional<LongTexts> texts =
            isLong ? std::optional<LongTexts>(std::in_place) : std::nullopt;
        for (const double scale : {1.0, 1.5, 2.0}) {
            scene.scale = scale;
            for (const int width : {456, 520, 730, 1070}) {
                showHeader(32, width, {30, 20});
                const QRect ink = Pixels(scene.picture()).box();
                EXPECT_GE(ink.left(), 30 * scale) << width;
                EXPECT_LE(ink.right() + 1, (30 + width) * scale + 0.5) << width;
                EXPECT_GE(ink.top(), 20 * scale);
                EXPECT_LE(ink.bottom() + 1, 52 * scale);
                const QString first = isLong ? "Page 1 of 2 Page 1 of 2" : "Page 1 of 2";
                const QString label = isLong ? "Edit widgets Edit widgets" : "Edit widgets";
                EXPECT_GE(placeOf(first).left() + 3 - placeOf(label).right(), notchWidth + 2 * 8 - 1e-6);
                EXPECT_EQ(scene.itemNamed(label)->property("truncated").toBool(), isLong && width < 600)
                    << width;
            }
        }
    }
}

} // namespace
} // namespace veslora
