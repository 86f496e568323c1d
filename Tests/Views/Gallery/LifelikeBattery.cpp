// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Gallery/LifelikeBattery.h"

#include "Base/LocalTime.h"

#include <algorithm>

namespace lumora::test {

Dictionary onBattery() {
  return {{"CycleCount", 412},
          {"DesignCapacity", 50'000},
          {"MaxCapacity", 43'500},
          {"Temperature", 3140},
          {"Voltage", 12'000},
          {"Amperage", -1135},
          {"AdapterDetails", Dictionary{{"Watts", 96}}}};
}

Dictionary charging() {
  return {{"Power Source State", "AC Power"}, {"Is Charging", true}, {"Time to Full Charge", 72}};
}

std::vector<Sample> lifelikeWeek() {
  constexpr double kMinute = 60;
  constexpr int kDayMinutes = 24 * 60;
  std::vector<Sample> samples;
  double percent = 78;
  for (int age = kWeekMinutes; age >= 0; --age) {
    const Date moment = kNow - Seconds(age * kMinute);
    const auto minute = static_cast<int>(minutesAfterMidnight(moment));
    const int day = age / kDayMinutes;
    const bool charging = minute >= 19 * 60 && minute < 19 * 60 + 180 - 10 * day;
    const bool asleep = minute < 7 * 60 + 11 * day || minute > 22 * 60 + 13 * day ||
                        (minute > 12 * 60 && minute < 12 * 60 + 25 + 5 * day);
    if (asleep) continue;
    percent = std::clamp(percent + (charging ? 0.45 : -0.09), 4.0, 100.0);
    samples.push_back(
        {secondsSince1970(moment), static_cast<std::int64_t>(percent), charging, charging});
  }
  return samples;
}

}  // namespace lumora::test
