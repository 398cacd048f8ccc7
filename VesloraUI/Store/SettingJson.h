// SPDX-License-Identifier: MIT
// A setting's value as it stands in the file and in what is exported. Pure functions.
#pragma once

#include "VesloraCore/Text/Json.h"
#include "VesloraUI/Store/Setting.h"

#include <optional>

namespace veslora::SettingJson {

/// A number by the shortest text that reads as that very number. Absent for one that is not finite. A text
/// must be UTF-8.
[[nodiscard]] std::optional<Json> make(const Setting::Value& value);

/// The stored value as the type of `standard`; a fraction of an integer is cut off. Absent where it is of
/// another type.
[[nodiscard]] std::optional<Setting::Value> read(const Json& stored, const Setting::Value& standard);

} // namespace veslora::SettingJson
