// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Battery/PowerSupplies.h"

#include <limits>
#include <utility>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

using State = BatteryPack::State;

BatteryPack pack(double percent, State state) {
  return {.state = state,
          .percent = percent,
          .energy = percent / 2,
          .energyFull = 50,
          .energyFullDesign = 60,
          .power = 10,
          .voltage = 12.5,
          .temperature = 31.2,
          .cycles = 77,
          .name = "Pack"};
}

Value field(const PowerSupplies& supplies, const char* key) {
  const auto descriptions = powerSourceDescriptions(supplies);
  return descriptions.empty() || !descriptions[0].contains(key) ? Value("absent")
                                                                : descriptions[0].at(key);
}

Value registryField(const PowerSupplies& supplies, const char* key) {
  const auto entry = batteryRegistryEntry(supplies);
  return !entry || !entry->contains(key) ? Value("absent") : entry->at(key);
}

TEST(PowerSourceDescriptions, OfOnePack) {
  BatteryPack one = pack(64, State::discharging);
  one.secondsToEmpty = 3659;
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
  EXPECT_EQ(powerSourceDescriptions({{one}}), std::vector{expected});
}

TEST(PowerSourceDescriptions, HaveNothingWithoutAPack) {
  const PowerSupplies adapterAlone{.adapterOnline = true, .adapterWatts = 65};
  EXPECT_TRUE(powerSourceDescriptions(adapterAlone).empty());
  EXPECT_FALSE(batteryRegistryEntry(adapterAlone));
}

TEST(PowerSourceDescriptions, AreOnMainsByTheAdapterOrElseByTheState) {
  const Value mains("AC Power");
  const Value onBattery("Battery Power");
  const std::vector<std::pair<State, Value>> withoutAdapter = {
      {State::unknown, onBattery},      {State::charging, mains}, {State::discharging, onBattery},
      {State::empty, onBattery},        {State::full, mains},     {State::heldOnMains, mains},
      {State::heldOnBattery, onBattery}};
  for (const auto& [state, expected] : withoutAdapter) {
    EXPECT_EQ(field({{pack(50, state)}, false}, "Power Source State"), expected) << int(state);
    EXPECT_EQ(field({{pack(50, state)}, true}, "Power Source State"), mains) << int(state);
  }
}

TEST(PowerSourceDescriptions, ChargeOnlyWhileCharging) {
  for (const State state :
       {State::unknown, State::discharging, State::heldOnMains, State::full, State::charging}) {
    EXPECT_EQ(field({{pack(50, state)}}, "Is Charging"), Value(state == State::charging));
    EXPECT_EQ(field({{pack(50, state)}}, "Is Charged"), Value(state == State::full));
  }
}

TEST(PowerSourceDescriptions, HaveNoChargeLevelThatWasNotTold) {
  BatteryPack silent = pack(50, State::discharging);
  silent.percent.reset();
  EXPECT_EQ(field({{silent}}, "Current Capacity"), Value("absent"));
}

TEST(PowerSourceDescriptions, AddSeveralPacksUp) {
  const BatteryPack large = pack(50, State::discharging);  // 25 of 50 Wh
  BatteryPack small = pack(100, State::unknown);
  small.energy = small.energyFull = 10;
  small.power = 0;
  small.name = "Slice";
  EXPECT_EQ(field({{large, small}}, "Current Capacity"), Value(35.0 / 60 * 100));
  EXPECT_EQ(field({{large, small}}, "Time to Empty"), Value(210));
  EXPECT_EQ(field({{large, small}}, "Name"), Value("Pack + Slice"));
}

TEST(PowerSourceDescriptions, EstimateTheTimeToEmptyOfSeveralUpToTenDays) {
  BatteryPack one = pack(100, State::discharging);
  BatteryPack other = pack(100, State::heldOnBattery);
  other.power = 0;
  one.power = 100.0 / 240;
  EXPECT_EQ(field({{one, other}}, "Time to Empty"), Value(240 * 60));
  one.power = 100.0 / 241;
  EXPECT_EQ(field({{one, other}}, "Time to Empty"), Value(-1));
}

TEST(PowerSourceDescriptions, HaveTheTimesThatOnePackTellsUpToTheSame) {
  BatteryPack one = pack(100, State::discharging);
  one.secondsToEmpty = std::int64_t{240} * 3600;
  one.secondsToFull = std::int64_t{20} * 3600;
  EXPECT_EQ(field({{one}}, "Time to Empty"), Value(240 * 60));
  EXPECT_EQ(field({{one}}, "Time to Full Charge"), Value(20 * 60));
  one.secondsToEmpty += 1;
  one.secondsToFull += 1;
  EXPECT_EQ(field({{one}}, "Time to Empty"), Value(-1));
  EXPECT_EQ(field({{one}}, "Time to Full Charge"), Value(-1));
}

