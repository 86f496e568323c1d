// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Base/LocalTime.h"

#include <cmath>

namespace lumora {
namespace {

constexpr std::time_t kHour = 3600;
constexpr std::int64_t kMinutesOfDay = std::int64_t{24} * 60;

std::optional<std::tm> localTime(std::time_t time) {
  std::tm local{};
  if (localtime_r(&time, &local) == nullptr) return std::nullopt;
  return local;
}

bool sameDay(const std::optional<std::tm>& left, const std::tm& right) {
  return left && left->tm_year == right.tm_year && left->tm_yday == right.tm_yday;
}

}  // namespace

std::optional<std::tm> localTime(Date date) {
  constexpr double kLastRepresentable = 9.0e15;
  const double seconds = std::floor(secondsSince1970(date));
  if (!(std::abs(seconds) < kLastRepresentable)) return std::nullopt;
  // localtime_r need not notice a new time zone by itself; tzset does.
  tzset();
  return localTime(static_cast<std::time_t>(seconds));
}

std::int64_t minutesAfterMidnight(Date date) {
  const auto local = localTime(date);
  return local ? std::int64_t{local->tm_hour} * 60 + local->tm_min : 0;
}

Date startOfDay(Date date, std::int64_t days) {
  constexpr std::int64_t kMostDays = 100'000;
  const auto local = localTime(date);
  if (!local || days < -kMostDays || days > kMostDays) return date;

  // Noon is on every calendar day and tells which day is meant.
  std::tm noon{};
  noon.tm_year = local->tm_year;
  noon.tm_mon = local->tm_mon;
  noon.tm_mday = local->tm_mday + static_cast<int>(days);
  noon.tm_hour = 12;
  noon.tm_isdst = -1;
  std::tm midnight = noon;
  midnight.tm_hour = 0;
  if (std::mktime(&noon) == -1) return date;
  std::time_t start = std::mktime(&midnight);
  if (start == -1) return date;

  // Where midnight is skipped, mktime may answer an hour before the day; where it comes twice, the
  // second time.
  if (!sameDay(localTime(start), noon)) start += kHour;
  if (sameDay(localTime(start - kHour), noon)) start -= kHour;
  return dateSince1970(static_cast<double>(start));
}

std::optional<Date> timeOfDay(Date date, std::int64_t minutes) {
  const auto today = localTime(date);
  if (!today || minutes < 0 || minutes >= kMinutesOfDay) return std::nullopt;
  std::tm wanted{};
  wanted.tm_year = today->tm_year;
  wanted.tm_mon = today->tm_mon;
  wanted.tm_mday = today->tm_mday;
  wanted.tm_hour = static_cast<int>(minutes / 60);
  wanted.tm_min = static_cast<int>(minutes % 60);
  wanted.tm_isdst = -1;
  std::tm asked = wanted;
  const Date found = dateSince1970(static_cast<double>(std::mktime(&asked)));
  if (minutesAfterMidnight(found) == minutes) return found;

  // Skipped: the clock as it went before the day began would have shown it then.
  const auto before = localTime(startOfDay(date) - Seconds(1));
  if (!before) return std::nullopt;
  return dateSince1970(static_cast<double>(timegm(&wanted) - before->tm_gmtoff));
}

}  // namespace lumora
