// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Battery/BatteryReader.h"
#include "Support/Builders.h"
#include "Support/FakeLowPowerMode.h"
#include "Support/FakePowerSources.h"

#include <utility>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

class BatteryReaderTest : public testing::Test {
 protected:
  BatteryState read(const Dictionary& source) {
    powerSources.sources = {source};
    return reader.read();
  }

  /// Reads a battery at 50 % that reports `value` under `key`.
  BatteryState readWith(const std::string& key, const Value& value) {
    Dictionary source = batterySource(50);
    source.insert_or_assign(key, value);
    return read(source);
  }

  Recorder recorder;
  FakePowerSources powerSources{&recorder};
  FakeLowPowerMode lowPowerMode;
  BatteryReader reader{powerSources, lowPowerMode};
};

TEST_F(BatteryReaderTest, ReadsEverythingFromTheLiveSource) {
  lowPowerMode.enabled = true;
  BatteryState expected = charging(50);
  expected.isCharged = true;
  expected.sourceName = "InternalBattery-0";
  expected.minutesToFull = 30;
  expected.minutesToEmpty = 90;
  expected.lowPowerMode = true;
  EXPECT_EQ(read({{"Type", "InternalBattery"},
                  {"Name", "InternalBattery-0"},
                  {"Is Present", true},
                  {"Current Capacity", 50},
                  {"Max Capacity", 100},
                  {"Is Charging", true},
                  {"Is Charged", true},
                  {"Power Source State", "AC Power"},
                  {"Time to Full Charge", 30},
                  {"Time to Empty", 90}}),
            expected);
}

TEST_F(BatteryReaderTest, FindsNoBatteryWithoutSources) {
  EXPECT_EQ(reader.read(), BatteryState{});
  powerSources.sources.emplace();
  EXPECT_EQ(reader.read(), BatteryState{});
}

TEST_F(BatteryReaderTest, ReadsTheLowPowerModeAlsoWithoutABattery) {
  lowPowerMode.enabled = true;
  BatteryState expected;
  expected.lowPowerMode = true;
  EXPECT_EQ(reader.read(), expected);
}

TEST_F(BatteryReaderTest, SelectsTheBatteryAfterAnUninterruptiblePowerSupply) {
  Dictionary supply = batterySource(90);
  supply.insert_or_assign("Type", "UPS");
  powerSources.sources = {supply, batterySource(40)};
  EXPECT_EQ(reader.read(), onBattery(40));
}

TEST_F(BatteryReaderTest, SelectsTheFirstOfTwoBatteries) {
  powerSources.sources = {batterySource(40), batterySource(90)};
  EXPECT_EQ(reader.read(), onBattery(40));
}

TEST_F(BatteryReaderTest, SkipsASourceThatIsNoUsableBattery) {
  const std::vector<std::pair<std::string, Value>> table = {{"Type", "UPS"},
                                                            {"Type", 1},
                                                            {"Is Present", false},
                                                            {"Current Capacity", "50"},
                                                            {"Current Capacity", true},
                                                            {"Max Capacity", 0},
                                                            {"Max Capacity", -100},
                                                            {"Max Capacity", "100"},
                                                            {"Max Capacity", true}};
  for (const auto& [key, value] : table) {
    Dictionary unusable = batterySource(90);
    unusable.insert_or_assign(key, value);
    powerSources.sources = {unusable, batterySource(40)};
    EXPECT_EQ(reader.read(), onBattery(40)) << key;
  }
}

TEST_F(BatteryReaderTest, SkipsASourceThatLacksAKey) {
  for (const auto* key : {"Type", "Current Capacity", "Max Capacity"}) {
    Dictionary lacking = batterySource(90);
    lacking.erase(key);
    powerSources.sources = {Dictionary{}, lacking, batterySource(40)};
    EXPECT_EQ(reader.read(), onBattery(40)) << key;
  }
}

TEST_F(BatteryReaderTest, AcceptsASourceThatDoesNotSayWhetherItIsPresent) {
  EXPECT_TRUE(read(batterySource(50)).hasBattery);
  EXPECT_TRUE(readWith("Is Present", true).hasBattery);
  EXPECT_TRUE(readWith("Is Present", "no").hasBattery);
  EXPECT_TRUE(readWith("Is Present", 0).hasBattery);
}

TEST_F(BatteryReaderTest, DoesNotConsultTheRegistryWithoutABattery) {
  powerSources.registry = {{"CycleCount", 5}};
  EXPECT_EQ(readWith("Max Capacity", 0), BatteryState{});
  EXPECT_EQ(recorder.take(), "sources");
}

