// SPDX-License-Identifier: MIT
// What the program and its helper for updates say to each other: one question on the helper's standard input,
// one answer on its standard output, each a line of JSON. Pure functions, any thread.
#pragma once

#include "VesloraCore/Updates/Appcast.h"
#include "VesloraCore/Updates/UpdateFailure.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace veslora {

/// Is there anything newer in the feed?
struct FeedQuestion {
    std::string feed;         ///< its address, by https
    std::string key;          ///< the Ed25519 public key as base64
    std::string version;      ///< of the program that asks
    std::string kind;         ///< of a package that can be installed here
    std::string architecture; ///< as Debian names it
    bool operator==(const FeedQuestion&) const = default;
};

/// A package of a feed that was checked.
struct PackageQuestion {
    enum class Job : std::uint8_t {
        download, ///< into the folder, under `Appcast::fileName`; all else in it goes
        verify,   ///< the one that lies there is still the one that was signed
    };
    Job job = Job::download;
    std::string key;    ///< the Ed25519 public key as base64
    std::string folder; ///< of our own user, closed to all others; an absolute path
    AppcastItem item;   ///< its notes are not told
    bool operator==(const PackageQuestion&) const = default;
};

using UpdateQuestion = std::variant<FeedQuestion, PackageQuestion>;

/// Nothing in the feed is newer.
struct NothingNewer {
    bool operator==(const NothingNewer&) const = default;
};
/// The package lies in the folder and is what was signed.
struct PackageReady {
    bool operator==(const PackageReady&) const = default;
};

/// The last of these is the newest release that fits, newer than the program that asked.
using UpdateAnswer = std::variant<UpdateFailure, NothingNewer, PackageReady, AppcastItem>;

namespace UpdateMessages {

/// Texts must be valid UTF-8. Ends with a line end.
[[nodiscard]] std::string print(const UpdateQuestion& question);
[[nodiscard]] std::string print(const UpdateAnswer& answer);

/// Absent for anything but a whole question or answer, with a version that is one, an https address and a
/// length that a package may have.
[[nodiscard]] std::optional<UpdateQuestion> parseQuestion(std::string_view text);
[[nodiscard]] std::optional<UpdateAnswer> parseAnswer(std::string_view text);

/// Whether an item's parts are of the form that they must have: where it comes out of a feed, too.
[[nodiscard]] bool isSound(const AppcastItem& item);

} // namespace UpdateMessages

} // namespace veslora
