// SPDX-License-Identifier: MIT
// What is made of each of the settings portal's values, also of those that no portal should tell.
#include "VesloraLinux/DBus/PortalAppearance.h"
#include "tests/support/AppearancePrinting.h"

#include <QDBusVariant>

#include <gtest/gtest.h>

#include <limits>

namespace veslora {

namespace {

constexpr const char* common = "org.freedesktop.appearance";
constexpr const char* gnome = "org.gnome.desktop.interface";
constexpr const char* gnomeAccess = "org.gnome.desktop.a11y.interface";
constexpr const char* kde = "org.kde.kdeglobals.KDE";

struct Case {
    const char* group;
    const char* key;
    QVariant value;
    DesktopAppearance appearance;
};

DesktopAppearance scheme(ColorScheme colorScheme) {
    return {.isTold = true, .colorScheme = colorScheme};
}
DesktopAppearance contrast(bool isHigh) {
    return {.isTold = true, .highContrast = isHigh};
}
DesktopAppearance motion(bool isReduced) {
    return {.isTold = true, .reducedMotion = isReduced};
}
DesktopAppearance text(double scale) {
    return {.isTold = true, .textScale = scale};
}

QVariant inVariant(const QVariant& value) {
    return QVariant::fromValue(QDBusVariant(value));
}

constexpr double infinite = std::numeric_limits<double>::infinity();

const Case cases[] = {
    {common, "color-scheme", 0U, scheme(ColorScheme::none)},
    {common, "color-scheme", 1U, scheme(ColorScheme::dark)},
    {common, "color-scheme", 2U, scheme(ColorScheme::light)},
    {common, "color-scheme", 3U, scheme(ColorScheme::none)},
    {common, "color-scheme", std::numeric_limits<unsigned>::max(), scheme(ColorScheme::none)},
    {common, "color-scheme", 1, {}},
    {common, "color-scheme", "1", {}},
    {common, "color-scheme", {}, {}},
    {common, "color-scheme", inVariant(1U), scheme(ColorScheme::dark)},
    {common, "color-scheme", inVariant(inVariant(1U)), scheme(ColorScheme::dark)},
    {common, "color-scheme", inVariant(inVariant(inVariant(inVariant(1U)))), {}},
    {common, "contrast", 1U, contrast(true)},
    {common, "contrast", 0U, contrast(false)},
    {common, "contrast", 2U, contrast(false)},
    {common, "contrast", true, {}},
    {common, "reduced-motion", 1U, motion(true)},
    {common, "reduced-motion", 0U, motion(false)},
    {common, "reduced-motion", 7U, motion(false)},
    {gnome, "enable-animations", false, motion(true)},
    {gnome, "enable-animations", true, motion(false)},
    {gnome, "enable-animations", 0U, {}},
    {gnome, "text-scaling-factor", 1.25, text(1.25)},
    {gnome, "text-scaling-factor", 0.1, text(0.5)},
    {gnome, "text-scaling-factor", -4.0, text(0.5)},
    {gnome, "text-scaling-factor", 1e300, text(3)},
    {gnome, "text-scaling-factor", infinite, text(1)},
    {gnome, "text-scaling-factor", -infinite, text(1)},
    {gnome, "text-scaling-factor", std::numeric_limits<double>::quiet_NaN(), text(1)},
    {gnome, "text-scaling-factor", 2U, {}},
    {gnomeAccess, "high-contrast", true, contrast(true)},
    {gnomeAccess, "high-contrast", false, contrast(false)},
    {gnomeAccess, "high-contrast", "true", {}},
    {kde, "AnimationDurationFactor", "0", motion(true)},
    {kde, "AnimationDurationFactor", "0.0", motion(true)},
    {kde, "AnimationDurationFactor", 0.0, motion(true)},
    {kde, "AnimationDurationFactor", "0.7", motion(false)},
    {kde, "AnimationDurationFactor", "", {}},
    {kde, "AnimationDurationFactor", "none", {}},
    {kde, "AnimationDurationFactor", QVariantMap(), {}},
};

TEST(PortalAppearanceTests, TakesEachKeyForWhatItMeans) {
    for (const auto& [group, key, value, appearance] : cases) {
        PortalAppearance words;
        EXPECT_TRUE(words.take(group, key, value));
        EXPECT_EQ(words.appearance(), appearance) << key << ' ' << value.toString().toStdString();
        EXPECT_EQ(words.isTold(), appearance.isTold);
    }
}

TEST(PortalAppearanceTests, OtherKeysSayNothing) {
    PortalAppearance words;
    for (const auto& [group, key] : {std::pair(common, "accent-color"), std::pair(gnome, "color-scheme"),
                                     std::pair("", ""), std::pair(kde, "contrast")}) {
        EXPECT_FALSE(words.take(group, key, 1U)) << key;
    }
    EXPECT_EQ(words.appearance(), DesktopAppearance());
}

TEST(PortalAppearanceTests, AnyOfTheDesktopsWordsIsEnough) {
    PortalAppearance words;
    words.take(common, "contrast", 0U);
    words.take(gnomeAccess, "high-contrast", true);
    words.take(common, "reduced-motion", 0U);
    words.take(gnome, "enable-animations", true);
    EXPECT_TRUE(words.appearance().highContrast);
    EXPECT_FALSE(words.appearance().reducedMotion);
    words.take(kde, "AnimationDurationFactor", "0");
    EXPECT_TRUE(words.appearance().reducedMotion);
    words.take(gnomeAccess, "high-contrast", false);
    EXPECT_FALSE(words.appearance().highContrast);
}

TEST(PortalAppearanceTests, AsksForEveryGroupThatItKnows) {
    for (const auto& each : cases) {
        EXPECT_TRUE(PortalAppearance::namespaces().contains(each.group));
    }
}

} // namespace
} // namespace veslora
