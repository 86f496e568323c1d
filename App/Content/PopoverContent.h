// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/Date.h"
#include "Battery/BatteryState.h"
#include "History/DaySummary.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace lumora {

/// What a colour stands for; the desktop's theme says how it looks.
enum class Tint { accent, green, orange, red };

/// How many charge cycles of the thousand a battery is built for.
struct CycleBar {
  std::string text;        ///< "412 of 1000"
  std::int64_t value = 0;  ///< Of `kTotal`, at most that.
  Tint tint = Tint::accent;

  static constexpr std::int64_t kTotal = 1000;

  bool operator==(const CycleBar&) const = default;
};

struct DetailRow {
  std::string label;
  std::string value;
  std::optional<Tint> tint;  ///< Absent: the secondary colour.

  bool operator==(const DetailRow&) const = default;
};

/// What the popover shows of a battery.
struct BatteryContent {
  std::int64_t percent = 0;
  Tint ringTint = Tint::accent;
  std::string stateText;
  std::optional<std::string> pluggedInFor;  ///< "Plugged in for 5 min"
  std::optional<std::string> snoozedUntil;  ///< "Alerts snoozed until 14:35"
  std::optional<CycleBar> cycles;
  std::vector<DetailRow> details;

  bool operator==(const BatteryContent&) const = default;
};

/// Absent without a battery.
std::optional<BatteryContent> batteryContent(const BatteryState& state,
                                             std::optional<Date> pluggedSince,
                                             std::optional<Date> snoozeUntil, Date now);

/// From the lowest to the highest charge: "41–80%".
std::string percentRangeText(std::int64_t least, std::int64_t most);

/// A row of the table of days.
struct DayRow {
  std::string day;       ///< "Mon 14"
  std::string average;   ///< "72%"
  std::string range;     ///< "41–80%"
  std::string charging;  ///< "1 h 5 min", a lone en dash for none.

  bool operator==(const DayRow&) const = default;
};

/// A row for each of the last `most` summaries, which come newest day first: where there are more,
/// a clock was wrong, and days that lie ahead give way.
std::vector<DayRow> dayRows(std::span<const DaySummary> summaries, std::size_t most);

}  // namespace lumora
