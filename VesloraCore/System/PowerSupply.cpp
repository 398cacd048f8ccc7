// SPDX-License-Identifier: MIT
#include "VesloraCore/System/PowerSupply.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace veslora::PowerSupply {

namespace {

/// The text of an attribute without its line end; empty where it has none.
std::string_view textOf(const Attributes& supply, std::string_view name) {
    const auto found = supply.find(name);
    if (found == supply.end() || !found->second.ends_with('\n')) {
        return {};
    }
    return std::string_view(found->second).substr(0, found->second.size() - 1);
}

/// What a battery may hold at all: a thousand kilowatt hours in millionths of a watt hour.
constexpr double largest = 1e12;

/// The sign is left out: some drivers give the current of a discharge as a negative one.
std::optional<double> numberOf(const Attributes& supply, std::string_view name) {
    const std::string_view text = textOf(supply, name);
    std::int64_t number = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isWhole = read.ec == std::errc() && read.ptr == text.data() + text.size();
    const double size = std::abs(static_cast<double>(number));
    return isWhole && size <= largest ? std::optional(size) : std::nullopt;
}

std::optional<double> positive(std::optional<double> number) {
    return number && *number > 0 ? number : std::nullopt;
}

/// Another device's, such as a mouse's, powers only that.
bool isOfTheMachine(const Attributes& supply) {
    return textOf(supply, "scope") != "Device";
}

/// "Mains", "USB", "Wireless": whatever brings power from outside.
bool isLine(const Attributes& supply) {
    const std::string_view type = textOf(supply, "type");
    return isOfTheMachine(supply) && (type == "Mains" || type == "Wireless" || type.starts_with("USB"));
}

struct Battery {
    std::string_view status;
    double share = 0; ///< 1 is full
    /// In one unit for now, full and rate; 0 where only the share is known.
    double now = 0;
    double full = 0;
    std::optional<double> rate; ///< what an hour adds or takes
    bool isEnergy = false;      ///< the unit can be compared with other batteries'
};

/// Charge becomes energy by the voltage that the battery is made for, as its capacity in energy is given by
/// that too.
std::optional<double> voltageOf(const Attributes& supply) {
    constexpr double millionths = 1e6;
    auto voltage = positive(numberOf(supply, "voltage_min_design"));
    voltage = voltage ? voltage : positive(numberOf(supply, "voltage_now"));
    return voltage ? std::optional(*voltage / millionths) : std::nullopt;
}

void readEnergy(const Attributes& supply, Battery& battery) {
    const auto now = numberOf(supply, "energy_now");
    const auto full = positive(numberOf(supply, "energy_full"));
    if (now && full) {
        battery.now = *now;
        battery.full = *full;
        battery.rate = positive(numberOf(supply, "power_now"));
        battery.isEnergy = true;
    }
}

void readCharge(const Attributes& supply, Battery& battery) {
    const auto now = numberOf(supply, "charge_now");
    const auto full = positive(numberOf(supply, "charge_full"));
    if (now && full) {
        const auto voltage = voltageOf(supply);
        const auto current = positive(numberOf(supply, "current_now"));
        const double unit = voltage.value_or(1);
        battery.now = *now * unit;
        battery.full = *full * unit;
        battery.rate = current ? std::optional(*current * unit) : std::nullopt;
        battery.isEnergy = voltage.has_value();
    }
}

/// Absent when it is not in its bay, and when its level can't be told, or is far beyond full.
std::optional<Battery> batteryOf(const Attributes& supply) {
    constexpr double mostShare = 1.5;
    Battery battery;
    battery.status = textOf(supply, "status");
    readEnergy(supply, battery);
    if (battery.full == 0) {
        readCharge(supply, battery);
    }
    const auto capacity = numberOf(supply, "capacity");
    if (textOf(supply, "present") == "0" || (battery.full == 0 && !capacity)) {
        return std::nullopt;
    }
    battery.share = battery.full > 0 ? battery.now / battery.full : *capacity / 100;
    return battery.share <= mostShare ? std::optional(battery) : std::nullopt;
}

bool anyIs(const std::vector<Battery>& batteries, std::string_view status) {
    return std::ranges::find(batteries, status, &Battery::status) != batteries.end();
}

bool isOnLine(const std::vector<Attributes>& supplies, const std::vector<Battery>& batteries) {
    if (std::ranges::any_of(supplies, isLine)) {
        return std::ranges::any_of(supplies, [](const Attributes& supply) {
            return isLine(supply) && positive(numberOf(supply, "online"));
        });
    }
    const bool isAtRest = anyIs(batteries, "Full") || anyIs(batteries, "Not charging");
    return !anyIs(batteries, "Discharging") && (isAtRest || anyIs(batteries, "Charging"));
}

std::optional<int> minutes(double amount, double rate) {
    constexpr double longest = 10.0 * 24 * 60;
    const double time = amount / rate * 60;
    // Written so that a value that is no number fails the test too.
    return time >= 0 && time <= longest ? std::optional(static_cast<int>(std::lround(time))) : std::nullopt;
}

/// The sums of batteries whose units can be compared, which a single one's always can.
struct Total {
    double now = 0;
    double full = 0;
    double missing = 0;
    double rate = 0;
};

std::optional<Total> totalOf(const std::vector<Battery>& batteries) {
    Total total;
    for (const Battery& battery : batteries) {
        if (battery.full == 0 || (batteries.size() > 1 && !battery.isEnergy)) {
            return std::nullopt;
        }
        total.now += battery.now;
        total.full += battery.full;
        total.missing += std::max(battery.full - battery.now, 0.0);
        total.rate += battery.rate.value_or(0);
    }
    return total;
}

double meanShare(const std::vector<Battery>& batteries) {
    double sum = 0;
    for (const Battery& battery : batteries) {
        sum += battery.share;
    }
    return sum / static_cast<double>(batteries.size());
}

} // namespace

bool isBattery(const Attributes& supply) {
    return isOfTheMachine(supply) && textOf(supply, "type") == "Battery";
}

std::optional<BatteryReading> batteryReading(const std::vector<Attributes>& supplies) {
    std::vector<Battery> batteries;
    for (const Attributes& supply : supplies) {
        const auto battery = isBattery(supply) ? batteryOf(supply) : std::nullopt;
        if (battery) {
            batteries.push_back(*battery);
        }
    }
    if (batteries.empty()) {
        return std::nullopt;
    }
    const auto total = totalOf(batteries);
    BatteryReading reading;
    reading.percent = total ? total->now / total->full : meanShare(batteries);
    reading.isCharging = anyIs(batteries, "Charging");
    reading.onAC = isOnLine(supplies, batteries);
    if (total && reading.isCharging) {
        reading.minutesToFull = minutes(total->missing, total->rate);
    } else if (total && anyIs(batteries, "Discharging")) {
        reading.minutesToEmpty = minutes(total->now, total->rate);
    }
    return reading;
}

} // namespace veslora::PowerSupply
