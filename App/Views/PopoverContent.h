// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Battery/BatteryState.h"
#include "History/DaySummary.h"
#include "Platform/Date.h"

#include <cstdint>
#include <functional>
#include <optional>
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

/// A moment as the user's locale writes it.
using FormatDate = std::function<std::string(Date)>;

/// Absent without a battery. `formatTime` writes a time of day without its date.
std::optional<BatteryContent> batteryContent(const BatteryState& state,
                                             std::optional<Date> pluggedSince,
                                             std::optional<Date> snoozeUntil, Date now,
                                             const FormatDate& formatTime);

/// A row of the table of days.
struct DayRow {
  std::string day;       ///< "Mon 14"
  std::string average;   ///< "72%"
  std::string range;     ///< "41–80%"
  std::string charging;  ///< "1 h 5 min", a lone en dash for none.

  bool operator==(const DayRow&) const = default;
};

/// `formatDay` writes the abbreviated weekday and the day of the month.
std::vector<DayRow> dayRows(const std::vector<DaySummary>& summaries, const FormatDate& formatDay);

}  // namespace lumora
