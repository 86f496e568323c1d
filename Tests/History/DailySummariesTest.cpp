// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Base/LocalTime.h"
#include "History/DailySummaries.h"
#include "History/HistoryStore.h"
#include "Support/Builders.h"
#include "Support/MemoryFiles.h"
#include "Support/ScopedTimeZone.h"

#include <cmath>
#include <map>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

/// Summaries in UTC, where the tests' calendar is easy to read.
class DailySummariesTest : public testing::Test {
 protected:
  static Sample sample(Date date, std::int64_t percent, bool charging = false) {
    return {secondsSince1970(date), percent, charging, charging};
  }

  /// One day's summary of samples so many seconds after ten o'clock, the last without weight.
  static DaySummary dayOf(const std::vector<std::pair<double, std::int64_t>>& after,
                          bool charging = false) {
    std::vector<Sample> samples;
    samples.reserve(after.size());
    for (const auto& [seconds, percent] : after) {
      samples.push_back(sample(utc(2026, 11, 20, 10, 0, seconds), percent, charging));
    }
    return summarizeDays(samples).at(0);
  }

  ScopedTimeZone zone{"UTC"};
};

TEST_F(DailySummariesTest, AreNoneWithoutSamples) { EXPECT_TRUE(summarizeDays({}).empty()); }

TEST_F(DailySummariesTest, WeighEachPercentByTheTimeUntilTheNext) {
  EXPECT_EQ(dayOf({{0, 80}, {600, 70}, {1200, 60}}),
            (DaySummary{utc(2026, 11, 20, 0, 0), 75, 60, 80, 0}));
}

TEST_F(DailySummariesTest, CountAGapOfUpToFifteenMinutes) {
  EXPECT_EQ(dayOf({{0, 20}, {900, 80}}).avgPercent, 20);
  EXPECT_EQ(dayOf({{0, 20}, {901, 80}}).avgPercent, 80);
  EXPECT_EQ(dayOf({{0, 20}, {0, 80}}).avgPercent, 80);
  EXPECT_EQ(dayOf({{0, 20}, {-60, 80}}).avgPercent, 80);
}

TEST_F(DailySummariesTest, TakeTheMaximumForTheMeanOfADayWithoutWeight) {
  EXPECT_EQ(dayOf({{0, 42}}), (DaySummary{utc(2026, 11, 20, 0, 0), 42, 42, 42, 0}));
  EXPECT_EQ(dayOf({{0, 30}, {2000, 60}, {4000, 50}}).avgPercent, 60);
}

TEST_F(DailySummariesTest, RoundHalvesOfTheMeanUp) {
  EXPECT_EQ(dayOf({{0, 72}, {300, 73}, {600, 0}}).avgPercent, 73);
  EXPECT_EQ(dayOf({{0, 72}, {300.1, 73}, {600, 0}}).avgPercent, 72);
}

TEST_F(DailySummariesTest, CutTheChargingTimeToWholeMinutes) {
  for (const auto& [seconds, minutes] :
       std::map<double, std::int64_t>{{59, 0}, {59.9, 0}, {60, 1}, {119, 1}, {120, 2}}) {
    EXPECT_EQ(dayOf({{0, 50}, {seconds, 51}}, true).chargingMinutes, minutes) << seconds;
  }
}

TEST_F(DailySummariesTest, GiveTheTimeOverMidnightToTheEarlierDay) {
  const std::vector<Sample> samples = {sample(utc(2026, 11, 19, 23, 55), 40, true),
                                       sample(utc(2026, 11, 20, 0, 5), 60)};
  EXPECT_EQ(summarizeDays(samples),
            (std::vector<DaySummary>{{utc(2026, 11, 20, 0, 0), 60, 60, 60, 0},
                                     {utc(2026, 11, 19, 0, 0), 40, 40, 40, 10}}));
}

TEST_F(DailySummariesTest, ReportTheStartValuesForPercentsBeyondTheScale) {
  EXPECT_EQ(dayOf({{0, 120}}).minPercent, 100);
  EXPECT_EQ(dayOf({{0, -5}}).maxPercent, 0);
}

