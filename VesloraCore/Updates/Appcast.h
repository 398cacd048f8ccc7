// SPDX-License-Identifier: MIT
// What a feed of releases offers, and which of it is for this machine. Plain values, any thread.
#pragma once

#include "VesloraCore/Updates/ReleaseVersion.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veslora {

/// One package of one release. All of it is covered by the feed's own signature.
struct AppcastItem {
    /// The largest package that is fetched, in bytes.
    static constexpr std::int64_t largestPackage = std::int64_t{64} << 20;

    ReleaseVersion version;
    std::string notes;        ///< plain text of several lines; may be empty
    std::string url;          ///< of the package
    std::int64_t length = 0;  ///< of the package, in bytes
    std::string signature;    ///< Ed25519 over all of the package, as base64
    std::string kind;         ///< its media type, such as `Appcast::debianPackage`
    std::string architecture; ///< as Debian names it
    bool operator==(const AppcastItem&) const = default;
};

namespace Appcast {

inline constexpr std::string_view debianPackage = "application/vnd.debian.binary-package";

/// The newest item of that kind for that machine, or for "all" of them; absent when there is none.
[[nodiscard]] std::optional<AppcastItem> newest(const std::vector<AppcastItem>& items, std::string_view kind,
                                                std::string_view architecture);

/// What Debian calls a processor that Qt names so, as in "x86_64"; empty where packages have no name for it.
[[nodiscard]] std::string_view debianArchitecture(std::string_view processor);

/// The name that a downloaded package gets: made of what is known here, of nothing in an address.
[[nodiscard]] std::string fileName(const ReleaseVersion& version, std::string_view architecture);

} // namespace Appcast

} // namespace veslora
