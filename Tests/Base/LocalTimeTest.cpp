// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Base/LocalTime.h"
#include "Support/Builders.h"
#include "Support/ScopedTimeZone.h"

#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

TEST(MinutesAfterMidnight, CountsFromLocalMidnightInEachZone) {
  struct Row {
    std::string zone;
    std::int64_t minutes;
  };
  const std::vector<Row> table = {
      {"UTC", std::int64_t{12} * 60},
      {"Europe/Berlin", std::int64_t{13} * 60},
      {"America/New_York", std::int64_t{7} * 60},
      {"Asia/Kolkata", 17 * 60 + 30},
      {"Asia/Kathmandu", 17 * 60 + 45},
      {"Pacific/Kiritimati", std::int64_t{2} * 60},
      {"Pacific/Pago_Pago", 60},
  };
  for (const auto& [name, minutes] : table) {
    const ScopedTimeZone zone(name);
    EXPECT_EQ(minutesAfterMidnight(utc(2024, 1, 15, 12, 0)), minutes) << name;
  }
}

TEST(MinutesAfterMidnight, IgnoresSeconds) {
  const ScopedTimeZone zone("UTC");
  EXPECT_EQ(minutesAfterMidnight(utc(2024, 1, 15, 0, 0)), 0);
  EXPECT_EQ(minutesAfterMidnight(utc(2024, 1, 15, 0, 0, 59.999)), 0);
  EXPECT_EQ(minutesAfterMidnight(utc(2024, 1, 15, 0, 1)), 1);
  EXPECT_EQ(minutesAfterMidnight(utc(2024, 1, 15, 23, 59, 59.5)), 1439);
}

TEST(MinutesAfterMidnight, CountsAlsoBefore1970) {
  const ScopedTimeZone zone("UTC");
  EXPECT_EQ(minutesAfterMidnight(dateSince1970(-0.5)), 1439);
  EXPECT_EQ(minutesAfterMidnight(dateSince1970(-60)), 1439);
  EXPECT_EQ(minutesAfterMidnight(dateSince1970(-60.5)), 1438);
}

TEST(MinutesAfterMidnight, SkipsTheHourThatDaylightSavingSkips) {
  const ScopedTimeZone zone("Europe/Berlin");
  EXPECT_EQ(minutesAfterMidnight(utc(2024, 3, 31, 0, 59)), 60 + 59);
  EXPECT_EQ(minutesAfterMidnight(utc(2024, 3, 31, 1, 0)), 3 * 60);
}

TEST(MinutesAfterMidnight, RepeatsTheHourThatDaylightSavingRepeats) {
  const ScopedTimeZone zone("Europe/Berlin");
  EXPECT_EQ(minutesAfterMidnight(utc(2024, 10, 27, 0, 30)), 2 * 60 + 30);
  EXPECT_EQ(minutesAfterMidnight(utc(2024, 10, 27, 1, 30)), 2 * 60 + 30);
  EXPECT_EQ(minutesAfterMidnight(utc(2024, 10, 27, 2, 0)), 3 * 60);
}

TEST(MinutesAfterMidnight, FollowsATimeZoneThatChangesWhileRunning) {
  const Date noon = utc(2024, 1, 15, 12, 0);
  const ScopedTimeZone home("Europe/Berlin");
  EXPECT_EQ(minutesAfterMidnight(noon), 13 * 60);
  setenv("TZ", "Asia/Tokyo", 1);
  EXPECT_EQ(minutesAfterMidnight(noon), 21 * 60);
}

TEST(MinutesAfterMidnight, GivesZeroForADateNoCalendarHolds) {
  const ScopedTimeZone zone("UTC");
  const double infinity = std::numeric_limits<double>::infinity();
  const double none = std::numeric_limits<double>::quiet_NaN();
  for (const double seconds : {1e300, -1e300, 1e18, -1e18, infinity, -infinity, none}) {
    EXPECT_EQ(minutesAfterMidnight(dateSince1970(seconds)), 0) << seconds;
  }
}

TEST(StartOfDay, IsMidnightInTheZoneInForce) {
  const ScopedTimeZone berlin("Europe/Berlin");
  EXPECT_EQ(startOfDay(utc(2026, 11, 20, 13, 0)), utc(2026, 11, 19, 23, 0));
  EXPECT_EQ(startOfDay(utc(2026, 11, 19, 23, 0)), utc(2026, 11, 19, 23, 0));
  EXPECT_EQ(startOfDay(utc(2026, 11, 19, 22, 59)), utc(2026, 11, 18, 23, 0));
}

TEST(StartOfDay, CountsCalendarDaysOverTheChangesOfTheClocks) {
  const ScopedTimeZone berlin("Europe/Berlin");
  EXPECT_EQ(startOfDay(utc(2026, 3, 30, 12, 0), -1), utc(2026, 3, 28, 23, 0));
  EXPECT_EQ(startOfDay(utc(2026, 3, 29, 12, 0), 1), utc(2026, 3, 29, 22, 0));
  EXPECT_EQ(startOfDay(utc(2026, 10, 26, 12, 0), -1), utc(2026, 10, 24, 22, 0));
  EXPECT_EQ(startOfDay(utc(2026, 3, 1, 12, 0), -1), utc(2026, 2, 27, 23, 0));
  EXPECT_EQ(startOfDay(utc(2026, 1, 1, 12, 0), -1), utc(2025, 12, 30, 23, 0));
}

TEST(StartOfDay, IsTheFirstMomentWhereMidnightIsSkippedOrComesTwice) {
  {
    const ScopedTimeZone saoPaulo("America/Sao_Paulo");
    EXPECT_EQ(startOfDay(utc(2018, 11, 4, 15, 0)), utc(2018, 11, 4, 3, 0));
  }
  {
    const ScopedTimeZone havana("America/Havana");
    EXPECT_EQ(startOfDay(utc(2025, 11, 2, 15, 0)), utc(2025, 11, 2, 4, 0));
  }
}

TEST(StartOfDay, LeavesADateThatNoCalendarHoldsAsItIs) {
  const Date far = dateSince1970(1e30);
  EXPECT_EQ(startOfDay(far), far);
  EXPECT_EQ(startOfDay(utc(2026, 1, 1, 0, 0), 1'000'000'000), utc(2026, 1, 1, 0, 0));
}

}  // namespace
}  // namespace lumora::test