TEST_F(DailySummariesTest, AgreeWithACalendarAskedForEachSample) {
  const ScopedTimeZone berlin("Europe/Berlin");
  // A week around the end of summer time.
  constexpr int kMinutes = 7 * 24 * 60;
  std::vector<Sample> samples;
  samples.reserve(kMinutes);
  for (int minute = 0; minute < kMinutes; ++minute) {
    samples.push_back(
        sample(utc(2026, 10, 22, 0, 0, 60.0 * minute), minute % 101, minute % 300 < 120));
  }
  std::map<Date, DaySummary> byDay;
  std::map<Date, std::pair<double, double>> weights;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const Date day = startOfDay(dateSince1970(samples[i].t));
    DaySummary& summary = byDay.try_emplace(day, DaySummary{day, 0, 100, 0, 0}).first->second;
    summary.minPercent = std::min(summary.minPercent, samples[i].p);
    summary.maxPercent = std::max(summary.maxPercent, samples[i].p);
    if (i + 1 == samples.size()) break;
    weights[day].first += static_cast<double>(samples[i].p);
    weights[day].second += 1;
    summary.chargingMinutes += samples[i].c ? 1 : 0;
  }
  std::vector<DaySummary> expected;
  for (auto day = byDay.rbegin(); day != byDay.rend(); ++day) {
    const auto& [sum, count] = weights[day->first];
    day->second.avgPercent = std::llround(sum / count);
    expected.push_back(day->second);
  }
  EXPECT_EQ(summarizeDays(samples), expected);
  EXPECT_EQ(expected.size(), 8U);
}

TEST_F(DailySummariesTest, CountDaysOfTwentyThreeAndTwentyFiveHours) {
  const ScopedTimeZone berlin("Europe/Berlin");
  const auto chargingMinutes = [](Date from, Date to) {
    std::vector<Sample> samples;
    for (Date date = from; date <= to; date += Seconds(60))
      samples.push_back(sample(date, 50, true));
    return summarizeDays(samples).back().chargingMinutes;
  };
  EXPECT_EQ(chargingMinutes(utc(2026, 3, 28, 23, 0), utc(2026, 3, 30, 12, 0)), 23 * 60);
  EXPECT_EQ(chargingMinutes(utc(2026, 10, 24, 22, 0), utc(2026, 10, 26, 12, 0)), 25 * 60);
}

/// A store with one sample at noon of each of the last ten days.
class DailySummariesOfAStoreTest : public DailySummariesTest {
 protected:
  DailySummariesOfAStoreTest() {
    std::vector<Sample> samples;
    for (int day = 9; day >= 0; --day) {
      samples.push_back(sample(now - Seconds(day * 86'400.0 + 3600), 50 + day));
    }
    store.setSamples(samples);
  }

  Date now = utc(2026, 11, 20, 13, 0);
  MemoryFiles files;
  HistoryStore store{files, "/data", now};
};

TEST_F(DailySummariesOfAStoreTest, CoverThatManyDaysNewestFirst) {
  const auto week = store.dailySummaries(7, now);
  ASSERT_EQ(week.size(), 7U);
  EXPECT_EQ(week.front().day, utc(2026, 11, 20, 0, 0));
  EXPECT_EQ(week.back().day, utc(2026, 11, 14, 0, 0));
  EXPECT_EQ(store.dailySummaries(1, now).size(), 1U);
}

TEST_F(DailySummariesOfAStoreTest, AreNoneForNoDaysUnlessSamplesLieAhead) {
  EXPECT_TRUE(store.dailySummaries(0, now).empty());
  EXPECT_TRUE(store.dailySummaries(-3, now).empty());
  store.setSamples({sample(now + Seconds(2 * 86'400), 50)});
  EXPECT_EQ(store.dailySummaries(0, now).size(), 1U);
}

TEST_F(DailySummariesOfAStoreTest, FollowANewTimeZone) {
  EXPECT_EQ(store.dailySummaries(1, now).at(0).day, utc(2026, 11, 20, 0, 0));
  const ScopedTimeZone auckland("Pacific/Auckland");
  EXPECT_EQ(store.dailySummaries(1, now).at(0).day, utc(2026, 11, 20, 11, 0));
}

}  // namespace
}  // namespace lumora::test
