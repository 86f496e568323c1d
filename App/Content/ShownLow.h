// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Battery/BatteryState.h"

#include <cstdint>

namespace lumora {

/// The percent from which on downwards a battery that nothing charges is shown as low. It is not
/// the threshold of the low-battery reminder, which the user sets.
inline constexpr std::int64_t kShownLowPercent = 20;

/// Whether the popover's ring and the icon in the tray warn. Only for a state with a battery.
inline bool isShownLow(const BatteryState& state) {
  return !state.pluggedIn && state.percent <= kShownLowPercent;
}

}  // namespace lumora
