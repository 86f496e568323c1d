// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/Date.h"
#include "History/Sample.h"
#include "Preferences/Prefs.h"

#include <cstdint>
#include <span>
#include <vector>

namespace lumora {

/// One point of the history chart.
struct ChartPoint {
  std::int64_t id = 0;  ///< Index of its sample in the list.
  Date date;
  std::int64_t pct = 0;  ///< Charge level, percent.
  std::int64_t seg = 0;  ///< Points of one segment are joined by a line, counted from 0.
  bool charging = false;

  bool operator==(const ChartPoint&) const = default;
};

/// A time during which the battery was being charged.
struct ChargingSpan {
  Date from;
  Date to;  ///< After `from`.

  bool operator==(const ChargingSpan&) const = default;
};

/// The points to draw: all samples, or every so many of them so that about 300 remain, and always
/// the last. A gap begins a new segment.
std::vector<ChartPoint> chartPoints(std::span<const Sample> samples);

/// When it charged: from each point that says so to the next one of its segment.
std::vector<ChargingSpan> chargingSpans(std::span<const ChartPoint> points);

/// The percents that the chart marks: the charge limit and what counts as low, where the user is
/// reminded of them.
std::vector<std::int64_t> chartThresholds(const Prefs& prefs);

/// The point nearest to a moment; null without points.
const ChartPoint* nearestPoint(const std::vector<ChartPoint>& points, Date date);

/// Where the chart puts a moment and a percent inside its plotting area, and back. Pixels count
/// from the area's left and top edge.
struct ChartScale {
  Date from;          ///< At the left edge.
  Date to;            ///< At the right edge; after `from`.
  double width = 0;   ///< Pixels, above 0.
  double height = 0;  ///< Pixels, above 0: from 100 % at the top to 0 %.

  double x(Date date) const { return (date - from) / (to - from) * width; }
  double y(double percent) const { return (100 - percent) / 100 * height; }
  Date date(double pixel) const { return from + (to - from) * (pixel / width); }
  double percent(double pixel) const { return 100 - pixel / height * 100; }
};

}  // namespace lumora
