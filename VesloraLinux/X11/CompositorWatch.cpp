// SPDX-License-Identifier: MIT
// A compositor owns the selection _NET_WM_CM_Sn of its screen, as the Extended Window Manager Hints ask of
// it.
#include "VesloraLinux/X11/CompositorWatch.h"

#include "VesloraUI/Platform/Logs.h"

#include <xcb/xfixes.h>

namespace veslora {

CompositorWatch::CompositorWatch(X11Connection& connection)
    : m_connection(connection),
      m_selection(connection.atom("_NET_WM_CM_S" + std::to_string(connection.screenNumber()))) {
    xcb_connection_t* const xcb = connection.xcb();
    const auto* const extension = xcb_get_extension_data(xcb, &xcb_xfixes_id);
    if (extension != nullptr && extension->present != 0) {
        const auto cookie = xcb_xfixes_query_version(xcb, 5, 0);
        const X11Reply<xcb_xfixes_query_version_reply_t> version(
            xcb_xfixes_query_version_reply(xcb, cookie, nullptr));
        m_firstEvent = extension->first_event;
        xcb_xfixes_select_selection_input(xcb, connection.root(), m_selection,
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                              XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                              XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
        connection.flush();
        connect(&connection, &X11Connection::eventArrived, this,
                [this](const xcb_generic_event_t* event) { eventArrived(*event); });
    } else {
        qCWarning(Logs::x11, "a compositor that comes or goes is not heard of: the server lacks XFIXES");
    }
    update();
}

void CompositorWatch::eventArrived(const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7f) == m_firstEvent + XCB_XFIXES_SELECTION_NOTIFY) {
        update();
    }
}

/// Asks for the owner of now: what an event says may be out of date, and each change brings several.
void CompositorWatch::update() {
    const auto cookie = xcb_get_selection_owner(m_connection.xcb(), m_selection);
    const X11Reply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(m_connection.xcb(), cookie, nullptr));
    m_connection.takeQueuedEvents();
    const bool isComposited = reply && reply->owner != XCB_WINDOW_NONE;
    if (isComposited != m_isComposited) {
        m_isComposited = isComposited;
        qCInfo(Logs::x11, isComposited ? "a compositor is there" : "the compositor has gone");
        emit changed();
    }
}

} // namespace veslora
