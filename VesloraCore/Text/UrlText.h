// SPDX-License-Identifier: MIT
// Reads web addresses as text (RFC 3986), without asking anybody. Any thread.
#pragma once

#include <string_view>

namespace veslora::UrlText {

/// The host of an absolute address, without user, port or the brackets of an IPv6 address. Empty where there
/// is none and for text that is no address.
[[nodiscard]] std::string_view host(std::string_view url);

} // namespace veslora::UrlText
