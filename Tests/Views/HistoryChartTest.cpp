// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "FakeHost.h"
#include "Views/HistoryChart.h"

#include <QLabel>
#include <QTest>

#include <gtest/gtest.h>
#include <qcustomplot.h>

namespace lumora::test {
namespace {

const Date kNow = dateSince1970(1'795'525'980);

class HistoryChartTest : public testing::Test {
 protected:
  HistoryChartTest() {
    chart.setFixedWidth(308);
    chart.QWidget::show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&chart));
  }

  QCustomPlot* plot() const { return chart.findChild<QCustomPlot*>(); }

  void drawDay() {
    chart.show(minuteSamples(kNow, 24 * 60), 1, kNow);
    plot()->replot();
  }

  /// Points at a share of the plotting area's width.
  void pointAt(double share) {
    const QRect area = plot()->axisRect()->rect();
    const int x = area.left() + qRound(share * area.width());
    QTest::mouseMove(plot(), {x, area.center().y()});
    QCoreApplication::processEvents();
  }

  HistoryChart chart;
};

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

TEST_F(HistoryChartTest, BreaksTheLineAtAGap) {
  auto samples = minuteSamples(kNow, 120);
  std::erase_if(samples, [](const Sample& sample) {
    return sample.t > secondsSince1970(kNow) - 3600 && sample.t < secondsSince1970(kNow) - 1800;
  });
  chart.show(samples, 1, kNow);
  int breaks = 0;
  for (const auto& point : *plot()->graph(0)->data()) breaks += qIsNaN(point.value) ? 1 : 0;
  EXPECT_EQ(breaks, 1);
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

TEST_F(HistoryChartTest, IsReadWithTheArrowKeys) {
  drawDay();
  plot()->setFocus();
  QTest::keyClick(plot(), Qt::Key_Left);
  ASSERT_TRUE(chart.pointedAt());
  EXPECT_EQ(chart.pointedAt()->date, kNow);
  QTest::keyClick(plot(), Qt::Key_Left);
  EXPECT_LT(chart.pointedAt()->date, kNow);
  EXPECT_TRUE(plot()->accessibleDescription().endsWith('%'));
  for (int i = 0; i < 1000; ++i) QTest::keyClick(plot(), Qt::Key_Left);
  EXPECT_NEAR((kNow - chart.pointedAt()->date).count(), 24 * 3600, 600);
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
