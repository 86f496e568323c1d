// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Month.h"

namespace lumora::benchmark {

std::vector<Sample> monthOfSamples(Date end) {
  constexpr int kMinutes = 30 * 24 * 60;
  constexpr int kHalfCycle = 360;
  std::vector<Sample> samples;
  samples.reserve(kMinutes);
  for (int minute = 0; minute < kMinutes; ++minute) {
    const int phase = minute % (2 * kHalfCycle);
    const bool charging = phase < kHalfCycle;
    const int level = charging ? phase : 2 * kHalfCycle - phase;
    // Timers come a little late, and the clock has fractions.
    const double time = secondsSince1970(end) - 60.0 * (kMinutes - 1 - minute) - 1e-7 * phase;
    samples.push_back({time, 20 + level * 80 / kHalfCycle, charging, charging});
  }
  return samples;
}

}  // namespace lumora::benchmark
