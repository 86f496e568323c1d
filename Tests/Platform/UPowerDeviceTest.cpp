// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/UPowerDevice.h"

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

using State = UPowerDevice::State;
using Type = UPowerDevice::Type;

UPowerDevice battery(double percentage, State state) {
  return {.type = Type::battery,
          .state = state,
          .powerSupply = true,
          .isPresent = true,
          .percentage = percentage,
          .energy = percentage / 2,
          .energyFull = 50,
          .energyFullDesign = 60,
          .energyRate = 10,
          .voltage = 12.5,
          .temperature = 31.2,
          .chargeCycles = 77,
          .model = "Pack"};
}

UPowerDevice adapter(bool online) { return {.type = Type::linePower, .online = online}; }

Glib::VariantBase told(const Properties& properties) {
  return Glib::Variant<Properties>::create(properties);
}

Value field(const std::vector<UPowerDevice>& devices, const char* key) {
  const auto descriptions = powerSourceDescriptions(devices);
  return descriptions.empty() || !descriptions[0].contains(key) ? Value("absent")
                                                                : descriptions[0].at(key);
}

Value registryField(const std::vector<UPowerDevice>& devices, const char* key) {
  const auto entry = batteryRegistryEntry(devices, std::nullopt);
  return !entry || !entry->contains(key) ? Value("absent") : entry->at(key);
}

TEST(PowerSourceDescriptions, OfOneBattery) {
  UPowerDevice one = battery(64, State::discharging);
  one.timeToEmpty = 3659;
  const Dictionary expected = {{"Type", "InternalBattery"},
                               {"Is Present", true},
                               {"Name", "Pack"},
                               {"Current Capacity", 64.0},
                               {"Max Capacity", 100},
                               {"Is Charging", false},
                               {"Is Charged", false},
                               {"Power Source State", "Battery Power"},
                               {"Time to Full Charge", -1},
                               {"Time to Empty", 60}};
  EXPECT_EQ(powerSourceDescriptions({adapter(false), one}), std::vector{expected});
}

TEST(PowerSourceDescriptions, HaveNothingWithoutABattery) {
  UPowerDevice absent = battery(0, State::unknown);
  absent.isPresent = false;
  UPowerDevice mouse = battery(50, State::discharging);
  mouse.powerSupply = false;
  UPowerDevice ups = battery(100, State::fullyCharged);
  ups.type = static_cast<Type>(3);
  EXPECT_TRUE(powerSourceDescriptions({}).empty());
  EXPECT_TRUE(powerSourceDescriptions({adapter(true), absent, mouse, ups}).empty());
  EXPECT_FALSE(batteryRegistryEntry({adapter(true), absent, mouse, ups}, 65));
}

TEST(PowerSourceDescriptions, AreOnMainsByTheAdapterOrElseByTheState) {
  const Value mains("AC Power");
  const Value onBattery("Battery Power");
  const std::vector<std::pair<State, Value>> withoutAdapter = {
      {State::unknown, onBattery},         {State::charging, mains},
      {State::discharging, onBattery},     {State::empty, onBattery},
      {State::fullyCharged, mains},        {State::pendingCharge, mains},
      {State::pendingDischarge, onBattery}};
  for (const auto& [state, expected] : withoutAdapter) {
    EXPECT_EQ(field({battery(50, state)}, "Power Source State"), expected) << int(state);
    EXPECT_EQ(field({battery(50, state), adapter(false)}, "Power Source State"), expected);
    EXPECT_EQ(field({battery(50, state), adapter(false), adapter(true)}, "Power Source State"),
              mains);
  }
}

TEST(PowerSourceDescriptions, ChargeOnlyWhileCharging) {
  for (const State state : {State::unknown, State::discharging, State::pendingCharge,
                            State::fullyCharged, State::charging}) {
    EXPECT_EQ(field({battery(50, state)}, "Is Charging"), Value(state == State::charging));
    EXPECT_EQ(field({battery(50, state)}, "Is Charged"), Value(state == State::fullyCharged));
  }
}

TEST(PowerSourceDescriptions, HaveNoChargeLevelThatWasNotTold) {
  UPowerDevice silent = battery(50, State::discharging);
  silent.percentage.reset();
  EXPECT_EQ(field({silent}, "Current Capacity"), Value("absent"));
}

TEST(PowerSourceDescriptions, UseTheKernelsNameWithoutAModel) {
  UPowerDevice nameless = battery(50, State::discharging);
  nameless.model.clear();
  nameless.nativePath = "BAT0";
  EXPECT_EQ(field({nameless}, "Name"), Value("BAT0"));
}

TEST(PowerSourceDescriptions, AddSeveralBatteriesUp) {
  UPowerDevice large = battery(50, State::discharging);  // 25 of 50 Wh
  UPowerDevice small = battery(100, State::unknown);
  small.energy = small.energyFull = 10;
  small.energyRate = 0;
  small.model = "Slice";
  EXPECT_EQ(field({large, small}, "Current Capacity"), Value(35.0 / 60 * 100));
  EXPECT_EQ(field({large, small}, "Time to Empty"), Value(210));
  EXPECT_EQ(field({large, small}, "Name"), Value("Pack + Slice"));
}

