// SPDX-License-Identifier: MIT
// Whether a compositor blends the windows of an X screen. Main thread only.
#pragma once

#include "VesloraLinux/X11/X11Connection.h"

namespace veslora {

class CompositorWatch final : public QObject {
    Q_OBJECT

  public:
    explicit CompositorWatch(X11Connection& connection);

    [[nodiscard]] bool isComposited() const { return m_isComposited; }

  signals:
    /// A compositor came or went; never given twice for the same change.
    void changed();

  private:
    void eventArrived(const xcb_generic_event_t& event);
    void update();

    X11Connection& m_connection;
    xcb_atom_t m_selection;
    std::uint8_t m_firstEvent = 0;
    bool m_isComposited = false;
};

} // namespace veslora
