// SPDX-License-Identifier: MIT
// A desktop's look in words, for what a failed test says.
#pragma once

#include "VesloraUI/Platform/Appearance.h"

#include <ostream>

namespace veslora {

inline void PrintTo(const DesktopAppearance& appearance, std::ostream* stream) {
    *stream << (appearance.isTold ? "told" : "untold") << ", scheme "
            << static_cast<int>(appearance.colorScheme) << ", contrast " << appearance.highContrast
            << ", still " << appearance.reducedMotion << ", text " << appearance.textScale;
}

} // namespace veslora
