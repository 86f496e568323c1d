// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace lumora {

/// The reminders.
enum class AlertKind {
  chargeLimit,  ///< Plugged in at or above the charge limit.
  low,          ///< On battery at or below the low threshold.
  tooLong,      ///< Plugged in above the limit for longer than the chosen hours.
  health,       ///< Battery health below 80 %.
  lowPower,     ///< On battery below the threshold, the system not saving power.
};

inline constexpr std::array kAllAlertKinds = {AlertKind::chargeLimit, AlertKind::low,
                                              AlertKind::tooLong, AlertKind::health,
                                              AlertKind::lowPower};

/// The kind's name as a text: "chargeLimit", "low", "tooLong", "health" or "lowPower".
constexpr std::string_view rawValue(AlertKind kind) {
  switch (kind) {
    case AlertKind::chargeLimit:
      return "chargeLimit";
    case AlertKind::low:
      return "low";
    case AlertKind::tooLong:
      return "tooLong";
    case AlertKind::health:
      return "health";
    case AlertKind::lowPower:
      return "lowPower";
  }
  return {};
}

/// The kind of that name; absent for any other text.
constexpr std::optional<AlertKind> alertKind(std::string_view rawText) {
  for (const AlertKind kind : kAllAlertKinds) {
    if (rawValue(kind) == rawText) return kind;
  }
  return std::nullopt;
}

}  // namespace lumora
