// SPDX-License-Identifier: MIT
// The table of the widgets there are.
#include "VesloraCore/Text/Words.h"
#include "VesloraCore/Widgets/WidgetLayout.h"

#include <algorithm>

namespace veslora {

namespace {

constexpr std::array onlySmall{WidgetSize::small};
constexpr std::array smallFirst{WidgetSize::small, WidgetSize::wide};
constexpr std::array wideFirst{WidgetSize::wide, WidgetSize::small};

struct Kind {
    std::string_view rawValue;
    const char* title;
    double smallWidth;
    std::span<const WidgetSize> sizes;
};

constexpr double wideWidth = 230; ///< of every widget that comes in that size

/// In the order of the enumeration.
constexpr std::array<Kind, allWidgetIDs.size()> kinds{{
    {"clock", translatable("Widgets", "Clock"), 150, onlySmall},
    {"timer", translatable("Widgets", "Timer"), 150, wideFirst},
    {"meters", translatable("Widgets", "Meters"), 130, smallFirst},
    {"music", translatable("Widgets", "Music"), 150, smallFirst},
    {"metronome", translatable("Widgets", "Metronome"), 150, smallFirst},
    {"claude", translatable("Widgets", "Agents"), 150, smallFirst},
    {"claudeUsage", translatable("Widgets", "Agent Usage"), 150, smallFirst},
    {"keepAwake", translatable("Widgets", "Keep Awake"), 150, smallFirst},
}};

const Kind& kindOf(WidgetID id) {
    return kinds[static_cast<std::size_t>(id)];
}

} // namespace

int units(WidgetSize size) {
    return static_cast<int>(size);
}

std::string_view rawValue(WidgetID id) {
    return kindOf(id).rawValue;
}

std::optional<WidgetID> widgetIDFrom(std::string_view rawValue) {
    const auto* found = std::ranges::find_if(
        allWidgetIDs, [rawValue](WidgetID id) { return kindOf(id).rawValue == rawValue; });
    return found == allWidgetIDs.end() ? std::nullopt : std::optional(*found);
}

std::string_view title(WidgetID id) {
    return kindOf(id).title;
}

std::span<const WidgetSize> sizes(WidgetID id) {
    return kindOf(id).sizes;
}

WidgetSize defaultSize(WidgetID id) {
    return sizes(id).front();
}

double width(WidgetID id, WidgetSize size) {
    const bool isWide = size == WidgetSize::wide && sizes(id).size() > 1;
    return isWide ? wideWidth : kindOf(id).smallWidth;
}

} // namespace veslora
