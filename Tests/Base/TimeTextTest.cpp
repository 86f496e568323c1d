// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Base/TimeText.h"
#include "Support/ScopedTimeZone.h"

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

constexpr Date kEvening = dateSince1970(1'700'000'059.9);

TEST(TimeText, TellsTheTimeOfDayWithoutSeconds) {
  const ScopedTimeZone zone("Europe/Berlin");
  EXPECT_EQ(timeOfDayText(kEvening), "23:14");
  EXPECT_EQ(timeOfDayText(kEvening - Seconds(14 * 3600)), "09:14");
}

TEST(TimeText, CountsFromOneToTwelveWhereThePeopleDo) {
  const ScopedTimeZone zone("Europe/Berlin");
  const ClockForm form{.twelveHours = true};
  EXPECT_EQ(timeOfDayText(kEvening, form), "11:14\u00A0PM");
  EXPECT_EQ(timeOfDayText(kEvening - Seconds(12 * 3600), form), "11:14\u00A0AM");
  EXPECT_EQ(timeOfDayText(kEvening - Seconds(11 * 3600), form), "12:14\u00A0PM");
  EXPECT_EQ(timeOfDayText(kEvening + Seconds(2 * 3600), form), "1:14\u00A0AM");
  EXPECT_EQ(timeOfDayText(kEvening, {.twelveHours = true, .markFirst = true}), "PM\u00A011:14");
}

TEST(TimeText, HasAPointWhereThePeopleWriteIt) {
  const ScopedTimeZone zone("Europe/Helsinki");
  EXPECT_EQ(timeOfDayText(kEvening, {.separator = "."}), "00.14");
}

TEST(TimeText, NamesAFullHourAsShortAsTheClockAllows) {
  const ScopedTimeZone zone("UTC");
  const Date six = dateSince1970(18 * 3600);
  EXPECT_EQ(hourText(six), "18:00");
  EXPECT_EQ(hourText(six, {.separator = "."}), "18.00");
  EXPECT_EQ(hourText(six, {.twelveHours = true}), "6\u00A0PM");
}

TEST(TimeText, NamesADay) {
  const ScopedTimeZone zone("UTC");
  EXPECT_EQ(weekdayText(kEvening), "Tue");
  EXPECT_EQ(dayText(kEvening), "Tue 14");
  EXPECT_EQ(dayText(kEvening - Seconds(7 * 86'400)), "Tue 7");
}

TEST(TimeText, KnowsTheClockByTheLocalesFormat) {
  struct Case {
    const char* format = nullptr;
    ClockForm form;
  };
  const ClockForm whole;
  const ClockForm twelve{.twelveHours = true};
  for (const auto& [format, form] : {
           Case{"%H:%M:%S", whole},
           Case{"%T", whole},
           Case{"%k:%M:%S", whole},
           Case{"%OH:%OM:%OS", whole},
           Case{"%H時%M分%S秒", whole},
           Case{"%H.%M.%S", {.separator = "."}},
           Case{"%I:%M:%S %p", twelve},
           Case{"%l:%M:%S %P", twelve},
           Case{"%Z %I:%M:%S %p", twelve},
           Case{"%p %I:%M:%S", {.twelveHours = true, .markFirst = true}},
           Case{"%p %I.%M.%S", {.twelveHours = true, .markFirst = true, .separator = "."}},
           Case{"", whole},
           Case{"%", whole},
           Case{"M.%", whole},
           Case{"I p r", whole},
       }) {
    EXPECT_EQ(clockForm(format, "%I.%M %p"), form) << format;
  }
  EXPECT_EQ(clockForm("%r", "%I:%M:%S %p"), twelve);
  EXPECT_EQ(clockForm("%r", ""), whole);
}

TEST(TimeText, IsEmptyForAMomentNoCalendarCanHold) {
  for (const double seconds : {1e16, 1e17, 1e308, -1e17, -1e308}) {
    const Date date = dateSince1970(seconds);
    EXPECT_EQ(timeOfDayText(date) + hourText(date) + weekdayText(date) + dayText(date), "")
        << seconds;
  }
}

}  // namespace
}  // namespace lumora::test
