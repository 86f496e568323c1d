// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Content/ChartPoints.h"

#include <cstdint>
#include <span>
#include <vector>

#include <qcustomplot.h>

namespace lumora {

/// What lies behind the chart's line: a soft area below it, which leaves gaps empty; its other tint
/// and a bar along its foot where the battery was charging; a dotted line at each percent that the
/// user is reminded at; and the days' borders.
class ChartGround : public QCPLayerable {
 public:
  /// The plot owns it.
  explicit ChartGround(QCustomPlot* plot);

  /// Takes effect with the next replot. The thresholds are percents.
  void show(std::span<const ChartPoint> points, std::vector<std::int64_t> thresholds, Date from,
            Date to);

 protected:
  void applyDefaultAntialiasingHint(QCPPainter* painter) const override;
  void draw(QCPPainter* painter) override;

 private:
  double x(Date date) const;
  double y(double percent) const;
  void drawCharging(QCPPainter& painter) const;
  void drawAreas(QCPPainter& painter) const;
  void drawLines(QCPPainter& painter) const;

  std::span<const ChartPoint> points_;
  std::vector<ChargingSpan> charging_;
  std::vector<std::int64_t> thresholds_;
  std::vector<Date> borders_;
};

}  // namespace lumora
