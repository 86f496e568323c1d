// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/Date.h"

#include <string>
#include <string_view>

namespace lumora {

/// How a locale writes the time of day.
struct ClockForm {
  bool twelveHours = false;     ///< Counts from 1 to 12, with a mark of the half of the day.
  bool markFirst = false;       ///< The mark comes before the hour.
  std::string separator = ":";  ///< Between hour and minute: ":" or ".".

  bool operator==(const ClockForm&) const = default;
};

/// What the locale's own format of times (nl_langinfo's T_FMT) says of it. Where that only refers
/// to the format with the mark (T_FMT_AMPM), the latter says it.
ClockForm clockForm(std::string_view timeFormat, std::string_view formatWithMark);

/// The form of the user's locale.
ClockForm clockForm();

/// The time of day without seconds, as the form says: "14:35", "14.35" or "2:35 PM", which no line
/// break tears apart. "" for a moment no calendar can hold.
std::string timeOfDayText(Date date, const ClockForm& form = clockForm());

/// The full hour alone where that can be: "14:00", "2 PM".
std::string hourText(Date date, const ClockForm& form = clockForm());

/// The abbreviated weekday: "Mon".
std::string weekdayText(Date date);

/// Weekday and day of the month: "Mon 14".
std::string dayText(Date date);

}  // namespace lumora
