// SPDX-License-Identifier: MIT
// The settings window in the desktop's look: which colours it takes, whether all can be read in them, and
// whether texts of any size have room.
#include "VesloraUI/Settings/ColorContrast.h"
#include "VesloraUI/Settings/SettingsLook.h"
#include "VesloraUI/Store/SettingsKeys.h"
#include "tests/VesloraUI/Fixtures/LongTexts.h"
#include "tests/VesloraUI/Settings/SettingsRoom.h"
#include "tests/VesloraUI/Settings/SettingsScene.h"

#include <QScreen>

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace veslora {
namespace {

constexpr auto pageTitles = {"General", "Island", "Timer", "Music", "Metronome", "Agents", "Keep Awake"};

TEST(SettingsLookTests, IsLightWhereADesktopWasHeardAndDarkAsTheIslandElsewhere) {
    EXPECT_TRUE(SettingsLook::isDark({}));
    EXPECT_FALSE(SettingsLook::isDark({.isTold = true}));
    EXPECT_FALSE(SettingsLook::isDark({.isTold = true, .colorScheme = ColorScheme::light}));
    EXPECT_TRUE(SettingsLook::isDark({.isTold = true, .colorScheme = ColorScheme::dark}));
}

/// Every palette with every accent.
class SettingsPaletteTest : public testing::Test {
  protected:
    SettingsPaletteTest() {
        scene.showText("Item { property QtObject colors: SettingsColors }", {10, 10});
        colors = scene.view().property("colors").value<QObject*>();
    }

    void take(ColorScheme scheme, bool isHighContrast, const std::string& accent) {
        scene.platform.look.change({.isTold = true, .colorScheme = scheme, .highContrast = isHighContrast});
        scene.settings.set(SettingsKeys::accent, accent);
        name = std::string(scheme == ColorScheme::dark ? "dark" : "light") +
               (isHighContrast ? ", high contrast, " : ", ") + accent;
    }
    [[nodiscard]] QColor color(const char* role) {
        const QColor found = colors->property(role).value<QColor>();
        EXPECT_TRUE(found.isValid()) << role;
        return found;
    }
    void expectRatio(const char* role, const char* ground, double wanted) {
        EXPECT_GE(ColorContrast::ratio(color(role), color(ground)), wanted)
            << name << ": " << role << " on " << ground;
    }
    void expectReadable(double wanted) {
        for (const char* ground : {"window", "group"}) {
            for (const char* role : {"text", "secondary", "error", "accentText"}) {
                expectRatio(role, ground, wanted);
            }
            expectRatio("accentFill", ground, 3);
        }
        for (const char* ground : {"control", "controlHovered", "controlPressed", "list"}) {
            expectRatio("text", ground, wanted);
        }
        for (const char* ground : {"list", "controlPressed"}) {
            expectRatio("accentInList", ground, wanted);
        }
        expectRatio("knob", "track", 3);
        expectRatio("knob", "trackHovered", 3);
        expectRatio("knobOnAccent", "accentFill", 3);
        expectRatio("scrollBar", "window", 3);
    }

    Scene scene;
    QObject* colors = nullptr;
    std::string name;
};

TEST_F(SettingsPaletteTest, EveryTextCanBeRead) {
    for (const char* accent : {"lime", "cyan", "amber", "white"}) {
        for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
            take(scheme, false, accent);
            expectReadable(4.5);
            take(scheme, true, accent);
            expectReadable(7);
            for (const char* border : {"groupBorder", "controlBorder", "trackBorder", "line"}) {
                expectRatio(border, "window", 7);
            }
            const QColor pure = scheme == ColorScheme::dark ? Qt::white : Qt::black;
            EXPECT_EQ(color("text"), pure);
            EXPECT_EQ(color("secondary"), pure);
        }
    }
}

TEST_F(SettingsPaletteTest, TheSchemesDiffer) {
    take(ColorScheme::light, false, "lime");
    const QColor light = color("window");
    take(ColorScheme::dark, false, "lime");
    EXPECT_GT(ColorContrast::ratio(light, color("window")), 10);
}

class SettingsInLook : public testing::Test {
  protected:
    void look(const DesktopAppearance& appearance) {
        scene.platform.look.change(appearance);
        scene.advance(0);
    }
    [[nodiscard]] QColor ground() const { return scene.picture().pixelColor(4, 100); }
    [[nodiscard]] static DesktopAppearance sized(double scale) {
        return {.isTold = true, .textScale = scale};
    }

    SettingsScene scene;
};

TEST_F(SettingsInLook, ChangesWhileItIsOpen) {
    EXPECT_EQ(ground(), QColor("#1c1c1e")) << "as the island is, where nothing is known";
    look({.isTold = true, .colorScheme = ColorScheme::light});
    EXPECT_EQ(ground(), QColor("#f2f2f4"));
    look({.isTold = true, .colorScheme = ColorScheme::dark, .highContrast = true});
    EXPECT_EQ(ground(), QColor(Qt::black));
    look({.isTold = true, .colorScheme = ColorScheme::light, .highContrast = true});
    EXPECT_EQ(ground(), QColor(Qt::white));
}

TEST_F(SettingsInLook, GrowsAndShrinksWithTheTexts) {
    for (const auto& [scale, width] : {std::pair(1.5, 690), std::pair(2.0, 920), std::pair(1.25, 575),
                                       std::pair(3.0, 920), std::pair(0.5, 460), std::pair(1.0, 460)}) {
        look(sized(scale));
        EXPECT_EQ(scene.window().width(), width) << scale;
        EXPECT_EQ(scene.window().minimumWidth(), width);
        EXPECT_EQ(scene.window().maximumWidth(), width);
        EXPECT_LE(scene.window().height(), scene.window().screen()->availableSize().height());
    }
}

TEST_F(SettingsInLook, FitsAScreenOf1366By768) {
    look(sized(2));
    EXPECT_LE(scene.window().width(), 1366);
    scene.window().setHeight(768 - 60);
    scene.press("Agents");
    scene.advance(0);
    // Half a page of what scrolls is in view, and the rest can be reached.
    EXPECT_GT(scene.page().height(), 500);
    scene.page().setProperty("contentY",
                             scene.page().property("contentHeight").toDouble() - scene.page().height());
    scene.advance(0);
    const auto* last = scene.itemNamed("Until Tomorrow");
    ASSERT_TRUE(last);
    EXPECT_LE(last->mapToScene({0, last->height()}).y(), scene.window().height());
}

TEST_F(SettingsInLook, TextsOfEverySizeHaveRoom) {
    for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0}) {
        look(sized(scale));
        for (const char* tab : pageTitles) {
            scene.press(tab);
            scene.advance(0);
            const std::string when = std::string(tab) + " at " + std::to_string(scale) + ": ";
            expectRoomInWindow(scene, when);
        }
    }
}

TEST(SettingsInLongTexts, HaveRoomOnEveryPage) {
    const LongTexts longer;
    for (const char* tab : {"general", "island", "timer", "music", "metronome", "agents", "keepAwake"}) {
        for (const double scale : {1.0, 2.0}) {
            SettingsScene scene;
            // Among names of this length not every tab can be pressed.
            QMetaObject::invokeMethod(&scene.window(), "select", Q_ARG(QString, tab));
            scene.platform.look.change({.isTold = true, .textScale = scale});
            scene.advance(0);
            const std::string when = std::string(tab) + " at " + std::to_string(scale) + ": ";
            expectRoomOnPage(scene, when);
        }
    }
}

} // namespace
} // namespace veslora
