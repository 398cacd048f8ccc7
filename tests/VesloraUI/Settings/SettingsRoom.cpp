// SPDX-License-Identifier: MIT
#include "tests/VesloraUI/Settings/SettingsRoom.h"

#include <QFont>

#include <gtest/gtest.h>

#include <string_view>

namespace veslora {

namespace {

bool isControl(const QQuickItem& item) {
    return item.inherits("QQuickAbstractButton") || item.inherits("QQuickComboBox") ||
           item.inherits("QQuickSlider");
}

void expectRoom(const QQuickItem& text, const std::string& when) {
    const std::string what = when + text.property("text").toString().toStdString();
    EXPECT_FALSE(text.property("truncated").toBool()) << what;
    EXPECT_LE(text.property("contentWidth").toDouble(), text.width() + 0.5) << what;
    EXPECT_LE(text.property("contentHeight").toDouble(), text.height() + 0.5) << what;
    const double lineHeight = text.property("lineHeight").toDouble();
    const int size = text.property("font").value<QFont>().pixelSize();
    constexpr double leastLine = 1.2;
    // Small numbers are shares of the font's own height.
    EXPECT_TRUE(lineHeight <= 2 || lineHeight >= leastLine * size) << what;
}

void collect(const QQuickItem& item, const std::string& when, std::vector<RoomPart>& parts) {
    // An island has sizes of its own.
    if (!item.isVisible() || std::string_view(item.metaObject()->className()).starts_with("NotchView")) {
        return;
    }
    const bool isText = item.inherits("QQuickText");
    if (isText) {
        expectRoom(item, when);
    }
    if (isText || isControl(item)) {
        parts.push_back(
            {isText ? item.property("text").toString() : item.property("text").toString() + " (key)",
             item.mapRectToScene(QRectF(0, 0, item.width(), item.height()))});
        if (isText) {
            return;
        }
        // What a control says lies in it.
        if (const auto* content = item.property("contentItem").value<QQuickItem*>();
            content && content->inherits("QQuickText")) {
            EXPECT_LE(content->implicitWidth(), item.width() + 0.5) << when;
            EXPECT_LE(content->implicitHeight(), item.height() + 0.5) << when;
        }
        return;
    }
    for (const QQuickItem* child : item.childItems()) {
        collect(*child, when, parts);
    }
}

void expectApart(const std::vector<RoomPart>& parts, double width, const std::string& when) {
    for (std::size_t i = 0; i < parts.size(); ++i) {
        EXPECT_GE(parts[i].place.left(), 0) << when << parts[i].name.toStdString();
        EXPECT_LE(parts[i].place.right(), width) << when << parts[i].name.toStdString();
        for (std::size_t j = i + 1; j < parts.size(); ++j) {
            EXPECT_FALSE(parts[i].place.adjusted(0.5, 0.5, -0.5, -0.5).intersects(parts[j].place))
                << when << parts[i].name.toStdString() << " on " << parts[j].name.toStdString();
        }
    }
}

} // namespace

std::vector<RoomPart> partsOfWindow(const SettingsScene& scene, const std::string& when) {
    std::vector<RoomPart> parts;
    collect(*scene.window().contentItem(), when, parts);
    return parts;
}

void expectRoomOnPage(const SettingsScene& scene, const std::string& when) {
    std::vector<RoomPart> parts;
    collect(scene.page(), when, parts);
    EXPECT_FALSE(parts.empty());
    expectApart(parts, scene.window().width(), when);
}

void expectRoomInWindow(const SettingsScene& scene, const std::string& when) {
    const auto parts = partsOfWindow(scene, when);
    constexpr std::size_t least = 8;
    EXPECT_GT(parts.size(), least);
    expectApart(parts, scene.window().width(), when);
}

} // namespace veslora
