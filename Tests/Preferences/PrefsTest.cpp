// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Preferences/Prefs.h"
#include "Support/MemoryFiles.h"

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

const std::filesystem::path kPath = "/config/defaults.json";

class PrefsTest : public testing::Test {
 protected:
  MemoryFiles files;
  DefaultsStore store{files, kPath};
};

TEST_F(PrefsTest, AreTheRegisteredOnesInAFreshStore) {
  const Prefs prefs = Prefs::current(store);
  EXPECT_TRUE(prefs.limitEnabled);
  EXPECT_TRUE(prefs.repeatReminder);
  EXPECT_TRUE(prefs.lowEnabled);
  EXPECT_TRUE(prefs.longEnabled);
  EXPECT_TRUE(prefs.healthEnabled);
  EXPECT_FALSE(prefs.quietEnabled);
  EXPECT_TRUE(prefs.lowPowerEnabled);
  EXPECT_EQ(prefs.lowPowerAt, 30);
  EXPECT_EQ(prefs.limit, 80);
  EXPECT_EQ(prefs.low, 20);
  EXPECT_EQ(prefs.longHours, 8);
  EXPECT_EQ(prefs.quietStart, 22 * 60);
  EXPECT_EQ(prefs.quietEnd, 7 * 60);
  EXPECT_TRUE(prefs.showPercent);
  EXPECT_FALSE(prefs.showTime);
  const std::map<AlertKind, std::string> sounds = {{AlertKind::chargeLimit, "default"},
                                                   {AlertKind::low, "default"},
                                                   {AlertKind::tooLong, "default"},
                                                   {AlertKind::health, "default"},
                                                   {AlertKind::lowPower, "default"}};
  EXPECT_EQ(prefs.sounds, sounds);
}

TEST_F(PrefsTest, RegisterExactlyTwentyKeys) {
  const std::string kDefault = "default";
  const DefaultsStore::Values expected = {{"limitEnabled", true},
                                          {"repeatReminder", true},
                                          {"lowEnabled", true},
                                          {"longEnabled", true},
                                          {"healthEnabled", true},
                                          {"quietEnabled", false},
                                          {"lowPowerEnabled", true},
                                          {"lowPowerAt", std::int64_t{30}},
                                          {"limit", std::int64_t{80}},
                                          {"low", std::int64_t{20}},
                                          {"longHours", std::int64_t{8}},
                                          {"quietStart", std::int64_t{1320}},
                                          {"quietEnd", std::int64_t{420}},
                                          {"showPercent", true},
                                          {"showTime", false},
                                          {"limitSound", kDefault},
                                          {"lowSound", kDefault},
                                          {"longSound", kDefault},
                                          {"healthSound", kDefault},
                                          {"lowPowerSound", kDefault}};
  EXPECT_EQ(expected.size(), 20U);
  EXPECT_EQ(Prefs::defaults(), expected);
}

TEST_F(PrefsTest, WriteNothingWhenRead) {
  Prefs::current(store);
  EXPECT_EQ(files.text(kPath), std::nullopt);
}

TEST_F(PrefsTest, TakeEachBoolFromItsOwnKey) {
  const std::vector<std::pair<const char*, bool Prefs::*>> table = {
      {"limitEnabled", &Prefs::limitEnabled},
      {"repeatReminder", &Prefs::repeatReminder},
      {"lowEnabled", &Prefs::lowEnabled},
      {"longEnabled", &Prefs::longEnabled},
      {"healthEnabled", &Prefs::healthEnabled},
      {"quietEnabled", &Prefs::quietEnabled},
      {"lowPowerEnabled", &Prefs::lowPowerEnabled},
      {"showPercent", &Prefs::showPercent},
      {"showTime", &Prefs::showTime}};
  for (const auto& [key, field] : table) {
    files.remove(kPath);
    Prefs expected;
    expected.*field = !(expected.*field);
    DefaultsStore fresh(files, kPath);
    fresh.set(key, expected.*field);
    EXPECT_EQ(Prefs::current(fresh), expected) << key;
  }
}

TEST_F(PrefsTest, TakeEachIntegerFromItsOwnKey) {
  const std::vector<std::pair<const char*, std::int64_t Prefs::*>> table = {
      {"lowPowerAt", &Prefs::lowPowerAt},
      {"limit", &Prefs::limit},
      {"low", &Prefs::low},
      {"longHours", &Prefs::longHours},
      {"quietStart", &Prefs::quietStart},
      {"quietEnd", &Prefs::quietEnd}};
  for (const auto& [key, field] : table) {
    files.remove(kPath);
    Prefs expected;
    expected.*field = 11;
    DefaultsStore fresh(files, kPath);
    fresh.set(key, std::int64_t{11});
    EXPECT_EQ(Prefs::current(fresh), expected) << key;
  }
}

TEST_F(PrefsTest, HaveASoundForEachKind) {
  for (const AlertKind kind : kAllAlertKinds) {
    EXPECT_TRUE(Prefs{}.sounds.contains(kind)) << rawValue(kind);
    EXPECT_TRUE(Prefs::defaults().contains(soundKey(kind))) << rawValue(kind);
  }
}

