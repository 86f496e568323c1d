// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "AppModel/ModelFixture.h"

namespace lumora::test {
namespace {

/// Reminders that nobody was there to show: which of them may be shown later.
class AppModelLateReminder : public ModelFixture {
 protected:
  /// Reminds of a low battery, 15 % on battery; nothing else is on.
  void remind() {
    defaults.set("lowPowerEnabled", false);
    unplug(50);
    model().start();
    unplug(15);
    ASSERT_EQ(posted(Reason::change), "low");
    ASSERT_TRUE(centre.stillSo());
  }
};

TEST_F(AppModelLateReminder, IsShownWithinTenMinutes) {
  remind();
  pass(600);
  EXPECT_TRUE(centre.stillSo());
  pass(1);
  EXPECT_FALSE(centre.stillSo());
}

TEST_F(AppModelLateReminder, CountsItsTenMinutesWhateverTheClockIsSetTo) {
  remind();
  clock.set(Seconds{40 * 86'400.0});
  EXPECT_TRUE(centre.stillSo());
  clock.set(Seconds{-80 * 86'400.0});
  pass(601);
  EXPECT_FALSE(centre.stillSo());
}

TEST_F(AppModelLateReminder, IsNotShownOncePluggedIn) {
  remind();
  plugIn(15);
  EXPECT_EQ(posted(Reason::change), "");
  EXPECT_FALSE(centre.stillSo());
}

TEST_F(AppModelLateReminder, IsShownThoughThePercentHasFallenOn) {
  remind();
  unplug(12);
  EXPECT_EQ(posted(Reason::timer), "");
  EXPECT_TRUE(centre.stillSo());
}

TEST_F(AppModelLateReminder, IsNotShownOnceTheBatteryIsGone) {
  remind();
  removeBattery();
  EXPECT_EQ(posted(Reason::change), "");
  EXPECT_FALSE(centre.stillSo());
}

TEST_F(AppModelLateReminder, IsNotShownOnceItIsTurnedOff) {
  remind();
  defaults.set("lowEnabled", false);
  EXPECT_FALSE(centre.stillSo());
}

TEST_F(AppModelLateReminder, IsNotShownInASnooze) {
  remind();
  model().snooze();
  EXPECT_FALSE(centre.stillSo());
}

TEST_F(AppModelLateReminder, IsNotShownInASnoozeThatTheClockLeapsOver) {
  remind();
  model().snooze();
  clock.set(Seconds{5 * 3600.0});
  EXPECT_FALSE(centre.stillSo());
}

TEST_F(AppModelLateReminder, IsNotShownInQuietHours) {
  remind();
  defaults.set("quietEnabled", true);
  defaults.set("quietStart", std::int64_t{0});
  defaults.set("quietEnd", std::int64_t{1440});
  EXPECT_FALSE(centre.stillSo());
}

TEST_F(AppModelLateReminder, IsNotShownFromTheSleepOnNorAfterTheWake) {
  remind();
  sleepEvents.sleep();
  EXPECT_FALSE(centre.stillSo());
  sleepEvents.wake();
  runLoop.advance(std::chrono::seconds(3));
  EXPECT_FALSE(centre.stillSo());
}

TEST_F(AppModelLateReminder, IsNotShownAfterTheEnd) {
  remind();
  endModel();
  EXPECT_FALSE(centre.stillSo());
}

}  // namespace
}  // namespace lumora::test
