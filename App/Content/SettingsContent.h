// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/Date.h"

#include <cstdint>

namespace lumora {

/// A number the user sets in steps of one. A stored value may lie outside the range.
struct StepRange {
  std::int64_t least = 0;
  std::int64_t most = 0;

  bool canStepUp(std::int64_t value) const { return value < most; }
  bool canStepDown(std::int64_t value) const { return value > least; }

  /// The value itself within the range, else its nearer end.
  std::int64_t nearest(std::int64_t value) const;

  /// The value so many steps up, or down for a negative number, and within the range. From outside
  /// the range the first step goes to its nearer end, and none leads further away.
  std::int64_t stepBy(std::int64_t value, std::int64_t steps) const;
  std::int64_t stepUp(std::int64_t value) const { return stepBy(value, 1); }
  std::int64_t stepDown(std::int64_t value) const { return stepBy(value, -1); }
};

/// The minutes after midnight that a time picker shows for a stored number of them: the same,
/// unless the clocks skip that time today. Outside 0 to 1439 it is the time of day at `now`.
std::int64_t shownMinutes(std::int64_t stored, Date now);

}  // namespace lumora
