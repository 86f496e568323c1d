// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Battery/BatteryState.h"

#include <algorithm>

namespace lumora {
namespace {

std::string levelSymbol(std::int64_t percent) {
  if (percent >= 88) return "battery.100";
  if (percent >= 63) return "battery.75";
  if (percent >= 38) return "battery.50";
  if (percent >= 13) return "battery.25";
  return "battery.0";
}

}  // namespace

std::vector<std::string> BatteryState::symbolNames() const {
  if (!hasBattery) return {"battery.0"};
  if (isCharged || (pluggedIn && !isCharging && percent >= 100)) {
    return {"battery.100percent", "battery.100"};
  }
  if (isCharging) return {"battery.100.bolt", "bolt.fill"};
  if (pluggedIn) return {"powerplug.fill", "powerplug"};
  return {levelSymbol(percent)};
}

std::optional<std::string> BatteryState::shortTime() const {
  if (!hasBattery || isCharged) return std::nullopt;
  if (pluggedIn && !isCharging) return std::nullopt;

  const auto minutes = isCharging ? minutesToFull : minutesToEmpty;
  if (!minutes) return std::nullopt;
  const std::string rest = std::to_string(*minutes % 60);
  return std::to_string(*minutes / 60) + (rest.size() < 2 ? ":0" : ":") + rest;
}

std::string BatteryState::stateText() const {
  if (!hasBattery) return "No battery found";
  if (isCharged) return "Fully charged";
  if (isCharging) {
    if (!minutesToFull) return "Charging, estimating time to full…";
    return "Charging, " + formatMinutes(*minutesToFull) + " to full";
  }
  if (pluggedIn) return percent < 100 ? "Plugged in, not charging" : "Fully charged";
  if (!minutesToEmpty) return "On battery, estimating time left…";
  return "On battery, " + formatMinutes(*minutesToEmpty) + " left";
}

std::optional<std::string> BatteryState::healthLabel() const {
  if (!designCapacity || !fullCapacity || *designCapacity < 1) return std::nullopt;
  const double health =
      static_cast<double>(*fullCapacity) / static_cast<double>(*designCapacity) * 100;
  if (health > 90) return "Good";
  return health >= 80 ? "Fair" : "Worn";
}

std::string formatMinutes(std::int64_t minutes) {
  if (minutes <= 59) return std::to_string(std::max<std::int64_t>(minutes, 1)) + " min";
  std::string hours = std::to_string(minutes / 60) + " h";
  if (minutes % 60 == 0) return hours;
  return hours + " " + std::to_string(minutes % 60) + " min";
}

}  // namespace lumora
