// SPDX-License-Identifier: MIT
#include "tests/VesloraLinux/Support/Bystander.h"

#include "VesloraLinux/X11/X11Reply.h"
#include "tests/VesloraLinux/Support/Waiting.h"

#include <algorithm>
#include <stdexcept>

namespace veslora::testing {
namespace {

xcb_atom_t atomOf(xcb_connection_t* connection, const std::string& name) {
    const auto cookie = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
    return X11Reply<xcb_intern_atom_reply_t>(xcb_intern_atom_reply(connection, cookie, nullptr))->atom;
}

} // namespace

Bystander::Bystander(const BystanderOptions& options)
    : m_connection(xcb_connect(nullptr, nullptr)),
      m_root(xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root),
      m_window(xcb_generate_id(m_connection)) {
    const std::uint32_t values[] = {options.color.rgb() & 0xffffffU, options.isOverrideRedirect ? 1U : 0U,
                                    XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_FOCUS_CHANGE |
                                        XCB_EVENT_MASK_POINTER_MOTION | XCB_EVENT_MASK_STRUCTURE_NOTIFY |
                                        XCB_EVENT_MASK_VISIBILITY_CHANGE};
    xcb_create_window(
        m_connection, XCB_COPY_FROM_PARENT, m_window, m_root, static_cast<std::int16_t>(options.frame.x()),
        static_cast<std::int16_t>(options.frame.y()), static_cast<std::uint16_t>(options.frame.width()),
        static_cast<std::uint16_t>(options.frame.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
        XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
    show(options);
}

Bystander::~Bystander() {
    xcb_disconnect(m_connection);
}

void Bystander::show(const BystanderOptions& options) {
    if (options.isFullscreen) {
        setValues("_NET_WM_STATE", XCB_ATOM_ATOM, {atom("_NET_WM_STATE_FULLSCREEN")});
    }
    if (options.isBorderless) {
        constexpr std::uint32_t decorations = 2;
        setValues("_MOTIF_WM_HINTS", atom("_MOTIF_WM_HINTS"), {decorations, 0, 0, 0, 0});
    }
    if (options.pid != 0) {
        setValues("_NET_WM_PID", XCB_ATOM_CARDINAL, {static_cast<std::uint32_t>(options.pid)});
    }
    if (!options.type.empty()) {
        setValues("_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM, {atom(options.type)});
    }
    if (!options.strut.empty()) {
        setStrut(options.strut);
    }
    if (!options.machine.empty()) {
        xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, m_window, XCB_ATOM_WM_CLIENT_MACHINE,
                            XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(options.machine.size()),
                            options.machine.data());
    }
    // The place is the user's wish: else the window manager would choose one.
    setValues("WM_NORMAL_HINTS", XCB_ATOM_WM_SIZE_HINTS,
              {1, static_cast<std::uint32_t>(options.frame.x()),
               static_cast<std::uint32_t>(options.frame.y()), 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
    map();
    if (!waitUntil([this] { return isViewable(); })) {
        throw std::runtime_error("a window did not appear");
    }
}

void Bystander::pump() {
    while (const X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(m_connection)}) {
        switch (event->response_type & 0x7f) {
        case XCB_BUTTON_PRESS:
            ++m_presses;
            break;
        case XCB_MOTION_NOTIFY:
            ++m_motions;
            break;
        case XCB_FOCUS_OUT:
            ++m_focusLosses;
            break;
        case XCB_VISIBILITY_NOTIFY:
            if (m_fights && reinterpret_cast<xcb_visibility_notify_event_t*>(event.get())->state !=
                                XCB_VISIBILITY_UNOBSCURED) {
                raise();
            }
            break;
        default:
            break;
        }
    }
}

int Bystander::presses() {
    pump();
    return m_presses;
}

int Bystander::motions() {
    pump();
    return m_motions;
}

int Bystander::focusLosses() {
    pump();
    return m_focusLosses;
}

bool Bystander::hasFocus() {
    const X11Reply<xcb_get_input_focus_reply_t> focus(
        xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
    return focus && focus->focus == m_window;
}

bool Bystander::isViewable() {
    const X11Reply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
        m_connection, xcb_get_window_attributes(m_connection, m_window), nullptr));
    return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

void Bystander::raise() {
    constexpr std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(m_connection, m_window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    xcb_flush(m_connection);
}

void Bystander::iconify() {
    constexpr std::uint32_t iconic = 3;
    ask("WM_CHANGE_STATE", {iconic});
}

void Bystander::map() {
    xcb_map_window(m_connection, m_window);
    xcb_flush(m_connection);
}

void Bystander::setState(const std::string& state, bool isOn) {
    const std::string name = "_NET_WM_STATE_" + state;
    const bool isMaximised = state == "MAXIMIZED";
    ask("_NET_WM_STATE", {isOn ? 1U : 0U, atom(isMaximised ? name + "_VERT" : name),
                          isMaximised ? atom(name + "_HORZ") : 0U, 1});
}

void Bystander::moveToDesktop(std::uint32_t desktop) {
    ask("_NET_WM_DESKTOP", {desktop, 2});
}

void Bystander::place(const QRect& frame) {
    const std::uint32_t values[] = {
        static_cast<std::uint32_t>(frame.x()), static_cast<std::uint32_t>(frame.y()),
        static_cast<std::uint32_t>(frame.width()), static_cast<std::uint32_t>(frame.height())};
    xcb_configure_window(m_connection, m_window,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                             XCB_CONFIG_WINDOW_HEIGHT,
                         values);
    xcb_flush(m_connection);
}

void Bystander::setTitle(const std::string& title) {
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, m_window, atom("_NET_WM_NAME"),
                        atom("UTF8_STRING"), 8, static_cast<std::uint32_t>(title.size()), title.data());
    xcb_flush(m_connection);
}

void Bystander::writeStates(const std::vector<std::string>& states) {
    std::vector<std::uint32_t> atoms;
    for (const std::string& state : states) {
        atoms.push_back(atom("_NET_WM_STATE_" + state));
    }
    setValues("_NET_WM_STATE", XCB_ATOM_ATOM, atoms);
}

void Bystander::writeDesktop(std::uint32_t desktop) {
    setValues("_NET_WM_DESKTOP", XCB_ATOM_CARDINAL, {desktop});
}

void Bystander::ask(const std::string& type, const std::vector<std::uint32_t>& data) {
    askWindowManager(m_connection, m_window, type, data);
}

void Bystander::setStrut(const std::vector<std::uint32_t>& strut) {
    setValues("_NET_WM_STRUT_PARTIAL", XCB_ATOM_CARDINAL, strut);
}

xcb_atom_t Bystander::atom(const std::string& name) const {
    return atomOf(m_connection, name);
}

void Bystander::setValues(const std::string& property, xcb_atom_t type,
                          const std::vector<std::uint32_t>& values) {
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, m_window, atom(property), type, 32,
                        static_cast<std::uint32_t>(values.size()), values.data());
    xcb_flush(m_connection);
}

void askWindowManager(xcb_connection_t* connection, xcb_window_t window, const std::string& type,
                      const std::vector<std::uint32_t>& data) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = atomOf(connection, type);
    std::ranges::copy(data, message.data.data32);
    xcb_send_event(connection, 0, xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(connection);
}

std::vector<xcb_window_t> stackOf(xcb_connection_t* connection, xcb_window_t root) {
    const X11Reply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection, xcb_query_tree(connection, root), nullptr));
    const xcb_window_t* const first = xcb_query_tree_children(tree.get());
    return {first, first + tree->children_len};
}

} // namespace veslora::testing
