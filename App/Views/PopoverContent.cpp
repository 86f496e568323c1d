// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/PopoverContent.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace lumora {
namespace {

/// As C's "%.*f" writes it, whatever the locale: halves by the digits that the number really has.
std::string decimal(double value, int decimals) {
  std::array<char, 340> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value,
                                 std::chars_format::fixed, decimals);
  return {text.data(), end.ptr};
}

Tint ringTint(const BatteryState& state) {
  if (!state.pluggedIn && state.percent <= 20) return Tint::red;
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
  return CycleBar{std::to_string(count) + " of " + std::to_string(CycleBar::kTotal),
                  std::min(count, CycleBar::kTotal), cycleTint(count)};
}

Tint healthTint(double health) {
  if (health > 90) return Tint::green;
  return health >= 80 ? Tint::orange : Tint::red;
}

/// Whole minutes of a time that has passed; none of one to come, and for any moments a number.
std::int64_t minutesBetween(Date from, Date to) {
  constexpr double kMost = 9.0e15;
  return static_cast<std::int64_t>(std::clamp((to - from).count() / 60, 0.0, kMost));
}

std::optional<DetailRow> healthRow(const BatteryState& state) {
  const auto label = state.healthLabel();
  if (!label) return std::nullopt;
  const double health =
      static_cast<double>(*state.fullCapacity) / static_cast<double>(*state.designCapacity) * 100;
  return DetailRow{"Battery health", decimal(health, 0) + "% · " + *label, healthTint(health)};
}

std::optional<DetailRow> temperatureRow(const BatteryState& state) {
  if (!state.temperatureC) return std::nullopt;
  return DetailRow{"Temperature", decimal(*state.temperatureC, 1) + " °C", std::nullopt};
}

std::optional<DetailRow> powerRow(const BatteryState& state) {
  constexpr double kLeastWatts = 0.1;
  if (!state.voltage || !state.amperage) return std::nullopt;
  const double watts = *state.voltage * *state.amperage;
  if (!(std::abs(watts) >= kLeastWatts)) return std::nullopt;
  return DetailRow{watts > 0 ? "Power in" : "Power out", decimal(std::abs(watts), 1) + " W",
                   std::nullopt};
}

std::optional<DetailRow> adapterRow(const BatteryState& state) {
  if (!state.pluggedIn || !state.adapterWatts) return std::nullopt;
  return DetailRow{"Adapter", std::to_string(*state.adapterWatts) + " W", std::nullopt};
}

}  // namespace

std::optional<BatteryContent> batteryContent(const BatteryState& state,
                                             std::optional<Date> pluggedSince,
                                             std::optional<Date> snoozeUntil, Date now,
                                             const FormatDate& formatTime) {
  if (!state.hasBattery) return std::nullopt;
  BatteryContent content{.percent = state.percent,
                         .ringTint = ringTint(state),
                         .stateText = state.stateText(),
                         .cycles = cycleBar(state)};
  if (pluggedSince) {
    content.pluggedInFor = "Plugged in for " + formatMinutes(minutesBetween(*pluggedSince, now));
  }
  if (snoozeUntil) content.snoozedUntil = "Alerts snoozed until " + formatTime(*snoozeUntil);
  for (auto& row : {healthRow(state), temperatureRow(state), powerRow(state), adapterRow(state)}) {
    if (row) content.details.push_back(*row);
  }
  return content;
}

std::vector<DayRow> dayRows(const std::vector<DaySummary>& summaries, const FormatDate& formatDay) {
  constexpr const char* kEnDash = "–";
  std::vector<DayRow> rows;
  rows.reserve(summaries.size());
  for (const DaySummary& summary : summaries) {
    rows.push_back({.day = formatDay(summary.day),
                    .average = std::to_string(summary.avgPercent) + "%",
                    .range = std::to_string(summary.minPercent) + kEnDash +
                             std::to_string(summary.maxPercent) + "%",
                    .charging = summary.chargingMinutes >= 1
                                    ? formatMinutes(summary.chargingMinutes)
                                    : kEnDash});
  }
  return rows;
}

}  // namespace lumora
