// SPDX-License-Identifier: MIT
#include "VesloraCore/System/PowerSupply.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace veslora {
namespace {

using PowerSupply::Attributes;
using PowerSupply::batteryReading;

/// Each value as the kernel writes it, with a line end.
Attributes supply(const std::vector<std::pair<std::string, std::string>>& values) {
    Attributes attributes;
    for (const auto& [name, value] : values) {
        attributes[name] = value + "\n";
    }
    return attributes;
}

Attributes mains(const std::string& online) {
    return supply({{"type", "Mains"}, {"online", online}});
}

Attributes energyBattery(const std::string& status, long long now, long long full, long long power) {
    return supply({{"type", "Battery"},
                   {"present", "1"},
                   {"status", status},
                   {"energy_now", std::to_string(now)},
                   {"energy_full", std::to_string(full)},
                   {"power_now", std::to_string(power)}});
}

Attributes chargeBattery(const std::string& status, long long now, long long full, long long current) {
    return supply({{"type", "Battery"},
                   {"status", status},
                   {"charge_now", std::to_string(now)},
                   {"charge_full", std::to_string(full)},
                   {"current_now", std::to_string(current)}});
}

Attributes with(Attributes attributes, const std::string& name, const std::string& value) {
    attributes[name] = value + "\n";
    return attributes;
}

TEST(PowerSupplyTests, AMachineWithoutABatteryHasNoReading) {
    EXPECT_EQ(batteryReading({}), std::nullopt);
    EXPECT_EQ(batteryReading({mains("1")}), std::nullopt);
    EXPECT_EQ(batteryReading({{}}), std::nullopt);
    EXPECT_EQ(batteryReading({supply({{"type", "UPS"}, {"capacity", "50"}})}), std::nullopt);
}

TEST(PowerSupplyTests, ABatteryThatDrains) {
    const auto reading =
        batteryReading({mains("0"), energyBattery("Discharging", 39'000'000, 50'000'000, 10'000'000)});
    EXPECT_EQ(reading, (BatteryReading{0.78, false, false, std::nullopt, 234}));
}

TEST(PowerSupplyTests, ABatteryThatIsCharged) {
    const auto reading =
        batteryReading({mains("1"), energyBattery("Charging", 30'000'000, 50'000'000, 12'000'000)});
    EXPECT_EQ(reading, (BatteryReading{0.6, true, true, 100, std::nullopt}));
}

TEST(PowerSupplyTests, FullAndNotChargingAreOnPower) {
    for (const char* status : {"Full", "Not charging"}) {
        const auto battery = energyBattery(status, 50'000'000, 50'000'000, 0);
        const BatteryReading expected{1, false, true, std::nullopt, std::nullopt};
        EXPECT_EQ(batteryReading({mains("1"), battery}), expected) << status;
        EXPECT_EQ(batteryReading({battery}), expected) << status;
    }
}

TEST(PowerSupplyTests, AnUnknownStatusIsWhatTheMainsSay) {
    const auto battery = energyBattery("Unknown", 25'000'000, 50'000'000, 5'000'000);
    EXPECT_EQ(batteryReading({mains("1"), battery}),
              (BatteryReading{0.5, false, true, std::nullopt, std::nullopt}));
    EXPECT_EQ(batteryReading({mains("0"), battery}),
              (BatteryReading{0.5, false, false, std::nullopt, std::nullopt}));
    EXPECT_EQ(batteryReading({battery}), (BatteryReading{0.5, false, false, std::nullopt, std::nullopt}));
}

TEST(PowerSupplyTests, AWeakChargerIsPowerToo) {
    const auto reading = batteryReading({supply({{"type", "USB"}, {"online", "1"}, {"scope", "System"}}),
                                         energyBattery("Discharging", 10'000'000, 50'000'000, 5'000'000)});
    ASSERT_TRUE(reading);
    EXPECT_TRUE(reading->onAC);
    EXPECT_FALSE(reading->isCharging);
}

TEST(PowerSupplyTests, OneOfSeveralSuppliesIsEnough) {
    const auto battery = energyBattery("Not charging", 1, 2, 0);
    EXPECT_TRUE(batteryReading({mains("0"), battery, supply({{"type", "USB_PD"}, {"online", "2"}})})->onAC);
    EXPECT_TRUE(batteryReading({supply({{"type", "Wireless"}, {"online", "1"}}), battery})->onAC);
    EXPECT_FALSE(batteryReading({mains("0"), battery, supply({{"type", "USB"}, {"online", "0"}})})->onAC);
    EXPECT_FALSE(batteryReading({mains("0"), battery, with(mains("1"), "scope", "Device")})->onAC);
}

TEST(PowerSupplyTests, ChargeCountsAsEnergyDoes) {
    EXPECT_EQ(batteryReading({chargeBattery("Discharging", 2'000'000, 4'000'000, 1'000'000)}),
              (BatteryReading{0.5, false, false, std::nullopt, 120}));
    EXPECT_EQ(batteryReading({mains("1"), chargeBattery("Charging", 3'000'000, 4'000'000, 500'000)}),
              (BatteryReading{0.75, true, true, 120, std::nullopt}));
}

TEST(PowerSupplyTests, SomeDriversGiveADrainANegativeSign) {
    EXPECT_EQ(
        batteryReading({chargeBattery("Discharging", 2'000'000, 4'000'000, -1'000'000)})->minutesToEmpty,
        120);
}

TEST(PowerSupplyTests, SeveralBatteriesAreSummedByEnergy) {
    const auto reading = batteryReading({energyBattery("Unknown", 20'000'000, 20'000'000, 0),
                                         energyBattery("Discharging", 10'000'000, 60'000'000, 10'000'000)});
    EXPECT_EQ(reading, (BatteryReading{0.375, false, false, std::nullopt, 180}));
}

TEST(PowerSupplyTests, ABatteryThatIsFullAlreadyTakesNoTimeToCharge) {
    const auto reading = batteryReading({mains("1"), energyBattery("Full", 22'000'000, 20'000'000, 0),
                                         energyBattery("Charging", 10'000'000, 30'000'000, 10'000'000)});
    ASSERT_TRUE(reading);
    EXPECT_EQ(reading->minutesToFull, 120);
    EXPECT_DOUBLE_EQ(reading->percent, 0.64);
}

TEST(PowerSupplyTests, ChargeAndEnergyAddUpByTheVoltage) {
    // 2 Ah of 4 at 10 V beside 60 Wh of 60.
    const auto charge = with(
        with(chargeBattery("Discharging", 2'000'000, 4'000'000, 1'000'000), "voltage_min_design", "10000000"),
        "voltage_now", "12000000");
    const auto reading = batteryReading({charge, energyBattery("Unknown", 60'000'000, 60'000'000, 0)});
    EXPECT_EQ(reading, (BatteryReading{0.8, false, false, std::nullopt, 480}));
}

TEST(PowerSupplyTests, BatteriesThatCannotBeComparedGiveTheirMean) {
    const auto reading = batteryReading({chargeBattery("Discharging", 1'000'000, 4'000'000, 1'000'000),
                                         energyBattery("Unknown", 60'000'000, 60'000'000, 0)});
    EXPECT_EQ(reading, (BatteryReading{0.625, false, false, std::nullopt, std::nullopt}));
}

TEST(PowerSupplyTests, APercentageAloneWillDo) {
    EXPECT_EQ(batteryReading({supply({{"type", "Battery"}, {"status", "Discharging"}, {"capacity", "42"}})}),
              (BatteryReading{0.42, false, false, std::nullopt, std::nullopt}));
    // A level of which half is missing falls back on it too.
    auto half = energyBattery("Discharging", 10, 20, 5);
    half.erase("energy_full");
    EXPECT_EQ(batteryReading({half}), std::nullopt);
    EXPECT_EQ(batteryReading({with(half, "capacity", "55")})->percent, 0.55);
}

TEST(PowerSupplyTests, WhatPowersOtherDevicesDoesNotCount) {
    const auto mouse = with(energyBattery("Discharging", 1, 100, 1), "scope", "Device");
    EXPECT_EQ(batteryReading({mouse}), std::nullopt);
    EXPECT_EQ(batteryReading({mouse, energyBattery("Discharging", 80, 100, 0)})->percent, 0.8);
}

TEST(PowerSupplyTests, AnEmptyBayDoesNotCount) {
    EXPECT_EQ(batteryReading({with(energyBattery("Unknown", 0, 100, 0), "present", "0")}), std::nullopt);
}

TEST(PowerSupplyTests, ALittleMoreThanFullIsLeftAsItIs) {
    EXPECT_EQ(batteryReading({energyBattery("Full", 102, 100, 0)})->percent, 1.02);
}

TEST(PowerSupplyTests, TimesBeyondReasonAreNotKnown) {
    EXPECT_EQ(batteryReading({energyBattery("Discharging", 50'000'000, 50'000'000, 0)})->minutesToEmpty,
              std::nullopt);
    EXPECT_EQ(batteryReading({energyBattery("Discharging", 50'000'000, 50'000'000, 1)})->minutesToEmpty,
              std::nullopt);
    EXPECT_EQ(batteryReading({energyBattery("Discharging", 240, 500, 1)})->minutesToEmpty, 14'400);
    EXPECT_EQ(batteryReading({energyBattery("Discharging", 241, 500, 1)})->minutesToEmpty, std::nullopt);
    EXPECT_EQ(batteryReading({energyBattery("Discharging", 0, 500, 1)})->minutesToEmpty, 0);
}

TEST(PowerSupplyTests, NumbersThatAreNoneCountAsMissing) {
    for (const char* number : {"", "x", "12x", "1e3", " 12", "9223372036854775808", "1000000000001",
                               "-9223372036854775808", "0x20"}) {
        EXPECT_EQ(batteryReading({with(energyBattery("Full", 10, 20, 0), "energy_now", number)}),
                  std::nullopt)
            << number;
        EXPECT_EQ(batteryReading({with(energyBattery("Full", 10, 20, 0), "energy_full", number)}),
                  std::nullopt)
            << number;
    }
    EXPECT_EQ(batteryReading({energyBattery("Full", 0, 0, 0)}), std::nullopt);
    EXPECT_EQ(batteryReading({energyBattery("Full", 1'000'000, 1, 0)}), std::nullopt);
    EXPECT_EQ(batteryReading({supply({{"type", "Battery"}, {"capacity", "151"}})}), std::nullopt);
}

TEST(PowerSupplyTests, AHalfWrittenLineCountsAsMissing) {
    auto battery = energyBattery("Discharging", 10, 20, 5);
    battery["energy_now"] = "1";
    EXPECT_EQ(batteryReading({battery}), std::nullopt);
    battery = energyBattery("Discharging", 10, 20, 5);
    battery["type"] = "Battery";
    EXPECT_EQ(batteryReading({battery}), std::nullopt);
}

TEST(PowerSupplyTests, AHugeTextDoesNoHarm) {
    EXPECT_EQ(
        batteryReading({with(energyBattery("Full", 10, 20, 0), "energy_now", std::string(1'000'000, '9'))}),
        std::nullopt);
}

} // namespace
} // namespace veslora
