// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Popover/ChartGround.h"

#include "Base/LocalTime.h"
#include "Views/Theme/Colors.h"

#include <QPolygonF>
#include <algorithm>
#include <utility>

namespace lumora {
namespace {

constexpr double kBarHeight = 3;
// As wide as a short charge is at least: narrower ones are not seen.
constexpr double kLeastWidth = 2;

/// The first moments of the days that begin within.
std::vector<Date> bordersWithin(Date from, Date to) {
  std::vector<Date> borders;
  Date last = from;
  for (Date day = startOfDay(from, 1); day > last && day < to; day = startOfDay(day, 1)) {
    borders.push_back(last = day);
  }
  return borders;
}

}  // namespace

ChartGround::ChartGround(QCustomPlot* plot) : QCPLayerable(plot, "background") {}

void ChartGround::show(std::span<const ChartPoint> points, std::vector<std::int64_t> thresholds,
                       Date from, Date to) {
  points_ = points;
  charging_ = chargingSpans(points);
  thresholds_ = std::move(thresholds);
  borders_ = bordersWithin(from, to);
}

/// All edges lie on pixels, or below the line.
void ChartGround::applyDefaultAntialiasingHint(QCPPainter* painter) const {
  painter->setAntialiasing(false);
}

double ChartGround::x(Date date) const {
  return parentPlot()->xAxis->coordToPixel(secondsSince1970(date));
}

double ChartGround::y(double percent) const { return parentPlot()->yAxis2->coordToPixel(percent); }

void ChartGround::draw(QCPPainter* painter) {
  painter->setClipRect(parentPlot()->axisRect()->rect());
  drawAreas(*painter);
  drawCharging(*painter);
  drawLines(*painter);
}

/// One for each time in which the points of a segment say the same of charging.
void ChartGround::drawAreas(QCPPainter& painter) const {
  const QColor used = areaColor(Tint::accent, parentPlot()->palette());
  const QColor charged = areaColor(Tint::green, parentPlot()->palette());
  const double foot = y(0);
  QPolygonF area;
  painter.setPen(Qt::NoPen);
  for (std::size_t i = 1; i < points_.size(); ++i) {
    const ChartPoint& from = points_[i - 1];
    const ChartPoint& to = points_[i];
    if (from.seg != to.seg) continue;
    if (area.isEmpty()) {
      area << QPointF(x(from.date), foot)
           << QPointF(x(from.date), y(static_cast<double>(from.pct)));
    }
    area << QPointF(x(to.date), y(static_cast<double>(to.pct)));
    const bool goesOn =
        i + 1 < points_.size() && points_[i + 1].seg == to.seg && to.charging == from.charging;
    if (goesOn) continue;
    area << QPointF(x(to.date), foot);
    painter.setBrush(from.charging ? charged : used);
    painter.drawPolygon(area);
    area.clear();
  }
}

void ChartGround::drawCharging(QCPPainter& painter) const {
  const QColor color = markColor(Tint::green, parentPlot()->palette());
  const double foot = y(0);
  for (const ChargingSpan& span : charging_) {
    const double left = x(span.from);
    const double width = std::max(kLeastWidth, x(span.to) - left);
    painter.fillRect(QRectF(left, foot - kBarHeight, width, kBarHeight), color);
  }
}

void ChartGround::drawLines(QCPPainter& painter) const {
  const QPalette palette = parentPlot()->palette();
  const QRect area = parentPlot()->axisRect()->rect();
  painter.setPen(QPen(gridColor(palette), 1));
  for (const Date border : borders_) {
    painter.drawLine(QPointF(x(border), area.top()), QPointF(x(border), area.bottom()));
  }
  QPen dots(neutralMarkColor(palette), 1);
  dots.setDashPattern({1, 3});
  painter.setPen(dots);
  for (const std::int64_t percent : thresholds_) {
    const double height = y(static_cast<double>(percent));
    painter.drawLine(QPointF(area.left(), height), QPointF(area.right(), height));
  }
}

}  // namespace lumora
