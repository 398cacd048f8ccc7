// SPDX-License-Identifier: MIT
// What can be done to a widget of the rack without dragging it, as assistive programs offer it. Main thread
// only.
#pragma once

#include "VesloraUI/Widgets/RackModel.h"

#include <QStringList>

namespace veslora::ModuleActions {

enum class Action { moveLeft, moveRight, toPreviousPage, toNextPage, makeSmall, makeWide, remove };

inline constexpr std::array all{Action::moveLeft,   Action::moveRight, Action::toPreviousPage,
                                Action::toNextPage, Action::makeSmall, Action::makeWide,
                                Action::remove};

/// Untranslated, by which an action is asked for: "move left".
[[nodiscard]] QString name(Action action);
/// As the user reads it.
[[nodiscard]] QString localizedName(Action action);

/// Whether it would change anything now.
[[nodiscard]] bool isAvailable(Action action, const RackModel& rack, WidgetID id);
/// Nothing where it is not available. The page with the widget shows afterwards.
void perform(Action action, RackModel& rack, WidgetID id);

} // namespace veslora::ModuleActions
