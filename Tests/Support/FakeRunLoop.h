// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/RunLoop.h"
#include "Support/FakeClock.h"
#include "Support/Recorder.h"

#include <algorithm>
#include <chrono>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace lumora::test {

/// Runs its tasks when the test says so, on the test's thread, and takes the clock along.
class FakeRunLoop final : public RunLoop {
 public:
  explicit FakeRunLoop(FakeClock& clock, Recorder* recorder = nullptr)
      : clock_(clock), recorder_(recorder) {}

  void repeatEvery(std::chrono::seconds interval, std::chrono::seconds tolerance,
                   std::function<void()> task) override {
    record(recorder_, "every " + std::to_string(interval.count()) + " s within " +
                          std::to_string(tolerance.count()) + " s");
    timers_.push_back({elapsed_ + interval, interval, std::move(task)});
  }

  void runAfter(std::chrono::milliseconds delay, std::function<void()> task) override {
    record(recorder_, "after " + std::to_string(delay.count()) + " ms");
    timers_.push_back({elapsed_ + delay, {}, std::move(task)});
  }

  void runSoon(std::function<void()> task) override {
    const std::scoped_lock lock(mutex_);
    soon_.push_back(std::move(task));
  }

  /// Runs what is to run on the next turn, and what that asks for in its turn.
  void drain() {
    while (const auto task = nextSoon()) task();
  }

  /// Lets `duration` pass and runs all that falls due, each task at its time.
  void advance(std::chrono::milliseconds duration) {
    const auto end = elapsed_ + duration;
    drain();
    while (true) {
      const auto next = std::min_element(
          timers_.begin(), timers_.end(),
          [](const auto& left, const auto& right) { return left.due < right.due; });
      if (next == timers_.end() || next->due > end) break;
      passUntil(next->due);
      const auto task = next->task;
      if (next->interval.count() == 0) {
        timers_.erase(next);
      } else {
        next->due += next->interval;
      }
      task();
      drain();
    }
    passUntil(end);
  }

 private:
  struct Timer {
    std::chrono::milliseconds due;
    std::chrono::milliseconds interval;  // 0: runs once
    std::function<void()> task;
  };

  void passUntil(std::chrono::milliseconds moment) {
    clock_.time += moment - elapsed_;
    elapsed_ = moment;
  }

  std::function<void()> nextSoon() {
    const std::scoped_lock lock(mutex_);
    if (soon_.empty()) return nullptr;
    auto task = std::move(soon_.front());
    soon_.pop_front();
    return task;
  }

  FakeClock& clock_;
  Recorder* recorder_;
  std::chrono::milliseconds elapsed_{0};
  std::vector<Timer> timers_;
  std::mutex mutex_;
  std::deque<std::function<void()>> soon_;
};

}  // namespace lumora::test
