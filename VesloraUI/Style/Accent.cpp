// SPDX-License-Identifier: MIT
#include "VesloraUI/Style/Accent.h"

#include "VesloraCore/Text/Words.h"
#include "VesloraUI/Store/SettingsKeys.h"

#include <algorithm>
#include <cstddef>

namespace veslora::AccentColors {

std::string rawValue(Accent accent) {
    return std::string(SettingsKeys::accents[static_cast<std::size_t>(accent)]);
}

Accent fromStored(const std::optional<std::string>& text) {
    const auto found =
        std::ranges::find_if(allCases, [&](Accent accent) { return text == rawValue(accent); });
    return found == allCases.end() ? Accent::lime : *found;
}

std::string_view displayName(Accent accent) {
    switch (accent) {
    case Accent::lime:
        return translatable("Accents", "Lime");
    case Accent::cyan:
        return translatable("Accents", "Cyan");
    case Accent::amber:
        return translatable("Accents", "Amber");
    case Accent::white:
        return translatable("Accents", "White");
    }
    return "";
}

QColor color(Accent accent) {
    switch (accent) {
    case Accent::lime:
        return {200, 255, 61};
    case Accent::cyan:
        return {61, 224, 255};
    case Accent::amber:
        return {255, 176, 32};
    case Accent::white:
        return {242, 242, 242};
    }
    return {200, 255, 61};
}

QColor urgentColor(Accent accent) {
    switch (accent) {
    case Accent::cyan:
        return {255, 77, 106};
    case Accent::amber:
        return {255, 61, 61};
    case Accent::lime:
    case Accent::white:
        return {255, 77, 46};
    }
    return {255, 77, 46};
}

} // namespace veslora::AccentColors
