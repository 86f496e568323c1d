// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Date.h"

#include <array>
#include <cstdint>

namespace lumora {

/// A number the user sets in steps of one. A stored value may lie outside the range.
struct StepRange {
  std::int64_t least = 0;
  std::int64_t most = 0;

  bool canStepUp(std::int64_t value) const { return value < most; }
  bool canStepDown(std::int64_t value) const { return value > least; }

  std::int64_t nearest(std::int64_t value) const;

  /// The next value; from outside the range, its nearer end.
  std::int64_t stepUp(std::int64_t value) const;
  std::int64_t stepDown(std::int64_t value) const;
};

/// The minutes after midnight that a time picker shows for a stored number of them: the same,
/// unless the clocks skip that time today. Outside 0 to 1439 it is the time of day at `now`.
std::int64_t shownMinutes(std::int64_t stored, Date now);

inline constexpr const char* kDefaultSoundName = "default";
inline constexpr const char* kNoSoundName = "none";

/// The sounds that can be chosen, as they are shown and stored.
inline constexpr std::array kSoundNames = {"Glass", "Ping", "Hero",   "Submarine", "Funk",
                                           "Basso", "Blow", "Bottle", "Frog",      "Morse",
                                           "Pop",   "Purr", "Sosumi", "Tink"};

}  // namespace lumora
