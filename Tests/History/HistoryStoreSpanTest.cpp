// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "History/HistoryFile.h"
#include "History/HistoryStore.h"
#include "Support/Builders.h"
#include "Support/MemoryFiles.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

using Force = HistoryStore::Force;
using Samples = std::vector<Sample>;

constexpr double kStart = 1'700'000'000;
constexpr double kThirtyDays = 2'592'000;

Date at(double seconds) { return dateSince1970(kStart + seconds); }

/// The times of the samples, counted from the start.
std::string times(std::span<const Sample> samples) {
  std::string text;
  for (const Sample& sample : samples) {
    text += std::to_string(static_cast<std::int64_t>(sample.t - kStart)) + " ";
  }
  return text;
}

class HistoryStoreSpan : public testing::Test {
 protected:
  MemoryFiles files;
  HistoryStore store{files, "/data", at(0)};
};

class HistoryPruning : public HistoryStoreSpan {};

TEST_F(HistoryPruning, KeepsASampleOfExactlyThirtyDays) {
  store.record(onBattery(50), at(0), Force::yes);
  store.record(onBattery(50), at(1), Force::yes);
  store.record(onBattery(50), at(kThirtyDays), Force::yes);
  EXPECT_EQ(times(store.samples()), "0 1 2592000 ");
  store.record(onBattery(50), at(kThirtyDays + 0.5), Force::yes);
  EXPECT_EQ(times(store.samples()), "1 2592000 2592000 ");
}

TEST_F(HistoryPruning, DropsWhatIsTooOldWhenLoading) {
  files.edit("/data/Lumora/history.json",
             *encodeSamples(Samples{{kStart, 1, false, false}, {kStart + 1, 2, false, false}}));
  EXPECT_EQ(times(HistoryStore(files, "/data", at(kThirtyDays)).samples()), "0 1 ");
  EXPECT_EQ(times(HistoryStore(files, "/data", at(kThirtyDays + 1)).samples()), "1 ");
  EXPECT_EQ(times(HistoryStore(files, "/data", at(kThirtyDays + 2)).samples()), "");
}

TEST_F(HistoryPruning, LeavesOnlyTheNewSampleAfterALongTime) {
  for (int i = 0; i < 5000; ++i) store.record(onBattery(50), at(i), Force::yes);
  store.record(onBattery(50), at(2 * kThirtyDays), Force::yes);
  EXPECT_EQ(times(store.samples()), "5184000 ");
}

TEST_F(HistoryPruning, KeepsThirtyDaysThroughAYearOfSamples) {
  for (int hour = 0; hour < 365 * 24; ++hour) {
    store.record(onBattery(hour % 100), at(hour * 3600.0), Force::yes);
  }
  const auto samples = store.samples();
  ASSERT_EQ(samples.size(), 30U * 24 + 1);
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const int hour = 365 * 24 - 1 - 30 * 24 + static_cast<int>(i);
    EXPECT_EQ(samples[i], (Sample{kStart + hour * 3600.0, hour % 100, false, false}));
  }
}

TEST_F(HistoryPruning, TouchesNoSamplesGivenLater) {
  store.record(onBattery(50), at(0), Force::yes);
  store.record(onBattery(50), at(kThirtyDays + 1), Force::yes);
  store.setSamples({{kStart + 1, 1, false, false}, {kStart + 2, 2, false, false}});
  EXPECT_EQ(times(store.samples()), "1 2 ");
}

TEST_F(HistoryPruning, DropsFromTheFileWhatItDropsFromMemory) {
  for (unsigned hour = 0; hour <= 721; ++hour) {
    store.record(onBattery(50), at(hour * 3600.0), Force::yes);
    const HistoryStore next(files, "/data", at(0));
    ASSERT_EQ(times(next.samples()), times(store.samples()));
    ASSERT_EQ(next.samples().size(), std::min(hour + 1, 721U));
  }
}

TEST_F(HistoryPruning, DropsNoneTooManyWhereverMemoryIsGivenBack) {
  constexpr int kEvery = 600;
  constexpr std::size_t kMost = static_cast<std::size_t>(kThirtyDays) / kEvery + 1;
  for (std::size_t sample = 0; sample < kMost + 4200; ++sample) {
    store.record(onBattery(50), at(double(sample) * kEvery), Force::yes);
    ASSERT_EQ(store.samples().size(), std::min(sample + 1, kMost));
    ASSERT_EQ(store.samples().back().t, kStart + double(sample) * kEvery);
  }
}

