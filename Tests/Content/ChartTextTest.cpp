// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Content/ChartText.h"
#include "Support/ScopedLocale.h"
#include "Support/ScopedTimeZone.h"

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

// A Tuesday, 14:13 in Berlin.
constexpr double kNow = 1'795'525'980;

ChartPoint point(double minutesAgo, std::int64_t percent, bool charging, std::int64_t segment = 0) {
  return {0, dateSince1970(kNow - 60 * minutesAgo), percent, segment, charging};
}

TEST(ChartText, TellsOfAPointItsTimeItsPercentAndWhetherItWasCharging) {
  const ScopedTimeZone berlin("Europe/Berlin");
  EXPECT_EQ(pointText(point(0, 80, true), 1), "14:13 · 80% · Charging");
  EXPECT_EQ(pointText(point(60, 41, false), 1), "13:13 · 41% · Not charging");
}

TEST(ChartText, NamesTheWeekdayWhereTheChartHasSeveralDays) {
  const ScopedTimeZone berlin("Europe/Berlin");
  EXPECT_EQ(pointText(point(0, 80, true), 7), "Tue 14:13 · 80% · Charging");
}

TEST(ChartText, SumsTheChartUp) {
  const ScopedTimeZone berlin("Europe/Berlin");
  const std::vector<ChartPoint> points = {
      point(130, 60, false),  point(120, 55, true),   point(90, 70, true),    point(60, 81, false),
      point(20, 62, true, 1), point(10, 66, true, 1), point(0, 73, false, 1),
  };
  EXPECT_EQ(chartText(points, 1),
            "14:13 · 73% · Not charging. Range · 55–81%. Charging · 1 h 20 min");
}

TEST(ChartText, SaysNothingOfChargingWhereThereWasNone) {
  const ScopedTimeZone berlin("Europe/Berlin");
  EXPECT_EQ(chartText(std::vector{point(5, 60, false), point(0, 58, false)}, 7),
            "Tue 14:13 · 58% · Not charging. Range · 58–60%");
}

TEST(ChartText, IsNothingWithoutPoints) { EXPECT_EQ(chartText({}, 1), ""); }

}  // namespace
}  // namespace lumora::test
