// SPDX-License-Identifier: MIT
// The screen that the user wants the island on. Main thread only.
#pragma once

#include "VesloraUI/Platform/Screens.h"
#include "VesloraUI/Store/SettingsKeys.h"

#include <optional>
#include <string>
#include <vector>

namespace veslora {

struct ScreenChoice {
    DisplayChoice display = DisplayChoice::builtIn;
    std::string output; ///< name of a connector, which counts first while it is connected; empty for none
    bool operator==(const ScreenChoice&) const = default;

    [[nodiscard]] static ScreenChoice of(const Defaults& settings);

    /// The one of the screens that it comes to; absent without any.
    [[nodiscard]] std::optional<ScreenInfo> among(const std::vector<ScreenInfo>& screens) const;
};

} // namespace veslora
