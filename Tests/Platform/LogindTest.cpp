// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Laptop.h"
#include "Platform/Linux/Logind.h"
#include "WaitFor.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

class LogindTest : public testing::Test {
 protected:
  void SetUp() override {
    laptop.reset();
    logind.emplace();
    logind->observe(
        [this] {
          ++sleeps;
          openWhileSaving = openLocks();
        },
        [this] { ++wakes; });
    ASSERT_TRUE(waitFor([&] { return openLocks() == 1; }));
  }

  std::ptrdiff_t openLocks() const {
    const auto inhibitors = laptop.inhibitors();
    return std::count_if(inhibitors.begin(), inhibitors.end(), [](const auto& inhibitor) {
      return inhibitor.open && inhibitor.what == "sleep" && inhibitor.who == "Lumora" &&
             inhibitor.mode == "delay";
    });
  }

  Laptop laptop;
  std::optional<Logind> logind;
  int sleeps = 0;
  int wakes = 0;
  std::ptrdiff_t openWhileSaving = 0;
};

TEST_F(LogindTest, HoldsTheSleepUpUntilTheSaveIsDone) {
  laptop.prepareForSleep(true);
  EXPECT_TRUE(waitFor([&] { return sleeps == 1; }));
  EXPECT_EQ(openWhileSaving, 1);
  EXPECT_TRUE(waitFor([&] { return openLocks() == 0; }));
  EXPECT_EQ(wakes, 0);
}

TEST_F(LogindTest, TakesANewLockWhenAwakeAgain) {
  for (int night = 1; night <= 3; ++night) {
    laptop.prepareForSleep(true);
    EXPECT_TRUE(waitFor([&] { return sleeps == night && openLocks() == 0; }));
    laptop.prepareForSleep(false);
    EXPECT_TRUE(waitFor([&] { return wakes == night && openLocks() == 1; }));
  }
}

TEST_F(LogindTest, TakesANewLockFromANewService) {
  laptop.kill("logind");
  laptop.start("logind");
  EXPECT_TRUE(waitFor([&] { return openLocks() == 1; }));
  laptop.prepareForSleep(true);
  EXPECT_TRUE(waitFor([&] { return sleeps == 1; }));
}

TEST_F(LogindTest, LetsTheLockGoAtTheEnd) {
  logind.reset();
  EXPECT_TRUE(waitFor([&] { return openLocks() == 0; }));
}

}  // namespace
}  // namespace lumora::test
