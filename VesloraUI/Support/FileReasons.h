// SPDX-License-Identifier: MIT
// Why a file could not be read or written, in words that follow a colon, in the user's language.
#pragma once

#include <QString>

#include <system_error>

namespace veslora::FileReasons {

[[nodiscard]] QString text(const std::error_code& error);

} // namespace veslora::FileReasons
