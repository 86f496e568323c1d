// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Content/ChartPoints.h"

#include <string>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

/// Samples at these seconds, their percents counted up.
std::vector<Sample> at(const std::vector<double>& seconds) {
  std::vector<Sample> samples;
  samples.reserve(seconds.size());
  for (const double second : seconds) {
    samples.push_back({second, static_cast<std::int64_t>(samples.size() % 101), false, false});
  }
  return samples;
}

std::vector<Sample> everyMinute(std::size_t count) {
  std::vector<double> seconds;
  for (std::size_t i = 0; i < count; ++i) seconds.push_back(60.0 * static_cast<double>(i));
  return at(seconds);
}

std::vector<std::int64_t> segmentsOf(const std::vector<Sample>& samples) {
  std::vector<std::int64_t> segments;
  for (const ChartPoint& point : chartPoints(samples)) segments.push_back(point.seg);
  return segments;
}

TEST(ChartPoints, AreNoneWithoutSamples) { EXPECT_TRUE(chartPoints({}).empty()); }

TEST(ChartPoints, CarryTheSamplesTimeAndPercent) {
  const std::vector<Sample> one = {{1000.5, 42, true, true}};
  EXPECT_EQ(chartPoints(one), (std::vector<ChartPoint>{{0, dateSince1970(1000.5), 42, 0, true}}));
}

