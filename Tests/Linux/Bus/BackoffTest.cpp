// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Bus/Backoff.h"
#include "Linux/WaitFor.h"

#include <chrono>
#include <optional>
#include <vector>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

TEST(Backoff, PausesTwiceAsLongEachTime) {
  std::vector<double> pauses;
  auto before = Clock::now();
  std::optional<Backoff> backoff;
  backoff.emplace([&] {
    pauses.push_back(std::chrono::duration<double>(Clock::now() - before).count());
    before = Clock::now();
    backoff->failed();
  });
  backoff->failed();
  // It is to run already.
  backoff->failed();
  EXPECT_TRUE(waitFor([&] { return pauses.size() == 3; }, 60s));
  // Whole-second timers are lined up, up to a quarter of a second early.
  EXPECT_GT(pauses[0], 0.7);
  EXPECT_GT(pauses[1], 1.7);
  EXPECT_GT(pauses[2], 3.7);
}

TEST(Backoff, DoesNotRetryWhatNobodyNeeds) {
  int retries = 0;
  {
    Backoff reset([&] { ++retries; });
    reset.failed();
    reset.reset();
    Backoff gone([&] { ++retries; });
    gone.failed();
  }
  EXPECT_FALSE(waitFor([&] { return retries > 0; }, 2500ms));
}

}  // namespace
}  // namespace lumora::test