TEST(PowerSourceDescriptions, EstimateTheTimeToFullOfSeveralUpToTwentyHours) {
  BatteryPack charging = pack(50, State::charging);
  BatteryPack waiting = pack(90, State::heldOnMains);
  waiting.power = 0;
  // 25 and 5 Wh to go at 10 W.
  EXPECT_EQ(field({{charging, waiting}}, "Time to Full Charge"), Value(180));
  charging.power = 1.5;
  EXPECT_EQ(field({{charging, waiting}}, "Time to Full Charge"), Value(20 * 60));
  charging.power = 1;
  EXPECT_EQ(field({{charging, waiting}}, "Time to Full Charge"), Value(-1));
  charging.power = 0;
  EXPECT_EQ(field({{charging, waiting}}, "Time to Full Charge"), Value(-1));
}

TEST(PowerSourceDescriptions, SeveralAreFullOnlyWhenAllAre) {
  const BatteryPack full = pack(100, State::full);
  EXPECT_EQ(field({{full, full}}, "Is Charged"), Value(true));
  EXPECT_EQ(field({{full, pack(100, State::unknown)}}, "Is Charged"), Value(true));
  EXPECT_EQ(field({{full, pack(80, State::heldOnMains)}}, "Is Charged"), Value(false));
  EXPECT_EQ(field({{full, pack(80, State::discharging)}}, "Is Charged"), Value(false));
  EXPECT_EQ(field({{pack(80, State::discharging), pack(80, State::charging)}}, "Is Charging"),
            Value(true));
}

TEST(PowerSourceDescriptions, ADeadSecondPackDoesNotPullTheLevelDown) {
  BatteryPack dead = pack(0, State::unknown);
  dead.energy = dead.energyFull = dead.power = 0;
  EXPECT_EQ(field({{pack(80, State::discharging), dead}}, "Current Capacity"), Value(80.0));
}

TEST(BatteryRegistryEntry, CountsInTheRegistrysUnits) {
  const Dictionary expected = {{"CycleCount", 77},
                               {"DesignCapacity", 60'000},
                               {"AppleRawMaxCapacity", 50'000},
                               {"Temperature", 3120},
                               {"Voltage", 12'500},
                               {"Amperage", -800},
                               {"AdapterDetails", Dictionary{{"Watts", 65}}}};
  EXPECT_EQ(batteryRegistryEntry({{pack(64, State::discharging)}, false, 65}), expected);
}

TEST(BatteryRegistryEntry, AddsSeveralPacksUpAndTellsTheHighestOfWhatIsMeasured) {
  BatteryPack one = pack(50, State::discharging);
  BatteryPack other = pack(50, State::heldOnBattery);
  other.power = 2.5;
  other.voltage = 10;
  other.temperature = 40;
  other.cycles = 300;
  const Dictionary expected = {
      {"CycleCount", 300},   {"DesignCapacity", 120'000}, {"AppleRawMaxCapacity", 100'000},
      {"Temperature", 4000}, {"Voltage", 12'500},         {"Amperage", -1000}};
  EXPECT_EQ(batteryRegistryEntry({{one, other}}), expected);
  EXPECT_EQ(batteryRegistryEntry({{other, one}})->at("CycleCount"), Value(300));
}

TEST(BatteryRegistryEntry, GivesTheCurrentTheDirectionOfTheState) {
  EXPECT_EQ(registryField({{pack(50, State::charging)}}, "Amperage"), Value(800));
  EXPECT_EQ(registryField({{pack(50, State::discharging)}}, "Amperage"), Value(-800));
  EXPECT_EQ(registryField({{pack(50, State::heldOnMains)}}, "Amperage"), Value(800));
}

TEST(BatteryRegistryEntry, LeavesOutWhatIsNotKnown) {
  EXPECT_EQ(batteryRegistryEntry({{BatteryPack{}}}), Dictionary{});
  EXPECT_EQ(batteryRegistryEntry({{BatteryPack{.cycles = -1}}}), Dictionary{});
}

TEST(BatteryRegistryEntry, SurvivesNumbersThatAreNone) {
  BatteryPack odd = pack(50, State::charging);
  odd.energyFullDesign = std::numeric_limits<double>::infinity();
  odd.power = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(registryField({{odd}}, "DesignCapacity"), Value(0));
  EXPECT_EQ(registryField({{odd}}, "Amperage"), Value(0));
}

}  // namespace
}  // namespace lumora::test
