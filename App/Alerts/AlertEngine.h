// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Alerts/PendingAlert.h"
#include "Base/Date.h"
#include "Battery/BatteryState.h"
#include "Preferences/AlertKind.h"
#include "Preferences/Prefs.h"

#include <cstdint>
#include <optional>
#include <set>
#include <vector>

namespace lumora {

class DefaultsStore;

/// Decides which reminders are due. Each kind goes through episodes: its condition turns true, it
/// reminds once (the charge limit repeats up to three times), and the condition turning false makes
/// it ready again. Nothing but "healthAlertSent" in the defaults store outlives the process.
struct AlertEngine {
  std::set<AlertKind> suppressed;  ///< In force when primed: silent until once out of force.
  std::int64_t chargeSent = 0;     ///< Charge-limit reminders of this episode.
  Date chargeLast = kDistantPast;  ///< When the last of them was produced.
  bool lowSent = false;
  bool longSent = false;
  bool lowPowerSent = false;

  struct Input {
    const BatteryState& state;
    std::optional<Date> since;  ///< Plugged in since; absent when unknown or on battery.
    Date now;
    const Prefs& prefs;
    bool canDeliver = false;  ///< False defers what is due: it is not used up.
    bool prime = false;       ///< Records what is in force already and reminds of nothing.
  };

  /// The reminders to deliver now, in the order chargeLimit, low, lowPower, tooLong, health.
  std::vector<PendingAlert> run(const Input& input, DefaultsStore& defaults);

  /// Whether a reminder of this kind, once it went out, is still right: its condition holds, and
  /// was not found holding when primed since. `canDeliver` and `prime` have no say.
  bool stillSo(AlertKind kind, const Input& input) const;

  bool operator==(const AlertEngine&) const = default;

 private:
  void arm(AlertKind kind, bool inForce, bool prime);
  void endEpisode(AlertKind kind);
};

}  // namespace lumora
