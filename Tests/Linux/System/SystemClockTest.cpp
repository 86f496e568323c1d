// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/System/SystemClock.h"

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

double reading(clockid_t clock) {
  timespec time{};
  clock_gettime(clock, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

TEST(SystemClock, CountsFromTheStartOfTheMachineItsSleepIncluded) {
  const double before = reading(CLOCK_BOOTTIME);
  const double told = SystemClock().sinceBoot().count();
  EXPECT_LE(before - 1e-6, told);
  EXPECT_GE(reading(CLOCK_BOOTTIME) + 1e-6, told);
}

TEST(SystemClock, TellsTheTimeOfTheWallClock) {
  const double before = reading(CLOCK_REALTIME);
  const double told = secondsSince1970(SystemClock().now());
  EXPECT_LE(before - 1e-6, told);
  EXPECT_GE(reading(CLOCK_REALTIME) + 1e-6, told);
}

}  // namespace
}  // namespace lumora::test
