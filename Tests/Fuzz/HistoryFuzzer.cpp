// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Content/ChartPoints.h"
#include "Content/PopoverContent.h"
#include "Fuzzer.h"
#include "History/DailySummaries.h"
#include "History/HistoryFile.h"
#include "History/HistoryStore.h"
#include "Support/Builders.h"
#include "Support/MemoryFiles.h"

#include <algorithm>
#include <string>

namespace lumora::test {
namespace {

constexpr const char* kFile = "/data/Lumora/history.json";
constexpr Seconds kThirtyDays{30.0 * 86'400};

using Samples = std::span<const Sample>;

bool same(Samples left, Samples right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end());
}

void expectRoundTrip(Samples samples) {
  auto text = encodeSamples(samples);
  expect(text.has_value(), "what was read can be written");
  const auto again = decodeSamples(*text);
  expect(again && same(samples, *again), "what is written is read back");
}

void expectLoaded(const HistoryStore& store, const std::optional<std::vector<Sample>>& inFile) {
  const double oldest = secondsSince1970(kNow - kThirtyDays);
  const auto isKept = [oldest](const Sample& sample) { return sample.t >= oldest; };
  const auto loaded = store.samples();
  expect(std::all_of(loaded.begin(), loaded.end(), isKept), "nothing is older than thirty days");
  expect(std::is_sorted(loaded.begin(), loaded.end(),
                        [](const Sample& left, const Sample& right) { return left.t < right.t; }),
         "samples are in the order of time");
  const auto kept = inFile ? std::count_if(inFile->begin(), inFile->end(), isKept) : 0;
  expect(static_cast<std::ptrdiff_t>(loaded.size()) == kept, "all the others are there");
  expectRoundTrip(loaded);
}

void expectSummaries(const HistoryStore& store, Date now) {
  const auto samples = store.samples();
  const bool inRange = std::all_of(samples.begin(), samples.end(), [](const Sample& sample) {
    return sample.p >= 0 && sample.p <= 100;
  });
  const auto days = store.dailySummaries(7, now);
  for (std::size_t day = 0; day < days.size(); ++day) {
    expect(day == 0 || days[day].day < days[day - 1].day, "the newest day is first");
    expect(days[day].chargingMinutes >= 0, "charging takes time");
    expect(!inRange || (0 <= days[day].minPercent && days[day].maxPercent <= 100 &&
                        days[day].minPercent <= days[day].avgPercent &&
                        days[day].avgPercent <= days[day].maxPercent),
           "the mean lies between the ends");
  }
  constexpr std::size_t kWeek = 7;
  expect(dayRows(days, kWeek).size() == std::min(days.size(), kWeek),
         "each day of a week is a row");
}

void expectChart(Samples samples) {
  const auto points = chartPoints(samples);
  expect(points.empty() == samples.empty() && points.size() <= 601, "the chart has few points");
  for (std::size_t point = 1; point < points.size(); ++point) {
    expect(points[point - 1].id < points[point].id && points[point - 1].seg <= points[point].seg,
           "points are in the order of samples");
  }
  if (samples.empty()) return;
  expect(points.back().pct == samples.back().p, "the last sample is drawn");
  expect(nearestPoint(points, kNow) != nullptr, "some point is the nearest");
}

/// A reading makes a new file of the samples; a file that could not be read stays beside it.
void expectSaved(HistoryStore& store, MemoryFiles& files, std::string_view input, bool readable) {
  store.record(pluggedIn(80), kNow, HistoryStore::Force::yes);
  store.save(kNow);
  auto text = files.text(kFile);
  const auto written = decodeSamples(*text);
  const auto samples = store.samples();
  expect(written && written->size() >= samples.size() &&
             same(Samples(*written).last(samples.size()), samples),
         "the file holds the samples");
  const auto more = Samples(*written).first(written->size() - samples.size());
  const double oldest = secondsSince1970(kNow - kThirtyDays);
  expect(std::all_of(more.begin(), more.end(), [&](const Sample& s) { return s.t < oldest; }),
         "and besides at most what is too old");
  const auto kept = files.text(std::string(kFile) + ".unreadable");
  expect(readable ? !kept : kept == input, "what could not be read is kept");
}

/// Months of the same samples again and again: the chart leaves some out, and the store gives the
/// memory of the oldest back.
void expectMonths(Samples pattern) {
  constexpr std::size_t kOld = 4600;
  constexpr std::size_t kRecent = 700;
  const double oldest = secondsSince1970(kNow - kThirtyDays);
  std::vector<Sample> months;
  months.reserve(kOld + kRecent);
  for (std::size_t i = 0; i < kOld + kRecent; ++i) {
    months.push_back(pattern[i % pattern.size()]);
    months.back().t = oldest + 60 * (static_cast<double>(i) - kOld);
  }
  MemoryFiles files;
  HistoryStore store(files, "/data", kNow);
  store.setSamples(months);
  store.record(onBattery(50), kNow, HistoryStore::Force::yes);
  const auto kept = store.samples();
  expect(kept.size() == kRecent + 1 && same(kept.first(kRecent), Samples(months).last(kRecent)),
         "what is not too old is kept as it was");
  expectChart(kept);
  expect(chartPoints(kept).size() < kept.size(), "the chart leaves some out");
}

}  // namespace

void fuzz(std::string_view input) {
  std::string text(input);
  const auto decoded = decodeSamples(text);
  if (decoded) expectRoundTrip(*decoded);

  MemoryFiles files;
  files.edit(kFile, input);
  HistoryStore store(files, "/data", kNow);
  expectLoaded(store, decoded);
  expectSummaries(store, kNow);
  expectChart(store.samples());
  const auto since = store.pluggedSinceEstimate(kNow);
  batteryContent(pluggedIn(80), since, std::nullopt, kNow);
  expectSaved(store, files, input, decoded.has_value());
  // Only of some, because it takes long.
  if (decoded && decoded->size() > 2) expectMonths(*decoded);
}

}  // namespace lumora::test
