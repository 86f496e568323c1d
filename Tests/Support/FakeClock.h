// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Clock.h"
#include "Support/Recorder.h"

namespace lumora::test {

/// Stands still until the test sets it.
class FakeClock final : public Clock {
 public:
  explicit FakeClock(Recorder* recorder = nullptr) : recorder_(recorder) {}

  Date now() const override {
    record(recorder_, "now");
    return time;
  }

  Seconds sinceBoot() const override { return time - booted_; }

  /// Somebody sets the wall clock, forward or back.
  void set(Seconds forward) {
    time += forward;
    booted_ += forward;
  }

  Date time = dateSince1970(1'700'000'000);

 private:
  Date booted_ = dateSince1970(1'699'999'000);
  Recorder* recorder_;
};

}  // namespace lumora::test
