// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Battery/BatteryReader.h"
#include "Support/Builders.h"
#include "Support/FakeLowPowerMode.h"
#include "Support/FakePowerSources.h"

#include <limits>
#include <utility>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

using Integer = std::optional<std::int64_t>;
using Number = std::optional<double>;

class BatteryReaderRegistry : public testing::Test {
 protected:
  /// What the reader makes of a battery at 50 % with this registry entry.
  BatteryState read(const Dictionary& entry) {
    powerSources.sources = {batterySource(50)};
    powerSources.registry = entry;
    return reader.read();
  }

  FakePowerSources powerSources;
  FakeLowPowerMode lowPowerMode;
  BatteryReader reader{powerSources, lowPowerMode};
};

TEST_F(BatteryReaderRegistry, ReadsEverythingFromTheEntry) {
  BatteryState expected = onBattery(50);
  expected.cycleCount = 120;
  expected.designCapacity = 5000;
  expected.fullCapacity = 4400;
  expected.temperatureC = 30.5;
  expected.voltage = 12.1;
  expected.amperage = -1.5;
  expected.adapterWatts = 65;
  EXPECT_EQ(read({{"CycleCount", 120},
                  {"DesignCapacity", 5000},
                  {"AppleRawMaxCapacity", 4400},
                  {"Temperature", 3050},
                  {"Voltage", 12100},
                  {"Amperage", -1500},
                  {"AdapterDetails", Dictionary{{"Watts", 65}}}}),
            expected);
}

TEST_F(BatteryReaderRegistry, LeavesAllAbsentWithoutAnEntry) {
  powerSources.sources = {batterySource(50)};
  EXPECT_EQ(reader.read(), onBattery(50));
  EXPECT_EQ(read({}), onBattery(50));
}

TEST_F(BatteryReaderRegistry, LeavesAllAbsentForValuesOfTheWrongKind) {
  EXPECT_EQ(read({{"CycleCount", "120"},
                  {"DesignCapacity", "5000"},
                  {"AppleRawMaxCapacity", 4400},
                  {"Temperature", true},
                  {"Voltage", "12100"},
                  {"Amperage", false},
                  {"InstantAmperage", "1"},
                  {"AdapterDetails", 65}}),
            onBattery(50));
}

TEST_F(BatteryReaderRegistry, LetsOneBadValueNotSpoilTheOthers) {
  BatteryState expected = onBattery(50);
  expected.voltage = 12.1;
  EXPECT_EQ(read({{"CycleCount", "many"}, {"DesignCapacity", -1}, {"Voltage", 12100}}), expected);
}

TEST_F(BatteryReaderRegistry, ReadsTheCycleCountFromZero) {
  const std::vector<std::pair<Value, Integer>> table = {
      {0, 0}, {7, 7}, {7.9, 7}, {-1, std::nullopt}, {true, std::nullopt}};
  for (const auto& [value, cycles] : table) {
    EXPECT_EQ(read({{"CycleCount", value}}).cycleCount, cycles);
  }
}

TEST_F(BatteryReaderRegistry, SetsNoCapacityWithoutADesignCapacity) {
  const Dictionary full = {
      {"AppleRawMaxCapacity", 440}, {"NominalChargeCapacity", 440}, {"MaxCapacity", 440}};
  EXPECT_EQ(read(full), onBattery(50));
  for (const Value& design : {Value(0), Value(-500), Value("500"), Value(true)}) {
    Dictionary entry = full;
    entry.insert_or_assign("DesignCapacity", design);
    EXPECT_EQ(read(entry), onBattery(50));
  }
}

TEST_F(BatteryReaderRegistry, TakesTheFirstPlausibleFullCapacity) {
  struct Row {
    Dictionary keys;
    Integer full;
  };
  const std::vector<Row> table = {
      {{{"AppleRawMaxCapacity", 450}, {"NominalChargeCapacity", 440}, {"MaxCapacity", 430}}, 450},
      {{{"AppleRawMaxCapacity", 90}, {"NominalChargeCapacity", 440}, {"MaxCapacity", 430}}, 440},
      {{{"AppleRawMaxCapacity", "450"}, {"MaxCapacity", 430}}, 430},
      {{{"NominalChargeCapacity", 900}, {"MaxCapacity", 430}}, 430},
      {{{"AppleRawMaxCapacity", 90}, {"NominalChargeCapacity", 651}, {"MaxCapacity", 100}},
       std::nullopt},
      {{}, std::nullopt}};
  for (const auto& [keys, full] : table) {
    Dictionary entry = keys;
    entry.insert_or_assign("DesignCapacity", 500);
    EXPECT_EQ(read(entry).designCapacity, 500);
    EXPECT_EQ(read(entry).fullCapacity, full);
  }
}

