// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/LowPowerMode.h"
#include "Support/Recorder.h"

#include <functional>
#include <utility>
#include <vector>

namespace lumora::test {

class FakeLowPowerMode final : public LowPowerMode {
 public:
  explicit FakeLowPowerMode(Recorder* recorder = nullptr) : recorder_(recorder) {}

  bool isEnabled() const override {
    record(recorder_, "low power mode");
    return enabled;
  }

  void observe(std::function<void()> changed) override {
    record(recorder_, "observe low power mode");
    observers_.push_back(std::move(changed));
  }

  /// Switches the mode and tells all observers.
  void change(bool on) {
    enabled = on;
    for (const auto& changed : observers_) changed();
  }

  bool enabled = false;

 private:
  Recorder* recorder_;
  std::vector<std::function<void()>> observers_;
};

}  // namespace lumora::test
