// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "AppModel/ModelFixture.h"

namespace lumora::test {
namespace {

class AppModelSnooze : public ModelFixture {
 protected:
  /// Starts at 50 % on battery, so that 15 % reminds.
  void start() {
    unplug(50);
    model().start();
  }

  std::optional<Date> persisted() { return Prefs::snoozeUntil(defaults, clock.time); }

  const Date until = clock.time + Seconds{3600};
};

TEST_F(AppModelSnooze, LastsOneHour) {
  start();
  model().snooze();
  EXPECT_EQ(*model().snoozeUntil(), until);
  EXPECT_EQ(persisted(), until);
}

TEST_F(AppModelSnooze, IsStoredBeforeItIsShownAndRefreshesNothing) {
  start();
  watchProperties();
  model().snooze();
  EXPECT_EQ(recorder.take(), "now, stamp defaults.json, replace defaults.json, snoozeUntil absent");
}

TEST_F(AppModelSnooze, HoldsRemindersUntilItsEnd) {
  start();
  model().snooze();
  unplug(15);
  EXPECT_EQ(posted(Reason::change), "");
  pass(3599.5);
  EXPECT_EQ(posted(Reason::timer), "");
  EXPECT_EQ(*model().snoozeUntil(), until);
  pass(0.5);
  EXPECT_EQ(posted(Reason::timer), "low lowPower");
  EXPECT_EQ(*model().snoozeUntil(), std::nullopt);
}

TEST_F(AppModelSnooze, IsClearedByAChangeToo) {
  start();
  model().snooze();
  pass(3600);
  unplug(15);
  EXPECT_EQ(posted(Reason::change), "low lowPower");
  EXPECT_EQ(*model().snoozeUntil(), std::nullopt);
}

TEST_F(AppModelSnooze, IsNotClearedByLaunchOrWake) {
  start();
  model().snooze();
  pass(7200);
  model().refresh(Reason::wake);
  model().refresh(Reason::launch);
  EXPECT_EQ(*model().snoozeUntil(), until);
}

TEST_F(AppModelSnooze, LeavesThePersistedValueWhenItRunsOut) {
  start();
  model().snooze();
  const auto text = files.text("/config/defaults.json");
  pass(3600);
  model().refresh(Reason::timer);
  EXPECT_EQ(files.text("/config/defaults.json"), text);
}

TEST_F(AppModelSnooze, IsClearedOnceOnly) {
  start();
  model().snooze();
  pass(3600);
  model().refresh(Reason::timer);
  watchProperties();
  model().refresh(Reason::timer);
  EXPECT_EQ(recorder.take().find("snoozeUntil"), std::string::npos);
}

TEST_F(AppModelSnooze, EndsOneHourAfterTheLastOne) {
  start();
  model().snooze();
  pass(1800);
  model().snooze();
  EXPECT_EQ(*model().snoozeUntil(), until + Seconds{1800});
  unplug(15);
  pass(1800);
  EXPECT_EQ(posted(Reason::timer), "");
}

TEST_F(AppModelSnooze, OutlivesTheProcess) {
  start();
  model().snooze();
  endModel();
  pass(1800);
  EXPECT_EQ(*model().snoozeUntil(), until);
  start();
  unplug(15);
  EXPECT_EQ(posted(Reason::timer), "");
}

TEST_F(AppModelSnooze, IsAbsentAtTheStartOnceItHasPassed) {
  Prefs::setSnoozeUntil(defaults, clock.time - Seconds{1});
  EXPECT_EQ(*model().snoozeUntil(), std::nullopt);
}

TEST_F(AppModelSnooze, HoldsAlsoOutsideQuietHoursAndQuietHoursHoldAfterIt) {
  start();
  model().snooze();
  defaults.set("quietEnabled", true);
  defaults.set("quietStart", std::int64_t{0});
  defaults.set("quietEnd", std::int64_t{1440});
  unplug(15);
  pass(3600);
  EXPECT_EQ(posted(Reason::timer), "");
  EXPECT_EQ(*model().snoozeUntil(), std::nullopt);
  defaults.set("quietEnabled", false);
  EXPECT_EQ(posted(Reason::timer), "low lowPower");
}

TEST_F(AppModelSnooze, StartsFromTheNotificationOnTheNextTurnOfTheLoop) {
  start();
  watchProperties();
  centre.pick("SNOOZE");
  EXPECT_EQ(recorder.take(), "completed");
  runLoop.drain();
  EXPECT_EQ(recorder.take(), "now, stamp defaults.json, replace defaults.json, snoozeUntil absent");
  EXPECT_EQ(*model().snoozeUntil(), until);
}

TEST_F(AppModelSnooze, EndsWhenItIsCancelled) {
  start();
  model().snooze();
  watchProperties();
  unplug(15);
  model().cancelSnooze();
  EXPECT_EQ(recorder.take(), "stamp defaults.json, replace defaults.json, snoozeUntil -3600 s ago");
  EXPECT_EQ(*model().snoozeUntil(), std::nullopt);
  EXPECT_EQ(persisted(), std::nullopt);
  EXPECT_EQ(posted(Reason::timer), "low lowPower");
}

TEST_F(AppModelSnooze, CancelsAsTheIntegerZero) {
  start();
  model().snooze();
  model().cancelSnooze();
  EXPECT_EQ(files.text("/config/defaults.json"), "{\n  \"snoozeUntil\": 0\n}\n");
}

TEST_F(AppModelSnooze, HoldsAlsoWhenItCannotBeWritten) {
  start();
  files.failsReplacing = true;
  model().snooze();
  EXPECT_EQ(*model().snoozeUntil(), until);
  unplug(15);
  EXPECT_EQ(posted(Reason::timer), "");
}

}  // namespace
}  // namespace lumora::test
