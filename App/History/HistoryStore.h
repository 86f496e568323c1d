// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Battery/BatteryState.h"
#include "History/DaySummary.h"
#include "History/Sample.h"
#include "Platform/Date.h"
#include "Platform/PersistedFile.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <vector>

namespace lumora {

/// The charge history of the last thirty days, kept in memory and in one file. It decides which
/// readings become samples and when the file is written; file failures leave the memory as it is.
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

  void setSamples(std::vector<Sample> samples);

  /// Offers a reading. One without a battery is never kept; unforced, only one whose percent or
  /// flags differ from the last. The file is written at once when the machine was plugged in or
  /// out or charging began or ended, else when the last write is more than five minutes old.
  void record(const BatteryState& state, Date now, Force force);

  /// Writes the file now.
  void save(Date now);

  /// The calendar days that have samples, newest first: `days` of them at most, the day of `now`
  /// among them.
  std::vector<DaySummary> dailySummaries(std::int64_t days, Date now) const;

  /// When the present plugged-in period began as far as the samples show: the start of the unbroken
  /// plugged-in run that ends at the last sample, a gap of more than 15 minutes breaking it. Absent
  /// when the last sample is on battery or 10 minutes old.
  std::optional<Date> pluggedSinceEstimate(Date now) const;

 private:
  void prune(Date now);

  PersistedFile file_;
  // The samples begin at `first_`: dropping one from the front moves nothing.
  std::vector<Sample> storage_;
  std::size_t first_ = 0;
  bool inOrder_ = true;  ///< Unless the clock was set back.
  Date lastSave_ = kDistantPast;
};

}  // namespace lumora
