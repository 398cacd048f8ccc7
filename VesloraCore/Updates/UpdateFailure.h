// SPDX-License-Identifier: MIT
// The closed words in which the helper for updates says what went wrong, and why an installation ended.
#pragma once

#include <optional>
#include <string_view>

namespace veslora {

enum class UpdateFailure {
    unreachable,  ///< no network, no such server, or it refuses connections
    slow,         ///< the server took too long
    insecure,     ///< no safe connection, or an address or a redirect that is not https
    missing,      ///< the server has no such file, or no answer to give
    tooLarge,     ///< more bytes than such a file may have, or than were announced
    incomplete,   ///< fewer bytes than were announced
    badSignature, ///< a signature is missing or not by the key that the program was built with
    unreadable,   ///< signed, but no feed that this version understands
    noPackage,    ///< the feed has nothing for this kind of machine
    folder,       ///< the folder for packages can't be used or is full
    changed,      ///< the package is not the one that was checked before
    helper,       ///< the helper can't be run or broke off
};

/// As the helper spells it.
[[nodiscard]] std::string_view rawValue(UpdateFailure failure);
/// Absent for any other text.
[[nodiscard]] std::optional<UpdateFailure> updateFailureFrom(std::string_view rawValue);

} // namespace veslora
