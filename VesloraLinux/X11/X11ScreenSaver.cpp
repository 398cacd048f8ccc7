// SPDX-License-Identifier: MIT
#include "VesloraLinux/X11/X11ScreenSaver.h"

#include "VesloraUI/Platform/Logs.h"

#include <xcb/screensaver.h>

namespace veslora {
namespace {

/// The server counts, so that a new one may begin before the old one ends.
class Suspension final : public Inhibition {
  public:
    explicit Suspension(X11Connection& connection) : m_connection(connection) { set(1); }
    ~Suspension() override { set(0); }
    Suspension(const Suspension&) = delete;
    Suspension& operator=(const Suspension&) = delete;

  private:
    void set(std::uint32_t isSuspended) {
        xcb_screensaver_suspend(m_connection.xcb(), isSuspended);
        m_connection.flush();
    }

    X11Connection& m_connection;
};

} // namespace

bool X11ScreenSaver::canSuspend() {
    if (!m_canSuspend) {
        const auto* const extension = xcb_get_extension_data(m_connection.xcb(), &xcb_screensaver_id);
        m_canSuspend = false;
        if (extension != nullptr && extension->present != 0) {
            const auto cookie = xcb_screensaver_query_version(m_connection.xcb(), 1, 1);
            const X11Reply<xcb_screensaver_query_version_reply_t> version(
                xcb_screensaver_query_version_reply(m_connection.xcb(), cookie, nullptr));
            m_canSuspend =
                version && (version->server_major_version > 1 ||
                            (version->server_major_version == 1 && version->server_minor_version >= 1));
        }
        m_connection.takeQueuedEvents();
        if (!*m_canSuspend) {
            qCInfo(Logs::power, "the X server's screen saver can't be suspended: no MIT-SCREEN-SAVER 1.1");
        }
    }
    return *m_canSuspend;
}

void X11ScreenSaver::inhibit(AwakeNeeds /*needs*/, const QString& /*reason*/, Done done) {
    done(canSuspend() ? std::make_unique<Suspension>(m_connection) : nullptr);
}

} // namespace veslora
