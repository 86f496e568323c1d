// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/TimeText.h"
#include "Support/ScopedTimeZone.h"

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

TEST(TimeText, TellsTheTimeOfDayWithoutSeconds) {
  const ScopedTimeZone zone("Europe/Berlin");
  EXPECT_EQ(timeOfDayText(dateSince1970(1'700'000'059.9)), "23:14");
}

TEST(TimeText, IsEmptyForAMomentNoCalendarCanHold) {
  for (const double seconds : {1e13, 1e16, 1e308, -1e13, -1e308}) {
    EXPECT_EQ(timeOfDayText(dateSince1970(seconds)), "") << seconds;
  }
}

}  // namespace
}  // namespace lumora::test
