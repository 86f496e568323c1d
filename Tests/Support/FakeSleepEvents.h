// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/SleepEvents.h"
#include "Support/Recorder.h"

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace lumora::test {

class FakeSleepEvents final : public SleepEvents {
 public:
  explicit FakeSleepEvents(Recorder* recorder = nullptr) : recorder_(recorder) {}

  void observe(std::function<void()> willSleep, std::function<void()> didWake) override {
    record(recorder_, "observe sleep");
    observers_.emplace_back(std::move(willSleep), std::move(didWake));
  }

  std::shared_ptr<const void> hold() override { return lock_; }

  void sleep() {
    lock_ = std::make_shared<int>();
    held_ = lock_;
    for (const auto& observer : observers_) observer.first();
    lock_.reset();
  }

  /// Whether the machine still waits before it falls asleep.
  bool isHeld() const { return !held_.expired(); }

  void wake() {
    for (const auto& observer : observers_) observer.second();
  }

 private:
  Recorder* recorder_;
  std::shared_ptr<const void> lock_;
  std::weak_ptr<const void> held_;
  std::vector<std::pair<std::function<void()>, std::function<void()>>> observers_;
};

}  // namespace lumora::test
