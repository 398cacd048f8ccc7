// SPDX-License-Identifier: MIT
// Signatures of releases. Any thread.
#pragma once

#include <string_view>

namespace veslora::Ed25519 {

/// Whether `signature` is that of just these bytes by the owner of `key`, which are both base64, of 64 and 32
/// bytes. False for texts of any other form.
[[nodiscard]] bool isSigned(std::string_view bytes, std::string_view signature, std::string_view key);

} // namespace veslora::Ed25519