constexpr double kFortyDays = 40.0 * 86'400;

class HistoryJump : public HistoryStoreSpan {
 protected:
  void SetUp() override {
    for (const int minute : {0, 1, 2}) store.record(onBattery(50), at(minute * 60), Force::yes);
    store.save(at(120));
  }

  std::string inFile() const {
    std::string text = files.text("/data/Lumora/history.json").value_or("");
    return times(decodeSamples(text).value_or(Samples{}));
  }
};

TEST_F(HistoryJump, OfFortyDaysForThreeSecondsLosesNothing) {
  store.record(onBattery(50), at(kFortyDays + 180), Force::yes);
  EXPECT_EQ(times(store.samples()), "3456180 ");
  EXPECT_EQ(inFile(), "0 60 120 3456180 ");
  store.record(onBattery(50), at(183), Force::yes);
  EXPECT_EQ(times(store.samples()), "0 60 120 3456180 183 ");
  EXPECT_EQ(inFile(), "0 60 120 3456180 183 ");
}

TEST_F(HistoryJump, LosesNothingEitherWhenTheProgramEndsMeanwhile) {
  store.record(onBattery(50), at(kFortyDays + 180), Force::yes);
  HistoryStore next(files, "/data", at(kFortyDays + 200));
  next.save(at(kFortyDays + 210));
  EXPECT_EQ(times(HistoryStore(files, "/data", at(183)).samples()), "0 60 120 3456180 ");
}

TEST_F(HistoryJump, IsBelievedOnceTheClockHasGoneOnForAnHour) {
  for (int minute = 0; minute < 60; ++minute) {
    store.record(onBattery(50), at(kFortyDays + minute * 60), Force::yes);
  }
  store.save(at(kFortyDays + 3541));
  EXPECT_EQ(inFile().substr(0, 9), "0 60 120 ");
  store.record(onBattery(50), at(kFortyDays + 3600), Force::yes);
  store.save(at(kFortyDays + 3601));
  EXPECT_EQ(inFile().substr(0, 8), "3456000 ");
  store.record(onBattery(50), at(180), Force::yes);
  EXPECT_EQ(times(store.samples()).substr(0, 8), "3456000 ");
}

TEST_F(HistoryJump, AtTheStartLosesNothing) {
  HistoryStore next(files, "/data", at(kFortyDays));
  EXPECT_EQ(times(next.samples()), "");
  next.record(onBattery(50), at(kFortyDays), Force::yes);
  next.record(onBattery(50), at(240), Force::yes);
  EXPECT_EQ(times(next.samples()), "0 60 120 3456000 240 ");
}

