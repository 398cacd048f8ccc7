// SPDX-License-Identifier: MIT
#include "VesloraCore/Island/HoverTracker.h"

#include <algorithm>

namespace veslora {

HoverTracker::HoverTracker(const NotchGeometry& geometry, double delay)
    : openDelay(delay), expandedWidth(geometry.expanded.width), m_geometry(geometry) {}

void HoverTracker::setPinnedOpen(bool isPinnedOpen) {
    m_isPinnedOpen = isPinnedOpen;
    if (isPinnedOpen) {
        m_isExpanded = true;
        m_isHeldOpen = false;
        m_isShut = false;
        m_armedAt.reset();
    }
}

void HoverTracker::holdOpen() {
    if (m_isExpanded) {
        return;
    }
    m_isExpanded = true;
    m_isHeldOpen = true;
    m_coversAlert = isShowingAlert;
    m_isShut = false;
    m_armedAt.reset();
}

void HoverTracker::shut() {
    if (m_isPinnedOpen) {
        return;
    }
    m_isExpanded = false;
    m_isHeldOpen = false;
    m_isShut = true;
    m_armedAt.reset();
}

bool HoverTracker::update(Point mouse, Timestamp at) {
    if (m_isPinnedOpen) {
        return false;
    }
    return m_isExpanded ? updateOpen(mouse) : updateClosed(mouse, at);
}

bool HoverTracker::updateClosed(Point mouse, Timestamp at) {
    const auto zone = hotZone();
    const bool isInside = zone && zone->contains(mouse);
    // An alert takes the hot zone away, but not the pointer out of it.
    m_isShut = m_isShut && (isInside || !zone);
    if (!isInside || m_isShut) {
        m_armedAt.reset();
        return false;
    }
    if (!m_armedAt) {
        m_armedAt = at;
    }
    // Compared as the deadline is told: a sum and a difference of such large numbers need not agree, and
    // a timer that ends at the deadline must find it met.
    if (*m_armedAt + openDelay <= at) {
        m_isExpanded = true;
        m_armedAt.reset();
    }
    return m_isExpanded;
}

bool HoverTracker::updateOpen(Point mouse) {
    const bool isInside = openZone().contains(mouse);
    m_coversAlert = m_coversAlert && isShowingAlert;
    m_isHeldOpen = m_isHeldOpen && !isInside && (!isShowingAlert || m_coversAlert);
    m_isExpanded = isInside || m_isHeldOpen;
    return !m_isExpanded;
}

std::optional<Timestamp> HoverTracker::pendingOpenDeadline() const {
    if (m_isExpanded || isShowingAlert || !m_armedAt) {
        return std::nullopt;
    }
    return *m_armedAt + openDelay;
}

bool HoverTracker::acceptsClicks(Point at) const {
    const auto zones = clickZones();
    return std::ranges::any_of(zones, [at](const Rect& zone) { return zone.contains(at); });
}

std::vector<Rect> HoverTracker::clickZones() const {
    std::vector<Rect> zones;
    if (m_isExpanded) {
        zones.push_back(drawnZone());
    }
    if (isShowingAlert && isAlertOnScreen) {
        zones.push_back(alertSize ? m_geometry.alertFor(*alertSize) : m_geometry.alert);
    }
    return zones;
}

std::optional<Rect> HoverTracker::hotZone() const {
    if (m_isExpanded || isShowingAlert) {
        return std::nullopt;
    }
    return m_geometry.liveActivity(liveActivityWingWidth.value_or(0)).grownBy(notchSlack, notchSlack);
}

std::optional<Rect> HoverTracker::hoverZone() const {
    if (m_isExpanded && drawnZone() != openZone()) {
        return openZone();
    }
    return hotZone();
}

Rect HoverTracker::openZone() const {
    return m_geometry.expandedFor(expandedWidth, isEditing);
}

/// The open zone without what hovering adds to a narrow island.
Rect HoverTracker::drawnZone() const {
    Rect zone = openZone();
    const double spare = std::max(zone.width - expandedWidth, 0.0);
    return {zone.x + spare / 2, zone.y, zone.width - spare, zone.height};
}

} // namespace veslora
