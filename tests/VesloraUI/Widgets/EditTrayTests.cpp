// SPDX-License-Identifier: MIT
// The tray below the rack while it is edited, drawn, pressed and scrolled.
#include "VesloraUI/Style/AccentSwatch.h"
#include "VesloraUI/Style/VesloraStyle.h"
#include "tests/VesloraUI/Fixtures/LongTexts.h"
#include "tests/VesloraUI/Fixtures/Pixels.h"
#include "tests/VesloraUI/Fixtures/Scene.h"

#include <QAccessible>
#include <QLocale>
#include <QWheelEvent>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <optional>

namespace veslora {
namespace {

using testing::ElementsAre;
using testing::Optional;

class EditTrayTest : public testing::Test {
  protected:
    void SetUp() override {
        QLocale::setDefault(QLocale::c());
        scene.rack.enterEditing();
    }
    void TearDown() override { scene.close(); }

    void showTray(const QVariantMap& more = {}) {
        scene.close();
        QVariantMap properties{{"rack", QVariant::fromValue(&scene.rack)}, {"x", 30}, {"y", 20}};
        properties.insert(more);
        scene.show("Widgets/EditTray.qml", properties, {700, 120});
    }
    void setSpacing(double spacing, bool isAutomatic) {
        scene.settings.set(SettingsKeys::widgetSpacing, spacing);
        scene.settings.set(SettingsKeys::widgetSpacingAutomatic, isAutomatic);
        scene.rack.settingsChanged();
    }
    [[nodiscard]] QString spacingText() const { return scene.texts().at(2); }
    [[nodiscard]] QQuickItem* spacing() const {
        return scene.itemNamed("Space between widgets, " + spacingText());
    }
    void scrollSpacing(QPoint angle) {
        const QPointF at = spacing()->mapToScene({22, 13});
        QWheelEvent event(at, scene.window().mapToGlobal(at), {}, angle, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&scene.window(), &event);
        scene.advance(0);
    }
    [[nodiscard]] QString helpOf(const QString& name) const {
        return scene.itemNamed(name)->property("helpText").toString();
    }
    [[nodiscard]] QRectF placeOf(const QQuickItem* item) const {
        return item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
    }
    [[nodiscard]] QRectF placeOf(const QString& name) const { return placeOf(scene.itemNamed(name)); }
    [[nodiscard]] std::vector<AccentSwatch*> swatches() const {
        std::vector<AccentSwatch*> found;
        for (const char* name : {"Lime", "Cyan", "Amber", "White"}) {
            const auto* key = scene.itemNamed(QLatin1String(name) + " accent")->parentItem();
            found.push_back(qobject_cast<AccentSwatch*>(key->childItems().front()));
        }
        return found;
    }
    /// Which accents have a ring.
    [[nodiscard]] std::vector<bool> rings() const {
        std::vector<bool> rings;
        for (const auto* swatch : swatches()) {
            rings.push_back(swatch->property("isSelected").toBool());
        }
        return rings;
    }
    [[nodiscard]] const QQuickItem& tray() const { return *qobject_cast<QQuickItem*>(&scene.view()); }

