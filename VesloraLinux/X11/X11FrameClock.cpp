// SPDX-License-Identifier: MIT
#include "VesloraLinux/X11/X11FrameClock.h"

#include <QGuiApplication>

#include <algorithm>
#include <span>
#include <utility>

namespace veslora {
namespace {

/// Set in an event's type by the server if another program sent it.
constexpr std::uint8_t sentBit = 0x80;

xcb_connection_t* connectionOfQt() {
    return qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
}

bool isPointerEvent(std::uint8_t type) {
    return type >= XCB_BUTTON_PRESS && type <= XCB_LEAVE_NOTIFY;
}

/// The pixels of an image of 32 bits a pixel, in rows without gaps; empty for any other form.
std::span<const std::uint32_t> pixelsOf(const xcb_get_image_reply_t* image, const QRect& area) {
    const auto count = static_cast<std::size_t>(area.width()) * static_cast<std::size_t>(area.height());
    if (!image || static_cast<std::size_t>(xcb_get_image_data_length(image)) != count * 4) {
        return {};
    }
    // xcb aligns what follows a reply's head by four bytes.
    return {reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(image)), count};
}

xcb_get_image_cookie_t requestImage(xcb_connection_t* xcb, xcb_window_t window, const QRect& area) {
    return xcb_get_image(xcb, XCB_IMAGE_FORMAT_Z_PIXMAP, window, static_cast<std::int16_t>(area.x()),
                         static_cast<std::int16_t>(area.y()), static_cast<std::uint16_t>(area.width()),
                         static_cast<std::uint16_t>(area.height()), ~0U);
}

} // namespace

struct X11FrameClock::Comparison {
    bool isEqual = false;
    bool isUniform = true; ///< one colour alone, which proves nothing when it is found again
};

X11FrameClock::X11FrameClock(X11Connection& connection, X11Panel& panel)
    : m_connection(connection), m_panel(panel), m_property(connection.atom("_VESLORA_FRAME")) {
    connect(&panel.compositor(), &CompositorWatch::changed, this, [this] { m_isReadable = false; });
    qGuiApp->installNativeEventFilter(this);
}

X11FrameClock::~X11FrameClock() {
    qGuiApp->removeNativeEventFilter(this);
}

Task X11FrameClock::afterFrame(std::function<void(std::uint32_t)> shown) {
    std::erase_if(m_marks, [](const Mark& mark) { return !mark.state->run; });
    auto eventTime = std::make_shared<std::uint32_t>(0);
    auto state = std::make_shared<TaskState>();
    state->run = [eventTime, shown = std::move(shown)] { shown(*eventTime); };
    xcb_connection_t* const xcb = connectionOfQt();
    const auto cookie = xcb_change_property(xcb, XCB_PROP_MODE_APPEND, m_panel.nativeWindow(), m_property,
                                            XCB_ATOM_INTEGER, 32, 0, nullptr);
    xcb_flush(xcb);
    m_marks.push_back({cookie.sequence, state, std::move(eventTime)});
    return Task(std::move(state));
}

void X11FrameClock::takeMark(std::uint32_t sequence, std::uint32_t eventTime) {
    const auto found = std::ranges::find(m_marks, sequence, &Mark::sequence);
    if (found == m_marks.end()) {
        return;
    }
    const Mark mark = *found;
    m_marks.erase(found);
    *mark.eventTime = eventTime;
    if (const auto run = std::exchange(mark.state->run, nullptr)) {
        run();
    }
}

bool X11FrameClock::nativeEventFilter(const QByteArray& /*eventType*/, void* message, qintptr* /*result*/) {
    const auto* const event = static_cast<const xcb_generic_event_t*>(message);
    if (event->response_type == XCB_PROPERTY_NOTIFY) {
        const auto* const property = reinterpret_cast<const xcb_property_notify_event_t*>(event);
        if (isOfPanel(property->window) && property->atom == m_property) {
            takeMark(event->full_sequence, property->time);
        }
        return false;
    }
    if ((event->response_type & sentBit) == 0 || !isPointerEvent(event->response_type & ~sentBit)) {
        return false;
    }
    // All of the core protocol's pointer events have their window at this place.
    return isOfPanel(reinterpret_cast<const xcb_button_press_event_t*>(event)->event);
}

ScreenLook X11FrameClock::look(const QRectF& area) {
    const double ratio = m_panel.window()->devicePixelRatio();
    const QRectF native(area.topLeft() * ratio, area.size() * ratio);
    // Only whole pixels of it: those on its edge belong to what lies around it too.
    const QPoint first(qCeil(native.left()), qCeil(native.top()));
    const QRect inner(first, QPoint(qFloor(native.right()) - 1, qFloor(native.bottom()) - 1));
    const auto found = inner.isEmpty() ? std::nullopt : compare(inner);
    if (found && found->isEqual) {
        m_isReadable |= !found->isUniform;
        return m_isReadable ? ScreenLook::asDrawn : ScreenLook::unknown;
    }
    return m_isReadable ? ScreenLook::otherwise : ScreenLook::unknown;
}

std::optional<X11FrameClock::Comparison> X11FrameClock::compare(const QRect& nativeArea) const {
    xcb_connection_t* const xcb = m_connection.xcb();
    const xcb_window_t window = m_panel.nativeWindow();
    const X11Reply<xcb_translate_coordinates_reply_t> place(xcb_translate_coordinates_reply(
        xcb,
        xcb_translate_coordinates(xcb, window, m_connection.root(), static_cast<std::int16_t>(nativeArea.x()),
                                  static_cast<std::int16_t>(nativeArea.y())),
        nullptr));
    m_connection.takeQueuedEvents();
    if (!place) {
        return std::nullopt;
    }
    const QRect onScreen(QPoint(place->dst_x, place->dst_y), nativeArea.size());
    const auto screenCookie = requestImage(xcb, m_connection.root(), onScreen);
    const auto panelCookie = requestImage(xcb, window, nativeArea);
    const X11Reply<xcb_get_image_reply_t> screenImage(xcb_get_image_reply(xcb, screenCookie, nullptr));
    const X11Reply<xcb_get_image_reply_t> panelImage(xcb_get_image_reply(xcb, panelCookie, nullptr));
    m_connection.takeQueuedEvents();
    const auto screen = pixelsOf(screenImage.get(), nativeArea);
    const auto panel = pixelsOf(panelImage.get(), nativeArea);
    if (screen.empty() || panel.empty()) {
        return std::nullopt;
    }
    constexpr std::uint32_t colour = 0x00ffffff;
    Comparison result{.isEqual = true};
    for (std::size_t index = 0; index < panel.size(); ++index) {
        result.isEqual &= (screen[index] & colour) == (panel[index] & colour);
        result.isUniform &= (panel[index] & colour) == (panel[0] & colour);
    }
    return result;
}

} // namespace veslora
