// SPDX-License-Identifier: MIT
// The seam for having the program started when the user logs in. Main thread only.
#pragma once

#include <string>
#include <system_error>

namespace veslora {

class LoginItem {
  public:
    virtual ~LoginItem() = default;

    /// Whether the desktop will start the program at the next login; asks again each time, for others change
    /// that too.
    [[nodiscard]] virtual bool isEnabled() = 0;
    virtual std::error_code enable() = 0;
    virtual std::error_code disable() = 0;
    /// The file that the last two change, for the user to read.
    [[nodiscard]] virtual std::string place() const = 0;
};

} // namespace veslora
