// SPDX-License-Identifier: MIT
// What the configuration files of desktops and toolkits say of how programs are to look. Whatever stands in
// them, they are read without a failure: what is not understood says nothing. Any thread.
#pragma once

#include "VesloraUI/Platform/Appearance.h"

#include <optional>
#include <string_view>

namespace veslora::AppearanceText {

/// What one file says, and nothing of what it leaves open.
struct Words {
    std::optional<ColorScheme> colorScheme; ///< never `none`
    std::optional<bool> highContrast;
    std::optional<bool> reducedMotion;
    bool operator==(const Words&) const = default;
};

/// Of the settings.ini of a GTK.
[[nodiscard]] Words ofGtk(std::string_view text);

/// Of KDE's kdeglobals.
[[nodiscard]] Words ofKde(std::string_view text);

/// The words of the first where it has any, otherwise those of the second.
[[nodiscard]] Words firstOf(const Words& first, const Words& second);

} // namespace veslora::AppearanceText
