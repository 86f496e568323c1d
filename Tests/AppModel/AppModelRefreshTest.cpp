// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "AppModel/ModelFixture.h"

namespace lumora::test {
namespace {

class AppModelRefresh : public ModelFixture {};

TEST_F(AppModelRefresh, TakesTheseStepsAtLaunch) {
  givenHistory({{500, true}, {200, true}});
  plugIn(85);
  watchProperties();
  model().refresh(Reason::launch);
  EXPECT_EQ(recorder.take(),
            "sources, low power mode, registry, now, pluggedSince absent, state 0, "
            "stamp history.json, replace history.json, historyVersion 0, stamp defaults.json");
}

TEST_F(AppModelRefresh, TakesTheseStepsAtAChange) {
  unplug(50);
  model().refresh(Reason::launch);
  watchProperties();
  plugIn(85);
  model().refresh(Reason::change);
  EXPECT_EQ(recorder.take(),
            "sources, low power mode, registry, now, pluggedSince absent, state 50, "
            "stamp history.json, replace history.json, historyVersion 1, stamp defaults.json, add "
            "chargeLimit");
}

TEST_F(AppModelRefresh, TakesTheseStepsAtTheTimerAfterASnooze) {
  unplug(50);
  model().refresh(Reason::launch);
  model().snooze();
  pass(3600);
  watchProperties();
  unplug(15);
  model().refresh(Reason::timer);
  EXPECT_EQ(
      recorder.take(),
      "sources, low power mode, registry, now, state 50, stamp history.json, replace history.json, "
      "historyVersion 1, stamp defaults.json, snoozeUntil 0 s ago, add low, add lowPower");
}

TEST_F(AppModelRefresh, TakesTheseStepsAfterWaking) {
  unplug(50);
  model().refresh(Reason::launch);
  watchProperties();
  powerSources.registry = {{"DesignCapacity", 1000}, {"MaxCapacity", 700}};
  plugIn(85);
  model().refresh(Reason::wake);
  EXPECT_EQ(recorder.take(),
            "sources, low power mode, registry, now, pluggedSince absent, state 50, "
            "stamp history.json, replace history.json, historyVersion 1, stamp defaults.json, "
            "stamp defaults.json, replace defaults.json");
}

TEST_F(AppModelRefresh, PublishesNoEqualReadingButCountsOn) {
  unplug(50);
  model().refresh(Reason::launch);
  watchProperties();
  pass(60);
  model().refresh(Reason::timer);
  model().refresh(Reason::change);
  EXPECT_EQ(recorder.take(),
            "sources, low power mode, registry, now, historyVersion 1, stamp defaults.json, "
            "sources, low power mode, registry, now, historyVersion 2, stamp defaults.json");
  EXPECT_EQ(*model().historyVersion(), 3);
}

TEST_F(AppModelRefresh, PublishesAReadingThatDiffersInAnyField) {
  unplug(50);
  model().refresh(Reason::launch);
  lowPowerMode.enabled = true;
  model().refresh(Reason::change);
  EXPECT_TRUE(model().state()->lowPowerMode);
  powerSources.registry = {{"Temperature", 3050}};
  model().refresh(Reason::change);
  EXPECT_EQ(model().state()->temperatureC, 30.5);
}

TEST_F(AppModelRefresh, RecordsUnmovedReadingsUnlessTheReasonIsChange) {
  unplug(50);
  std::vector<std::size_t> counts;
  for (const Reason reason : {Reason::launch, Reason::change, Reason::timer, Reason::change,
                              Reason::wake, Reason::change}) {
    pass(10);
    model().refresh(reason);
    counts.push_back(samples().size());
  }
  EXPECT_EQ(counts, (std::vector<std::size_t>{1, 1, 2, 2, 3, 3}));
}

TEST_F(AppModelRefresh, RecordsAMovedReadingAtAChange) {
  unplug(50);
  model().refresh(Reason::launch);
  pass(10);
  unplug(49);
  model().refresh(Reason::change);
  EXPECT_EQ(samples().back(), (Sample{1'700'000'010, 49, false, false}));
}

TEST_F(AppModelRefresh, PublishesAReadingWithoutABatteryAndRecordsNothing) {
  plugIn(50);
  model().refresh(Reason::launch);
  removeBattery();
  model().refresh(Reason::timer);
  EXPECT_EQ(*model().state(), BatteryState{});
  EXPECT_EQ(*model().pluggedSince(), std::nullopt);
  EXPECT_EQ(*model().historyVersion(), 2);
  EXPECT_EQ(samples().size(), 1U);
}

TEST_F(AppModelRefresh, RemindsAtOnceWhenTheBatteryReturns) {
  plugIn(85);
  model().refresh(Reason::launch);
  EXPECT_EQ(posted(Reason::timer), "");
  removeBattery();
  EXPECT_EQ(posted(Reason::change), "");
  plugIn(85);
  EXPECT_EQ(posted(Reason::change), "chargeLimit");
}

TEST_F(AppModelRefresh, PostsNothingAfterWakingButAtTheNextTimer) {
  unplug(50);
  model().refresh(Reason::launch);
  plugIn(85);
  EXPECT_EQ(posted(Reason::wake), "");
  EXPECT_EQ(posted(Reason::timer), "");
  unplug(15);
  EXPECT_EQ(posted(Reason::timer), "low lowPower");
}

TEST_F(AppModelRefresh, PostsNothingInQuietHours) {
  clock.time = utc(2024, 1, 15, 12, 0);
  unplug(50);
  model().refresh(Reason::launch);
  defaults.set("quietEnabled", true);
  defaults.set("quietStart", std::int64_t{0});
  defaults.set("quietEnd", std::int64_t{1440});
  unplug(15);
  EXPECT_EQ(posted(Reason::change), "");
  EXPECT_EQ(posted(Reason::timer), "");
  EXPECT_EQ(*model().snoozeUntil(), std::nullopt);
  defaults.set("quietEnabled", false);
  EXPECT_EQ(posted(Reason::timer), "low lowPower");
}

class AppModelLooking : public ModelFixture {
 protected:
  using Standing = PowerSources::Standing;

  void lose(Standing standing) {
    removeBattery();
    powerSources.stands = standing;
  }
};

TEST_F(AppModelLooking, TakesTheFirstAccountWithABatteryForTheLaunch) {
  for (const Standing standing : {Standing::looking, Standing::waiting}) {
    endModel();
    givenHistory({{1000, true}, {200, true}});
    lose(standing);
    model().refresh(Reason::launch);
    EXPECT_EQ(posted(Reason::change), "");
    pass(60);
    EXPECT_EQ(posted(Reason::timer), "");
    plugIn(85);
    EXPECT_EQ(posted(Reason::change), "");
    // Plugged in for as long as the history says, and known to be.
    EXPECT_EQ(*model().pluggedSince(), clock.time - Seconds(1060));
    EXPECT_EQ(posted(Reason::timer), "");
    unplug(15);
    EXPECT_EQ(posted(Reason::change), "low lowPower");
    files.remove("/data/Lumora/history.json");
  }
}

TEST_F(AppModelLooking, RemindsOfABatteryThatComesOnceItIsSettledThatThereWasNone) {
  lose(Standing::waiting);
  model().refresh(Reason::launch);
  powerSources.stands = Standing::settled;
  model().refresh(Reason::timer);
  plugIn(85);
  EXPECT_EQ(posted(Reason::change), "chargeLimit");
}

TEST_F(AppModelLooking, SaysThatItLooks) {
  EXPECT_FALSE(*model().looking());
  lose(Standing::looking);
  model().refresh(Reason::launch);
  EXPECT_TRUE(*model().looking());
  powerSources.stands = Standing::waiting;
  model().refresh(Reason::change);
  EXPECT_FALSE(*model().looking());
  lose(Standing::looking);
  model().refresh(Reason::change);
  plugIn(85);
  model().refresh(Reason::change);
  EXPECT_FALSE(*model().looking());
}

TEST_F(AppModelLooking, ShowsAtOnceThatThereIsNoBattery) {
  unplug(50);
  model().refresh(Reason::launch);
  lose(Standing::waiting);
  model().refresh(Reason::change);
  EXPECT_EQ(*model().state(), BatteryState{});
  EXPECT_EQ(samples().size(), 1U);
}

TEST_F(AppModelLooking, RepeatsNothingForABatteryThatComesBack) {
  unplug(50);
  model().refresh(Reason::launch);
  plugIn(85);
  EXPECT_EQ(posted(Reason::change), "chargeLimit");
  const auto since = *model().pluggedSince();
  for (int i = 0; i < 20; ++i) {
    pass(1);
    lose(i % 2 == 0 ? Standing::waiting : Standing::looking);
    EXPECT_EQ(posted(Reason::change), "");
    pass(1);
    plugIn(85);
    EXPECT_EQ(posted(Reason::change), "");
  }
  EXPECT_EQ(*model().pluggedSince(), since);
}

TEST_F(AppModelLooking, WakesUpWithTheBatteryThatComesLater) {
  unplug(50);
  model().refresh(Reason::launch);
  lose(Standing::waiting);
  EXPECT_EQ(posted(Reason::wake), "");
  unplug(15);
  EXPECT_EQ(posted(Reason::change), "");
  EXPECT_EQ(posted(Reason::timer), "");
}

class PluggedSince : public ModelFixture {
 protected:
  /// Seconds ago; absent when the model knows of none.
  std::optional<double> secondsAgo() {
    const auto since = *model().pluggedSince();
    return since ? std::optional((clock.time - *since).count()) : std::nullopt;
  }
};

TEST_F(PluggedSince, IsTheEstimateOfTheHistoryAtLaunch) {
  givenHistory({{1000, false}, {900, true}, {400, true}});
  plugIn(85);
  model().refresh(Reason::launch);
  EXPECT_EQ(secondsAgo(), 900);
}

TEST_F(PluggedSince, IsNowAtLaunchWithoutAUsableHistory) {
  givenHistory({{1000, true}, {600, true}});
  plugIn(85);
  model().refresh(Reason::launch);
  EXPECT_EQ(secondsAgo(), 0);
}

TEST_F(PluggedSince, IsTheEstimateAfterWaking) {
  unplug(50);
  model().refresh(Reason::launch);
  EXPECT_EQ(secondsAgo(), std::nullopt);
  pass(60);
  plugIn(50);
  model().refresh(Reason::change);
  pass(60);
  removeBattery();
  model().refresh(Reason::change);
  EXPECT_EQ(secondsAgo(), std::nullopt);
  pass(60);
  plugIn(50);
  model().refresh(Reason::wake);
  EXPECT_EQ(secondsAgo(), 120);
}

TEST_F(PluggedSince, IsNowAfterWakingWithoutAUsableHistory) {
  unplug(50);
  model().refresh(Reason::launch);
  pass(3600);
  plugIn(50);
  model().refresh(Reason::wake);
  EXPECT_EQ(secondsAgo(), 0);
}

TEST_F(PluggedSince, IsNowAtAChangeOrTimerWhateverTheHistorySays) {
  for (const Reason reason : {Reason::change, Reason::timer}) {
    endModel();
    givenHistory({{900, true}, {400, true}});
    plugIn(85);
    model().refresh(reason);
    EXPECT_EQ(secondsAgo(), 0);
  }
}

TEST_F(PluggedSince, NeverMovesWhilePluggedIn) {
  plugIn(50);
  model().refresh(Reason::change);
  for (const Reason reason : {Reason::launch, Reason::change, Reason::timer, Reason::wake}) {
    watchProperties();
    pass(100);
    model().refresh(reason);
    EXPECT_EQ(recorder.take().find("pluggedSince"), std::string::npos);
  }
  EXPECT_EQ(secondsAgo(), 400);
}

TEST_F(PluggedSince, IsClearedForEachReasonAndBeginsAnew) {
  for (const Reason reason : {Reason::launch, Reason::change, Reason::timer, Reason::wake}) {
    plugIn(50);
    model().refresh(Reason::change);
    EXPECT_EQ(secondsAgo(), 0);
    pass(100);
    unplug(50);
    model().refresh(reason);
    EXPECT_EQ(secondsAgo(), std::nullopt);
    pass(100);
  }
}

TEST_F(PluggedSince, IsNotWrittenAgainWhileAbsent) {
  unplug(50);
  watchProperties();
  model().refresh(Reason::launch);
  model().refresh(Reason::timer);
  EXPECT_EQ(recorder.take().find("pluggedSince"), std::string::npos);
}

TEST_F(PluggedSince, CountsForTheTooLongReminder) {
  defaults.set("limitEnabled", false);
  plugIn(85);
  model().refresh(Reason::launch);
  pass(8 * 3600);
  EXPECT_EQ(posted(Reason::timer), "");
  pass(1);
  EXPECT_EQ(posted(Reason::timer), "tooLong");
}

TEST_F(AppModelRefresh, SavesAsOftenWhateverTheClockIsSetTo) {
  for (const Seconds set : {Seconds{-86'400}, Seconds{86'400}}) {
    unplug(50);
    for (int minute = 0; minute < 7; ++minute) {
      model().refresh(Reason::timer);
      pass(60);
    }
    const auto before = files.stamp("/data/Lumora/history.json");
    clock.set(set);
    // Five minutes after the last save none is due yet, in the sixth it is.
    for (int minute = 0; minute < 5; ++minute) {
      model().refresh(Reason::timer);
      EXPECT_EQ(files.stamp("/data/Lumora/history.json"), before) << set.count() << " " << minute;
      pass(60);
    }
    model().refresh(Reason::timer);
    EXPECT_NE(files.stamp("/data/Lumora/history.json"), before) << set.count();
    endModel();
  }
}

}  // namespace
}  // namespace lumora::test
