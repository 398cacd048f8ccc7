// SPDX-License-Identifier: MIT
// What the power supplies of a Linux machine tell about themselves, and what its batteries add up to. Their
// attributes are text: one that is not of the form that the kernel writes counts as missing. Pure functions,
// any thread.
#pragma once

#include "VesloraCore/System/MeterMath.h"

#include <array>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veslora::PowerSupply {

/// The files of every power supply that are looked at, each a line with an end.
inline constexpr std::array<std::string_view, 3> attributeNames{"type", "scope", "online"};

/// Those of one that `isBattery` besides. Energy is in millionths of a watt hour, charge of an ampere hour,
/// and power, current and voltage accordingly.
inline constexpr std::array<std::string_view, 11> batteryAttributeNames{
    "present",  "status",    "energy_now",  "energy_full",        "charge_now", "charge_full",
    "capacity", "power_now", "current_now", "voltage_min_design", "voltage_now"};

/// By the names of the files; those that are not there, or can't be read, are missing.
using Attributes = std::map<std::string, std::string, std::less<>>;

/// Whether it powers the machine, by its type and scope. Another device's battery, such as a mouse's, should
/// not be asked for more: that may have to go out over the air.
[[nodiscard]] bool isBattery(const Attributes& supply);

/// All batteries that power the machine, taken together by their energy. Those of other devices, such as
/// mice, don't count, nor does one that is not in its bay or whose level can't be told. Absent when none is
/// left.
///
/// Being charged is what any battery says of itself. Mains power is there when a supply says so; on a machine
/// without any other supply, when no battery is being discharged and one of them says what it does instead.
/// Times come from the present power, and are absent without it and beyond ten days.
[[nodiscard]] std::optional<BatteryReading> batteryReading(const std::vector<Attributes>& supplies);

} // namespace veslora::PowerSupply
