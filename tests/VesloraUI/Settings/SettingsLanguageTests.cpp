// SPDX-License-Identifier: MIT
// The settings window in other languages: that every text of it is translated and has room, and that it is
// laid out from the right where the language is written from there.
#include "VesloraUI/Store/SettingsKeys.h"
#include "VesloraUI/Support/Translations.h"
#include "tests/VesloraUI/Fixtures/SpokenTexts.h"
#include "tests/VesloraUI/Settings/SettingsRoom.h"
#include "tests/VesloraUI/Settings/SettingsScene.h"

#include <QTest>

#include <gtest/gtest.h>

#include <string>

namespace veslora {
namespace {

constexpr auto pages = {"general", "island", "timer", "music", "metronome", "agents", "keepAwake"};

void select(SettingsScene& scene, const char* page) {
    QMetaObject::invokeMethod(&scene.window(), "select", Q_ARG(QString, page));
    scene.advance(0);
}

/// For people to look at: keeps what the window shows in the folder that VESLORA_PICTURES names, if it names
/// one.
void keepPicture(SettingsScene& scene, const QString& language, int place) {
    if (const QString folder = qEnvironmentVariable("VESLORA_PICTURES"); !folder.isEmpty()) {
        const QString path = QStringLiteral("%1/%2-%3.png").arg(folder, language).arg(place);
        EXPECT_TRUE(scene.window().grabWindow().save(path)) << path.toStdString();
    }
}

/// In either direction of writing.
class SettingsInPseudoLayout : public testing::TestWithParam<Qt::LayoutDirection> {};

INSTANTIATE_TEST_SUITE_P(Either, SettingsInPseudoLayout, testing::Values(Qt::LeftToRight, Qt::RightToLeft),
                         [](const auto& setting) {
                             return setting.param == Qt::LeftToRight ? "FromTheLeft" : "FromTheRight";
                         });

TEST_P(SettingsInPseudoLayout, EveryTextIsTranslatedAndHasRoom) {
    const PseudoTexts pseudo(GetParam());
    SettingsScene scene;
    int place = 0;
    for (const char* page : pages) {
        select(scene, page);
        SpokenTexts(scene).expectTranslated(page);
        expectRoomInWindow(scene, page);
        keepPicture(scene, GetParam() == Qt::LeftToRight ? "pseudo" : "pseudo-right", place++);
    }
    const CatalogFile catalog("de");
    for (const auto& [context, source] : pseudo.asked()) {
        EXPECT_TRUE(catalog.has(context, source)) << context.toStdString() << ": " << source.toStdString();
    }
}

TEST(SettingsInPseudo, EveryStateOfTheHooksIsTranslated) {
    const PseudoTexts pseudo;
    SettingsScene scene;
    select(scene, "agents");
    for (const auto& [areInstalled, areOutdated] : {std::pair(true, false), std::pair(false, true)}) {
        scene.claude.setHooks(areInstalled, areOutdated);
        scene.advance(0);
        SpokenTexts(scene).expectTranslated("hooks");
    }
}

TEST(SettingsInPseudo, EveryChoiceIsTranslated) {
    const PseudoTexts pseudo;
    for (const char* page : {"island", "timer", "metronome"}) {
        SettingsScene scene;
        select(scene, page);
        for (auto* control : scene.controls()) {
            if (control->role() == QAccessible::ComboBox) {
                ASSERT_TRUE(SettingsScene::act(*control, QAccessibleActionInterface::pressAction()));
                scene.advance(0);
                SpokenTexts(scene).expectTranslated(page);
                scene.key(Qt::Key_Escape);
                break;
            }
        }
    }
}

TEST(SettingsInGerman, EveryTextHasRoom) {
    Translations german({"de"});
    german.install();
    for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0}) {
        SettingsScene scene("Allgemein");
        scene.platform.look.change({.isTold = true, .textScale = scale});
        for (const char* page : pages) {
            select(scene, page);
            expectRoomInWindow(scene, std::string(page) + " at " + std::to_string(scale));
        }
    }
}

/// The same window in the same words, laid out from either side.
class SettingsFromTheRight : public testing::Test {
  protected:
    static void mirror(bool isMirrored) {
        QGuiApplication::setLayoutDirection(isMirrored ? Qt::RightToLeft : Qt::LeftToRight);
    }
    void TearDown() override { mirror(false); }
};

