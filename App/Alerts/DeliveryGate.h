// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/Date.h"
#include "Battery/BatteryState.h"
#include "Preferences/AlertKind.h"

#include <array>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>

namespace lumora {

/// Keeps slips of plug and battery from becoming reminders; what is shown and recorded is not its
/// business. Two rules, and at rest neither has a say:
/// - Hold (debounce): a battery that falls to 0 % from above 5 % is doubted for 55 seconds, because
///   controllers that are busy say so. Until then no reminder is decided on: nothing begins, ends
///   or is used up. So a low battery is told within a minute, also when the fall is real.
/// - Rate limit: while the plug is restless, moved for the third time within two minutes, a kind of
///   reminder that last came less than five minutes ago is dropped: it counts as told. So each kind
///   is told as if the plug had moved once, at once, and again only after five minutes without it.
///
/// Times are of `Clock::sinceBoot`: a clock that is set changes nothing.
class DeliveryGate {
 public:
  /// Takes each reading, in order.
  void take(const BatteryState& reading, Seconds uptime);

  /// How long reminders wait from now on; 0: no longer. At most 55 seconds.
  Seconds holdLeft(Seconds uptime) const;

  /// Whether a reminder that is due now goes out. Ask once for each.
  bool admit(AlertKind kind, Seconds uptime);

 private:
  static constexpr Seconds kNever{-std::numeric_limits<double>::infinity()};

  bool isRestless(Seconds uptime) const;

  std::optional<bool> pluggedIn_;
  std::array<Seconds, 3> moves_{kNever, kNever, kNever};  ///< Of the plug; the last one last.
  std::optional<std::int64_t> percent_;
  std::optional<Seconds> fellAt_;  ///< When it fell to the 0 % that it still says.
  std::map<AlertKind, Seconds> lastCame_;
};

}  // namespace lumora
