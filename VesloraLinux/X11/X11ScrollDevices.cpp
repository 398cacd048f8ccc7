// SPDX-License-Identifier: MIT
#include "VesloraLinux/X11/X11ScrollDevices.h"

#include "VesloraUI/Platform/Logs.h"

#include <QPointingDevice>

#include <xcb/xinput.h>

#include <algorithm>

namespace veslora {
namespace {

/// The places of libinput's lists of ways to scroll.
constexpr std::size_t twoFingers = 0;
constexpr std::size_t edge = 1;
constexpr std::size_t button = 2;

bool isSet(const std::vector<std::uint8_t>& values, std::size_t place) {
    return place < values.size() && values[place] != 0;
}

const char* nameOf(ScrollSource source) {
    switch (source) {
    case ScrollSource::wheel:
        return "a wheel";
    case ScrollSource::fingers:
        return "fingers";
    case ScrollSource::unknown:
        break;
    }
    return "something unknown";
}

} // namespace

ScrollSource X11ScrollDevices::sourceOf(const QPointingDevice& device) {
    const auto [entry, isNew] = m_known.try_emplace(&device, ScrollSource::unknown);
    if (isNew) {
        QObject::connect(&device, &QObject::destroyed, &m_listener,
                         [this](const QObject* gone) { m_known.erase(gone); });
        entry->second = ask(static_cast<std::uint16_t>(device.systemId()));
        qCInfo(Logs::x11, "input device %lld scrolls by %s", static_cast<long long>(device.systemId()),
               nameOf(entry->second));
    }
    return entry->second;
}

ScrollSource X11ScrollDevices::ask(std::uint16_t device) {
    auto* const xcb = m_connection.xcb();
    const auto cookie = xcb_input_xi_list_properties(xcb, device);
    const X11Reply<xcb_input_xi_list_properties_reply_t> reply(
        xcb_input_xi_list_properties_reply(xcb, cookie, nullptr));
    m_connection.takeQueuedEvents();
    if (!reply) {
        return ScrollSource::unknown;
    }
    const auto* const first = xcb_input_xi_list_properties_properties(reply.get());
    const std::vector<xcb_atom_t> properties(
        first, first + xcb_input_xi_list_properties_properties_length(reply.get()));
    // The drivers give these to touchpads alone.
    if (hasProperty(properties, "libinput Tapping Enabled") || hasProperty(properties, "Synaptics Off")) {
        return ScrollSource::fingers;
    }
    if (!hasProperty(properties, "libinput Send Events Modes Available")) {
        return ScrollSource::unknown;
    }
    const auto available = bytes(device, "libinput Scroll Methods Available");
    if (isSet(available, twoFingers) || isSet(available, edge)) {
        return ScrollSource::fingers;
    }
    // A mouse that scrolls by its own movement while a button is held may have a wheel as well.
    return isSet(bytes(device, "libinput Scroll Method Enabled"), button) ? ScrollSource::unknown
                                                                          : ScrollSource::wheel;
}

bool X11ScrollDevices::hasProperty(const std::vector<xcb_atom_t>& properties, const std::string& name) {
    return std::ranges::find(properties, m_connection.atom(name)) != properties.end();
}

std::vector<std::uint8_t> X11ScrollDevices::bytes(std::uint16_t device, const std::string& property) {
    constexpr std::uint32_t mostUnits = 1; // of four bytes; the lists have two or three
    auto* const xcb = m_connection.xcb();
    const auto cookie = xcb_input_xi_get_property(xcb, device, 0, m_connection.atom(property),
                                                  XCB_GET_PROPERTY_TYPE_ANY, 0, mostUnits);
    const X11Reply<xcb_input_xi_get_property_reply_t> reply(
        xcb_input_xi_get_property_reply(xcb, cookie, nullptr));
    m_connection.takeQueuedEvents();
    if (!reply || reply->format != 8) {
        return {};
    }
    const auto* const first = static_cast<const std::uint8_t*>(xcb_input_xi_get_property_items(reply.get()));
    return {first, first + reply->num_items};
}

} // namespace veslora
