// SPDX-License-Identifier: MIT
#include "VesloraCore/Island/IslandState.h"

#include "VesloraCore/Island/NotchGeometry.h"

#include <algorithm>

namespace veslora {

namespace {

constexpr double closedTopRadius = 6;
constexpr double closedBottomRadius = 8;

/// A closed island is wider than the notch by the flare of its two top corners, so that its body lies right
/// under it.
IslandLayout closedLayout(const IslandLayoutInputs& inputs) {
    const double extra =
        inputs.state == IslandState::closed ? 2 * closedTopRadius : 2 * inputs.wingWidth.value_or(0);
    return {inputs.notchSize.width + extra, inputs.notchSize.height, closedTopRadius, closedBottomRadius};
}

IslandLayout alertLayout(Size size) {
    return {size.width, size.height, 10, 14};
}

IslandLayout requestLayout(const IslandLayoutInputs& inputs) {
    const Size body = NotchGeometry::claudeRequestAlertSize;
    return alertLayout({body.width, inputs.notchSize.height + body.height});
}

IslandLayout expandedLayout(const IslandLayoutInputs& inputs) {
    const double tray = inputs.isEditing ? NotchGeometry::editTrayHeight : 0;
    return {inputs.islandWidth, inputs.expandedSize.height + tray, 12, 16};
}

IslandLayout wishedLayout(const IslandLayoutInputs& inputs) {
    switch (inputs.state) {
    case IslandState::expanded:
        return expandedLayout(inputs);
    case IslandState::alert:
        return alertLayout(inputs.alertSize);
    case IslandState::claudeAlert:
        return inputs.hasPendingRequests ? requestLayout(inputs) : alertLayout(inputs.alertSize);
    case IslandState::closed:
    case IslandState::liveActivity:
    case IslandState::musicActivity:
    case IslandState::metronomeActivity:
    case IslandState::claudeActivity:
    case IslandState::claudeWorkingActivity:
    case IslandState::keepAwakeActivity:
        break;
    }
    return closedLayout(inputs);
}

} // namespace

IslandState islandStateOf(bool isExpanded, LiveActivityKind kind) {
    if (isExpanded) {
        return IslandState::expanded;
    }
    switch (kind) {
    case LiveActivityKind::timerAlert:
        return IslandState::alert;
    case LiveActivityKind::claudeAlert:
        return IslandState::claudeAlert;
    case LiveActivityKind::claudeFinished:
        return IslandState::claudeActivity;
    case LiveActivityKind::metronome:
        return IslandState::metronomeActivity;
    case LiveActivityKind::timer:
        return IslandState::liveActivity;
    case LiveActivityKind::music:
        return IslandState::musicActivity;
    case LiveActivityKind::claudeWorking:
        return IslandState::claudeWorkingActivity;
    case LiveActivityKind::keepAwake:
        return IslandState::keepAwakeActivity;
    case LiveActivityKind::none:
        break;
    }
    return IslandState::closed;
}

bool isOpen(IslandState state) {
    return state == IslandState::alert || state == IslandState::claudeAlert || state == IslandState::expanded;
}

IslandLayout islandLayout(const IslandLayoutInputs& inputs) {
    IslandLayout layout = wishedLayout(inputs);
    layout.width = std::min(layout.width, inputs.screenWidth);
    return layout;
}

} // namespace veslora