TEST(PowerSourceDescriptions, EstimateTheTimeToFullOfSeveral) {
  UPowerDevice charging = battery(50, State::charging);
  UPowerDevice waiting = battery(90, State::pendingCharge);
  waiting.energyRate = 0;
  // 25 and 5 Wh to go at 10 W.
  EXPECT_EQ(field({charging, waiting}, "Time to Full Charge"), Value(180));
  charging.energyRate = 1;
  // Thirty hours: nobody charges that long.
  EXPECT_EQ(field({charging, waiting}, "Time to Full Charge"), Value(-1));
  charging.energyRate = 0;
  EXPECT_EQ(field({charging, waiting}, "Time to Full Charge"), Value(-1));
}

TEST(PowerSourceDescriptions, SeveralAreFullOnlyWhenAllAre) {
  const auto full = battery(100, State::fullyCharged);
  EXPECT_EQ(field({full, full}, "Is Charged"), Value(true));
  EXPECT_EQ(field({full, battery(100, State::unknown)}, "Is Charged"), Value(true));
  EXPECT_EQ(field({full, battery(80, State::pendingCharge)}, "Is Charged"), Value(false));
  EXPECT_EQ(field({full, battery(80, State::discharging)}, "Is Charged"), Value(false));
  EXPECT_EQ(field({battery(80, State::discharging), battery(80, State::charging)}, "Is Charging"),
            Value(true));
}

TEST(PowerSourceDescriptions, ADeadSecondPackDoesNotPullTheLevelDown) {
  UPowerDevice dead = battery(0, State::unknown);
  dead.energy = dead.energyFull = dead.energyRate = 0;
  EXPECT_EQ(field({battery(80, State::discharging), dead}, "Current Capacity"), Value(80.0));
}

TEST(BatteryRegistryEntry, CountsInTheRegistrysUnits) {
  const Dictionary expected = {{"CycleCount", 77},
                               {"DesignCapacity", 60'000},
                               {"AppleRawMaxCapacity", 50'000},
                               {"Temperature", 3120},
                               {"Voltage", 12'500},
                               {"Amperage", -800},
                               {"AdapterDetails", Dictionary{{"Watts", 65}}}};
  EXPECT_EQ(batteryRegistryEntry({battery(64, State::discharging)}, 65), expected);
}

TEST(BatteryRegistryEntry, GivesTheCurrentTheDirectionOfTheState) {
  EXPECT_EQ(registryField({battery(50, State::charging)}, "Amperage"), Value(800));
  EXPECT_EQ(registryField({battery(50, State::discharging)}, "Amperage"), Value(-800));
  EXPECT_EQ(registryField({battery(50, State::pendingCharge)}, "Amperage"), Value(800));
}

TEST(BatteryRegistryEntry, LeavesOutWhatUPowerDoesNotKnow) {
  UPowerDevice silent;
  silent.type = Type::battery;
  silent.powerSupply = silent.isPresent = true;
  EXPECT_EQ(batteryRegistryEntry({silent}, std::nullopt), Dictionary{});
  silent.chargeCycles = 0;
  EXPECT_EQ(batteryRegistryEntry({silent}, std::nullopt), Dictionary{});
}

TEST(BatteryRegistryEntry, SurvivesNumbersThatAreNone) {
  UPowerDevice odd = battery(50, State::charging);
  odd.energyFullDesign = std::numeric_limits<double>::infinity();
  odd.energyRate = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(registryField({odd}, "DesignCapacity"), Value(0));
  EXPECT_EQ(registryField({odd}, "Amperage"), Value(0));
}

TEST(UPowerDevice, TakesOnlyWhatIsThereAndOfTheRightType) {
  UPowerDevice device = battery(50, State::charging);
  const UPowerDevice before = device;
  device.update({});
  EXPECT_EQ(device, before);
  device.update(Glib::Variant<bool>::create(true));
  EXPECT_EQ(device, before);
  device.update(told({{"UpdateTime", Glib::Variant<guint64>::create(5)}}));
  EXPECT_EQ(device, before);
  device.update(told({{"Percentage", Glib::Variant<double>::create(51)},
                      {"Voltage", Glib::Variant<Glib::ustring>::create("much")},
                      {"State", Glib::Variant<guint32>::create(2)}}));
  EXPECT_EQ(device.percentage, 51);
  EXPECT_EQ(device.voltage, before.voltage);
  EXPECT_EQ(device.state, State::discharging);
  device.update(told({{"Percentage", Glib::Variant<Glib::ustring>::create("half")}}));
  EXPECT_EQ(device.percentage, 51);
}

}  // namespace
}  // namespace lumora::test
