// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fuzzer.h"
#include "History/DailySummaries.h"
#include "History/HistoryFile.h"
#include "History/HistoryStore.h"
#include "Support/Builders.h"
#include "Support/MemoryFiles.h"
#include "Views/ChartPoints.h"
#include "Views/PopoverContent.h"

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
  expect(dayRows(days, [](Date) { return "day"; }).size() == days.size(), "each day is a row");
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
  expect(written && same(*written, store.samples()), "the file holds the samples");
  const auto kept = files.text(std::string(kFile) + ".unreadable");
  expect(readable ? !kept : kept == input, "what could not be read is kept");
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
  batteryContent(pluggedIn(80), since, std::nullopt, kNow, [](Date) { return "time"; });
  expectSaved(store, files, input, decoded.has_value());
}

}  // namespace lumora::test
