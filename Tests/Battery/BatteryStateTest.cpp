// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Battery/BatteryState.h"
#include "Support/Builders.h"

#include <utility>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

using Names = std::vector<std::string>;

BatteryState charged(BatteryState state) {
  state.isCharged = true;
  return state;
}

TEST(BatteryState, SaysAsConstructedThatThereIsNoBattery) {
  const BatteryState state;
  EXPECT_EQ(state.symbolNames(), Names{"battery.0"});
  EXPECT_EQ(state.shortTime(), std::nullopt);
  EXPECT_EQ(state.stateText(), "No battery found");
  EXPECT_EQ(state.healthLabel(), std::nullopt);
}

TEST(BatteryState, HasNothingElseAsConstructed) {
  const BatteryState state;
  EXPECT_FALSE(state.hasBattery || state.isCharging || state.pluggedIn || state.isCharged ||
               state.lowPowerMode);
  EXPECT_EQ(state.percent, 0);
  EXPECT_FALSE(state.minutesToFull || state.minutesToEmpty || state.sourceName ||
               state.cycleCount || state.designCapacity || state.fullCapacity ||
               state.temperatureC || state.voltage || state.amperage || state.adapterWatts);
}

TEST(BatteryState, DiffersInEachOfItsSixteenFields) {
  const BatteryState state = onBattery(50);
  std::vector<BatteryState> others(16, state);
  others[0].hasBattery = false;
  others[1].percent = 51;
  others[2].isCharging = true;
  others[3].pluggedIn = true;
  others[4].isCharged = true;
  others[5].minutesToFull = 0;
  others[6].minutesToEmpty = 0;
  others[7].sourceName = "";
  others[8].cycleCount = 0;
  others[9].designCapacity = 0;
  others[10].fullCapacity = 0;
  others[11].temperatureC = 0.0;
  others[12].voltage = 0.0;
  others[13].amperage = 0.0;
  others[14].adapterWatts = 0;
  others[15].lowPowerMode = true;
  for (const auto& other : others) EXPECT_NE(state, other) << &other - others.data();
  EXPECT_EQ(state, onBattery(50));
}

TEST(BatteryState, ComparesPresentNumbersByValue) {
  BatteryState left = onBattery(50);
  BatteryState right = left;
  left.amperage = 0.0;
  right.amperage = -0.0;
  EXPECT_EQ(left, right);
  right.amperage = -0.15;
  EXPECT_NE(left, right);
}

TEST(BatteryState, ShowsTheLevelOnBattery) {
  const std::vector<std::pair<std::int64_t, std::string>> table = {
      {100, "battery.100"}, {88, "battery.100"}, {87, "battery.75"}, {63, "battery.75"},
      {62, "battery.50"},   {38, "battery.50"},  {37, "battery.25"}, {13, "battery.25"},
      {12, "battery.0"},    {0, "battery.0"}};
  for (const auto& [percent, name] : table) {
    EXPECT_EQ(onBattery(percent).symbolNames(), Names{name}) << percent;
  }
}

TEST(BatteryState, ShowsNoBatteryWhateverElseItSays) {
  BatteryState state = charged(charging(90));
  state.hasBattery = false;
  state.minutesToFull = 10;
  EXPECT_EQ(state.symbolNames(), Names{"battery.0"});
  EXPECT_EQ(state.shortTime(), std::nullopt);
  EXPECT_EQ(state.stateText(), "No battery found");
}

TEST(BatteryState, ShowsAFullBatteryWhenCharged) {
  const Names full = {"battery.100percent", "battery.100"};
  for (const auto& state :
       {charged(onBattery(50)), charged(charging(50)), charged(pluggedIn(50))}) {
    EXPECT_EQ(state.symbolNames(), full);
    EXPECT_EQ(state.stateText(), "Fully charged");
  }
}

TEST(BatteryState, TellsNoTimeWhenCharged) {
  BatteryState state = charged(charging(99));
  state.minutesToFull = 5;
  state.minutesToEmpty = 5;
  EXPECT_EQ(state.shortTime(), std::nullopt);
}

TEST(BatteryState, ShowsABoltWhileCharging) {
  const Names bolt = {"battery.100.bolt", "bolt.fill"};
  EXPECT_EQ(charging(10).symbolNames(), bolt);
  EXPECT_EQ(charging(100).symbolNames(), bolt);
}

TEST(BatteryState, IsFullWhenPluggedInAtOneHundred) {
  const BatteryState state = pluggedIn(100);
  EXPECT_EQ(state.symbolNames(), (Names{"battery.100percent", "battery.100"}));
  EXPECT_EQ(state.stateText(), "Fully charged");
  EXPECT_EQ(state.shortTime(), std::nullopt);
}

TEST(BatteryState, ShowsAPlugWhenPluggedInBelowOneHundred) {
  const BatteryState state = pluggedIn(99);
  EXPECT_EQ(state.symbolNames(), (Names{"powerplug.fill", "powerplug"}));
  EXPECT_EQ(state.stateText(), "Plugged in, not charging");
}

