// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "History/HistoryStore.h"

#include "History/DailySummaries.h"
#include "History/HistoryFile.h"
#include "Platform/LocalTime.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace lumora {
namespace {

constexpr Seconds kKept{30.0 * 24 * 60 * 60};
constexpr Seconds kSaveInterval{300};
constexpr double kStaleAfter = 600;
constexpr double kGap = 900;
// Dropped samples are given back once there are this many.
constexpr std::size_t kMostDropped = 4096;

bool earlier(const Sample& left, const Sample& right) { return left.t < right.t; }

std::filesystem::path makeFolder(Files& files, const std::filesystem::path& applicationSupport) {
  std::filesystem::path folder = applicationSupport / "Lumora";
  files.createFolders(folder);
  return folder;
}

}  // namespace

HistoryStore::HistoryStore(Files& files, const std::filesystem::path& applicationSupport, Date now)
    : file_(files, makeFolder(files, applicationSupport) / "history.json") {
  if (auto loaded = file_.load(decodeSamples)) storage_ = std::move(*loaded);
  if (!std::is_sorted(storage_.begin(), storage_.end(), earlier)) {
    std::stable_sort(storage_.begin(), storage_.end(), earlier);
  }
  prune(now);
}

std::span<const Sample> HistoryStore::samples() const {
  return std::span(storage_).subspan(first_);
}

std::span<const Sample> HistoryStore::samples(Date since) const {
  const auto all = samples();
  const double start = secondsSince1970(since);
  const auto tooEarly = [start](const Sample& sample) { return sample.t < start; };
  const auto first = inOrder_ ? std::partition_point(all.begin(), all.end(), tooEarly)
                              : std::find_if_not(all.begin(), all.end(), tooEarly);
  return all.subspan(static_cast<std::size_t>(std::distance(all.begin(), first)));
}

void HistoryStore::setSamples(std::vector<Sample> samples) {
  storage_ = std::move(samples);
  first_ = 0;
  inOrder_ = std::is_sorted(storage_.begin(), storage_.end(), earlier);
}

void HistoryStore::record(const BatteryState& state, Date now, Force force) {
  if (!state.hasBattery) return;
  const Sample sample{secondsSince1970(now), state.percent, state.isCharging, state.pluggedIn};

  bool changed = false;
  if (const auto known = samples(); !known.empty()) {
    const Sample& last = known.back();
    changed = last.a != sample.a || last.c != sample.c;
    if (force == Force::no && !changed && last.p == sample.p) return;
    if (earlier(sample, last)) inOrder_ = false;
  }
  storage_.push_back(sample);
  prune(now);
  if (changed || now - lastSave_ > kSaveInterval) save(now);
}

void HistoryStore::save(Date now) {
  lastSave_ = now;
  if (const auto json = encodeSamples(samples())) file_.replace(*json);
}

std::vector<DaySummary> HistoryStore::dailySummaries(std::int64_t days, Date now) const {
  return summarizeDays(samples(startOfDay(now, 1 - days)));
}

std::optional<Date> HistoryStore::pluggedSinceEstimate(Date now) const {
  const auto known = samples();
  if (known.empty() || !known.back().a) return std::nullopt;
  double current = known.back().t;
  if (secondsSince1970(now) - current >= kStaleAfter) return std::nullopt;

  for (auto sample = std::next(known.rbegin()); sample != known.rend(); ++sample) {
    if (!sample->a || current - sample->t > kGap) break;
    current = sample->t;
  }
  return dateSince1970(current);
}

void HistoryStore::prune(Date now) {
  first_ = storage_.size() - samples(now - kKept).size();
  if (first_ < kMostDropped && first_ < storage_.size()) return;
  storage_.erase(storage_.begin(), storage_.begin() + static_cast<std::ptrdiff_t>(first_));
  first_ = 0;
}

}  // namespace lumora
