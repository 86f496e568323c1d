// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Battery/BatteryState.h"

#include "Base/NumberText.h"

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

std::optional<std::int64_t> BatteryState::minutesLeft() const {
  if (!hasBattery || isCharged) return std::nullopt;
  if (pluggedIn && !isCharging) return std::nullopt;
  return isCharging ? minutesToFull : minutesToEmpty;
}

std::optional<std::string> BatteryState::shortTime() const {
  const auto minutes = minutesLeft();
  if (!minutes) return std::nullopt;
  // TRANSLATORS: A duration beside the icon in the panel, in hours and minutes: "2:05". Very short.
  return filled(translatedIn("short duration", "%1$s:%2$s"),
                {numberText(*minutes / 60), twoDigitText(*minutes % 60)});
}

std::string BatteryState::stateText() const {
  if (!hasBattery) return translated("No battery found");
  if (isCharged) return translated("Fully charged");
  if (isCharging) {
    if (!minutesToFull) return translated("Charging, estimating time to full…");
    // TRANSLATORS: %1$s is a duration, "1 h 5 min".
    return filled(translated("Charging, %1$s to full"), {formatMinutes(*minutesToFull)});
  }
  if (pluggedIn) {
    return percent < 100 ? translated("Plugged in, not charging") : translated("Fully charged");
  }
  if (!minutesToEmpty) return translated("On battery, estimating time left…");
  // TRANSLATORS: %1$s is a duration, "1 h 5 min".
  return filled(translated("On battery, %1$s left"), {formatMinutes(*minutesToEmpty)});
}

std::optional<double> BatteryState::healthPercent() const {
  if (!designCapacity || !fullCapacity || *designCapacity < 1) return std::nullopt;
  return static_cast<double>(*fullCapacity) / static_cast<double>(*designCapacity) * 100;
}

std::optional<std::string> BatteryState::healthLabel() const {
  const auto health = healthPercent();
  if (!health) return std::nullopt;
  // TRANSLATORS: One of three grades of the battery's health, after a percentage: "87% · Good".
  if (*health > 90) return translatedIn("battery health", "Good");
  return *health >= kWornBelowPercent ? translatedIn("battery health", "Fair")
                                      : translatedIn("battery health", "Worn");
}

std::string formatMinutes(std::int64_t minutes) {
  const std::int64_t hours = minutes / 60;
  const std::int64_t rest = minutes <= 59 ? std::max<std::int64_t>(minutes, 1) : minutes % 60;
  // TRANSLATORS: Minutes, short; they stand alone in the table, and in "Charging, %1$s to full",
  // "On battery, %1$s left" and "Plugged in for %1$s".
  const char* inMinutes = translatedFor(rest, "%1$s min", "%1$s min");
  std::string restText = filled(inMinutes, {numberText(rest)});
  if (hours < 1) return restText;
  // TRANSLATORS: Hours, short; they stand where the minutes stand.
  const char* inHours = translatedFor(hours, "%1$s h", "%1$s h");
  std::string hoursText = filled(inHours, {numberText(hours)});
  if (rest == 0) return hoursText;
  // TRANSLATORS: A duration: %1$s is the hours, "1 h", %2$s the minutes, "5 min".
  return filled(translatedIn("hours and minutes", "%1$s %2$s"), {hoursText, restText});
}

}  // namespace lumora