TEST_F(HistoryJump, BackDoesNotKeepSavesFromComing) {
  store.record(onBattery(50), at(-86'400), Force::yes);
  EXPECT_EQ(inFile(), "0 60 120 -86400 ");
  store.record(onBattery(50), at(-86'100), Force::yes);
  EXPECT_EQ(inFile(), "0 60 120 -86400 ");
  store.record(onBattery(50), at(-86'099), Force::yes);
  EXPECT_EQ(inFile(), "0 60 120 -86400 -86100 -86099 ");
}

TEST_F(HistoryPruning, WalksFromTheFrontWhenTheClockWasSetBack) {
  store.setSamples({{kStart + 100, 1, false, false}, {kStart - kThirtyDays, 2, false, false}});
  store.record(onBattery(50), at(50), Force::yes);
  EXPECT_EQ(times(store.samples()), "100 -2592000 50 ");
}

class HistorySince : public HistoryStoreSpan {
 protected:
  void SetUp() override {
    for (const int time : {0, 100, 200}) store.record(onBattery(50), at(time), Force::yes);
  }
};

TEST_F(HistorySince, BeginsAtTheFirstThatIsLateEnoughAlsoAfterTheClockWasSetBack) {
  store.setSamples({});
  for (const double second : {100.0, 200.0, 50.0, 60.0}) {
    store.record(onBattery(50), at(second), Force::yes);
  }
  EXPECT_EQ(times(store.samples(at(90))), "100 200 50 60 ");
  EXPECT_EQ(times(store.samples(at(150))), "200 50 60 ");
  EXPECT_EQ(times(store.samples(at(300))), "");
  store.setSamples({{kStart + 100, 1, false, false}, {kStart + 50, 2, false, false}});
  EXPECT_EQ(times(store.samples(at(60))), "100 50 ");
  store.setSamples({{kStart + 50, 1, false, false}, {kStart + 100, 2, false, false}});
  EXPECT_EQ(times(store.samples(at(60))), "100 ");
}

TEST_F(HistorySince, BeginsAtTheFirstSampleAtOrAfterTheDate) {
  EXPECT_EQ(times(store.samples(at(100))), "100 200 ");
  EXPECT_EQ(times(store.samples(at(100.5))), "200 ");
  EXPECT_EQ(times(store.samples(at(99.5))), "100 200 ");
}

TEST_F(HistorySince, IsEverythingFromAnEarlierDate) {
  EXPECT_EQ(times(store.samples(at(0))), "0 100 200 ");
  EXPECT_EQ(times(store.samples(kDistantPast)), "0 100 200 ");
}

TEST_F(HistorySince, IsNothingFromALaterDate) {
  EXPECT_EQ(times(store.samples(at(200.5))), "");
  store.setSamples({});
  EXPECT_EQ(times(store.samples(kDistantPast)), "");
}

TEST_F(HistorySince, WalksFromTheFrontWhenTheClockWasSetBack) {
  store.setSamples({{kStart, 1, false, false},
                    {kStart + 500, 2, false, false},
                    {kStart + 10, 3, false, false},
                    {kStart + 20, 4, false, false}});
  EXPECT_EQ(times(store.samples(at(15))), "500 10 20 ");
}

class PluggedSinceEstimate : public HistoryStoreSpan {
 protected:
  /// The estimate in seconds from the start.
  std::optional<double> estimate(double now) const {
    const auto since = store.pluggedSinceEstimate(at(now));
    return since ? std::optional(secondsSince1970(*since) - kStart) : std::nullopt;
  }

  void given(const std::vector<std::pair<double, bool>>& samples) {
    Samples list;
    for (const auto& [time, plugged] : samples) list.push_back({kStart + time, 50, false, plugged});
    store.setSamples(list);
  }
};

TEST_F(PluggedSinceEstimate, IsAbsentWithoutSamples) { EXPECT_EQ(estimate(0), std::nullopt); }

TEST_F(PluggedSinceEstimate, IsAbsentWhenTheLastSampleIsOnBattery) {
  given({{0, true}, {100, false}});
  EXPECT_EQ(estimate(100), std::nullopt);
}

TEST_F(PluggedSinceEstimate, IsAbsentWhenTheLastSampleIsTenMinutesOld) {
  given({{0, true}});
  EXPECT_EQ(estimate(599.5), 0);
  EXPECT_EQ(estimate(600), std::nullopt);
  EXPECT_EQ(estimate(6000), std::nullopt);
}

TEST_F(PluggedSinceEstimate, IsTheStartOfTheUnbrokenRun) {
  given({{0, true}, {800, true}, {1600, true}});
  EXPECT_EQ(estimate(1700), 0);
}

TEST_F(PluggedSinceEstimate, BeginsAfterAGapOfMoreThanFifteenMinutes) {
  given({{0, true}, {100, true}, {1001, true}});
  EXPECT_EQ(estimate(1100), 1001);
  given({{0, true}, {100, true}, {1000, true}});
  EXPECT_EQ(estimate(1100), 0);
  given({{0, true}, {901, true}, {1000, true}});
  EXPECT_EQ(estimate(1100), 901);
}

TEST_F(PluggedSinceEstimate, BeginsAfterTheLastSampleOnBattery) {
  given({{0, true}, {100, false}, {200, true}, {300, true}});
  EXPECT_EQ(estimate(400), 200);
}

TEST_F(PluggedSinceEstimate, ComesAlsoWhenTheClockWasSetBack) {
  given({{1000, true}, {1100, true}});
  EXPECT_EQ(estimate(0), 1000);
}

}  // namespace
}  // namespace lumora::test
