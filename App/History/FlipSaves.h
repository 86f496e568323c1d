// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/Date.h"

#include <algorithm>

namespace lumora {

/// Rate limit (a token bucket) of the saves of the history because the machine was plugged in or
/// out or charging began or ended: three at once, and then one every 60 seconds. A loose plug flips
/// every few seconds, and each save writes megabytes.
class FlipSaves {
 public:
  /// Whether there is one at `now`, which it then takes.
  bool take(Date now) {
    left_ = leftAt(now);
    countedAt_ = now;
    if (left_ < 1) return false;
    left_ -= 1;
    return true;
  }

  /// One that must be, whether there is one or not: the next must wait longer.
  void takeInAdvance(Date now) {
    left_ = leftAt(now) - 1;
    countedAt_ = now;
  }

  /// The clock was set by so much.
  void clockWasSet(Seconds by) { countedAt_ += by; }

 private:
  static constexpr double kMost = 3;
  static constexpr double kPerSecond = 1.0 / 60;

  /// None come while the clock is set back.
  double leftAt(Date now) const {
    const double passed = std::max(0.0, (now - countedAt_).count());
    return std::min(kMost, left_ + passed * kPerSecond);
  }

  double left_ = kMost;
  Date countedAt_ = kDistantPast;
};

}  // namespace lumora
