// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Alerts/AlertEngine.h"
#include "Alerts/EngineFixture.h"

#include <limits>

namespace lumora::test {
namespace {

class AlertEngineTest : public EngineFixture {};

BatteryState savingPower(BatteryState state) {
  state.lowPowerMode = true;
  return state;
}

TEST_F(AlertEngineTest, StartsWithNothingSent) {
  EXPECT_TRUE(engine.suppressed.empty());
  EXPECT_EQ(engine.chargeSent, 0);
  EXPECT_EQ(engine.chargeLast, kDistantPast);
  EXPECT_FALSE(engine.lowSent || engine.longSent || engine.lowPowerSent);
}

TEST_F(AlertEngineTest, RemindsOfTheChargeLimitAtOrAboveIt) {
  for (const auto& [percent, due] :
       {std::pair{79, ""}, {80, "chargeLimit"}, {81, "chargeLimit"}, {100, "chargeLimit"}}) {
    startAnew();
    EXPECT_EQ(run(pluggedIn(percent)), due) << percent;
  }
}

TEST_F(AlertEngineTest, RemindsOfTheChargeLimitWhetherItChargesOrNot) {
  EXPECT_EQ(run(charging(85)), "chargeLimit");
  startAnew();
  EXPECT_EQ(run(pluggedIn(85)), "chargeLimit");
}

TEST_F(AlertEngineTest, RemindsOfTheChargeLimitOnlyWhenPluggedInAndEnabled) {
  EXPECT_EQ(run(onBattery(85)), "");
  prefs.limitEnabled = false;
  EXPECT_EQ(run(pluggedIn(85)), "");
  prefs.limitEnabled = true;
  prefs.limit = 90;
  EXPECT_EQ(run(pluggedIn(85)), "");
}

TEST_F(AlertEngineTest, RemindsOfALowBatteryAtOrBelowTheThreshold) {
  prefs.lowPowerEnabled = false;
  for (const auto& [percent, due] : {std::pair{21, ""}, {20, "low"}, {19, "low"}, {0, "low"}}) {
    startAnew();
    EXPECT_EQ(run(onBattery(percent)), due) << percent;
  }
}

TEST_F(AlertEngineTest, RemindsOfALowBatteryOnlyOnBatteryAndEnabled) {
  prefs.lowPowerEnabled = false;
  EXPECT_EQ(run(pluggedIn(15)), "");
  prefs.lowEnabled = false;
  EXPECT_EQ(run(onBattery(15)), "");
  prefs.lowEnabled = true;
  prefs.low = 10;
  EXPECT_EQ(run(onBattery(15)), "");
}

TEST_F(AlertEngineTest, SuggestsLowPowerOnlyBelowTheThreshold) {
  for (const auto& [percent, due] : {std::pair{31, ""}, {30, ""}, {29, "lowPower"}}) {
    startAnew();
    EXPECT_EQ(run(onBattery(percent)), due) << percent;
  }
}

TEST_F(AlertEngineTest, SuggestsLowPowerOnlyOnBatteryEnabledAndNotYetSavingPower) {
  EXPECT_EQ(run(pluggedIn(25)), "");
  EXPECT_EQ(run(savingPower(onBattery(25))), "");
  prefs.lowPowerEnabled = false;
  EXPECT_EQ(run(onBattery(25)), "");
  prefs.lowPowerEnabled = true;
  prefs.lowPowerAt = 25;
  EXPECT_EQ(run(onBattery(25)), "");
}

TEST_F(AlertEngineTest, RemindsOfTooLongOnlyPastTheHours) {
  prefs.limitEnabled = false;
  since = now - Seconds{8 * 3600.0};
  EXPECT_EQ(run(pluggedIn(80)), "");
  pass(0.5);
  EXPECT_EQ(run(pluggedIn(80)), "tooLong");
}

TEST_F(AlertEngineTest, RemindsOfTooLongOnlyPluggedInAtTheLimitAndEnabled) {
  prefs.limitEnabled = false;
  pluggedInFor(9);
  EXPECT_EQ(run(onBattery(90)), "");
  EXPECT_EQ(run(pluggedIn(79)), "");
  prefs.longEnabled = false;
  EXPECT_EQ(run(pluggedIn(80)), "");
  prefs.longEnabled = true;
  prefs.longHours = 9;
  EXPECT_EQ(run(pluggedIn(80)), "");
}

TEST_F(AlertEngineTest, RemindsOfTooLongByTheLimitAlsoWhileTheLimitReminderIsOff) {
  prefs.limitEnabled = false;
  prefs.limit = 60;
  pluggedInFor(9);
  EXPECT_EQ(run(pluggedIn(60)), "tooLong");
}

TEST_F(AlertEngineTest, RemindsOfTooLongNeverWithoutKnowingSinceWhen) {
  prefs.limitEnabled = false;
  pluggedInFor(9);
  EXPECT_EQ(run(pluggedIn(80)), "tooLong");
  EXPECT_TRUE(engine.longSent);
  since.reset();
  for (int day = 0; day < 5; ++day) {
    pass(86400);
    EXPECT_EQ(run(pluggedIn(80)), "");
  }
  EXPECT_FALSE(engine.longSent);
}

TEST_F(AlertEngineTest, WritesTheChargeLimitReminder) {
  const std::vector<PendingAlert> expected = {{AlertKind::chargeLimit, "Charge limit reached",
                                               "Battery is at 83%. Unplug to keep it healthy."}};
  EXPECT_EQ(alerts(pluggedIn(83)), expected);
}

TEST_F(AlertEngineTest, WritesTheLowBatteryReminder) {
  prefs.lowPowerEnabled = false;
  const std::vector<PendingAlert> expected = {
      {AlertKind::low, "Low battery", "Battery is at 15%. Plug in soon."}};
  EXPECT_EQ(alerts(onBattery(15)), expected);
}

TEST_F(AlertEngineTest, WritesTheLowPowerSuggestion) {
  const std::vector<PendingAlert> expected = {
      {AlertKind::lowPower, "Try Low Power Mode",
       "Battery is at 29%. Turn on Low Power Mode (System Settings, Battery) to stretch it."}};
  EXPECT_EQ(alerts(onBattery(29)), expected);
}

TEST_F(AlertEngineTest, WritesTheTooLongReminderWithTruncatedHours) {
  prefs.limitEnabled = false;
  prefs.longHours = 6;
  pluggedInFor(7.9);
  const std::vector<PendingAlert> expected = {
      {AlertKind::tooLong, "Plugged in for a long time",
       "Plugged in for over 7 h at 80%. Unplug it to let the battery rest."}};
  EXPECT_EQ(alerts(pluggedIn(80)), expected);
}

TEST_F(AlertEngineTest, WritesLargeNumbersWithoutGrouping) {
  prefs.limitEnabled = false;
  pluggedInFor(12345.5);
  EXPECT_EQ(alerts(pluggedIn(100)).at(0).body,
            "Plugged in for over 12345 h at 100%. Unplug it to let the battery rest.");
}

TEST_F(AlertEngineTest, GivesAtMostThreePluggedInInThisOrder) {
  pluggedInFor(9);
  EXPECT_EQ(run(withCapacity(pluggedIn(90), 700, 1000)), "chargeLimit tooLong health");
}

TEST_F(AlertEngineTest, GivesAtMostThreeOnBatteryInThisOrder) {
  EXPECT_EQ(run(withCapacity(onBattery(15), 700, 1000)), "low lowPower health");
}

TEST_F(AlertEngineTest, RemindsOnceInAnEpisodeOnBattery) {
  EXPECT_EQ(run(onBattery(15)), "low lowPower");
  for (int minute = 0; minute < 120; ++minute) {
    pass(60);
    EXPECT_EQ(run(onBattery(14)), "");
  }
}

TEST_F(AlertEngineTest, RemindsOnceInAnEpisodeOfTooLong) {
  prefs.limitEnabled = false;
  pluggedInFor(9);
  EXPECT_EQ(run(pluggedIn(90)), "tooLong");
  pass(9 * 3600);
  EXPECT_EQ(run(pluggedIn(90)), "");
}

TEST_F(AlertEngineTest, RemindsAgainOfALowBatteryAfterItsEpisodeEnded) {
  prefs.lowPowerEnabled = false;
  EXPECT_EQ(run(onBattery(15)), "low");
  EXPECT_EQ(run(onBattery(21)), "");
  EXPECT_EQ(run(onBattery(20)), "low");
  EXPECT_EQ(run(pluggedIn(20)), "");
  EXPECT_EQ(run(onBattery(20)), "low");
}

TEST_F(AlertEngineTest, SuggestsLowPowerAgainAfterItsEpisodeEnded) {
  prefs.lowEnabled = false;
  EXPECT_EQ(run(onBattery(25)), "lowPower");
  EXPECT_EQ(run(savingPower(onBattery(25))), "");
  EXPECT_EQ(run(onBattery(24)), "lowPower");
}

TEST_F(AlertEngineTest, RemindsAgainOfTooLongAfterItsEpisodeEnded) {
  prefs.limitEnabled = false;
  pluggedInFor(9);
  EXPECT_EQ(run(pluggedIn(90)), "tooLong");
  EXPECT_EQ(run(pluggedIn(79)), "");
  EXPECT_EQ(run(pluggedIn(80)), "tooLong");
}

TEST_F(AlertEngineTest, EndsAnEpisodeAlsoWhenTheReminderIsSwitchedOff) {
  prefs.lowPowerEnabled = false;
  EXPECT_EQ(run(onBattery(15)), "low");
  prefs.lowEnabled = false;
  EXPECT_EQ(run(onBattery(15)), "");
  prefs.lowEnabled = true;
  EXPECT_EQ(run(onBattery(15)), "low");
}

TEST_F(AlertEngineTest, HoldsALowBatteryUntilItMayDeliver) {
  prefs.lowPowerEnabled = false;
  for (int minute = 0; minute < 60; ++minute) {
    EXPECT_EQ(runHeld(onBattery(15)), "");
    EXPECT_FALSE(engine.lowSent);
    pass(60);
  }
  EXPECT_EQ(run(onBattery(15)), "low");
}

TEST_F(AlertEngineTest, HoldsEveryKindUntilItMayDeliver) {
  pluggedInFor(9);
  EXPECT_EQ(runHeld(withCapacity(pluggedIn(90), 700, 1000)), "");
  EXPECT_EQ(engine, AlertEngine{});
  EXPECT_FALSE(healthAlertSent());
  EXPECT_EQ(run(withCapacity(pluggedIn(90), 700, 1000)), "chargeLimit tooLong health");
}

TEST_F(AlertEngineTest, ForgetsAHeldEpisodeThatEnds) {
  EXPECT_EQ(runHeld(pluggedIn(90)), "");
  EXPECT_EQ(runHeld(onBattery(90)), "");
  EXPECT_EQ(run(onBattery(90)), "");
  EXPECT_EQ(engine.chargeSent, 0);
}

using AlertEngineDeathTest = AlertEngineTest;

TEST_F(AlertEngineDeathTest, EndsTheProcessForHoursNoIntegerHolds) {
  since = dateSince1970(-std::numeric_limits<double>::infinity());
  EXPECT_EXIT(run(pluggedIn(90)), testing::KilledBySignal(SIGABRT), "");
}

TEST_F(AlertEngineTest, TellsOfEachKindWhetherItIsStillSo) {
  const auto stillSo = [this](const BatteryState& state) {
    std::vector<PendingAlert> still;
    for (const AlertKind kind : kAllAlertKinds) {
      const AlertEngine::Input input{.state = state, .since = since, .now = now, .prefs = prefs};
      if (engine.stillSo(kind, input)) still.push_back({kind, "", ""});
    }
    return kinds(still);
  };
  EXPECT_EQ(stillSo(onBattery(20)), "low lowPower");
  EXPECT_EQ(stillSo(onBattery(29)), "lowPower");
  EXPECT_EQ(stillSo(onBattery(30)), "");
  EXPECT_EQ(stillSo(pluggedIn(20)), "");
  EXPECT_EQ(stillSo(pluggedIn(80)), "chargeLimit");
  pluggedInFor(9);
  EXPECT_EQ(stillSo(pluggedIn(80)), "chargeLimit tooLong");
  EXPECT_EQ(stillSo(withCapacity(pluggedIn(79), 79, 100)), "health");
  EXPECT_EQ(stillSo(withCapacity(pluggedIn(79), 80, 100)), "");
  prefs.healthEnabled = false;
  EXPECT_EQ(stillSo(withCapacity(pluggedIn(79), 79, 100)), "");
  EXPECT_EQ(stillSo(BatteryState{}), "");
}

TEST_F(AlertEngineTest, WhatWasFoundInForceIsNoLongerSo) {
  run(onBattery(20));
  const BatteryState state = onBattery(20);
  const AlertEngine::Input input{.state = state, .since = since, .now = now, .prefs = prefs};
  EXPECT_TRUE(engine.stillSo(AlertKind::low, input));
  prime(onBattery(20));
  EXPECT_FALSE(engine.stillSo(AlertKind::low, input));
}

}  // namespace
}  // namespace lumora::test
