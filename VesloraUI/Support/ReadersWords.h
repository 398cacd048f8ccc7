// SPDX-License-Identifier: MIT
// The words of the program's language for the texts that the core makes. Main thread only.
#pragma once

#include "VesloraCore/Text/Words.h"

namespace veslora {

/// Those of the translations that are installed, with the marks of the locale's numbers.
[[nodiscard]] Words readersWords();

} // namespace veslora
