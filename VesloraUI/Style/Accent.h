// SPDX-License-Identifier: MIT
// The colour that the user chose for what is alive on the island, and the one beside it that calls for
// attention.
#pragma once

#include <QColor>

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace veslora {

/// In the order of `SettingsKeys::accents`.
enum class Accent { lime, cyan, amber, white };

namespace AccentColors {

inline constexpr std::array allCases{Accent::lime, Accent::cyan, Accent::amber, Accent::white};

/// The text under which an accent is stored, such as "lime"; it is the accent's identity too.
[[nodiscard]] std::string rawValue(Accent accent);

/// The accent of a stored text. Absent and unknown texts count as `lime`.
[[nodiscard]] Accent fromStored(const std::optional<std::string>& text);

/// What people call it, untranslated: "Lime". Ends with a null.
[[nodiscard]] std::string_view displayName(Accent accent);

/// sRGB.
[[nodiscard]] QColor color(Accent accent);
[[nodiscard]] QColor urgentColor(Accent accent);

} // namespace AccentColors
} // namespace veslora
