// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Content/ChartPoints.h"

#include <algorithm>

namespace lumora {
namespace {

constexpr std::size_t kAllUpTo = 299;
constexpr std::size_t kAbout = 300;
// What a skipped sample adds to the gap: samples come every minute.
constexpr double kGapPerStride = 60;

}  // namespace

std::vector<ChartPoint> chartPoints(std::span<const Sample> samples) {
  const std::size_t stride = samples.size() <= kAllUpTo ? 1 : samples.size() / kAbout;
  const double gap = static_cast<double>(stride) * kGapPerStride + kLongestKnownSpan;

  std::vector<ChartPoint> points;
  points.reserve(samples.size() / stride + 2);
  std::int64_t segment = 0;
  const auto keep = [&](std::size_t index) {
    const Sample& sample = samples[index];
    const Date date = dateSince1970(sample.t);
    if (!points.empty() && (date - points.back().date).count() > gap) ++segment;
    points.push_back({static_cast<std::int64_t>(index), date, sample.p, segment, sample.c});
  };
  for (std::size_t index = 0; index < samples.size(); index += stride) keep(index);
  if (!samples.empty() && (samples.size() - 1) % stride != 0) keep(samples.size() - 1);
  return points;
}

std::vector<ChargingSpan> chargingSpans(std::span<const ChartPoint> points) {
  std::vector<ChargingSpan> spans;
  for (std::size_t i = 1; i < points.size(); ++i) {
    const ChartPoint& from = points[i - 1];
    const ChartPoint& to = points[i];
    // Where the clock was set back, the next point is no end.
    if (!from.charging || from.seg != to.seg || to.date <= from.date) continue;
    if (!spans.empty() && spans.back().to == from.date) {
      spans.back().to = to.date;
    } else {
      spans.push_back({from.date, to.date});
    }
  }
  return spans;
}

std::vector<std::int64_t> chartThresholds(const Prefs& prefs) {
  std::vector<std::int64_t> thresholds;
  if (prefs.limitEnabled) thresholds.push_back(prefs.limit);
  if (prefs.lowEnabled) thresholds.push_back(prefs.low);
  // Any number may stand in the file.
  std::erase_if(thresholds, [](std::int64_t percent) { return percent < 0 || percent > 100; });
  return thresholds;
}

const ChartPoint* nearestPoint(const std::vector<ChartPoint>& points, Date date) {
  const auto distance = [date](const ChartPoint& point) {
    return point.date > date ? point.date - date : date - point.date;
  };
  const auto nearest = std::min_element(points.begin(), points.end(),
                                        [&](const ChartPoint& left, const ChartPoint& right) {
                                          return distance(left) < distance(right);
                                        });
  return nearest == points.end() ? nullptr : &*nearest;
}

}  // namespace lumora
