// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Content/ChartPoints.h"
#include "Content/ChartText.h"
#include "Support/ScopedLocale.h"
#include "Views/FakeHost.h"
#include "Views/Patience.h"
#include "Views/Pixels.h"
#include "Views/Popover/HistoryChart.h"
#include "Views/Theme/Colors.h"
#include "Views/Theme/Contrast.h"

#include <QLabel>
#include <QTest>
#include <cmath>
#include <random>

#include <gtest/gtest.h>
#include <qcustomplot.h>

namespace lumora::test {
namespace {

const Date kNow = dateSince1970(1'795'525'980);  // Tuesday, 14:13 in Berlin
constexpr double kDay = 86'400;
// Of a short line no pixel may be filled.
constexpr int kLineAlike = 110;

/// A week as laptops have it: on by day and asleep by night, with breaks, every minute while on.
std::vector<Sample> realWeek(unsigned seed) {
  std::mt19937 random(seed);
  const auto chance = [&random](int one, int of) {
    return static_cast<int>(random() % static_cast<unsigned>(of)) < one;
  };
  std::vector<Sample> samples;
  double percent = 70;
  bool charging = false;
  double asleep = 0;
  for (double age = 7 * kDay; age >= 0; age -= 60) {
    percent += charging ? 0.6 : -0.2;
    if (percent > 96) charging = false;
    if (percent < 15) charging = true;
    if (asleep > 0) {
      asleep -= 60;
      continue;
    }
    if (chance(1, 240)) asleep = 600 + static_cast<double>(random() % 40'000);
    samples.push_back({secondsSince1970(kNow) - age, std::lround(percent), charging, charging});
  }
  return samples;
}

class HistoryChartTest : public testing::Test {
 protected:
  HistoryChartTest() {
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
    chart.setFixedWidth(308);
    chart.QWidget::show();
    EXPECT_TRUE(waitUntilExposed(&chart));
  }

  QCustomPlot* plot() const { return chart.findChild<QCustomPlot*>(); }

  void draw(const std::vector<Sample>& samples, int days) {
    drawn = chartPoints(samples);
    from = kNow - Seconds(days * kDay);
    chart.show(samples, days, kNow);
    plot()->replot();
  }

  QColor ground() const { return chart.palette().color(QPalette::Window); }
  QColor area(Tint tint = Tint::accent) const {
    return over(ground(), areaColor(tint, chart.palette()));
  }
  QColor bar() const { return markColor(Tint::green, chart.palette()); }

  /// The colour where the chart should have a time, in hours before now, and a percent.
  QColor colorAt(double hoursAgo, double percent) {
    return picture(*plot()).pixelColor(place(kNow - Seconds(3600 * hoursAgo), percent).toPoint());
  }

  /// A sample every ten minutes from one time to another, in hours before now.
  static std::vector<Sample> between(double from, double to, std::int64_t percent, bool charging) {
    std::vector<Sample> samples;
    for (double hours = from; hours >= to; hours -= 1.0 / 6) {
      samples.push_back({secondsSince1970(kNow) - 3600 * hours, percent, charging, charging});
    }
    return samples;
  }

  void drawDay() { draw(minuteSamples(kNow, 24 * 60), 1); }

  /// Where the chart should have a moment and a percent.
  QPointF place(Date date, double percent) const {
    const QRect area = plot()->axisRect()->rect();
    return {area.left() + (date - from) / (kNow - from) * area.width(),
            area.top() + (100 - percent) / 100 * area.height()};
  }

  QColor line() const { return markColor(Tint::accent, chart.palette()); }

  /// Whether any pixel of a column is of the line.
  bool hasLineInColumn(const QImage& image, int x) const {
    const QRect area = plot()->axisRect()->rect();
    for (int y = area.top() - 1; y <= area.bottom() + 1; ++y) {
      if (distance(image.pixelColor(x, y), line()) < 60) return true;
    }
    return false;
  }

  /// Points at a share of the plotting area's width.
  void pointAt(double share) {
    const QRect area = plot()->axisRect()->rect();
    const int x = area.left() + qRound(share * area.width());
    // Where the mouse is already it does not move.
    QTest::mouseMove(plot(), {x == 0 ? 1 : x - 1, area.center().y()});
    QTest::mouseMove(plot(), {x, area.center().y()});
    QCoreApplication::processEvents();
  }

  HistoryChart chart;
  std::vector<ChartPoint> drawn;
  Date from;
};

TEST_F(HistoryChartTest, IsSharpOnAScreenOfAnotherScaleThanItWasMadeFor) {
  drawDay();
  const double scale = plot()->devicePixelRatioF();
  plot()->setBufferDevicePixelRatio(2 * scale);
  plot()->grab();
  EXPECT_EQ(plot()->bufferDevicePixelRatio(), scale);
}

TEST_F(HistoryChartTest, SaysThatItCollectsUntilThereAreTwoPoints) {
  chart.show({}, 1, kNow);
  EXPECT_FALSE(plot()->isVisible());
  const std::vector<Sample> one = {{secondsSince1970(kNow), 50, false, false}};
  chart.show(one, 1, kNow);
  EXPECT_FALSE(plot()->isVisible());
  const std::vector<Sample> two = {{secondsSince1970(kNow) - 60, 50, false, false}, one[0]};
  chart.show(two, 1, kNow);
  EXPECT_TRUE(plot()->isVisible());
}

TEST_F(HistoryChartTest, ReachesFromADayAgoToNowAndFromNoneToAll) {
  drawDay();
  EXPECT_EQ(plot()->xAxis->range().lower, secondsSince1970(kNow) - 86'400);
  EXPECT_EQ(plot()->xAxis->range().upper, secondsSince1970(kNow));
  EXPECT_EQ(plot()->yAxis2->range().lower, 0);
  EXPECT_EQ(plot()->yAxis2->range().upper, 100);
  EXPECT_EQ(plot()->yAxis2->tickVectorLabels(), (QVector<QString>{"0%", "50%", "100%"}));
}

TEST_F(HistoryChartTest, DrawsEachSegmentAsALineOfItsOwnAndNothingAcrossGaps) {
  int gaps = 0;
  for (unsigned seed = 1; seed <= 6; ++seed) {
    for (const int days : {1, 7}) {
      auto samples = realWeek(seed);
      std::erase_if(samples, [days](const Sample& sample) {
        return sample.t < secondsSince1970(kNow) - days * kDay;
      });
      draw(samples, days);
      const QImage image = picture(*plot());
      for (std::size_t i = 0; i < drawn.size(); ++i) {
        const ChartPoint& point = drawn[i];
        const QPointF at = place(point.date, static_cast<double>(point.pct));
        EXPECT_TRUE(hasNear(image, at.toPoint(), line(), 1, kLineAlike)) << seed << " point " << i;
        if (i == 0) continue;
        const ChartPoint& before = drawn[i - 1];
        const QPointF left = place(before.date, static_cast<double>(before.pct));
        if (before.seg == point.seg) {
          EXPECT_TRUE(hasNear(image, ((at + left) / 2).toPoint(), line(), 1, kLineAlike))
              << seed << " line " << i;
          continue;
        }
        for (int x = qCeil(left.x()) + 3; x <= qFloor(at.x()) - 3; ++x) {
          ++gaps;
          EXPECT_FALSE(hasLineInColumn(image, x)) << seed << " gap before " << i << " at " << x;
        }
      }
    }
  }
  EXPECT_GT(gaps, 100);
}

TEST_F(HistoryChartTest, LiesOnASoftAreaThatLeavesGapsEmpty) {
  auto samples = between(20, 14, 80, false);
  for (const Sample& sample : between(8, 2, 60, false)) samples.push_back(sample);
  draw(samples, 1);
  for (const double percent : {10.0, 30.0, 55.0, 75.0}) {
    EXPECT_LT(distance(colorAt(17, percent), area()), 4) << percent;
    EXPECT_LT(distance(colorAt(11, percent), ground()), 4) << percent;
    EXPECT_LT(distance(colorAt(5, percent), percent < 60 ? area() : ground()), 4) << percent;
  }
  EXPECT_LT(distance(colorAt(17, 90), ground()), 4);
  EXPECT_LT(distance(colorAt(22, 20), ground()), 4);
  EXPECT_LT(distance(colorAt(1, 20), ground()), 4);
}

TEST_F(HistoryChartTest, ShadesTheTimesOfCharging) {
  auto samples = between(20, 14, 40, false);
  for (const Sample& sample : between(13.9, 10, 60, true)) samples.push_back(sample);
  // Whether it charged between these two nobody knows.
  for (const Sample& sample : between(6, 4, 70, true)) samples.push_back(sample);
  for (const Sample& sample : between(3.9, 0, 70, false)) samples.push_back(sample);
  draw(samples, 1);
  for (const double hoursAgo : {12.0, 5.0}) {
    EXPECT_LT(distance(colorAt(hoursAgo, 30), area(Tint::green)), 4) << hoursAgo;
    EXPECT_LT(distance(colorAt(hoursAgo, 90), ground()), 4) << hoursAgo;
    EXPECT_LT(distance(colorAt(hoursAgo, 2), bar()), 4) << hoursAgo;
  }
  EXPECT_GT(distance(area(Tint::green), area()), 8);
  for (const double hoursAgo : {17.0, 8.0, 2.0}) {
    EXPECT_LT(distance(colorAt(hoursAgo, 30), hoursAgo == 8 ? ground() : area()), 4) << hoursAgo;
    EXPECT_GT(distance(colorAt(hoursAgo, 2), bar()), 60) << hoursAgo;
  }
}

TEST_F(HistoryChartTest, LetsAShortChargeBeSeenInAWeek) {
  auto samples = between(100, 50, 40, false);
  for (const Sample& sample : between(49.9, 49.7, 45, true)) samples.push_back(sample);
  for (const Sample& sample : between(49.6, 10, 45, false)) samples.push_back(sample);
  draw(samples, 7);
  const QPoint foot = place(kNow - Seconds(3600 * 49.8), 2).toPoint();
  EXPECT_TRUE(hasNear(picture(*plot()), foot, bar(), 1, 8));
}

TEST_F(HistoryChartTest, MarksThePercentsThatItRemindsAt) {
  const auto dots = [this](double percent) {
    const QImage image = picture(*plot());
    const QRect within = plot()->axisRect()->rect();
    const int y = place(kNow, percent).toPoint().y();
    int count = 0;
    for (int x = within.left(); x <= within.right(); ++x) {
      const QColor dot = neutralMarkColor(chart.palette());
      count += hasNear(image, {x, y}, dot, 0, 8) || hasNear(image, {x, y - 1}, dot, 0, 8) ? 1 : 0;
    }
    return static_cast<double>(count) / within.width();
  };
  const auto samples = between(20, 0, 60, false);
  chart.show(samples, 1, kNow, {80, 20});
  plot()->replot();
  EXPECT_NEAR(dots(80), 0.25, 0.03);
  EXPECT_NEAR(dots(20), 0.25, 0.03);
  EXPECT_EQ(dots(40), 0);
  chart.show(samples, 1, kNow, {70});
  plot()->replot();
  EXPECT_EQ(dots(80), 0);
  EXPECT_EQ(dots(20), 0);
  EXPECT_NEAR(dots(70), 0.25, 0.03);
}

TEST_F(HistoryChartTest, DrawsTheBordersOfTheDays) {
  const QColor border = over(ground(), gridColor(chart.palette()));
  const auto borders = [&] {
    const QImage image = picture(*plot());
    std::vector<int> found;
    const QRect within = plot()->axisRect()->rect();
    const int y = place(kNow, 90).toPoint().y();
    for (int x = within.left(); x <= within.right(); ++x) {
      if (distance(image.pixelColor(x, y), border) < 4) found.push_back(x);
    }
    return found;
  };
  const double today = 1'795'525'980 - (14 * 60 + 13) * 60;
  draw(between(20, 0, 20, false), 1);
  ASSERT_EQ(borders().size(), 1U);
  EXPECT_NEAR(borders()[0], place(dateSince1970(today), 0).x(), 1);
  draw(between(160, 0, 20, false), 7);
  const auto week = borders();
  ASSERT_EQ(week.size(), 7U);
  for (int day = 0; day < 7; ++day) {
    const double at = place(dateSince1970(today - (6 - day) * kDay), 0).x();
    EXPECT_NEAR(week[static_cast<std::size_t>(day)], at, 1) << day;
  }
}

TEST_F(HistoryChartTest, DrawsTheLastPointWhole) {
  for (const int percent : {0, 50, 100}) {
    draw({{secondsSince1970(kNow) - 7200, 50, false, false},
          {secondsSince1970(kNow) - 3600, 50, false, false},
          {secondsSince1970(kNow) - 600, percent, false, false},
          {secondsSince1970(kNow), percent, false, false}},
         1);
    const QImage image = picture(*plot());
    const QPoint end = place(kNow, percent).toPoint();
    // Round beyond the right edge, and two pixels high, also along the upper and the lower edge.
    EXPECT_EQ(end.x(), plot()->axisRect()->right() + 1);
    EXPECT_TRUE(hasNear(image, end, line(), 0, kLineAlike) ||
                hasNear(image, end - QPoint(0, 1), line(), 0, kLineAlike))
        << percent;
    int rows = 0;
    for (int y = end.y() - 3; y <= end.y() + 3; ++y) {
      rows += hasNear(image, {end.x() - 1, y}, line(), 0, kLineAlike) ? 1 : 0;
    }
    EXPECT_GE(rows, 2) << percent;
  }
}

TEST_F(HistoryChartTest, ShowsASampleThatIsAlone) {
  draw({{secondsSince1970(kNow) - 40'000, 30, false, false},
        {secondsSince1970(kNow) - 20'000, 60, false, false},
        {secondsSince1970(kNow) - 60, 80, false, false},
        {secondsSince1970(kNow), 80, false, false}},
       1);
  const QImage image = picture(*plot());
  EXPECT_TRUE(hasNear(image, place(kNow - Seconds(40'000), 30).toPoint(), line()));
  EXPECT_TRUE(hasNear(image, place(kNow - Seconds(20'000), 60).toPoint(), line()));
  EXPECT_FALSE(hasLineInColumn(image, qRound(place(kNow - Seconds(30'000), 0).x())));
}

TEST_F(HistoryChartTest, JoinsPointsAsTheyWereRecordedWhenTheClockWasSetBack) {
  draw({{secondsSince1970(kNow) - 3600, 20, false, false},
        {secondsSince1970(kNow) - 36'000, 80, false, false},
        {secondsSince1970(kNow) - 35'900, 80, false, false}},
       1);
  EXPECT_TRUE(hasNear(picture(*plot()), place(kNow - Seconds(19'800), 50).toPoint(), line()));
}

TEST_F(HistoryChartTest, MarksRoundHoursOfADay) {
  drawDay();
  EXPECT_EQ(plot()->xAxis->tickVectorLabels(),
            (QVector<QString>{"18:00", "00:00", "06:00", "12:00"}));
  const QImage image = picture(*plot());
  const QColor mark = neutralMarkColor(chart.palette());
  for (const double tick : plot()->xAxis->tickVector()) {
    const QPoint below = place(dateSince1970(tick), 0).toPoint() + QPoint(0, 3);
    EXPECT_TRUE(hasNear(image, below, mark)) << tick;
  }
}

TEST_F(HistoryChartTest, NamesTheDaysOfAWeekBetweenTheirMidnights) {
  draw(minuteSamples(kNow, 7 * 24 * 60), 7);
  EXPECT_EQ(plot()->xAxis->tickVectorLabels(),
            (QVector<QString>{"Wed", "Thu", "Fri", "Sat", "Sun", "Mon", "Tue"}));
  const QImage image = picture(*plot());
  const QColor mark = neutralMarkColor(chart.palette());
  const double wednesday = 1'795'525'980 - 6 * kDay - (14 * 60 + 13) * 60;
  for (int day = 0; day < 7; ++day) {
    const Date midnight = dateSince1970(wednesday + day * kDay);
    EXPECT_TRUE(hasNear(image, place(midnight, 0).toPoint() + QPoint(0, 3), mark)) << day;
    if (day == 6) break;
    EXPECT_EQ(plot()->xAxis->tickVector()[day], wednesday + (day + 0.5) * kDay);
  }
}

TEST_F(HistoryChartTest, LeavesOutEveryOtherNameWhereTheyWouldTouch) {
  const ScopedFontSize large(22);
  draw(minuteSamples(kNow, 7 * 24 * 60), 7);
  const QFontMetrics metrics(plot()->xAxis->tickLabelFont());
  const auto ticks = plot()->xAxis->tickVector();
  const auto labels = plot()->xAxis->tickVectorLabels();
  EXPECT_EQ(labels, (QVector<QString>{"Wed", "Fri", "Sun"}));
  for (int i = 1; i < ticks.size(); ++i) {
    const double apart =
        plot()->xAxis->coordToPixel(ticks[i]) - plot()->xAxis->coordToPixel(ticks[i - 1]);
    EXPECT_GT(apart, metrics.horizontalAdvance(labels[i]));
  }
}

TEST_F(HistoryChartTest, CountsHoursUpToTwelveWhereTheLocaleDoes) {
  const ScopedLocale american("en_US");
  drawDay();
  QStringList labels;
  for (QString label : plot()->xAxis->tickVectorLabels()) {
    labels << label.replace(QChar(0x202F), ' ').replace(QChar::Nbsp, ' ');
  }
  EXPECT_EQ(labels, (QStringList{"6 PM", "12 AM", "6 AM", "12 PM"}));
  pointAt(0.5);
  EXPECT_TRUE(plot()->accessibleDescription().contains("AM"))
      << plot()->accessibleDescription().toStdString();
}

TEST_F(HistoryChartTest, KeepsThePercentLabelsWholeInEveryFont) {
  for (const double points : {8.0, 10.0, 11.0, 13.0, 16.0, 20.0}) {
    const ScopedFontSize size(points);
    drawDay();
    const QFontMetrics metrics(plot()->yAxis2->tickLabelFont());
    for (const int percent : {0, 50, 100}) {
      const int middle = qRound(plot()->yAxis2->coordToPixel(percent));
      EXPECT_GE(middle - metrics.height() / 2, 0) << points;
      EXPECT_LE(middle + metrics.height() / 2, plot()->height()) << points;
    }
    // The ink of "100%", right of the plotting area.
    const QImage image = picture(*plot());
    const QRect area = plot()->axisRect()->rect();
    int inked = 0;
    for (int x = area.right() + 4; x < image.width(); ++x) {
      for (int y = 0; y < area.top() + metrics.height() / 2; ++y) {
        inked += distance(image.pixelColor(x, y), chart.palette().color(QPalette::Window)) > 60;
      }
    }
    EXPECT_GT(inked, 20) << points;
  }
}

TEST_F(HistoryChartTest, ShowsTimeAndPercentWhereItIsPointedAt) {
  drawDay();
  EXPECT_FALSE(chart.pointedAt());
  pointAt(0.5);
  ASSERT_TRUE(chart.pointedAt());
  EXPECT_NEAR((kNow - chart.pointedAt()->date).count(), 12 * 3600, 600);
  pointAt(0);
  EXPECT_NEAR((kNow - chart.pointedAt()->date).count(), 24 * 3600, 600);
  QEvent leave(QEvent::Leave);
  QCoreApplication::sendEvent(plot(), &leave);
  EXPECT_FALSE(chart.pointedAt());
}

TEST_F(HistoryChartTest, ShowsTheLabelWholeWhereverItIsPointedAt) {
  for (const double points : {10.0, 16.0}) {
    const ScopedFontSize size(points);
    for (const int days : {1, 7}) {
      draw(minuteSamples(kNow, days * 24 * 60), days);
      for (int share = 0; share <= 40; ++share) {
        pointAt(share / 40.0);
        ASSERT_TRUE(chart.pointedAt());
        auto* label = dynamic_cast<QCPItemText*>(plot()->item(2));
        ASSERT_NE(label, nullptr);
        EXPECT_FALSE(label->clipToAxisRect());
        EXPECT_EQ(label->text().toStdString(), pointText(*chart.pointedAt(), days));
        const QFontMetrics metrics(label->font());
        const QRectF shown(label->topLeft->pixelPosition(), label->bottomRight->pixelPosition());
        EXPECT_GE(shown.width(), metrics.horizontalAdvance(label->text())) << points;
        EXPECT_LE(shown.width(), plot()->axisRect()->width() + 2) << points;
        EXPECT_TRUE(QRectF(plot()->rect()).contains(shown)) << points << " " << share;
        // In the other half than the point, so that both are seen.
        const QPointF point =
            place(chart.pointedAt()->date, static_cast<double>(chart.pointedAt()->pct));
        EXPECT_FALSE(shown.contains(point)) << points << " " << share;
      }
    }
  }
}

TEST_F(HistoryChartTest, IsReadWithTheArrowKeys) {
  drawDay();
  plot()->setFocus();
  QTest::keyClick(plot(), Qt::Key_Left);
  ASSERT_TRUE(chart.pointedAt());
  EXPECT_EQ(chart.pointedAt()->date, kNow);
  QTest::keyClick(plot(), Qt::Key_Left);
  EXPECT_LT(chart.pointedAt()->date, kNow);
  EXPECT_EQ(plot()->accessibleDescription().toStdString(), pointText(*chart.pointedAt(), 1));
  for (int i = 0; i < 1000; ++i) QTest::keyClick(plot(), Qt::Key_Left);
  EXPECT_NEAR((kNow - chart.pointedAt()->date).count(), 24 * 3600, 600);
}

TEST_F(HistoryChartTest, IsSummedUpForAScreenReaderUntilItIsPointedAt) {
  auto samples = between(20, 14, 40, false);
  for (const Sample& sample : between(13.9, 10, 60, true)) samples.push_back(sample);
  draw(samples, 1);
  const std::string summary = chartText(drawn, 1);
  EXPECT_EQ(plot()->accessibleDescription().toStdString(), summary);
  EXPECT_NE(summary.find("40–60%"), std::string::npos) << summary;
  pointAt(0.5);
  EXPECT_EQ(plot()->accessibleDescription().toStdString(), pointText(*chart.pointedAt(), 1));
  QEvent leave(QEvent::Leave);
  QCoreApplication::sendEvent(plot(), &leave);
  EXPECT_EQ(plot()->accessibleDescription().toStdString(), summary);
  chart.show({}, 1, kNow);
  EXPECT_EQ(plot()->accessibleDescription(), "");
}

TEST_F(HistoryChartTest, ForgetsWhatWasPointedAtWhenItIsDrawnAnew) {
  drawDay();
  pointAt(0.5);
  chart.show({}, 1, kNow);
  EXPECT_FALSE(chart.pointedAt());
  plot()->setFocus();
  QTest::keyClick(plot(), Qt::Key_Left);
  EXPECT_FALSE(chart.pointedAt());
}

}  // namespace
}  // namespace lumora::test