TEST_F(BatteryReaderRegistry, BelievesAFullCapacityFromThirtyToOneHundredThirtyPercent) {
  const std::vector<std::pair<int, Integer>> table = {
      {149, std::nullopt}, {150, 150}, {650, 650}, {651, std::nullopt}};
  for (const auto& [value, full] : table) {
    EXPECT_EQ(read({{"DesignCapacity", 500}, {"MaxCapacity", value}}).fullCapacity, full) << value;
  }
}

TEST_F(BatteryReaderRegistry, ReadsTheTemperatureInHundredthsOfADegree) {
  const std::vector<std::pair<Value, Number>> table = {
      {305, 3.05},           {3050, 30.5},          {0, 0.0},      {-1999, -19.99},
      {9999, 99.99},         {-2000, std::nullopt}, {305.9, 3.05}, {10000, std::nullopt},
      {-9999, std::nullopt}, {20000, std::nullopt}};
  for (const auto& [value, celsius] : table) {
    EXPECT_EQ(read({{"Temperature", value}}).temperatureC, celsius);
  }
}

TEST_F(BatteryReaderRegistry, ReadsTheVoltageInThousandths) {
  const std::vector<std::pair<Value, Number>> table = {
      {850, 0.85}, {1, 0.001}, {0, std::nullopt}, {-12, std::nullopt}, {0.9, std::nullopt}};
  for (const auto& [value, volts] : table) EXPECT_EQ(read({{"Voltage", value}}).voltage, volts);
}

TEST_F(BatteryReaderRegistry, KeepsTheSignOfTheAmperage) {
  EXPECT_EQ(read({{"Amperage", -150}}).amperage, -0.15);
  EXPECT_EQ(read({{"Amperage", 150}}).amperage, 0.15);
  EXPECT_EQ(read({{"Amperage", 0}}).amperage, 0.0);
  EXPECT_EQ(read({{"Amperage", -150.9}}).amperage, -0.15);
}

TEST_F(BatteryReaderRegistry, FallsBackToTheInstantAmperage) {
  EXPECT_EQ(read({{"InstantAmperage", 80}}).amperage, 0.08);
  EXPECT_EQ(read({{"Amperage", "none"}, {"InstantAmperage", 80}}).amperage, 0.08);
  EXPECT_EQ(read({{"Amperage", true}, {"InstantAmperage", 80}}).amperage, 0.08);
  EXPECT_EQ(read({{"Amperage", -150}, {"InstantAmperage", 80}}).amperage, -0.15);
}

TEST_F(BatteryReaderRegistry, ReadsTheWattsOfTheAdapterFromOne) {
  const std::vector<std::pair<Value, Integer>> table = {
      {0, std::nullopt},    {1, 1},     {65, 65},           {-5, std::nullopt},
      {"65", std::nullopt}, {64.9, 64}, {0.9, std::nullopt}};
  for (const auto& [value, watts] : table) {
    EXPECT_EQ(read({{"AdapterDetails", Dictionary{{"Watts", value}}}}).adapterWatts, watts);
  }
  EXPECT_EQ(read({{"AdapterDetails", Dictionary{}}}).adapterWatts, std::nullopt);
  EXPECT_EQ(read({{"Watts", 65}}).adapterWatts, std::nullopt);
}

TEST_F(BatteryReaderRegistry, SurvivesNumbersThatNoIntegerCanHold) {
  const double infinity = std::numeric_limits<double>::infinity();
  const double none = std::numeric_limits<double>::quiet_NaN();
  for (const double huge : {1e300, -1e300, infinity, -infinity, none}) {
    const BatteryState state = read({{"CycleCount", huge},
                                     {"DesignCapacity", huge},
                                     {"Temperature", huge},
                                     {"Voltage", huge},
                                     {"AdapterDetails", Dictionary{{"Watts", huge}}}});
    EXPECT_EQ(state, onBattery(50)) << huge;
  }
}

}  // namespace
}  // namespace lumora::test
