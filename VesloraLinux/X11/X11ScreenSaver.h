// SPDX-License-Identifier: MIT
// The X server's own screen saver and power management of the display, held off. The server lets go by itself
// when our connection ends. Main thread only.
#pragma once

#include "VesloraLinux/Shared/Inhibitor.h"
#include "VesloraLinux/X11/X11Connection.h"

#include <optional>

namespace veslora {

class X11ScreenSaver final : public Inhibitor {
    Q_OBJECT

  public:
    /// The connection must outlive this and all that it grants.
    explicit X11ScreenSaver(X11Connection& connection) : m_connection(connection) {}

    [[nodiscard]] QString name() const override { return QStringLiteral("MIT-SCREEN-SAVER"); }
    [[nodiscard]] AwakeNeeds covers() const override { return {.system = false, .display = true}; }
    /// Refuses where the server can't do it.
    void inhibit(AwakeNeeds needs, const QString& reason, Done done) override;

  private:
    [[nodiscard]] bool canSuspend();

    X11Connection& m_connection;
    std::optional<bool> m_canSuspend; ///< absent until somebody asks
};

} // namespace veslora
