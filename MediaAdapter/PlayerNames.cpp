// SPDX-License-Identifier: MIT
#include "MediaAdapter/PlayerNames.h"

#include <algorithm>
#include <array>

namespace veslora::PlayerNames {
namespace {

/// The desktop entry's name, also where a player gives the path of its file.
std::string_view entryName(std::string_view desktopEntry) {
    constexpr std::string_view ending = ".desktop";
    desktopEntry.remove_prefix(desktopEntry.rfind('/') + 1);
    if (desktopEntry.ends_with(ending)) {
        desktopEntry.remove_suffix(ending.size());
    }
    return desktopEntry;
}

std::string_view ownName(std::string_view busName) {
    if (busName.starts_with(prefix)) {
        busName.remove_prefix(prefix.size());
    }
    return busName.substr(0, busName.find(".instance"));
}

bool isSpotify(std::string_view name) {
    constexpr std::array<std::string_view, 3> names{"spotify", spotify, "spotify_spotify"};
    std::string lower(name);
    std::ranges::transform(lower, lower.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return std::ranges::find(names, lower) != names.end();
}

} // namespace

bool isPlayer(std::string_view busName) {
    return busName.starts_with(prefix) && busName.size() > prefix.size() &&
           busName.substr(prefix.size()) != "playerctld";
}

std::string bundleIdentifier(std::string_view desktopEntry, std::string_view busName) {
    const std::string_view entry = entryName(desktopEntry);
    const std::string_view own = ownName(busName);
    if (isSpotify(entry) || isSpotify(own)) {
        return std::string(spotify);
    }
    return std::string(entry.empty() ? own : entry);
}

} // namespace veslora::PlayerNames
