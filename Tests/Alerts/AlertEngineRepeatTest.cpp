// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Alerts/EngineFixture.h"

namespace lumora::test {
namespace {

class AlertEngineRepeat : public EngineFixture {
 protected:
  void SetUp() override { prefs.longEnabled = false; }

  /// Runs once a minute and tells at which minutes a reminder came.
  std::string minutesOfReminders(int minutes) {
    std::string text;
    for (int minute = 0; minute < minutes; ++minute) {
      if (run(pluggedIn(85)) == "chargeLimit") text += std::to_string(minute) + " ";
      pass(60);
    }
    return text;
  }
};

TEST_F(AlertEngineRepeat, RepeatsThreeTimesThenStaysQuiet) {
  EXPECT_EQ(minutesOfReminders(24 * 60), "0 5 10 15 ");
}

TEST_F(AlertEngineRepeat, RemindsOnceWithoutRepeat) {
  prefs.repeatReminder = false;
  EXPECT_EQ(minutesOfReminders(24 * 60), "0 ");
}

TEST_F(AlertEngineRepeat, RepeatsFirstAfterTwoHundredNinetySeconds) {
  EXPECT_EQ(run(pluggedIn(85)), "chargeLimit");
  pass(289);
  EXPECT_EQ(run(pluggedIn(85)), "");
  pass(0.75);
  EXPECT_EQ(run(pluggedIn(85)), "");
  pass(0.25);
  EXPECT_EQ(run(pluggedIn(85)), "chargeLimit");
}

TEST_F(AlertEngineRepeat, CountsTheSpacingFromTheReminderBefore) {
  EXPECT_EQ(run(pluggedIn(85)), "chargeLimit");
  pass(400);
  EXPECT_EQ(run(pluggedIn(85)), "chargeLimit");
  pass(289);
  EXPECT_EQ(run(pluggedIn(85)), "");
  pass(1);
  EXPECT_EQ(run(pluggedIn(85)), "chargeLimit");
}

TEST_F(AlertEngineRepeat, TellsThePercentOfTheMoment) {
  run(pluggedIn(85));
  pass(290);
  EXPECT_EQ(alerts(pluggedIn(91)).at(0).body, "Battery is at 91%. Unplug to keep it healthy.");
}

TEST_F(AlertEngineRepeat, BeginsAnewAtOnceAfterTheEpisodeEnded) {
  EXPECT_EQ(minutesOfReminders(24 * 60), "0 5 10 15 ");
  EXPECT_EQ(run(onBattery(85)), "");
  EXPECT_EQ(engine.chargeSent, 0);
  EXPECT_EQ(minutesOfReminders(24 * 60), "0 5 10 15 ");
}

TEST_F(AlertEngineRepeat, KeepsTheTimeOfTheLastReminderWhenTheEpisodeEnds) {
  run(pluggedIn(85));
  const Date sent = now;
  pass(10);
  run(pluggedIn(79));
  EXPECT_EQ(engine.chargeLast, sent);
  EXPECT_EQ(run(pluggedIn(80)), "chargeLimit");
}

TEST_F(AlertEngineRepeat, StopsWhenRepeatingIsSwitchedOffWithinAnEpisode) {
  EXPECT_EQ(minutesOfReminders(6), "0 5 ");
  prefs.repeatReminder = false;
  EXPECT_EQ(minutesOfReminders(60), "");
  prefs.repeatReminder = true;
  EXPECT_EQ(minutesOfReminders(60), "0 5 ");
}

TEST_F(AlertEngineRepeat, CountsFromTheFirstDeliveryAfterHolding) {
  for (int minute = 0; minute < 60; ++minute) {
    EXPECT_EQ(runHeld(pluggedIn(85)), "");
    pass(60);
  }
  EXPECT_EQ(engine.chargeSent, 0);
  EXPECT_EQ(engine.chargeLast, kDistantPast);
  EXPECT_EQ(minutesOfReminders(60), "0 5 10 15 ");
}

TEST_F(AlertEngineRepeat, ResumesTheRepeatsAfterHolding) {
  EXPECT_EQ(minutesOfReminders(6), "0 5 ");
  for (int minute = 0; minute < 60; ++minute) {
    EXPECT_EQ(runHeld(pluggedIn(85)), "");
    pass(60);
  }
  EXPECT_EQ(minutesOfReminders(60), "0 5 ");
}

TEST_F(AlertEngineRepeat, WaitsWhileTheClockIsSetBack) {
  EXPECT_EQ(run(pluggedIn(85)), "chargeLimit");
  pass(-3600);
  EXPECT_EQ(run(pluggedIn(85)), "");
  pass(3600 + 290);
  EXPECT_EQ(run(pluggedIn(85)), "chargeLimit");
}

}  // namespace
}  // namespace lumora::test