TEST_F(SettingsFromTheRight, EveryPartIsMirrored) {
    for (const char* page : pages) {
        std::vector<RoomPart> before;
        std::vector<RoomPart> after;
        double width = 0;
        for (const bool isMirrored : {false, true}) {
            mirror(isMirrored);
            SettingsScene scene;
            select(scene, page);
            (isMirrored ? after : before) = partsOfWindow(scene, page);
            width = scene.window().width();
        }
        ASSERT_EQ(before.size(), after.size()) << page;
        for (std::size_t i = 0; i < before.size(); ++i) {
            EXPECT_EQ(before[i].name, after[i].name);
            EXPECT_NEAR(before[i].place.left(), width - after[i].place.right(), 0.5)
                << page << ": " << before[i].name.toStdString();
            EXPECT_EQ(before[i].place.y(), after[i].place.y())
                << page << ": " << before[i].name.toStdString();
        }
    }
}

TEST_F(SettingsFromTheRight, TextsBeginAtTheRightEdgeOfTheirPlace) {
    mirror(true);
    SettingsScene scene;
    const auto* label = scene.itemWith("text", "Hide when an app is fullscreen");
    ASSERT_TRUE(label);
    EXPECT_EQ(label->property("effectiveHorizontalAlignment").toInt(), Qt::AlignRight);
}

TEST_F(SettingsFromTheRight, ArrowsGoWhereTheyPoint) {
    mirror(true);
    SettingsScene scene;
    scene.focus("General");
    scene.key(Qt::Key_Left);
    EXPECT_EQ(scene.selectedTab(), "Island") << "which is at the left of it";
    scene.key(Qt::Key_Right);
    EXPECT_EQ(scene.selectedTab(), "General");
    select(scene, "island");
    scene.focus("Lime accent");
    scene.key(Qt::Key_Left);
    EXPECT_EQ(scene.focused(), "Cyan accent");
    scene.key(Qt::Key_Right);
    EXPECT_EQ(scene.focused(), "Lime accent");
}

TEST_F(SettingsFromTheRight, ASliderGrowsToTheLeft) {
    mirror(true);
    SettingsScene scene;
    select(scene, "metronome");
    const double before = scene.settings.doubleValue(SettingsKeys::metronomeVolume);
    scene.focus("Volume");
    scene.key(Qt::Key_Right);
    EXPECT_LT(scene.settings.doubleValue(SettingsKeys::metronomeVolume), before);
    scene.key(Qt::Key_Left);
    EXPECT_NEAR(scene.settings.doubleValue(SettingsKeys::metronomeVolume), before, 1e-9);
}

TEST_F(SettingsFromTheRight, TheKnobOfASwitchThatIsOnIsAtItsLeft) {
    for (const bool isMirrored : {false, true}) {
        mirror(isMirrored);
        SettingsScene scene;
        const auto* toggle = scene.itemNamed("Hide when an app is fullscreen");
        ASSERT_TRUE(toggle && toggle->property("checked").toBool());
        const auto* track = toggle->property("indicator").value<QQuickItem*>();
        const auto* knob = track->childItems().last();
        const auto isThere = [&] { return (knob->x() < track->width() / 4) == isMirrored; };
        EXPECT_TRUE(QTest::qWaitFor(isThere)) << (isMirrored ? "mirrored" : "usual");
    }
}

/// Where everything below an item lies, seen from there.
void addPlaces(const QQuickItem& root, const QQuickItem& item, std::vector<QRectF>& places) {
    for (const QQuickItem* child : item.childItems()) {
        places.push_back(child->mapRectToItem(&root, QRectF(0, 0, child->width(), child->height())));
        addPlaces(root, *child, places);
    }
}

TEST_F(SettingsFromTheRight, ThePreviewOfTheIslandStaysAsTheIslandIs) {
    std::vector<QRectF> before;
    std::vector<QRectF> after;
    for (const bool isMirrored : {false, true}) {
        mirror(isMirrored);
        SettingsScene scene;
        select(scene, "island");
        const auto* preview = scene.itemNamed("Preview of the island in this accent");
        ASSERT_TRUE(preview);
        addPlaces(*preview, *preview, isMirrored ? after : before);
    }
    EXPECT_GT(before.size(), 5U);
    EXPECT_EQ(before, after);
}

} // namespace
} // namespace veslora
