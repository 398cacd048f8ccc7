// SPDX-License-Identifier: MIT
// The text of a desktop entry that starts the program at login, by the Desktop Entry and the Autostart
// rules of freedesktop.org. Whatever stands in it, it is read without a failure. Any thread.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace veslora::AutostartEntry {

/// An entry that starts the program of that absolute path.
[[nodiscard]] std::string make(const std::string& executable);

/// Whether a desktop of these names, as XDG_CURRENT_DESKTOP gives them, obeys the entry; what it starts may
/// still be gone. The settings of the desktops' own tools count everywhere.
[[nodiscard]] bool isOn(std::string_view entry, const std::vector<std::string>& desktops);

/// What the entry starts, without its arguments: a path, or a name to look up. Empty for nothing.
[[nodiscard]] std::string programOf(std::string_view entry);

/// The entry such that every desktop starts that program; what else stands in it stays.
[[nodiscard]] std::string turnedOn(std::string_view entry, const std::string& executable);

/// The entry such that no desktop obeys it; what else stands in it stays.
[[nodiscard]] std::string turnedOff(std::string_view entry);

} // namespace veslora::AutostartEntry
