// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Alerts/EngineFixture.h"

namespace lumora::test {
namespace {

class AlertEngineHealth : public EngineFixture {
 protected:
  /// A battery at 50 % that holds `full` of 10,000.
  static BatteryState holding(std::int64_t full) {
    return withCapacity(onBattery(50), full, 10'000);
  }
};

TEST_F(AlertEngineHealth, RemindsBelowEightyPercentOnly) {
  EXPECT_EQ(run(holding(8000)), "");
  EXPECT_EQ(run(holding(7999)), "health");
}

TEST_F(AlertEngineHealth, WritesTheHealthRoundedToAWholePercent) {
  const std::vector<PendingAlert> expected = {
      {AlertKind::health, "Battery health is low",
       "Battery health has fallen to 79% of its original capacity."}};
  EXPECT_EQ(alerts(holding(7885)), expected);
}

TEST_F(AlertEngineHealth, RoundsHalvesAwayFromZero) {
  const std::vector<std::pair<std::int64_t, std::string>> table = {
      {7850, "79%"}, {7849, "78%"}, {7950, "80%"}, {50, "1%"}, {0, "0%"}};
  for (const auto& [full, percent] : table) {
    defaults.set("healthAlertSent", false);
    EXPECT_EQ(alerts(holding(full)).at(0).body,
              "Battery health has fallen to " + percent + " of its original capacity.");
  }
}

TEST_F(AlertEngineHealth, RemindsOnceAcrossLaunches) {
  EXPECT_EQ(run(holding(7885)), "health");
  EXPECT_EQ(run(holding(7000)), "");
  startAnew();
  DefaultsStore later(files, "/config/defaults.json");
  EXPECT_TRUE(later.boolForKey("healthAlertSent"));
  const BatteryState state = holding(7000);
  EXPECT_EQ(kinds(engine.run({.state = state,
                              .since = std::nullopt,
                              .now = now,
                              .prefs = prefs,
                              .canDeliver = true,
                              .prime = false},
                             later)),
            "");
}

TEST_F(AlertEngineHealth, IsReadyAgainFromEightyTwoPercent) {
  EXPECT_EQ(run(holding(7885)), "health");
  EXPECT_EQ(run(holding(8100)), "");
  EXPECT_TRUE(healthAlertSent());
  EXPECT_EQ(run(holding(7885)), "");
  EXPECT_EQ(run(holding(8199)), "");
  EXPECT_TRUE(healthAlertSent());
  EXPECT_EQ(run(holding(8200)), "");
  EXPECT_FALSE(healthAlertSent());
  EXPECT_EQ(run(holding(7885)), "health");
}

TEST_F(AlertEngineHealth, IsReadyAgainAlsoInAPrimingOrHeldCall) {
  defaults.set("healthAlertSent", true);
  prime(holding(8200));
  EXPECT_FALSE(healthAlertSent());
  defaults.set("healthAlertSent", true);
  runHeld(holding(8200));
  EXPECT_FALSE(healthAlertSent());
}

TEST_F(AlertEngineHealth, IsReadyAgainAlsoWhileSwitchedOff) {
  defaults.set("healthAlertSent", true);
  prefs.healthEnabled = false;
  run(holding(8200));
  EXPECT_FALSE(healthAlertSent());
}

TEST_F(AlertEngineHealth, CountsAsSentWhenLowAtPriming) {
  EXPECT_EQ(prime(holding(7000)), "");
  EXPECT_TRUE(healthAlertSent());
  EXPECT_EQ(run(holding(7000)), "");
}

TEST_F(AlertEngineHealth, CountsAsSentWhenLowAtPrimingAlsoWhileSwitchedOff) {
  prefs.healthEnabled = false;
  EXPECT_EQ(prime(holding(7000)), "");
  EXPECT_TRUE(healthAlertSent());
}

TEST_F(AlertEngineHealth, StaysDueWhileHeld) {
  EXPECT_EQ(runHeld(holding(7000)), "");
  EXPECT_FALSE(healthAlertSent());
  EXPECT_EQ(run(holding(7000)), "health");
}

TEST_F(AlertEngineHealth, StaysDueWhileSwitchedOff) {
  prefs.healthEnabled = false;
  EXPECT_EQ(run(holding(7000)), "");
  EXPECT_FALSE(healthAlertSent());
  prefs.healthEnabled = true;
  EXPECT_EQ(run(holding(7000)), "health");
}

TEST_F(AlertEngineHealth, NeedsBothCapacities) {
  BatteryState state = onBattery(50);
  state.fullCapacity = 100;
  EXPECT_EQ(run(state), "");
  state.designCapacity = 0;
  EXPECT_EQ(run(state), "");
  state.designCapacity = -1000;
  EXPECT_EQ(run(state), "");
  state.designCapacity = 1000;
  state.fullCapacity.reset();
  EXPECT_EQ(run(state), "");
  EXPECT_FALSE(healthAlertSent());
}

TEST_F(AlertEngineHealth, StaysAsItIsWithoutABattery) {
  BatteryState state = holding(9000);
  state.hasBattery = false;
  defaults.set("healthAlertSent", true);
  EXPECT_EQ(run(state), "");
  EXPECT_TRUE(healthAlertSent());
  defaults.set("healthAlertSent", false);
  state.fullCapacity = 7000;
  EXPECT_EQ(run(state), "");
  EXPECT_EQ(prime(state), "");
  EXPECT_FALSE(healthAlertSent());
}

TEST_F(AlertEngineHealth, WritesNothingWhileNothingChanges) {
  run(holding(8100));
  run(holding(9000));
  EXPECT_EQ(files.text("/config/defaults.json"), std::nullopt);
}

TEST_F(AlertEngineHealth, RemindsOnceAlsoWhenTheWriteFails) {
  files.failsReplacing = true;
  EXPECT_EQ(run(holding(7000)), "health");
  EXPECT_EQ(run(holding(7000)), "");
}

}  // namespace
}  // namespace lumora::test
