// SPDX-License-Identifier: MIT
// The seam that finds the application whose window a terminal process runs in, and brings it forward.
#pragma once

#include <cstdint>
#include <optional>

namespace veslora {

/// An application with a window of its own.
struct HostApp {
    std::int32_t pid = 0;     ///< the process that owns the window
    std::uint64_t window = 0; ///< the platform's own name of the window that was used last
    bool operator==(const HostApp&) const = default;
};

class HostApplications {
  public:
    virtual ~HostApplications() = default;

    /// Walks from `pid` up its parents, at most 10 steps, to the first one that owns a top-level window.
    [[nodiscard]] virtual std::optional<HostApp> hostAppOf(std::int32_t pid) = 0;

    /// Whether the host application of `pid` is the one that the user looks at now.
    [[nodiscard]] virtual bool isFrontmost(std::int32_t pid) = 0;

    /// Brings the application's window to the front and gives it the focus, as the window manager sees fit.
    virtual void activate(const HostApp& app) = 0;
};

} // namespace veslora
