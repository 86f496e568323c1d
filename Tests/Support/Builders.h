// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Alerts/PendingAlert.h"
#include "Base/Date.h"
#include "Base/Value.h"
#include "Battery/BatteryState.h"

#include <cstdint>
#include <string>
#include <vector>

namespace lumora::test {

inline BatteryState onBattery(std::int64_t percent) {
  BatteryState state;
  state.hasBattery = true;
  state.percent = percent;
  return state;
}

/// On the adapter, not charging.
inline BatteryState pluggedIn(std::int64_t percent) {
  BatteryState state = onBattery(percent);
  state.pluggedIn = true;
  return state;
}

inline BatteryState charging(std::int64_t percent) {
  BatteryState state = pluggedIn(percent);
  state.isCharging = true;
  return state;
}

/// The state, in which the battery holds `full` of `design`.
inline BatteryState withCapacity(BatteryState state, std::int64_t full, std::int64_t design) {
  state.fullCapacity = full;
  state.designCapacity = design;
  return state;
}

/// A power source from which the reader makes `onBattery(percent)`.
inline Dictionary batterySource(int percent) {
  return {{"Type", "InternalBattery"},
          {"Current Capacity", percent},
          {"Max Capacity", 100},
          {"Power Source State", "Battery Power"}};
}

/// A power source from which the reader makes `pluggedIn(percent)`.
inline Dictionary pluggedInSource(int percent) {
  Dictionary source = batterySource(percent);
  source.insert_or_assign("Power Source State", "AC Power");
  return source;
}

/// A moment of the calendar in UTC.
inline Date utc(int year, unsigned month, unsigned day, int hour, int minute, double second = 0) {
  const std::chrono::sys_days midnight{std::chrono::year{year} / std::chrono::month{month} /
                                       std::chrono::day{day}};
  return midnight + std::chrono::hours{hour} + std::chrono::minutes{minute} + Seconds{second};
}

/// The kinds in their order, as in "chargeLimit health".
inline std::string kinds(const std::vector<PendingAlert>& alerts) {
  std::string names;
  for (const auto& alert : alerts) {
    if (!names.empty()) names += ' ';
    names += rawValue(alert.kind);
  }
  return names;
}

}  // namespace lumora::test
