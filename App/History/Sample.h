// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace lumora {

/// One record of the charge history. The fields are named as in the file.
struct Sample {
  double t = 0;        ///< Seconds since 1970-01-01 00:00 UTC, fractional.
  std::int64_t p = 0;  ///< Charge level in percent.
  bool c = false;      ///< Charging.
  bool a = false;      ///< On the adapter.

  bool operator==(const Sample&) const = default;
};

/// Seconds between two samples beyond which nothing is known of the time between them: the machine
/// slept, or Lumora did not run.
inline constexpr double kLongestKnownSpan = 900;

}  // namespace lumora
