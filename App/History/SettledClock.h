// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/Date.h"

#include <chrono>

namespace lumora {

/// Whether the clock has gone on for an hour without a jump of more than an hour, in either
/// direction. After one it may be wrong for some seconds (an empty battery of its own, another
/// system on the same machine), or the machine slept: from the dates alone nobody can tell.
class SettledClock {
 public:
  explicit SettledClock(Date now) : last_(now) {}

  /// Call it with each new date.
  void tick(Date now) {
    const auto step = now - last_;
    if (step > kHour || step < -kHour) since_ = now;
    last_ = now;
  }

  bool isSettled() const { return last_ - since_ >= kHour; }

 private:
  static constexpr Seconds kHour{3600};

  Date since_ = kDistantPast;
  Date last_;
};

}  // namespace lumora
