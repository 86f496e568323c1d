// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/Date.h"

#include <cstdint>

namespace lumora {

/// One calendar day of the charge history.
struct DaySummary {
  Date day;                     ///< Start of the day, local time.
  std::int64_t avgPercent = 0;  ///< Mean over the time covered by samples.
  std::int64_t minPercent = 0;
  std::int64_t maxPercent = 0;
  std::int64_t chargingMinutes = 0;  ///< Whole minutes.

  bool operator==(const DaySummary&) const = default;
};

}  // namespace lumora
