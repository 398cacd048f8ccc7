// SPDX-License-Identifier: MIT
#include "VesloraUI/Island/ScreenChoice.h"

#include "VesloraUI/Store/Defaults.h"

#include <algorithm>

namespace veslora {

ScreenChoice ScreenChoice::of(const Defaults& settings) {
    return {.display = displayChoiceFrom(settings.stringValue(SettingsKeys::displayChoice)),
            .output = settings.stringValue(SettingsKeys::displayOutput).value_or("")};
}

std::optional<ScreenInfo> ScreenChoice::among(const std::vector<ScreenInfo>& screens) const {
    if (screens.empty()) {
        return std::nullopt;
    }
    const auto named = std::ranges::find(screens, output, &ScreenInfo::name);
    if (!output.empty() && named != screens.end()) {
        return *named;
    }
    const auto builtIn = std::ranges::find_if(screens, &ScreenInfo::isBuiltIn);
    return display == DisplayChoice::builtIn && builtIn != screens.end() ? *builtIn : screens.front();
}

} // namespace veslora
