// SPDX-License-Identifier: MIT
#include "VesloraLinux/X11/X11Pointer.h"

#include "VesloraLinux/X11/PanelPlacement.h"
#include "VesloraUI/Platform/Logs.h"

#include <QEvent>

#include <xcb/xinput.h>

namespace veslora {
namespace {

/// Number of the input extension's events, asked for in a version that gives raw events during grabs too; 0
/// when the server has no such version.
std::uint8_t inputOpcode(xcb_connection_t* xcb) {
    const auto* const extension = xcb_get_extension_data(xcb, &xcb_input_id);
    if (extension == nullptr || extension->present == 0) {
        qCWarning(Logs::x11, "the pointer goes unheard: the server lacks XInput");
        return 0;
    }
    const auto cookie = xcb_input_xi_query_version(xcb, 2, 2);
    const X11Reply<xcb_input_xi_query_version_reply_t> version(
        xcb_input_xi_query_version_reply(xcb, cookie, nullptr));
    const bool isRecent = version && (version->major_version > 2 ||
                                      (version->major_version == 2 && version->minor_version >= 2));
    if (!isRecent) {
        qCWarning(Logs::x11, "the pointer goes unheard: the server lacks XInput 2.2");
    }
    return isRecent ? extension->major_opcode : 0;
}

} // namespace

X11Pointer::X11Pointer(X11Connection& connection, const X11Screens& screens,
                       std::function<xcb_window_t()> panel)
    : m_connection(connection), m_screens(screens), m_panel(std::move(panel)),
      m_inputOpcode(inputOpcode(connection.xcb())) {
    connect(&m_connection, &X11Connection::eventArrived, this,
            [this](const xcb_generic_event_t* event) { eventArrived(*event); });
    connect(&m_connection, &X11Connection::batchEnded, this, &X11Pointer::batchEnded);
}

std::optional<Point> X11Pointer::positionOn(const ScreenInfo& screen) const {
    const auto frame = m_screens.nativeFrame(screen.name);
    const auto pointer = frame ? state() : std::nullopt;
    if (!pointer || !frame->contains(pointer->place)) {
        return std::nullopt;
    }
    return PanelPlacement::placeOfPixel(screen, pointer->place - frame->topLeft());
}

bool X11Pointer::isButtonDown() const {
    const auto pointer = state();
    return pointer && pointer->isButtonDown;
}

void X11Pointer::setTracking(bool isTracking) {
    m_isTracking = isTracking;
    selectEvents();
}

void X11Pointer::setWatchingPresses(bool isWatching) {
    m_isWatchingPresses = isWatching;
    selectEvents();
}

bool X11Pointer::eventFilter(QObject*, QEvent* event) {
    if (event->type() == QEvent::MouseButtonRelease) {
        QMetaObject::invokeMethod(this, &Pointer::released, Qt::QueuedConnection);
    }
    return false;
}

void X11Pointer::selectEvents() {
    if (m_inputOpcode == 0) {
        return;
    }
    struct {
        xcb_input_event_mask_t header{XCB_INPUT_DEVICE_ALL_MASTER, 1};
        std::uint32_t mask = 0;
    } selection;
    if (m_isTracking) {
        selection.mask |= XCB_INPUT_XI_EVENT_MASK_RAW_MOTION;
    }
    if (m_isWatchingPresses) {
        selection.mask |= XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS;
    }
    xcb_input_xi_select_events(m_connection.xcb(), m_connection.root(), 1, &selection.header);
    m_connection.flush();
}

void X11Pointer::eventArrived(const xcb_generic_event_t& event) {
    const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
    if ((event.response_type & 0x7f) != XCB_GE_GENERIC || generic.extension != m_inputOpcode) {
        return;
    }
    if (generic.event_type == XCB_INPUT_RAW_MOTION) {
        m_hasMoved |= m_isTracking;
    } else if (generic.event_type == XCB_INPUT_RAW_BUTTON_PRESS) {
        // A turn of the wheel is a press of one of the higher buttons and means nothing here.
        const auto button = reinterpret_cast<const xcb_input_raw_button_press_event_t&>(event).detail;
        m_wasPressed |= m_isWatchingPresses && (button == XCB_BUTTON_INDEX_1 || button == XCB_BUTTON_INDEX_3);
    }
}

void X11Pointer::batchEnded() {
    const bool hasMoved = std::exchange(m_hasMoved, false);
    const bool wasPressed = std::exchange(m_wasPressed, false);
    if (!hasMoved && !wasPressed) {
        return;
    }
    // One question to the server serves everyone who is told.
    m_told = ask();
    m_isTelling = true;
    if (wasPressed && m_told && m_told->window != m_panel()) {
        emit pressedOutside();
    }
    if (hasMoved) {
        emit moved();
    }
    m_isTelling = false;
}

std::optional<X11Pointer::State> X11Pointer::state() const {
    return m_isTelling ? m_told : ask();
}

std::optional<X11Pointer::State> X11Pointer::ask() const {
    const auto cookie = xcb_query_pointer(m_connection.xcb(), m_connection.root());
    const X11Reply<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(m_connection.xcb(), cookie, nullptr));
    m_connection.takeQueuedEvents();
    if (!reply || reply->same_screen == 0) {
        return std::nullopt;
    }
    constexpr unsigned buttons =
        XCB_KEY_BUT_MASK_BUTTON_1 | XCB_KEY_BUT_MASK_BUTTON_2 | XCB_KEY_BUT_MASK_BUTTON_3;
    return State{QPoint(reply->root_x, reply->root_y), reply->child, (reply->mask & buttons) != 0};
}

} // namespace veslora
