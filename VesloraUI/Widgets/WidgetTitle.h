// SPDX-License-Identifier: MIT
// What widgets are called in the program's language. Main thread only.
#pragma once

#include "VesloraCore/Widgets/WidgetLayout.h"

#include <QString>

namespace veslora {

[[nodiscard]] QString shownTitle(WidgetID id);

} // namespace veslora
