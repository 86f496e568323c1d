// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Preferences/Prefs.h"
#include "Support/Builders.h"
#include "Support/ScopedTimeZone.h"

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

Prefs quiet(std::int64_t start, std::int64_t end) {
  Prefs prefs;
  prefs.quietEnabled = true;
  prefs.quietStart = start;
  prefs.quietEnd = end;
  return prefs;
}

class QuietHours : public testing::Test {
 protected:
  const ScopedTimeZone zone{"UTC"};
};

TEST_F(QuietHours, AreNeverWhileSwitchedOff) {
  Prefs prefs = quiet(0, 1440);
  EXPECT_TRUE(prefs.inQuietHours(utc(2024, 1, 15, 12, 0)));
  prefs.quietEnabled = false;
  EXPECT_FALSE(prefs.inQuietHours(utc(2024, 1, 15, 12, 0)));
}

TEST_F(QuietHours, AreNeverInAnEmptyWindow) {
  for (const int hour : {0, 7, 12, 22, 23}) {
    EXPECT_FALSE(quiet(720, 720).inQuietHours(utc(2024, 1, 15, hour, 0))) << hour;
    EXPECT_FALSE(quiet(0, 0).inQuietHours(utc(2024, 1, 15, hour, 0))) << hour;
  }
}

TEST_F(QuietHours, WrapPastMidnight) {
  const Prefs prefs = quiet(1320, 420);
  EXPECT_FALSE(prefs.inQuietHours(utc(2024, 1, 15, 21, 59, 59.9)));
  EXPECT_TRUE(prefs.inQuietHours(utc(2024, 1, 15, 22, 0)));
  EXPECT_TRUE(prefs.inQuietHours(utc(2024, 1, 15, 23, 59, 59.9)));
  EXPECT_TRUE(prefs.inQuietHours(utc(2024, 1, 16, 0, 0)));
  EXPECT_TRUE(prefs.inQuietHours(utc(2024, 1, 16, 6, 59, 59.9)));
  EXPECT_FALSE(prefs.inQuietHours(utc(2024, 1, 16, 7, 0)));
  EXPECT_FALSE(prefs.inQuietHours(utc(2024, 1, 16, 12, 0)));
}

TEST_F(QuietHours, StayWithinADay) {
  const Prefs prefs = quiet(540, 1020);
  EXPECT_FALSE(prefs.inQuietHours(utc(2024, 1, 15, 8, 59, 59.9)));
  EXPECT_TRUE(prefs.inQuietHours(utc(2024, 1, 15, 9, 0)));
  EXPECT_TRUE(prefs.inQuietHours(utc(2024, 1, 15, 16, 59, 59.9)));
  EXPECT_FALSE(prefs.inQuietHours(utc(2024, 1, 15, 17, 0)));
  EXPECT_FALSE(prefs.inQuietHours(utc(2024, 1, 15, 0, 0)));
}

TEST_F(QuietHours, FollowTheLocalClock) {
  const Date moment = utc(2024, 1, 15, 21, 30);
  const Prefs prefs = quiet(1320, 420);
  EXPECT_FALSE(prefs.inQuietHours(moment));
  EXPECT_TRUE((ScopedTimeZone("Europe/Berlin"), prefs.inQuietHours(moment)));
  EXPECT_FALSE((ScopedTimeZone("America/New_York"), prefs.inQuietHours(moment)));
  EXPECT_TRUE((ScopedTimeZone("Asia/Kathmandu"), prefs.inQuietHours(moment)));
}

TEST_F(QuietHours, FollowATimeZoneThatChangesWhileRunning) {
  const Date moment = utc(2024, 1, 15, 21, 30);
  const Prefs prefs = quiet(1320, 420);
  EXPECT_FALSE(prefs.inQuietHours(moment));
  setenv("TZ", "Europe/Berlin", 1);
  EXPECT_TRUE(prefs.inQuietHours(moment));
}

TEST_F(QuietHours, AreLeftOutWhenDaylightSavingSkipsThem) {
  const ScopedTimeZone berlin("Europe/Berlin");
  const Prefs prefs = quiet(120, 180);
  for (int minute = 0; minute < 240; ++minute) {
    EXPECT_FALSE(prefs.inQuietHours(utc(2024, 3, 31, 0, minute))) << minute;
  }
  EXPECT_TRUE(prefs.inQuietHours(utc(2024, 3, 30, 1, 0)));
}

TEST_F(QuietHours, ComeTwiceWhenDaylightSavingRepeatsThem) {
  const ScopedTimeZone berlin("Europe/Berlin");
  const Prefs prefs = quiet(120, 180);
  int minutes = 0;
  for (int minute = 0; minute < 240; ++minute) {
    if (prefs.inQuietHours(utc(2024, 10, 27, 0, minute))) ++minutes;
  }
  EXPECT_EQ(minutes, 120);
}

TEST_F(QuietHours, EndAtTheLocalTimeAlsoInTheNightOfAChange) {
  const ScopedTimeZone berlin("Europe/Berlin");
  const Prefs prefs = quiet(1320, 420);
  EXPECT_TRUE(prefs.inQuietHours(utc(2024, 3, 30, 21, 0)));
  EXPECT_TRUE(prefs.inQuietHours(utc(2024, 3, 31, 4, 59)));
  EXPECT_FALSE(prefs.inQuietHours(utc(2024, 3, 31, 5, 0)));
  EXPECT_TRUE(prefs.inQuietHours(utc(2024, 10, 27, 5, 59)));
  EXPECT_FALSE(prefs.inQuietHours(utc(2024, 10, 27, 6, 0)));
}

}  // namespace
}  // namespace lumora::test