TEST_F(BatteryReaderTest, ComputesThePercent) {
  struct Row {
    Value current;
    Value max;
    std::int64_t percent;
  };
  const std::vector<Row> table = {{50, 200, 25},   {105, 100, 100}, {2, 3, 67},    {1, 3, 33},
                                  {57, 200, 28},   {1, 8, 13},      {0, 100, 0},   {-5, 100, 0},
                                  {0.5, 2.0, 25},  {12.5, 100, 13}, {1, 0.5, 100}, {99.4, 100, 99},
                                  {99.5, 100, 100}};
  for (const auto& [current, max, percent] : table) {
    Dictionary source = batterySource(0);
    source.insert_or_assign("Current Capacity", current);
    source.insert_or_assign("Max Capacity", max);
    EXPECT_EQ(read(source).percent, percent) << percent;
  }
}

TEST_F(BatteryReaderTest, IsPluggedInOnlyOnTheAdapter) {
  EXPECT_TRUE(readWith("Power Source State", "AC Power").pluggedIn);
  EXPECT_FALSE(readWith("Power Source State", "Battery Power").pluggedIn);
  EXPECT_FALSE(readWith("Power Source State", "ac power").pluggedIn);
  EXPECT_FALSE(readWith("Power Source State", true).pluggedIn);
  Dictionary silent = batterySource(50);
  silent.erase("Power Source State");
  EXPECT_FALSE(read(silent).pluggedIn);
}

TEST_F(BatteryReaderTest, TakesOnlyBoolsForFlags) {
  EXPECT_TRUE(readWith("Is Charging", true).isCharging);
  EXPECT_FALSE(readWith("Is Charging", false).isCharging);
  EXPECT_FALSE(readWith("Is Charging", 1).isCharging);
  EXPECT_FALSE(readWith("Is Charging", "true").isCharging);
  EXPECT_TRUE(readWith("Is Charged", true).isCharged);
  EXPECT_FALSE(readWith("Is Charged", false).isCharged);
  EXPECT_FALSE(readWith("Is Charged", 1).isCharged);
}

TEST_F(BatteryReaderTest, TakesOnlyATextForTheName) {
  EXPECT_EQ(readWith("Name", "BAT0").sourceName, "BAT0");
  EXPECT_EQ(readWith("Name", "").sourceName, "");
  EXPECT_EQ(readWith("Name", 7).sourceName, std::nullopt);
}

TEST_F(BatteryReaderTest, KnowsNoTimeBelowZero) {
  using Minutes = std::optional<std::int64_t>;
  const std::vector<std::pair<Value, Minutes>> table = {
      {-1, std::nullopt},  {0, 0}, {90, 90}, {90.9, 90}, {"90", std::nullopt}, {-0.5, 0},
      {true, std::nullopt}};
  for (const auto& [value, minutes] : table) {
    EXPECT_EQ(readWith("Time to Empty", value).minutesToEmpty, minutes);
    EXPECT_EQ(readWith("Time to Full Charge", value).minutesToFull, minutes);
  }
}

TEST_F(BatteryReaderTest, KeepsNothingFromTheReadingBefore) {
  ASSERT_EQ(readWith("Name", "BAT0").sourceName, "BAT0");
  EXPECT_EQ(read(batterySource(50)), onBattery(50));
  powerSources.sources.reset();
  EXPECT_EQ(reader.read(), BatteryState{});
}

TEST_F(BatteryReaderTest, RunsTheCallbackAtEachChange) {
  reader.startObserving([this] { recorder.add("changed"); });
  powerSources.change();
  powerSources.change();
  EXPECT_EQ(recorder.take(), "observe power sources, changed, changed");
}

TEST_F(BatteryReaderTest, IgnoresASecondRegistration) {
  reader.startObserving([this] { recorder.add("first"); });
  reader.startObserving([this] { recorder.add("second"); });
  powerSources.change();
  EXPECT_EQ(recorder.take(), "observe power sources, first");
}

TEST_F(BatteryReaderTest, RegistersAgainAfterAFailure) {
  powerSources.observable = false;
  reader.startObserving([this] { recorder.add("first"); });
  powerSources.change();
  powerSources.observable = true;
  reader.startObserving([this] { recorder.add("second"); });
  powerSources.change();
  EXPECT_EQ(recorder.take(), "observe power sources, observe power sources, second");
}

}  // namespace
}  // namespace lumora::test
