// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Power/ChangeCoalescer.h"
#include "Linux/System/MainLoop.h"
#include "Linux/WaitFor.h"

#include <string>
#include <thread>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

using namespace std::chrono_literals;

TEST(MainLoop, RunsATaskOnTheNextTurnNotAtOnce) {
  std::string order;
  MainLoop().runSoon([&] { order += "soon "; });
  order += "now ";
  EXPECT_TRUE(waitFor([&] { return order == "now soon "; }));
}

TEST(MainLoop, BringsTasksFromOtherThreadsToTheMainThread) {
  const auto mainThread = std::this_thread::get_id();
  std::thread::id ranOn;
  std::thread([&] { MainLoop().runSoon([&] { ranOn = std::this_thread::get_id(); }); }).join();
  EXPECT_TRUE(waitFor([&] { return ranOn == mainThread; }));
}

TEST(MainLoop, RunsADelayedTaskOnceAndNotTooEarly) {
  const auto start = std::chrono::steady_clock::now();
  std::chrono::steady_clock::duration after{};
  int runs = 0;
  MainLoop().runAfter(30ms, [&] {
    ++runs;
    after = std::chrono::steady_clock::now() - start;
  });
  EXPECT_TRUE(waitFor([&] { return runs == 1; }));
  EXPECT_GE(after, 29ms);
}

TEST(MainLoop, RepeatsATask) {
  auto runs = std::make_shared<int>(0);
  MainLoop().repeatEvery(1s, 10s, [runs] { ++*runs; });
  EXPECT_TRUE(waitFor([&] { return *runs >= 2; }));
}

TEST(ChangeCoalescer, MakesOneCallOfABurst) {
  int calls = 0;
  ChangeCoalescer changes([&] { ++calls; });
  for (int i = 0; i < 1000; ++i) changes.changed();
  EXPECT_EQ(calls, 0);
  EXPECT_TRUE(waitFor([&] { return calls == 1; }));
  changes.changed();
  EXPECT_TRUE(waitFor([&] { return calls == 2; }));
}

TEST(ChangeCoalescer, CallsNowAndThenDuringABurstWithoutEnd) {
  int calls = 0;
  ChangeCoalescer changes([&] { ++calls; });
  EXPECT_TRUE(waitFor([&] {
    changes.changed();
    return calls == 2;
  }));
}

}  // namespace
}  // namespace lumora::test
