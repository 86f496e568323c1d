// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/Texts.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace lumora {

/// Below this percent of its design capacity a battery counts as worn.
inline constexpr std::int64_t kWornBelowPercent = 80;

/// One snapshot of the machine's battery and power source. As constructed it says that there is no
/// battery; an absent value is one the system does not know.
struct BatteryState {
  bool hasBattery = false;
  std::int64_t percent = 0;  ///< Charge level, 0 to 100.
  bool isCharging = false;
  bool pluggedIn = false;  ///< Runs on the power adapter.
  bool isCharged = false;  ///< Reported as fully charged.
  std::optional<std::int64_t> minutesToFull;
  std::optional<std::int64_t> minutesToEmpty;
  std::optional<std::string> sourceName;
  std::optional<std::int64_t> cycleCount;
  std::optional<std::int64_t> designCapacity;  ///< When new, in the battery's own unit.
  std::optional<std::int64_t> fullCapacity;    ///< Today, in the unit of `designCapacity`.
  std::optional<double> temperatureC;          ///< Degrees Celsius.
  std::optional<double> voltage;               ///< Volts.
  std::optional<double> amperage;              ///< Amperes, above zero while charging.
  std::optional<std::int64_t> adapterWatts;    ///< What the connected adapter is rated for.
  bool lowPowerMode = false;                   ///< The system saves power.

  bool operator==(const BatteryState&) const = default;

  /// Image names for the status item, the preferred one first: use the first that exists.
  std::vector<std::string> symbolNames() const;

  /// Minutes to full or to empty; absent while there are none to tell.
  std::optional<std::int64_t> minutesLeft() const;

  /// The same as hours and minutes ("2:05").
  std::optional<std::string> shortTime() const;

  /// One line that says what the power does now.
  std::string stateText() const;

  /// The battery's health: `fullCapacity` in percent of `designCapacity`, above 100 for some new
  /// ones; absent while one of them is unknown or the design capacity is below 1.
  std::optional<double> healthPercent() const;

  /// "Good" above 90 % of the design capacity, "Fair" from `kWornBelowPercent`, else "Worn"; absent
  /// without a health.
  std::optional<std::string> healthLabel() const;
};

/// A duration in words: "59 min", "1 h", "1 h 5 min". Below one minute it is "1 min".
std::string formatMinutes(std::int64_t minutes);

}  // namespace lumora
