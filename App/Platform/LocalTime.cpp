// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/LocalTime.h"

#include <cmath>
#include <ctime>

namespace lumora {

std::int64_t minutesAfterMidnight(Date date) {
  constexpr double kLastRepresentable = 9.0e15;
  const double seconds = std::floor(secondsSince1970(date));
  if (!(std::abs(seconds) < kLastRepresentable)) return 0;

  // localtime_r need not notice a new time zone by itself; tzset does.
  tzset();
  const auto time = static_cast<std::time_t>(seconds);
  std::tm local{};
  if (localtime_r(&time, &local) == nullptr) return 0;
  return std::int64_t{local.tm_hour} * 60 + local.tm_min;
}

}  // namespace lumora
