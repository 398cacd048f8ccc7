// SPDX-License-Identifier: MIT
// The settings as a store has them. Main thread only.
#pragma once

#include "VesloraCore/Text/Json.h"

namespace veslora {

class Defaults;

namespace StoredSettings {

/// What counts now, by key; `SettingsDocument::read` takes it over without a fault. State is left out, and so
/// is what the file holds besides.
[[nodiscard]] Json print(const Defaults& settings);

} // namespace StoredSettings
} // namespace veslora
