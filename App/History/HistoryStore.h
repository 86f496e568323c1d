// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/Date.h"
#include "Battery/BatteryState.h"
#include "History/DaySummary.h"
#include "History/FlipSaves.h"
#include "History/Sample.h"
#include "History/SettledClock.h"
#include "Storage/PersistedFile.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <vector>

namespace lumora {

/// The charge history of the last thirty days, kept in memory and in one file. It decides which
/// readings become samples and when the file is written; file failures leave the memory as it is.
///
/// The file is never overwritten unread: what another program put in its place is merged, and while
/// the system fails to read it, the samples wait in memory.
class HistoryStore {
 public:
  /// What `record` does with a reading like the one before.
  enum class Force { no, yes };

  /// Loads "history.json" from the folder "Lumora" in `applicationSupport`, in the order of time,
  /// without what is too old at `now`. `files` must outlive the store.
  HistoryStore(Files& files, const std::filesystem::path& applicationSupport, Date now);

  /// In the order in which they came. Valid until the store changes.
  std::span<const Sample> samples() const;

  /// From the first sample at or after `since` to the last. Valid until the store changes.
  std::span<const Sample> samples(Date since) const;

  /// Gives up those it has for these, in the file too, whatever another program put there.
  void setSamples(std::vector<Sample> samples);

  /// Offers a reading. One without a battery is never kept; unforced, only one whose percent or
  /// flags differ from the last. The file is written at once when the machine was plugged in or
  /// out or charging began or ended, else when the last write is more than five minutes old. Where
  /// that flips on and on, three writes are at once, and then there is one a minute: at the next
  /// forced reading.
  void record(const BatteryState& state, Date now, Force force);

  /// Writes the file now, or as soon as the disk is done with what it is writing.
  void save(Date now);

  /// The wall clock was set by so much: what was saved lately still was.
  void clockWasSet(Seconds by);

  /// The calendar days that have samples, newest first: `days` of them at most, the day of `now`
  /// among them.
  std::vector<DaySummary> dailySummaries(std::int64_t days, Date now) const;

  /// When the present plugged-in period began as far as the samples show: the start of the unbroken
  /// plugged-in run that ends at the last sample, a gap of more than 15 minutes breaking it. Absent
  /// when the last sample is on battery or 10 minutes old.
  std::optional<Date> pluggedSinceEstimate(Date now) const;

 private:
  void prune(Date now);
  bool isDue(bool changed, Date now, Force force);
  bool mergeFile(Date now);

  PersistedFile file_;
  // Those before `pruned_` are gone, and dropped from memory when they are many: dropping one moves
  // nothing. Those before `first_` are too old, but stay in the file until the clock is settled.
  std::vector<Sample> storage_;
  std::size_t pruned_ = 0;
  std::size_t first_ = 0;
  bool inOrder_ = true;  ///< Unless the clock was set back.
  SettledClock clock_;
  Date lastSave_ = kDistantPast;
  FlipSaves flipSaves_;
  bool flipUnsaved_ = false;
  bool saveRefused_ = false;   ///< The file could not be read.
  bool replacesFile_ = false;  ///< The samples were given up: those in the file are not wanted.
};

}  // namespace lumora
