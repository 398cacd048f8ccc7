// SPDX-License-Identifier: MIT
// The seam that opens other applications. Main thread only.
#pragma once

#include <string>

namespace veslora {

class AppOpening {
  public:
    virtual ~AppOpening() = default;

    /// Starts the application with that identifier, such as "com.spotify.client", or brings it to the front.
    /// Returns at once; where it is not installed nothing happens.
    virtual void open(const std::string& bundleID) = 0;
};

} // namespace veslora
