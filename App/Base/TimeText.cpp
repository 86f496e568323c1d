// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Base/TimeText.h"

#include "Base/LocalTime.h"
#include "Base/NumberText.h"
#include "Base/Texts.h"

#include <algorithm>
#include <array>
#include <ctime>

#include <langinfo.h>

namespace lumora {
namespace {

std::string printed(const char* format, const std::tm& time) {
  std::array<char, 128> text{};
  return {text.data(), std::strftime(text.data(), text.size(), format, &time)};
}

/// Where the first of these stands; npos where none does.
std::size_t find(std::string_view text, std::initializer_list<std::string_view> parts) {
  std::size_t first = std::string_view::npos;
  for (const std::string_view part : parts) first = std::min(first, text.find(part));
  return first;
}

/// With the mark of the half of the day, by a blank that does not break.
std::string withMark(const std::string& time, const std::tm& local, const ClockForm& form) {
  constexpr const char* kBlank = "\u00A0";
  const std::string mark = printed("%p", local);
  if (mark.empty()) return time;
  return form.markFirst ? mark + kBlank + time : time + kBlank + mark;
}

/// Latvian fills the short ones up with a blank that does not break.
std::string weekdayOf(const std::tm& local) {
  constexpr std::string_view kBlank = "\u00A0";
  std::string day = printed("%a", local);
  if (day.ends_with(kBlank)) day.erase(day.size() - kBlank.size());
  return day;
}

std::int64_t hourOf(const std::tm& local, const ClockForm& form) {
  return form.twelveHours ? (local.tm_hour + 11) % 12 + 1 : local.tm_hour;
}

}  // namespace

ClockForm clockForm(std::string_view timeFormat, std::string_view formatWithMark) {
  if (timeFormat.find("%r") != std::string_view::npos) timeFormat = formatWithMark;
  const std::size_t hour = find(timeFormat, {"%I", "%OI", "%l"});
  const std::size_t mark = find(timeFormat, {"%p", "%P"});
  const std::size_t minute = find(timeFormat, {"%M", "%OM"});
  ClockForm form;
  form.twelveHours = hour != std::string_view::npos;
  form.markFirst = form.twelveHours && mark < hour;
  if (minute != std::string_view::npos && minute > 0 && timeFormat[minute - 1] == '.') {
    form.separator = ".";
  }
  return form;
}

ClockForm clockForm() {
  ClockForm form = clockForm(nl_langinfo(T_FMT), nl_langinfo(T_FMT_AMPM));
  // Malay has twelve hours without a mark of the half: nobody could tell three from fifteen.
  if (std::string_view(nl_langinfo(AM_STR)).empty()) form.twelveHours = false;
  return form;
}

std::string timeOfDayText(Date date, const ClockForm& form) {
  const auto local = localTime(date);
  if (!local) return {};
  const std::int64_t hour = hourOf(*local, form);
  const std::string time = (form.twelveHours ? numberText(hour) : twoDigitText(hour)) +
                           form.separator + twoDigitText(local->tm_min);
  return form.twelveHours ? withMark(time, *local, form) : time;
}

std::string hourText(Date date, const ClockForm& form) {
  const auto local = localTime(date);
  if (!local || !form.twelveHours) return timeOfDayText(date, form);
  return withMark(numberText(hourOf(*local, form)), *local, form);
}

std::string weekdayText(Date date) {
  const auto local = localTime(date);
  return local ? weekdayOf(*local) : std::string();
}

std::string dayText(Date date) {
  const auto local = localTime(date);
  if (!local) return {};
  // TRANSLATORS: A day in the table of the last seven days, as short as can be: %1$s is the
  // abbreviated weekday ("Mon"), %2$s the day of the month ("14").
  return filled(translatedIn("day", "%1$s %2$s"), {weekdayOf(*local), numberText(local->tm_mday)});
}

}  // namespace lumora
