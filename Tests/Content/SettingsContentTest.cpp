// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Base/LocalTime.h"
#include "Content/SettingsContent.h"
#include "Preferences/SoundNames.h"
#include "Support/Builders.h"
#include "Support/ScopedTimeZone.h"

#include <limits>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

constexpr StepRange kLimit{50, 100};
constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();

TEST(StepRange, StepsByOneUpToItsEnds) {
  EXPECT_EQ(kLimit.stepUp(80), 81);
  EXPECT_EQ(kLimit.stepDown(80), 79);
  EXPECT_EQ(kLimit.stepUp(99), 100);
  EXPECT_EQ(kLimit.stepUp(100), 100);
  EXPECT_FALSE(kLimit.canStepUp(100));
  EXPECT_TRUE(kLimit.canStepDown(100));
  EXPECT_EQ(kLimit.stepDown(51), 50);
  EXPECT_EQ(kLimit.stepDown(50), 50);
  EXPECT_FALSE(kLimit.canStepDown(50));
  EXPECT_TRUE(kLimit.canStepUp(50));
}

TEST(StepRange, ComesBackFromOutsideWithTheFirstStepAndGoesNoFurtherOut) {
  for (const std::int64_t above : {std::int64_t{101}, std::int64_t{120}, kMost}) {
    EXPECT_EQ(kLimit.stepDown(above), 100);
    EXPECT_EQ(kLimit.stepUp(above), above);
    EXPECT_FALSE(kLimit.canStepUp(above));
  }
  for (const std::int64_t below : {std::int64_t{49}, std::int64_t{-3}, kLeast}) {
    EXPECT_EQ(kLimit.stepUp(below), 50);
    EXPECT_EQ(kLimit.stepDown(below), below);
    EXPECT_FALSE(kLimit.canStepDown(below));
  }
}

TEST(StepRange, TakesSeveralStepsAndStopsAtItsEnds) {
  EXPECT_EQ(kLimit.stepBy(80, 10), 90);
  EXPECT_EQ(kLimit.stepBy(95, 10), 100);
  EXPECT_EQ(kLimit.stepBy(80, -10), 70);
  EXPECT_EQ(kLimit.stepBy(55, -10), 50);
  EXPECT_EQ(kLimit.stepBy(kMost, -10), 100);
  EXPECT_EQ(kLimit.stepBy(kLeast, 10), 50);
  EXPECT_EQ(kLimit.stepBy(kMost, 10), kMost);
}

TEST(ShownMinutes, AreTheStoredOnes) {
  const ScopedTimeZone zone("Europe/Berlin");
  for (const std::int64_t minutes : {0, 1, 59, 60, 420, 1320, 1410, 1439}) {
    EXPECT_EQ(shownMinutes(minutes, utc(2024, 1, 15, 12, 0)), minutes);
  }
}

TEST(ShownMinutes, AreTheTimeNowForWhatIsNoTimeOfDay) {
  const ScopedTimeZone zone("Europe/Berlin");
  for (const std::int64_t minutes : {std::int64_t{1440}, std::int64_t{-1}, kLeast, kMost}) {
    EXPECT_EQ(shownMinutes(minutes, utc(2024, 1, 15, 12, 34)), 13 * 60 + 34);
  }
}

TEST(ShownMinutes, MoveOnByTheGapWhereTheClocksSkipThem) {
  struct Row {
    const char* zone = "";
    Date now;
    std::int64_t stored = 0;
    std::int64_t shown = 0;
  };
  for (const Row& row : {
           // 02:00 becomes 03:00.
           Row{"Europe/Berlin", utc(2024, 3, 31, 12, 0), 150, 210},
           Row{"Europe/Berlin", utc(2024, 3, 30, 23, 30), 120, 180},
           Row{"Europe/Berlin", utc(2024, 3, 31, 12, 0), 119, 119},
           Row{"Europe/Berlin", utc(2024, 3, 31, 12, 0), 180, 180},
           // The day before, and the day the clocks go back.
           Row{"Europe/Berlin", utc(2024, 3, 30, 12, 0), 150, 150},
           Row{"Europe/Berlin", utc(2024, 10, 27, 12, 0), 150, 150},
           // Winter time is the one that is put back here.
           Row{"Europe/Dublin", utc(2024, 3, 31, 12, 0), 90, 150},
           // Half an hour.
           Row{"Australia/Lord_Howe", utc(2024, 10, 6, 3, 0), 135, 165},
           // Midnight itself.
           Row{"America/Santiago", utc(2024, 9, 8, 15, 0), 30, 90},
       }) {
    const ScopedTimeZone zone(row.zone);
    EXPECT_EQ(shownMinutes(row.stored, row.now), row.shown) << row.zone << ' ' << row.stored;
  }
}

TEST(TimeOfDay, IsOnTheDayThatWasAskedFor) {
  const ScopedTimeZone zone("America/New_York");
  EXPECT_EQ(timeOfDay(utc(2024, 1, 15, 2, 0), 1410), utc(2024, 1, 15, 4, 30));
  EXPECT_EQ(timeOfDay(utc(2024, 1, 15, 12, 0), 0), utc(2024, 1, 15, 5, 0));
  EXPECT_EQ(timeOfDay(dateSince1970(1e300), 0), std::nullopt);
}

TEST(SoundNames, AreFourteen) {
  EXPECT_EQ(kSoundNames.size(), 14U);
  EXPECT_EQ(std::string(kSoundNames.front()), "Glass");
  EXPECT_EQ(std::string(kSoundNames.back()), "Tink");
}

}  // namespace
}  // namespace lumora::test
