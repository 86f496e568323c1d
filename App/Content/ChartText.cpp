// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Content/ChartText.h"

#include "Base/NumberText.h"
#include "Base/Texts.h"
#include "Base/TimeText.h"
#include "Battery/BatteryState.h"
#include "Content/PopoverContent.h"

#include <algorithm>

namespace lumora {
namespace {

std::string sentences(std::string_view first, std::string_view second) {
  return filled(translatedIn("screen reader", "%1$s. %2$s"), {first, second});
}

}  // namespace

std::string pointText(const ChartPoint& point, int days) {
  std::string moment = timeOfDayText(point.date);
  if (days > 1) {
    // TRANSLATORS: A moment of the last seven days: %1$s is the abbreviated weekday ("Mon"), %2$s
    // the time of day ("14:35").
    moment = filled(translatedIn("moment", "%1$s %2$s"), {weekdayText(point.date), moment});
  }
  // TRANSLATORS: What the battery did at a moment that is pointed at in the chart, as short as can
  // be: "14:35 · 80% · Charging".
  const char* state = point.charging ? translatedIn("chart", "Charging")
                                     // TRANSLATORS: As above: "14:35 · 80% · Not charging".
                                     : translatedIn("chart", "Not charging");
  return joined(joined(moment, percentText(point.pct)), state);
}

std::string chartText(std::span<const ChartPoint> points, int days) {
  if (points.empty()) return "";
  const auto [least, most] = std::minmax_element(
      points.begin(), points.end(),
      [](const ChartPoint& one, const ChartPoint& other) { return one.pct < other.pct; });
  std::string text =
      sentences(pointText(points.back(), days),
                joined(translatedIn("table", "Range"), percentRangeText(least->pct, most->pct)));
  Seconds charging{0};
  for (const ChargingSpan& span : chargingSpans(points)) charging += span.to - span.from;
  if (const auto minutes = static_cast<std::int64_t>(charging.count() / 60); minutes >= 1) {
    text = sentences(text, joined(translatedIn("table", "Charging"), formatMinutes(minutes)));
  }
  return text;
}

}  // namespace lumora
