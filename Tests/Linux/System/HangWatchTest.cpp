// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/System/HangWatch.h"

#include <atomic>
#include <future>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

using namespace std::chrono_literals;

constexpr auto kPatience = 60s;

/// Answers as often as it is told to, and then no more.
class Loop final : public RunLoop {
 public:
  explicit Loop(int answers) : answers_(answers) {}

  void repeatEvery(std::chrono::seconds /*interval*/, std::chrono::seconds /*tolerance*/,
                   std::function<void()> /*task*/) override {}
  void runAfter(std::chrono::milliseconds /*delay*/, std::function<void()> /*task*/) override {}
  void runSoon(std::function<void()> task) override {
    if (++asked <= answers_) task();
    if (asked == kMany) manyAsked.set_value();
  }

  static constexpr int kMany = 20;
  std::atomic<int> asked = 0;
  std::promise<void> manyAsked;

 private:
  const int answers_;
};

TEST(HangWatch, SaysNothingWhileTheLoopTurns) {
  Loop loop(Loop::kMany * 1000);
  std::atomic<bool> hung = false;
  {
    const HangWatch watch(loop, 1ms, [&] { hung = true; });
    EXPECT_EQ(loop.manyAsked.get_future().wait_for(kPatience), std::future_status::ready);
  }
  EXPECT_FALSE(hung);
}

TEST(HangWatch, SaysOnceThatTheLoopNoLongerTurns) {
  Loop loop(5);
  std::promise<void> hung;
  const HangWatch watch(loop, 1ms, [&] { hung.set_value(); });
  EXPECT_EQ(hung.get_future().wait_for(kPatience), std::future_status::ready);
  EXPECT_EQ(loop.asked, 6);
}

TEST(HangWatch, WaitsThreeTicksForAnAnswer) {
  Loop loop(0);
  std::promise<void> hung;
  const auto begun = std::chrono::steady_clock::now();
  const HangWatch watch(loop, 500ms, [&] { hung.set_value(); });
  EXPECT_EQ(hung.get_future().wait_for(kPatience), std::future_status::ready);
  // It asks after the first.
  EXPECT_GE(std::chrono::steady_clock::now() - begun, 4 * 500ms);
}

TEST(HangWatch, EndsAtOnce) {
  Loop loop(0);
  const HangWatch watch(loop, std::chrono::hours(24), [] { FAIL(); });
}

}  // namespace
}  // namespace lumora::test
