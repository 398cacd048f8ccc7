// SPDX-License-Identifier: MIT
// What the power supplies of a Linux machine tell about themselves, and what its batteries add up to. Their
// attributes are text: one that is not of the form that the kernel writes counts as missing. Pure functions,
// any thread.
#pragma once

#include "VesloraCore/MeterMath.h"

#include <array>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veslora::PowerSupply {

/// The files of a power supply that are looked at, each a line with an end. Energy is in millionths of a watt
/// hour, charge of an ampere hour, and power, current and voltage accordingly.
inline constexpr std::array<std::string_view, 14> attributeNames{
    "type",       "scope",       "present",  "status",    "online",      "energy_now",         "energy_full",
    "charge_now", "charge_full", "capacity", "power_now", "current_now", "voltage_min_design", "voltage_now"};

/// By the names of the files; those that are not there, or can't be read, are missing.
using Attributes = std::map<std::string, std::string, std::less<>>;

/// All batteries that power the machine, taken together by their energy. Those of other devices, such as
/// mice, don't count, nor does one that is not in its bay or whose level can't be told. Absent when none is
/// left.
///
/// Being charged is what any battery says of itself. Mains power is there when a supply says so; on a machine
/// without any other supply, when no battery is being discharged and one of them says what it does instead.
/// Times come from the present power, and are absent without it and beyond ten days.
[[nodiscard]] std::optional<BatteryReading> batteryReading(const std::vector<Attributes>& supplies);

} // namespace veslora::PowerSupply
