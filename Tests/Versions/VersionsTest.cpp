// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "History/HistoryFile.h"
#include "History/HistoryStore.h"
#include "Preferences/Prefs.h"
#include "Support/Builders.h"
#include "Support/MemoryFiles.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

const std::filesystem::path kFolder = LUMORA_TEST_VERSIONS;
const std::filesystem::path kHistory = "/data/Lumora/history.json";
const std::filesystem::path kDefaults = "/config/Lumora/defaults.json";

std::vector<std::string> versions() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(kFolder)) {
    if (entry.is_directory()) names.push_back(entry.path().filename());
  }
  std::sort(names.begin(), names.end());
  return names;
}

/// By its number among the versions: the files that another version left: one of each that there
/// was, and one that there may be.
class Versions : public testing::TestWithParam<std::size_t> {
 protected:
  static std::string left(const char* name) {
    std::ifstream file(kFolder / versions().at(GetParam()) / name, std::ios::binary);
    return {std::istreambuf_iterator(file), {}};
  }

  Versions() : trace(__FILE__, __LINE__, versions().at(GetParam())) {
    files.edit(kHistory, left("history.json"));
    files.edit(kDefaults, left("defaults.json"));
  }

  testing::ScopedTrace trace;
  MemoryFiles files;
};

TEST_P(Versions, HistoryIsReadAndGoesOn) {
  // What each of them was given: a discharge, the plug, a break of half an hour while it charged,
  // full.
  std::vector<Sample> samples;
  samples.reserve(16);
  for (int i = 0; i < 16; ++i) {
    const double time = 1795233748.51 + i * 60.016 + (i > 8 ? 1800.25 : 0);
    const bool plugged = i > 5;
    const bool charging = i > 6 && i < 15;
    samples.push_back({time, i < 6 ? 60 - i : 49 + i, charging, plugged});
  }
  const Date now = dateSince1970(samples.back().t) + Seconds(60);
  HistoryStore store(files, "/data", now);
  const auto read = store.samples();
  ASSERT_EQ(read.size(), samples.size());
  for (std::size_t i = 0; i < samples.size(); ++i) {
    EXPECT_NEAR(read[i].t, samples[i].t, 1e-6);
    EXPECT_EQ(read[i].p, samples[i].p);
    EXPECT_EQ(read[i].c, samples[i].c);
    EXPECT_EQ(read[i].a, samples[i].a);
  }

  store.record(onBattery(64), now, HistoryStore::Force::yes);
  std::string written = files.text(kHistory).value();
  EXPECT_EQ(decodeSamples(written).value().size(), samples.size() + 1);
  // What is written goes on from what this version itself had left, letter by letter.
  if (versions().at(GetParam()) == LUMORA_VERSION) {
    const std::string leftBefore = left("history.json");
    EXPECT_TRUE(written.starts_with(leftBefore.substr(0, leftBefore.size() - 1) + ",")) << written;
  }
  EXPECT_FALSE(files.text(kHistory.string() + ".unreadable"));
}

TEST_P(Versions, SettingsAreReadAndKept) {
  DefaultsStore store(files, kDefaults);
  store.registerDefaults(Prefs::defaults());
  Prefs expected;
  expected.repeatReminder = expected.showPercent = false;
  expected.quietEnabled = expected.showTime = true;
  expected.lowPowerAt = 35;
  expected.limit = 85;
  expected.low = 15;
  expected.longHours = 6;
  expected.quietStart = 1350;
  expected.quietEnd = 390;
  expected.sounds = {{AlertKind::chargeLimit, "Glass"},
                     {AlertKind::low, "none"},
                     {AlertKind::tooLong, "default"},
                     {AlertKind::health, "Basso"},
                     {AlertKind::lowPower, "Ping"}};
  EXPECT_EQ(Prefs::current(store), expected);
  EXPECT_TRUE(store.boolForKey("healthAlertSent"));
  const Date end = dateSince1970(1795237348.51);
  EXPECT_EQ(Prefs::snoozeUntil(store, end - Seconds(1)), end);

  // What this version does not know comes through its writing, letter by letter.
  store.set("limit", std::int64_t{70});
  store.set("limit", std::int64_t{85});
  EXPECT_EQ(files.text(kDefaults), left("defaults.json"));
  EXPECT_FALSE(files.text(kDefaults.string() + ".unreadable"));
}

INSTANTIATE_TEST_SUITE_P(Left, Versions, testing::Range(std::size_t{0}, versions().size()));

TEST(VersionsKept, HaveThatOfToday) {
  const auto known = versions();
  EXPECT_NE(std::find(known.begin(), known.end(), LUMORA_VERSION), known.end())
      << "Keep files that " LUMORA_VERSION " has written in Tests/Versions/" LUMORA_VERSION;
}

}  // namespace
}  // namespace lumora::test