TEST(BatteryState, ChargesAlsoWhileNotPluggedIn) {
  BatteryState state = onBattery(50);
  state.isCharging = true;
  EXPECT_EQ(state.symbolNames(), (Names{"battery.100.bolt", "bolt.fill"}));
  EXPECT_EQ(state.stateText(), "Charging, estimating time to full…");
  EXPECT_EQ(state.shortTime(), std::nullopt);
  state.minutesToFull = 65;
  state.minutesToEmpty = 30;
  EXPECT_EQ(state.stateText(), "Charging, 1 h 5 min to full");
  EXPECT_EQ(state.shortTime(), "1:05");
}

TEST(BatteryState, TellsTheTimeToFullWhileChargingPluggedIn) {
  BatteryState state = charging(50);
  state.minutesToEmpty = 30;
  EXPECT_EQ(state.shortTime(), std::nullopt);
  EXPECT_EQ(state.stateText(), "Charging, estimating time to full\u2026");
  state.minutesToFull = 125;
  EXPECT_EQ(state.shortTime(), "2:05");
  EXPECT_EQ(state.stateText(), "Charging, 2 h 5 min to full");
}

TEST(BatteryState, TellsNoTimeWhilePluggedInWithoutCharging) {
  BatteryState state = pluggedIn(80);
  state.minutesToFull = 10;
  state.minutesToEmpty = 10;
  EXPECT_EQ(state.shortTime(), std::nullopt);
  EXPECT_EQ(state.stateText(), "Plugged in, not charging");
}

TEST(BatteryState, TellsTheTimeToEmptyOnBattery) {
  BatteryState state = onBattery(50);
  state.minutesToFull = 30;
  EXPECT_EQ(state.shortTime(), std::nullopt);
  EXPECT_EQ(state.stateText(), "On battery, estimating time left\u2026");
  state.minutesToEmpty = 120;
  EXPECT_EQ(state.shortTime(), "2:00");
  EXPECT_EQ(state.stateText(), "On battery, 2 h left");
}

TEST(BatteryState, EndsAnEstimateWithOneEllipsisCharacter) {
  const std::string ellipsis = "\xE2\x80\xA6";
  EXPECT_EQ(onBattery(50).stateText(), "On battery, estimating time left" + ellipsis);
  EXPECT_EQ(charging(50).stateText(), "Charging, estimating time to full" + ellipsis);
}

TEST(BatteryState, WritesTheShortTimeAsHoursAndTwoDigits) {
  const std::vector<std::pair<std::int64_t, std::string>> table = {
      {0, "0:00"},  {1, "0:01"},   {45, "0:45"},   {59, "0:59"},
      {60, "1:00"}, {125, "2:05"}, {600, "10:00"}, {6000, "100:00"}};
  for (const auto& [minutes, text] : table) {
    BatteryState state = onBattery(50);
    state.minutesToEmpty = minutes;
    EXPECT_EQ(state.shortTime(), text) << minutes;
  }
}

TEST(BatteryState, LabelsTheHealth) {
  const std::vector<std::pair<std::int64_t, std::string>> table = {
      {1200, "Good"}, {901, "Good"}, {900, "Fair"}, {899, "Fair"},
      {800, "Fair"},  {799, "Worn"}, {0, "Worn"}};
  for (const auto& [full, label] : table) {
    EXPECT_EQ(withCapacity(onBattery(50), full, 1000).healthLabel(), label) << full;
  }
}

TEST(BatteryState, HasNoHealthLabelWithoutBothCapacities) {
  BatteryState state = onBattery(50);
  state.designCapacity = 1000;
  EXPECT_EQ(state.healthLabel(), std::nullopt);
  state.designCapacity.reset();
  state.fullCapacity = 1000;
  EXPECT_EQ(state.healthLabel(), std::nullopt);
}

TEST(BatteryState, HasNoHealthLabelForADesignCapacityBelowOne) {
  EXPECT_EQ(withCapacity(onBattery(50), 900, 0).healthLabel(), std::nullopt);
  EXPECT_EQ(withCapacity(onBattery(50), 900, -1).healthLabel(), std::nullopt);
  EXPECT_EQ(withCapacity(onBattery(50), 1, 1).healthLabel(), "Good");
}

TEST(FormatMinutes, WritesHoursAndMinutes) {
  const std::vector<std::pair<std::int64_t, std::string>> table = {
      {-5, "1 min"},  {0, "1 min"},         {1, "1 min"},      {2, "2 min"},
      {59, "59 min"}, {60, "1 h"},          {61, "1 h 1 min"}, {65, "1 h 5 min"},
      {120, "2 h"},   {719, "11 h 59 min"}, {60'000, "1000 h"}};
  for (const auto& [minutes, text] : table) EXPECT_EQ(formatMinutes(minutes), text) << minutes;
}

}  // namespace
}  // namespace lumora::test