TEST_F(PrefsTest, TakeEachSoundFromItsOwnKey) {
  const std::vector<std::pair<const char*, AlertKind>> table = {
      {"limitSound", AlertKind::chargeLimit},
      {"lowSound", AlertKind::low},
      {"longSound", AlertKind::tooLong},
      {"healthSound", AlertKind::health},
      {"lowPowerSound", AlertKind::lowPower}};
  for (const auto& [key, kind] : table) {
    EXPECT_EQ(soundKey(kind), key);
    files.remove(kPath);
    Prefs expected;
    expected.sounds[kind] = "Glass";
    DefaultsStore fresh(files, kPath);
    fresh.set(key, "Glass");
    EXPECT_EQ(Prefs::current(fresh), expected) << key;
  }
}

TEST_F(PrefsTest, ReadASoundThatIsNoTextAsDefault) {
  for (const auto* value : {"1", "true", "null", "[\"Glass\"]", "{}"}) {
    files.edit(kPath, "{\"lowSound\": " + std::string(value) + "}");
    EXPECT_EQ(Prefs::current(store).sounds.at(AlertKind::low), "default") << value;
  }
}

TEST_F(PrefsTest, TakeAnyTextForASound) {
  for (const auto* sound : {"none", "", "No Such Sound", "Glöckchen"}) {
    store.set("lowSound", std::string(sound));
    EXPECT_EQ(Prefs::current(store).sounds.at(AlertKind::low), sound);
  }
}

TEST_F(PrefsTest, ReadAValueOfAnotherTypeAsNeverSet) {
  files.edit(kPath, R"({"limitEnabled": 0, "quietEnabled": "yes", "limit": true, "low": 25.5})");
  EXPECT_EQ(Prefs::current(store), Prefs{});
}

TEST_F(PrefsTest, ClampNothing) {
  files.edit(kPath, R"({"limit": 1000, "low": -5, "longHours": 0, "quietStart": 9999})");
  const Prefs prefs = Prefs::current(store);
  EXPECT_EQ(prefs.limit, 1000);
  EXPECT_EQ(prefs.low, -5);
  EXPECT_EQ(prefs.longHours, 0);
  EXPECT_EQ(prefs.quietStart, 9999);
}

TEST_F(PrefsTest, FollowTheStoreOnlyWhenReadAgain) {
  const Prefs before = Prefs::current(store);
  store.set("limit", std::int64_t{70});
  EXPECT_EQ(before.limit, 80);
  EXPECT_EQ(Prefs::current(store).limit, 70);
}

TEST_F(PrefsTest, SeeTheEditOfAnotherProgram) {
  Prefs::current(store);
  files.edit(kPath, R"({"limit": 60})");
  EXPECT_EQ(Prefs::current(store).limit, 60);
}

class PrefsSnooze : public PrefsTest {
 protected:
  const Date now = dateSince1970(1'700'000'000.25);
};

TEST_F(PrefsSnooze, IsAbsentInAFreshStore) {
  EXPECT_EQ(Prefs::snoozeUntil(store, now), std::nullopt);
}

TEST_F(PrefsSnooze, HoldsUntilItsMoment) {
  Prefs::setSnoozeUntil(store, now);
  EXPECT_EQ(Prefs::snoozeUntil(store, now - Seconds{0.25}), now);
  EXPECT_EQ(Prefs::snoozeUntil(store, now), std::nullopt);
}

TEST_F(PrefsSnooze, ReadsAsAbsentASecondAfterItsMoment) {
  Prefs::setSnoozeUntil(store, now - Seconds{1});
  EXPECT_EQ(Prefs::snoozeUntil(store, now), std::nullopt);
}

TEST_F(PrefsSnooze, IsNotErasedByItsEnd) {
  Prefs::setSnoozeUntil(store, now);
  const auto text = files.text(kPath);
  Prefs::snoozeUntil(store, now + Seconds{1});
  EXPECT_EQ(files.text(kPath), text);
  EXPECT_EQ(Prefs::snoozeUntil(store, now - Seconds{1}), now);
}

TEST_F(PrefsSnooze, OutlivesTheProcess) {
  Prefs::setSnoozeUntil(store, now);
  DefaultsStore later(files, kPath);
  EXPECT_EQ(Prefs::snoozeUntil(later, now - Seconds{1}), now);
}

TEST_F(PrefsSnooze, IsWrittenAsSecondsSince1970) {
  Prefs::setSnoozeUntil(store, now);
  EXPECT_EQ(files.text(kPath), "{\n  \"snoozeUntil\": 1700000000.25\n}\n");
}

TEST_F(PrefsSnooze, IsClearedByTheIntegerZero) {
  Prefs::setSnoozeUntil(store, now);
  Prefs::setSnoozeUntil(store, std::nullopt);
  EXPECT_EQ(files.text(kPath), "{\n  \"snoozeUntil\": 0\n}\n");
  EXPECT_EQ(Prefs::snoozeUntil(store, now - Seconds{1}), std::nullopt);
}

TEST_F(PrefsSnooze, IsNoPartOfTheSnapshot) {
  Prefs::setSnoozeUntil(store, now);
  EXPECT_EQ(Prefs::current(store), Prefs{});
}

}  // namespace
}  // namespace lumora::test