    Scene scene;
};

TEST_F(EditTrayTest, OffersTheSpacingAndTheAccents) {
    showTray();
    EXPECT_THAT(scene.texts(), ElementsAre("Spacing", "Auto", "60 pt", "Accent"));
    EXPECT_THAT(scene.names(),
                ElementsAre("Spacing", "Auto", "−", "Space between widgets, 60 pt", "+", "Accent",
                            "Lime accent", "Cyan accent", "Amber accent", "White accent"));
    EXPECT_EQ(scene.itemNamed("−")->property("symbol"), "minus");
    EXPECT_EQ(scene.itemNamed("+")->property("symbol"), "plus");
}

TEST_F(EditTrayTest, EveryControlSaysWhatItIsFor) {
    showTray();
    EXPECT_EQ(helpOf("Auto"), "Use automatic spacing");
    EXPECT_EQ(helpOf("−"), "Closer together");
    EXPECT_EQ(helpOf("+"), "Further apart");
    EXPECT_EQ(helpOf("Lime accent"), "Lime");
    EXPECT_EQ(helpOf("Cyan accent"), "Cyan");
    EXPECT_EQ(helpOf("Amber accent"), "Amber");
    EXPECT_EQ(helpOf("White accent"), "White");
    EXPECT_TRUE(scene.itemWith("text", "Space between widgets; scroll to change"));
    scene.rack.setAutomaticSpacing(true);
    EXPECT_EQ(helpOf("Auto"), "Automatic spacing is on");
}

TEST_F(EditTrayTest, AutoKeepsTheSpacingForWhenItIsUsedAgain) {
    setSpacing(40, false);
    showTray();
    EXPECT_FALSE(scene.itemNamed("Auto")->property("isSelected").toBool());
    scene.press("Auto");
    EXPECT_TRUE(scene.rack.isAutomatic());
    EXPECT_EQ(scene.settings.boolValue(SettingsKeys::widgetSpacingAutomatic), true);
    EXPECT_EQ(scene.settings.doubleValue(SettingsKeys::widgetSpacing), 40);
    EXPECT_TRUE(scene.itemNamed("Auto")->property("isSelected").toBool());
    EXPECT_EQ(spacingText(), "40 pt");
    scene.press("Auto");
    EXPECT_THAT(scene.rack.customSpacing(), Optional(40.0));
    EXPECT_EQ(scene.settings.boolValue(SettingsKeys::widgetSpacingAutomatic), false);
    EXPECT_FALSE(scene.itemNamed("Auto")->property("isSelected").toBool());
}

TEST_F(EditTrayTest, KeysMoveTheSpacingByFour) {
    showTray();
    scene.press("−");
    EXPECT_THAT(scene.rack.customSpacing(), Optional(56.0));
    EXPECT_EQ(spacingText(), "56 pt");
    EXPECT_EQ(scene.settings.doubleValue(SettingsKeys::widgetSpacing), 56);
    scene.press("+");
    scene.press("+");
    EXPECT_THAT(scene.rack.customSpacing(), Optional(64.0));
    EXPECT_TRUE(scene.shows("Space between widgets, 64 pt"));
}

TEST_F(EditTrayTest, CloserThanTheLeastOnlyEndsAutomaticSpacing) {
    setSpacing(8, true);
    showTray();
    scene.press("−");
    EXPECT_THAT(scene.rack.customSpacing(), Optional(8.0));
    EXPECT_EQ(spacingText(), "8 pt");
    EXPECT_FALSE(scene.itemNamed("Auto")->property("isSelected").toBool());
    setSpacing(80, true);
    scene.press("+");
    EXPECT_THAT(scene.rack.customSpacing(), Optional(80.0));
}

TEST_F(EditTrayTest, ASpacingThatIsNotInUseIsDimmer) {
    showTray();
    EXPECT_EQ(spacing()->property("color").value<QColor>().rgb(), VesloraStyle::textPrimary().rgb());
    setSpacing(33.4, true);
    EXPECT_EQ(spacingText(), "33 pt");
    EXPECT_EQ(spacing()->property("color").value<QColor>().rgb(), VesloraStyle::textSecondary().rgb());
    // Another program may change what is stored; the rack does not tell of it.
    scene.settings.set(SettingsKeys::widgetSpacing, 21.5);
    EXPECT_EQ(spacingText(), "22 pt");
}

TEST_F(EditTrayTest, ScrollingOverTheSpacingMovesIt) {
    showTray();
    scrollSpacing({0, 120});
    EXPECT_EQ(spacingText(), "64 pt");
    scrollSpacing({0, -120});
    scrollSpacing({0, -120});
    EXPECT_EQ(spacingText(), "56 pt");
    scrollSpacing({120, 0});
    EXPECT_EQ(spacingText(), "56 pt");
}

TEST_F(EditTrayTest, AnAccentIsStoredAndShownAtOnce) {
    showTray();
    EXPECT_THAT(rings(), ElementsAre(true, false, false, false));
    const std::vector<std::pair<QString, std::string>> accents{{"Cyan accent", "cyan"},
                                                               {"Amber accent", "amber"},
                                                               {"White accent", "white"},
                                                               {"Lime accent", "lime"}};
    for (const auto& [name, stored] : accents) {
        scene.press(name);
        EXPECT_EQ(scene.settings.stringValue(SettingsKeys::accent), stored);
        EXPECT_EQ(VesloraStyle::of(scene.engine)->accent(), AccentColors::fromStored(stored));
    }
    scene.settings.set(SettingsKeys::accent, "amber");
    EXPECT_THAT(rings(), ElementsAre(false, false, true, false));
    scene.settings.set(SettingsKeys::accent, "pink");
    EXPECT_THAT(rings(), ElementsAre(true, false, false, false));
}

TEST_F(EditTrayTest, WhatIsChosenIsToldByEarToo) {
    setSpacing(60, false);
    showTray();
    const auto isChecked = [this](const QString& name) {
        return QAccessible::queryAccessibleInterface(scene.itemNamed(name))->state().checked == 1;
    };
    EXPECT_TRUE(isChecked("Lime accent"));
    EXPECT_FALSE(isChecked("Cyan accent"));
    EXPECT_FALSE(isChecked("Auto"));
    scene.press("Cyan accent");
    scene.press("Auto");
    EXPECT_FALSE(isChecked("Lime accent"));
    EXPECT_TRUE(isChecked("Cyan accent"));
    EXPECT_TRUE(isChecked("Auto"));
}

TEST_F(EditTrayTest, EachAccentHasItsOwnColorWhicheverIsInUse) {
    scene.settings.set(SettingsKeys::accent, "cyan");
    showTray();
    const auto shown = swatches();
    ASSERT_EQ(shown.size(), AccentColors::allCases.size());
    for (std::size_t i = 0; i < shown.size(); ++i) {
        EXPECT_EQ(shown[i]->property("color").value<QColor>(),
                  AccentColors::color(AccentColors::allCases[i]));
    }
}

// Points from the tray's top left corner, which is at 30, 20.
TEST_F(EditTrayTest, EverythingLiesWhereItShould) {
    showTray();
    EXPECT_EQ(tray().height(), 34);
    EXPECT_EQ(placeOf("Spacing").left(), 30 + 12);
    EXPECT_EQ(placeOf("Spacing").center().y(), 20 + 17);
    EXPECT_NEAR(placeOf("Auto").left() - placeOf("Spacing").right(), 6, 1e-6);
    EXPECT_NEAR(placeOf("−").left() - placeOf("Auto").right(), 6, 1e-6);
    EXPECT_EQ(placeOf("−").size(), QSizeF(34, 26));
    EXPECT_EQ(placeOf("−").top(), 20 + 4);
    EXPECT_NEAR(placeOf(spacing()).left() - placeOf("−").right(), 6, 1e-6);
    EXPECT_EQ(placeOf(spacing()).size(), QSizeF(44, 26));
    EXPECT_NEAR(placeOf("+").left() - placeOf(spacing()).right(), 6, 1e-6);
    EXPECT_NEAR(placeOf("Accent").left() - placeOf("+").right(), 6 + 17 + 6, 1e-6);
    const auto shown = swatches();
    EXPECT_NEAR(placeOf(shown[0]).center().x() - placeOf("Accent").right(), 6 + 7, 1e-6);
    EXPECT_NEAR(placeOf(shown[1]).center().x() - placeOf(shown[0]).center().x(), 20, 1e-6);
    EXPECT_NEAR(placeOf(shown[3]).center().x() + 7 + 12, 30 + tray().width(), 1e-6);
    EXPECT_EQ(placeOf(shown[3]).center().y(), 20 + 17);
    EXPECT_EQ(placeOf("White accent").size(), QSizeF(20, 26));
}

TEST_F(EditTrayTest, StaysInItsRoomAtEveryScaleAndInEveryLanguage) {
    for (const bool isLong : {false, true}) {
        const std::optional<LongTexts> texts =
            isLong ? std::optional<LongTexts>(std::in_place) : std::nullopt;
        for (const double scale : {1.0, 1.5, 2.0}) {
            scene.scale = scale;
            for (const int room : {456, 520, 1070}) {
                showTray({{"maximumWidth", room}});
                EXPECT_LE(tray().width(), room + 1e-6);
                const QRect ink = Pixels(scene.picture()).box();
                EXPECT_NEAR(ink.left(), 30 * scale, 0.5);
                EXPECT_NEAR(ink.right() + 1, (30 + tray().width()) * scale, 0.51);
                EXPECT_NEAR(ink.top(), 20 * scale, 0.5);
                EXPECT_NEAR(ink.bottom() + 1, 54 * scale, 0.5);
                const auto* value = scene.itemWith("text", isLong ? "60 pt 60 pt" : "60 pt");
                EXPECT_LE(value->property("contentWidth").toDouble(), 44);
                EXPECT_EQ(value->property("truncated").toBool(), isLong);
                for (const char* text : {"Spacing", "Accent"}) {
                    const QString name = isLong ? QStringLiteral("%1 %1").arg(QLatin1String(text)) : text;
                    EXPECT_EQ(scene.itemNamed(name)->property("truncated").toBool(), isLong && room < 600)
                        << room;
                }
            }
        }
    }
}

/// Edges on whole pixels: between the tray's line and its face, and beside the line in its middle, there is
/// nothing in between.
TEST_F(EditTrayTest, LinesAreSharpAtEveryScale) {
    for (const double scale : Scene::screenScales) {
        scene.scale = scale;
        showTray();
        const Pixels seen(scene.picture());
        const QRect box = seen.box();
        EXPECT_TRUE(seen.hasSharpSides(box, static_cast<int>(std::ceil(10 * scale)), 40)) << scale;
        const int face = seen.at(box.left() + static_cast<int>(std::lround(6 * scale)), box.center().y());
        EXPECT_EQ(face, VesloraStyle::traySurface().red());
        const double middle = (placeOf("+").right() + 6 + 8.5) * scale;
        int wide = 0;
        for (int x = static_cast<int>(middle - 5 * scale); x < middle + 5 * scale; ++x) {
            const int light = seen.at(x, box.center().y());
            EXPECT_TRUE(light == face || std::abs(light - 40) <= 1) << light << " at scale " << scale;
            wide += light > face ? 1 : 0;
        }
        EXPECT_EQ(wide, std::floor(scale + 0.5)) << scale;
    }
}

} // namespace
} // namespace veslora
