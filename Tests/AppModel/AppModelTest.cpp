// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "AppModel/AppModel.h"
#include "AppModel/ModelFixture.h"

namespace lumora::test {
namespace {

class AppModelTest : public ModelFixture {};

TEST_F(AppModelTest, StartsEmptyAndInert) {
  plugIn(85);
  recorder.take();
  EXPECT_EQ(*model().state(), BatteryState{});
  EXPECT_EQ(*model().pluggedSince(), std::nullopt);
  EXPECT_EQ(*model().historyVersion(), 0);
  EXPECT_EQ(*model().snoozeUntil(), std::nullopt);
  EXPECT_EQ(recorder.take(), "now, now, folder /data/Lumora, read history.json");
}

TEST_F(AppModelTest, LoadsTheHistoryAsItIsMade) {
  givenHistory({{200, true}, {100, false}});
  EXPECT_EQ(samples().size(), 2U);
}

TEST_F(AppModelTest, StartsInThisOrder) {
  plugIn(50);
  model();
  watchProperties();
  model().start();
  EXPECT_EQ(recorder.take(),
            "response handler, categories, "
            "sources, low power mode, registry, now, pluggedSince absent, state 0, "
            "stamp history.json, replace history.json, historyVersion 0, stamp defaults.json, "
            "observe power sources, every 60 s within 10 s, observe low power mode, "
            "observe sleep");
}

TEST_F(AppModelTest, PostsNothingAtLaunch) {
  plugIn(85);
  model().start();
  EXPECT_TRUE(centre.added.empty());
  EXPECT_EQ(posted(Reason::timer), "");
  pass(3600);
  EXPECT_EQ(posted(Reason::change), "");
}

TEST_F(AppModelTest, ReplacesAnAlertOfTheSameKind) {
  unplug(50);
  model().start();
  plugIn(85);
  EXPECT_EQ(posted(Reason::change), "chargeLimit");
  pass(290);
  EXPECT_EQ(posted(Reason::timer), "chargeLimit");
}

TEST_F(AppModelTest, PostsWithTheSoundOfTheKind) {
  defaults.set("lowSound", "none");
  defaults.set("lowPowerSound", "Glass");
  unplug(50);
  model().start();
  unplug(15);
  EXPECT_EQ(posted(Reason::change), "low lowPower");
  EXPECT_EQ(centre.added[0].sound, NotificationSound(Silence{}));
  EXPECT_EQ(centre.added[1].sound, NotificationSound(NamedSound{"Glass"}));
}

TEST_F(AppModelTest, PostsWithTheDefaultSoundForAKindWithout) {
  files.edit("/config/defaults.json", R"({"limitSound": 7})");
  unplug(50);
  model().start();
  plugIn(85);
  EXPECT_EQ(posted(Reason::change), "chargeLimit");
  EXPECT_EQ(centre.added[0].sound, NotificationSound(DefaultSound{}));
}

TEST_F(AppModelTest, PostsTheAlertsOfOneRefreshInTheirOrder) {
  powerSources.registry = {{"DesignCapacity", 1000}, {"MaxCapacity", 900}};
  unplug(50);
  model().start();
  powerSources.registry = {{"DesignCapacity", 1000}, {"MaxCapacity", 785}};
  unplug(15);
  EXPECT_EQ(posted(Reason::change), "low lowPower health");
  EXPECT_EQ(centre.added[2].body, "Battery health has fallen to 79% of its original capacity.");
}

TEST_F(AppModelTest, CountsAnAlertAsGivenThatCannotBeDelivered) {
  bundle.identifier.reset();
  unplug(50);
  model().start();
  unplug(15);
  EXPECT_EQ(posted(Reason::change), "");
  bundle.identifier = "org.example.Lumora";
  EXPECT_EQ(posted(Reason::change), "");
}

TEST_F(AppModelTest, TakesTheSettingsAfreshAtEachRefresh) {
  plugIn(50);
  model().start();
  EXPECT_EQ(posted(Reason::timer), "");
  defaults.set("limit", std::int64_t{50});
  EXPECT_EQ(posted(Reason::timer), "chargeLimit");
}

TEST_F(AppModelTest, SeesTheSettingsThatAnotherProgramChanged) {
  plugIn(50);
  model().start();
  files.edit("/config/defaults.json", R"({"limit": 50})");
  EXPECT_EQ(posted(Reason::timer), "chargeLimit");
}

TEST_F(AppModelTest, RefreshesNotWhenSettingsChange) {
  plugIn(50);
  model().start();
  watchProperties();
  defaults.set("limit", std::int64_t{50});
  EXPECT_EQ(recorder.take(), "stamp defaults.json, replace defaults.json");
}

TEST_F(AppModelTest, EmptiesAndSavesTheHistoryAtAReset) {
  givenHistory({{200, true}, {100, true}});
  plugIn(85);
  model().start();
  watchProperties();
  const auto since = *model().pluggedSince();
  const BatteryState state = *model().state();
  model().resetHistory();
  EXPECT_EQ(recorder.take(), "now, stamp history.json, replace history.json, historyVersion 1");
  EXPECT_TRUE(samples().empty());
  EXPECT_EQ(files.text("/data/Lumora/history.json"), "[]");
  EXPECT_EQ(*model().historyVersion(), 2);
  EXPECT_EQ(*model().pluggedSince(), since);
  EXPECT_EQ(*model().state(), state);
}

TEST_F(AppModelTest, KeepsWhatTheEngineRemembersAtAReset) {
  unplug(50);
  model().start();
  unplug(15);
  EXPECT_EQ(posted(Reason::change), "low lowPower");
  model().resetHistory();
  EXPECT_EQ(posted(Reason::timer), "");
}

TEST_F(AppModelTest, SavesTheHistoryOnDemand) {
  unplug(50);
  model().start();
  pass(60);
  model().refresh(Reason::timer);
  EXPECT_EQ(savedSamples().size(), 1U);
  model().saveHistory();
  EXPECT_EQ(savedSamples().size(), 2U);
}

}  // namespace
}  // namespace lumora::test
