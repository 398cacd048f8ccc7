// SPDX-License-Identifier: MIT
// Finds the application behind a process by the process ids that windows carry, and activates it the way a
// taskbar does. Main thread only.
#pragma once

#include "VesloraLinux/X11/X11Connection.h"
#include "VesloraUI/Platform/HostApplications.h"

#include <map>

namespace veslora {

class X11HostApplications final : public HostApplications {
  public:
    explicit X11HostApplications(X11Connection& connection) : m_connection(connection) {}

    [[nodiscard]] std::optional<HostApp> hostAppOf(std::int32_t pid) override;
    [[nodiscard]] bool isFrontmost(std::int32_t pid) override;
    /// A window that has gone meanwhile is replaced by another one of the same process, if there is one.
    void activate(const HostApp& app) override;

  private:
    /// The topmost window of each process that has any.
    [[nodiscard]] std::map<std::int32_t, xcb_window_t> windowsByProcess();
    /// Process ids by window, 0 where none can be told, in the order of `windows`.
    [[nodiscard]] std::vector<std::int32_t> processesOf(const std::vector<xcb_window_t>& windows);
    void restoreIfIconic(xcb_window_t window);

    X11Connection& m_connection;
};

} // namespace veslora