TEST(ChartPoints, ThinOutSoThatAboutThreeHundredRemain) {
  struct Case {
    std::size_t samples;
    std::size_t stride;
  };
  for (const auto& [count, stride] :
       {Case{2, 1}, Case{299, 1}, Case{300, 1}, Case{599, 1}, Case{600, 2}, Case{601, 2},
        Case{899, 2}, Case{900, 3}, Case{43'200, 144}}) {
    const auto points = chartPoints(everyMinute(count));
    EXPECT_EQ(points.at(1).id, static_cast<std::int64_t>(stride)) << count;
    EXPECT_EQ(points.back().id, static_cast<std::int64_t>(count - 1)) << count;
    EXPECT_EQ(points.size(), (count - 1) / stride + 1 + ((count - 1) % stride == 0 ? 0 : 1))
        << count;
    EXPECT_EQ(points.back().seg, 0) << count;
  }
}

TEST(ChartPoints, KeepTheEvenOnesOfSixHundredAndTheLast) {
  const auto points = chartPoints(everyMinute(600));
  ASSERT_EQ(points.size(), 301U);
  EXPECT_EQ(points[299].id, 598);
  EXPECT_EQ(points[300].id, 599);
}

TEST(ChartPoints, BeginANewSegmentAfterAGap) {
  EXPECT_EQ(segmentsOf(at({0, 900})), (std::vector<std::int64_t>{0, 0}));
  EXPECT_EQ(segmentsOf(at({0, 960})), (std::vector<std::int64_t>{0, 0}));
  EXPECT_EQ(segmentsOf(at({0, 960.5})), (std::vector<std::int64_t>{0, 1}));
  EXPECT_EQ(segmentsOf(at({0, 1020, 1080, 3000})), (std::vector<std::int64_t>{0, 1, 1, 2}));
}

TEST(ChartPoints, AllowAWiderGapBetweenThinnedPoints) {
  auto samples = everyMinute(600);
  // Two minutes lie between the kept ones; the limit is 1,020 s.
  for (std::size_t i = 300; i < samples.size(); ++i) samples[i].t += 900;
  EXPECT_EQ(chartPoints(samples).back().seg, 0);
  for (std::size_t i = 300; i < samples.size(); ++i) samples[i].t += 1;
  EXPECT_EQ(chartPoints(samples).back().seg, 1);
}

TEST(ChartPoints, StayInOneSegmentWhenTheClockWasSetBack) {
  EXPECT_EQ(segmentsOf(at({5000, 100, 160})), (std::vector<std::int64_t>{0, 0, 0}));
}

/// Points a minute apart of these segments, charging where the letter is a c.
std::vector<ChartPoint> charged(const std::string& charging, const std::string& segments) {
  std::vector<ChartPoint> points;
  for (std::size_t i = 0; i < charging.size(); ++i) {
    points.push_back({static_cast<std::int64_t>(i), dateSince1970(60.0 * static_cast<double>(i)),
                      50, segments[i] - '0', charging[i] == 'c'});
  }
  return points;
}

ChargingSpan span(int fromMinute, int toMinute) {
  return {dateSince1970(60.0 * fromMinute), dateSince1970(60.0 * toMinute)};
}

TEST(ChargingSpans, ReachFromThePointThatSaysSoToTheNext) {
  using Spans = std::vector<ChargingSpan>;
  EXPECT_EQ(chargingSpans({}), Spans{});
  EXPECT_EQ(chargingSpans(charged("...", "000")), Spans{});
  EXPECT_EQ(chargingSpans(charged(".cc..", "00000")), (Spans{span(1, 3)}));
  EXPECT_EQ(chargingSpans(charged("c.c.c", "00000")), (Spans{span(0, 1), span(2, 3)}));
}

TEST(ChargingSpans, KnowNothingOfGaps) {
  EXPECT_EQ(chargingSpans(charged("cccc", "0011")),
            (std::vector<ChargingSpan>{span(0, 1), span(2, 3)}));
  EXPECT_EQ(chargingSpans(charged("c", "0")), std::vector<ChargingSpan>{});
}

TEST(ChargingSpans, LeaveOutATimeThatRunsBackwards) {
  auto points = charged("ccc", "000");
  points[1].date = dateSince1970(-600);
  EXPECT_EQ(chargingSpans(points), (std::vector<ChargingSpan>{{points[1].date, points[2].date}}));
}

TEST(ChartThresholds, AreThoseThatTheUserIsRemindedAt) {
  using Percents = std::vector<std::int64_t>;
  Prefs prefs;
  prefs.limit = 85;
  prefs.low = 15;
  EXPECT_EQ(chartThresholds(prefs), (Percents{85, 15}));
  prefs.limitEnabled = false;
  EXPECT_EQ(chartThresholds(prefs), (Percents{15}));
  prefs.lowEnabled = false;
  EXPECT_EQ(chartThresholds(prefs), Percents{});
}

TEST(ChartThresholds, LieOnTheChart) {
  Prefs prefs;
  prefs.limit = 120;
  prefs.low = -5;
  EXPECT_EQ(chartThresholds(prefs), std::vector<std::int64_t>{});
  prefs.limit = 100;
  prefs.low = 0;
  EXPECT_EQ(chartThresholds(prefs), (std::vector<std::int64_t>{100, 0}));
}

TEST(NearestPoint, IsTheOneClosestInTime) {
  const auto points = chartPoints(at({0, 60, 200}));
  const auto nearest = [&](double second) {
    return nearestPoint(points, dateSince1970(second))->id;
  };
  EXPECT_EQ(nearest(-1000), 0);
  EXPECT_EQ(nearest(29), 0);
  EXPECT_EQ(nearest(31), 1);
  EXPECT_EQ(nearest(131), 2);
  EXPECT_EQ(nearest(9999), 2);
  EXPECT_EQ(nearestPoint({}, dateSince1970(0)), nullptr);
}

TEST(ChartScale, MapsTimesAndPercentsToPixelsAndBack) {
  const ChartScale scale{dateSince1970(1000), dateSince1970(1000 + 86'400), 270, 82};
  EXPECT_DOUBLE_EQ(scale.x(dateSince1970(1000)), 0);
  EXPECT_DOUBLE_EQ(scale.x(dateSince1970(1000 + 43'200)), 135);
  EXPECT_DOUBLE_EQ(scale.x(dateSince1970(1000 + 86'400)), 270);
  EXPECT_DOUBLE_EQ(scale.y(100), 0);
  EXPECT_DOUBLE_EQ(scale.y(50), 41);
  EXPECT_DOUBLE_EQ(scale.y(0), 82);
  for (const double pixel : {0.0, 0.5, 33.25, 269.0, 270.0}) {
    EXPECT_NEAR(scale.x(scale.date(pixel)), pixel, 1e-9);
  }
  for (const double pixel : {0.0, 1.5, 81.0, 82.0}) {
    EXPECT_NEAR(scale.y(scale.percent(pixel)), pixel, 1e-9);
  }
}

}  // namespace
}  // namespace lumora::test
