// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Laptop.h"
#include "Linux/Session/Logind.h"
#include "Linux/WaitFor.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

using namespace std::chrono_literals;

class LogindTest : public testing::Test {
 protected:
  void SetUp() override {
    laptop.reset();
    logind.emplace();
    logind->observe(
        [this] {
          ++sleeps;
          openWhileSaving = openLocks();
          if (holds) held = logind->hold();
        },
        [this] { ++wakes; });
    ASSERT_TRUE(waitFor([&] { return openLocks() == 1; }));
  }

  // The next test's lock is not to be taken for this one's.
  void TearDown() override {
    logind.reset();
    EXPECT_TRUE(waitFor([&] { return openLocks() == 0; }));
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
  bool holds = false;
  std::shared_ptr<const void> held;
};

TEST_F(LogindTest, HoldsTheSleepUpUntilTheSaveIsDone) {
  laptop.prepareForSleep(true);
  EXPECT_TRUE(waitFor([&] { return sleeps == 1; }));
  EXPECT_EQ(openWhileSaving, 1);
  EXPECT_TRUE(waitFor([&] { return openLocks() == 0; }));
  EXPECT_EQ(wakes, 0);
}

TEST_F(LogindTest, HoldsTheSleepUpForAsLongAsItIsHeld) {
  holds = true;
  laptop.prepareForSleep(true);
  EXPECT_TRUE(waitFor([&] { return sleeps == 1; }));
  drainMainLoop();
  EXPECT_EQ(openLocks(), 1);
  held.reset();
  EXPECT_TRUE(waitFor([&] { return openLocks() == 0; }));
}

TEST_F(LogindTest, TakesANewLockBesideTheOneThatIsHeldThroughASleep) {
  holds = true;
  laptop.prepareForSleep(true);
  EXPECT_TRUE(waitFor([&] { return sleeps == 1; }));
  laptop.prepareForSleep(false);
  EXPECT_TRUE(waitFor([&] { return openLocks() == 2; }));
  held.reset();
  EXPECT_TRUE(waitFor([&] { return openLocks() == 1; }));
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

TEST_F(LogindTest, AsksAgainForALockThatIsRefused) {
  laptop.refuseInhibit(2);
  laptop.prepareForSleep(true);
  EXPECT_TRUE(waitFor([&] { return sleeps == 1 && openLocks() == 0; }));
  laptop.prepareForSleep(false);
  EXPECT_TRUE(waitFor([&] { return wakes == 1 && openLocks() == 1; }, 20s));
}

TEST_F(LogindTest, CountsAsAwakeWhenTheServiceGoesAmidASleep) {
  laptop.prepareForSleep(true);
  EXPECT_TRUE(waitFor([&] { return sleeps == 1; }));
  laptop.kill("logind");
  EXPECT_TRUE(waitFor([&] { return wakes == 1; }));
  laptop.start("logind");
  EXPECT_TRUE(waitFor([&] { return openLocks() == 1; }));
  EXPECT_EQ(wakes, 1);
}

TEST_F(LogindTest, LetsTheLockGoAtTheEnd) {
  logind.reset();
  EXPECT_TRUE(waitFor([&] { return openLocks() == 0; }));
}

}  // namespace
}  // namespace lumora::test
