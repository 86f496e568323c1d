// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "History/HistoryStore.h"

#include "Base/LocalTime.h"
#include "History/DailySummaries.h"
#include "History/HistoryFile.h"

#include <algorithm>
#include <iterator>
#include <tuple>
#include <utility>

namespace lumora {
namespace {

constexpr Seconds kKept{30.0 * 24 * 60 * 60};
constexpr Seconds kSaveInterval{300};
constexpr double kStaleAfter = 600;
// Dropped samples are given back once there are this many.
constexpr std::size_t kMostDropped = 4096;

bool earlier(const Sample& left, const Sample& right) { return left.t < right.t; }

void sort(std::vector<Sample>& samples) {
  if (std::is_sorted(samples.begin(), samples.end(), earlier)) return;
  std::stable_sort(samples.begin(), samples.end(), earlier);
}

/// The samples of both in the order of time, one that is in both once.
std::vector<Sample> merged(std::vector<Sample> one, std::vector<Sample> other) {
  const auto before = [](const Sample& left, const Sample& right) {
    return std::tie(left.t, left.p, left.c, left.a) < std::tie(right.t, right.p, right.c, right.a);
  };
  std::sort(one.begin(), one.end(), before);
  std::sort(other.begin(), other.end(), before);
  std::vector<Sample> both;
  both.reserve(std::max(one.size(), other.size()));
  std::set_union(one.begin(), one.end(), other.begin(), other.end(), std::back_inserter(both),
                 before);
  return both;
}

std::filesystem::path makeFolder(Files& files, const std::filesystem::path& applicationSupport) {
  std::filesystem::path folder = applicationSupport / "Lumora";
  files.createFolders(folder);
  return folder;
}

}  // namespace

HistoryStore::HistoryStore(Files& files, const std::filesystem::path& applicationSupport, Date now)
    : file_(files, makeFolder(files, applicationSupport) / "history.json"), clock_(now) {
  if (auto loaded = file_.load(decodeSamples)) storage_ = std::move(*loaded);
  sort(storage_);
  // The clock may have jumped shortly before the program ended.
  if (!storage_.empty()) clock_ = SettledClock(dateSince1970(storage_.front().t));
  for (const Sample& sample : storage_) clock_.tick(dateSince1970(sample.t));
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
  pruned_ = first_ = 0;
  inOrder_ = std::is_sorted(storage_.begin(), storage_.end(), earlier);
  replacesFile_ = true;
}

void HistoryStore::record(const BatteryState& state, Date now, Force force) {
  if (!state.hasBattery) return;
  if (file_.state() == PersistedFile::State::unknown && file_.isWorthLoading()) mergeFile(now);
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
  if (isDue(changed, now, force)) save(now);
}

void HistoryStore::save(Date now) {
  lastSave_ = now;
  flipUnsaved_ = false;
  saveRefused_ = file_.changedElsewhere() && !mergeFile(now);
  if (saveRefused_) return;
  auto json = encodeSamples(std::span(storage_).subspan(pruned_));
  if (json) file_.replace(std::move(*json), [this] { replacesFile_ = false; });
}

void HistoryStore::clockWasSet(Seconds by) {
  lastSave_ += by;
  flipSaves_.clockWasSet(by);
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
    if (!sample->a || current - sample->t > kLongestKnownSpan) break;
    current = sample->t;
  }
  return dateSince1970(current);
}

void HistoryStore::prune(Date now) {
  clock_.tick(now);
  first_ = pruned_;
  first_ = storage_.size() - samples(now - kKept).size();
  if (!clock_.isSettled()) return;
  pruned_ = first_;
  if (pruned_ < kMostDropped && pruned_ < storage_.size()) return;
  storage_.erase(storage_.begin(), storage_.begin() + static_cast<std::ptrdiff_t>(pruned_));
  pruned_ = first_ = 0;
}

/// Whether a sample that was just recorded leads to a save.
bool HistoryStore::isDue(bool changed, Date now, Force force) {
  if (saveRefused_ && file_.state() != PersistedFile::State::unknown) return true;
  if (changed && flipSaves_.take(now)) return true;
  flipUnsaved_ = flipUnsaved_ || changed;
  if (flipUnsaved_ && force == Force::yes) {
    flipSaves_.takeInAdvance(now);
    return true;
  }
  // Also when the clock was set back behind the last save.
  return now < lastSave_ || now - lastSave_ > kSaveInterval;
}

/// Takes in what another program put in the file's place. False when that is not known.
bool HistoryStore::mergeFile(Date now) {
  const auto loaded = file_.load(decodeSamples);
  if (file_.state() == PersistedFile::State::unknown) return false;
  if (!loaded || replacesFile_) return true;
  storage_.erase(storage_.begin(), storage_.begin() + static_cast<std::ptrdiff_t>(pruned_));
  storage_ = merged(*loaded, std::move(storage_));
  inOrder_ = true;
  pruned_ = first_ = 0;
  prune(now);
  return true;
}

}  // namespace lumora
