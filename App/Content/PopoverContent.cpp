// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Content/PopoverContent.h"

#include "Base/NumberText.h"
#include "Base/Texts.h"
#include "Base/TimeText.h"
#include "Content/ShownLow.h"

#include <algorithm>
#include <cmath>

namespace lumora {
namespace {

Tint ringTint(const BatteryState& state) {
  if (isShownLow(state)) return Tint::red;
  if (state.isCharging || state.isCharged) return Tint::green;
  if (state.pluggedIn && state.percent >= 100) return Tint::green;
  return Tint::accent;
}

Tint cycleTint(std::int64_t count) {
  if (count >= 901) return Tint::red;
  return count >= 701 ? Tint::orange : Tint::accent;
}

std::optional<CycleBar> cycleBar(const BatteryState& state) {
  if (!state.cycleCount) return std::nullopt;
  const std::int64_t count = *state.cycleCount;
  // TRANSLATORS: Charge cycles so far, and how many the battery is built for: "412 of 1000".
  return CycleBar{filled(translatedIn("cycle count", "%1$s of %2$s"),
                         {numberText(count), numberText(CycleBar::kTotal)}),
                  std::min(count, CycleBar::kTotal), cycleTint(count)};
}

Tint healthTint(double health) {
  if (health > 90) return Tint::green;
  return health >= kWornBelowPercent ? Tint::orange : Tint::red;
}

/// Whole minutes of a time that has passed; none of one to come, and for any moments a number.
std::int64_t minutesBetween(Date from, Date to) {
  constexpr double kMost = 9.0e15;
  return static_cast<std::int64_t>(std::clamp((to - from).count() / 60, 0.0, kMost));
}

std::optional<DetailRow> healthRow(const BatteryState& state) {
  const auto health = state.healthPercent();
  if (!health) return std::nullopt;
  return DetailRow{translated("Battery health"),
                   joined(percentText(decimalText(*health, 0)), *state.healthLabel()),
                   healthTint(*health)};
}

std::optional<DetailRow> temperatureRow(const BatteryState& state) {
  if (!state.temperatureC) return std::nullopt;
  // TRANSLATORS: Degrees Celsius: "31.4 °C". The blank may be one that does not break, U+00A0.
  const char* degrees = translated("%1$s °C");
  return DetailRow{translated("Temperature"),
                   filled(degrees, {decimalText(*state.temperatureC, 1)}), std::nullopt};
}

std::string wattsText(const std::string& number) {
  // TRANSLATORS: Watts: "25.2 W". The blank may be one that does not break, U+00A0.
  return filled(translated("%1$s W"), {number});
}

std::optional<DetailRow> powerRow(const BatteryState& state) {
  constexpr double kLeastWatts = 0.1;
  if (!state.voltage || !state.amperage) return std::nullopt;
  const double watts = *state.voltage * *state.amperage;
  if (!(std::abs(watts) >= kLeastWatts)) return std::nullopt;
  // TRANSLATORS: What flows into the battery, in watts.
  return DetailRow{watts > 0 ? translated("Power in")
                             // TRANSLATORS: What flows out of the battery, in watts.
                             : translated("Power out"),
                   wattsText(decimalText(std::abs(watts), 1)), std::nullopt};
}

std::optional<DetailRow> adapterRow(const BatteryState& state) {
  if (!state.pluggedIn || !state.adapterWatts) return std::nullopt;
  // TRANSLATORS: The power adapter, the charger; after it come the watts it is rated for.
  return DetailRow{translated("Adapter"), wattsText(numberText(*state.adapterWatts)), std::nullopt};
}

}  // namespace

std::string percentRangeText(std::int64_t least, std::int64_t most) {
  // TRANSLATORS: From the lowest to the highest charge of a day, "41–80"; the percent sign is
  // added to it.
  return percentText(
      filled(translatedIn("range of numbers", "%1$s–%2$s"), {numberText(least), numberText(most)}));
}

std::optional<BatteryContent> batteryContent(const BatteryState& state,
                                             std::optional<Date> pluggedSince,
                                             std::optional<Date> snoozeUntil, Date now) {
  if (!state.hasBattery) return std::nullopt;
  BatteryContent content{.percent = state.percent,
                         .ringTint = ringTint(state),
                         .stateText = state.stateText(),
                         .cycles = cycleBar(state)};
  if (pluggedSince) {
    // TRANSLATORS: %1$s is a duration, "1 h 5 min".
    content.pluggedInFor = filled(translated("Plugged in for %1$s"),
                                  {formatMinutes(minutesBetween(*pluggedSince, now))});
  }
  if (snoozeUntil) {
    // TRANSLATORS: %1$s is a time of day, "14:35".
    const char* snoozed = translated("Alerts snoozed until %1$s");
    content.snoozedUntil = filled(snoozed, {timeOfDayText(*snoozeUntil)});
  }
  for (auto& row : {healthRow(state), temperatureRow(state), powerRow(state), adapterRow(state)}) {
    if (row) content.details.push_back(*row);
  }
  return content;
}

std::vector<DayRow> dayRows(std::span<const DaySummary> summaries, std::size_t most) {
  constexpr const char* kNone = "–";
  std::vector<DayRow> rows;
  for (const DaySummary& summary : summaries.last(std::min(summaries.size(), most))) {
    rows.push_back({.day = dayText(summary.day),
                    .average = percentText(summary.avgPercent),
                    .range = percentRangeText(summary.minPercent, summary.maxPercent),
                    .charging = summary.chargingMinutes >= 1
                                    ? formatMinutes(summary.chargingMinutes)
                                    : kNone});
  }
  return rows;
}

}  // namespace lumora
