// SPDX-License-Identifier: MIT
// The program's own icon, as window managers and task bars show it. Main thread only.
#pragma once

#include <QIcon>

namespace veslora {

/// In the sizes in which windows show one.
[[nodiscard]] QIcon programIcon();

} // namespace veslora
