// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "AppModel/ModelFixture.h"

#include <thread>

namespace lumora::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

const std::string kQuietRefresh = "sources, low power mode, registry, now, historyVersion ";
const std::string kEnd = ", stamp defaults.json";

class AppModelEvents : public ModelFixture {
 protected:
  void start() {
    unplug(50);
    model().start();
    watchProperties();
  }
};

TEST_F(AppModelEvents, RefreshEveryMinute) {
  start();
  runLoop.advance(milliseconds(59'999));
  EXPECT_EQ(recorder.take(), "");
  runLoop.advance(milliseconds(1));
  EXPECT_EQ(recorder.take(), kQuietRefresh + "1" + kEnd);
  runLoop.advance(seconds(180));
  EXPECT_EQ(*model().historyVersion(), 5);
}

TEST_F(AppModelEvents, ForceASampleAtEachMinute) {
  start();
  runLoop.advance(seconds(180));
  std::string times;
  for (const Sample& sample : samples()) {
    times += std::to_string(static_cast<int>(sample.t - 1'700'000'000)) + " ";
  }
  EXPECT_EQ(times, "0 60 120 180 ");
}

TEST_F(AppModelEvents, RefreshWhenThePowerSourcesChange) {
  start();
  powerSources.change();
  EXPECT_EQ(recorder.take(), kQuietRefresh + "1" + kEnd);
  EXPECT_EQ(samples().size(), 1U);
  pass(60);
  plugIn(85);
  powerSources.change();
  EXPECT_EQ(centre.added.size(), 1U);
  EXPECT_EQ(*model().pluggedSince(), clock.time);
}

TEST_F(AppModelEvents, RefreshWhenTheLowPowerModeChanges) {
  start();
  lowPowerMode.change(true);
  EXPECT_TRUE(model().state()->lowPowerMode);
  EXPECT_EQ(samples().size(), 1U);
  lowPowerMode.change(false);
  EXPECT_FALSE(model().state()->lowPowerMode);
}

TEST_F(AppModelEvents, OnlySaveWhenTheMachineGoesToSleep) {
  start();
  sleepEvents.sleep();
  EXPECT_EQ(recorder.take(), "now, stamp history.json, replace history.json");
}

TEST_F(AppModelEvents, LetTheMachineFallAsleepWhenAllIsOnTheDisk) {
  start();
  sleepEvents.sleep();
  EXPECT_FALSE(sleepEvents.isHeld());
  sleepEvents.wake();
  files.isSlow = true;
  model().snooze();
  sleepEvents.sleep();
  EXPECT_EQ(files.writesLeft(), 2U);
  files.endWrite();
  EXPECT_TRUE(sleepEvents.isHeld());
  files.endWrite();
  EXPECT_FALSE(sleepEvents.isHeld());
}

TEST_F(AppModelEvents, RefreshThreeSecondsAfterWaking) {
  start();
  sleepEvents.wake();
  EXPECT_EQ(recorder.take(), "after 3000 ms");
  plugIn(85);
  runLoop.advance(milliseconds(2999));
  EXPECT_EQ(recorder.take(), "");
  runLoop.advance(milliseconds(1));
  EXPECT_EQ(recorder.take(),
            "sources, low power mode, registry, now, pluggedSince absent, state 50, "
            "stamp history.json, replace history.json, historyVersion 1, stamp defaults.json");
  runLoop.advance(seconds(50));
  EXPECT_EQ(recorder.take(), "");
}

TEST_F(AppModelEvents, KeepQuietAboutWhatIsFoundAfterWaking) {
  start();
  sleepEvents.wake();
  plugIn(85);
  runLoop.advance(seconds(600));
  EXPECT_TRUE(centre.added.empty());
}

TEST_F(AppModelEvents, ShowAndRecordButDoNotTellWhatCameDuringTheSleep) {
  start();
  sleepEvents.sleep();
  pass(8 * 3600);
  unplug(9);
  powerSources.change();
  EXPECT_EQ(model().state()->percent, 9);
  EXPECT_EQ(samples().back().p, 9);
  sleepEvents.wake();
  runLoop.advance(milliseconds(2999));
  unplug(8);
  powerSources.change();
  EXPECT_EQ(model().state()->percent, 8);
  runLoop.advance(seconds(600));
  EXPECT_TRUE(centre.added.empty());
  plugIn(85);
  powerSources.change();
  EXPECT_EQ(centre.added.size(), 1U);
}

TEST_F(AppModelEvents, WaitForTheLastOfTwoSleeps) {
  start();
  sleepEvents.sleep();
  sleepEvents.wake();
  runLoop.advance(seconds(2));
  sleepEvents.sleep();
  runLoop.advance(seconds(2));
  unplug(9);
  powerSources.change();
  sleepEvents.wake();
  runLoop.advance(seconds(600));
  EXPECT_TRUE(centre.added.empty());
}

TEST_F(AppModelEvents, DoNothingAfterTheEndOfTheModel) {
  start();
  sleepEvents.wake();
  endModel();
  recorder.take();
  powerSources.change();
  lowPowerMode.change(true);
  sleepEvents.sleep();
  sleepEvents.wake();
  runLoop.advance(seconds(600));
  EXPECT_EQ(recorder.take(), "");
}

TEST_F(AppModelEvents, SnoozeNothingAfterTheEndOfTheModel) {
  start();
  centre.pick("SNOOZE");
  endModel();
  recorder.take();
  runLoop.drain();
  EXPECT_EQ(recorder.take(), "");
}

class AppModelEventsDeathTest : public AppModelEvents {
 protected:
  static void onAnotherThread(const std::function<void()>& task) { std::thread(task).join(); }
};

TEST_F(AppModelEventsDeathTest, EndTheProcessWhenPowerSourcesChangeOnAnotherThread) {
  start();
  EXPECT_EXIT(onAnotherThread([&] { powerSources.change(); }), testing::KilledBySignal(SIGABRT),
              "");
}

TEST_F(AppModelEventsDeathTest, EndTheProcessWhenTheLowPowerModeChangesOnAnotherThread) {
  start();
  EXPECT_EXIT(onAnotherThread([&] { lowPowerMode.change(true); }), testing::KilledBySignal(SIGABRT),
              "");
}

TEST_F(AppModelEventsDeathTest, EndTheProcessWhenTheTimerFiresOnAnotherThread) {
  start();
  EXPECT_EXIT(onAnotherThread([&] { runLoop.advance(seconds(60)); }),
              testing::KilledBySignal(SIGABRT), "");
}

TEST_F(AppModelEventsDeathTest, EndTheProcessWhenSleepIsToldOnAnotherThread) {
  start();
  EXPECT_EXIT(onAnotherThread([&] { sleepEvents.sleep(); }), testing::KilledBySignal(SIGABRT), "");
}

TEST_F(AppModelEventsDeathTest, EndTheProcessWhenWakingIsToldOnAnotherThread) {
  start();
  EXPECT_EXIT(onAnotherThread([&] { sleepEvents.wake(); }), testing::KilledBySignal(SIGABRT), "");
}

TEST_F(AppModelEventsDeathTest, EndTheProcessWhenTheWakeRefreshRunsOnAnotherThread) {
  start();
  sleepEvents.wake();
  EXPECT_EXIT(onAnotherThread([&] { runLoop.advance(seconds(3)); }),
              testing::KilledBySignal(SIGABRT), "");
}

TEST_F(AppModelEventsDeathTest, EndTheProcessWhenASnoozeRunsOnAnotherThread) {
  start();
  centre.pick("SNOOZE");
  EXPECT_EXIT(onAnotherThread([&] { runLoop.drain(); }), testing::KilledBySignal(SIGABRT), "");
}

}  // namespace
}  // namespace lumora::test
