// SPDX-License-Identifier: MIT
#include "VesloraCore/Music/NowPlaying.h"

#include <utf8proc.h>

#include <algorithm>
#include <array>

namespace veslora {

namespace {

/// The last piece between dots that is not empty; the whole text when there is none.
std::string_view lastPiece(std::string_view text) {
    const auto last = text.find_last_not_of('.');
    if (last == std::string_view::npos) {
        return text;
    }
    const auto dot = text.find_last_of('.', last);
    const auto first = dot == std::string_view::npos ? 0 : dot + 1;
    return text.substr(first, last - first + 1);
}

/// Its first letter in upper case, the rest as it stands; a broken first letter stands as it is too.
std::string capitalised(std::string_view text) {
    utf8proc_int32_t letter = 0;
    const auto length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                         static_cast<utf8proc_ssize_t>(text.size()), &letter);
    if (length <= 0) {
        return std::string(text);
    }
    std::array<utf8proc_uint8_t, 4> upper{};
    const auto upperLength = utf8proc_encode_char(utf8proc_toupper(letter), upper.data());
    std::string result(reinterpret_cast<const char*>(upper.data()), static_cast<std::size_t>(upperLength));
    return result.append(text.substr(static_cast<std::size_t>(length)));
}

} // namespace

MusicSource MusicSource::from(std::string_view bundleID) {
    if (bundleID == spotifyBundleID) {
        return {Spotify{}};
    }
    return {App{std::string(bundleID), capitalised(lastPiece(bundleID))}};
}

double NowPlaying::positionAt(Timestamp time) const {
    if (!isPlaying) {
        return position;
    }
    const double moved = position + (time - readAt);
    if (duration > 0) {
        return std::min(std::max(moved, 0.0), duration);
    }
    return moved;
}

} // namespace veslora
