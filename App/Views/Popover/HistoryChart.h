// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/Date.h"
#include "Content/ChartPoints.h"
#include "History/Sample.h"

#include <QPen>
#include <QStackedWidget>
#include <QString>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

class QCPItemLine;
class QCPItemText;
class QCPItemTracer;
class QCustomPlot;

namespace lumora {

class ChartGround;
class Label;

/// The charge level over the last day or week as a line on a soft area, broken where the record is,
/// with the times of charging and the percents that the user is reminded at. Pointing at it, or the
/// arrow keys, tell the time and percent there and whether it was charging.
class HistoryChart : public QStackedWidget {
 public:
  explicit HistoryChart(QWidget* parent = nullptr);

  /// Draws the samples of the `days` before `now`, and lines at the thresholds, percents.
  void show(std::span<const Sample> samples, int days, Date now,
            const std::vector<std::int64_t>& thresholds = {});

  /// The point that is pointed at; absent when none is.
  std::optional<ChartPoint> pointedAt() const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void setUpAxes();
  void applyLooks();
  QPen linePen() const;
  void addSegment(std::span<const ChartPoint> points);
  void setRange(int days, Date now);
  void pointAt(std::optional<std::size_t> index);
  void setPoint(std::optional<std::size_t> index);
  void placeLabel(const ChartPoint& point, const QString& text);
  void step(int points);
  ChartScale scale() const;

  Label* empty_;
  QCustomPlot* plot_;
  ChartGround* ground_ = nullptr;
  QCPItemTracer* tracer_ = nullptr;
  QCPItemLine* cursor_ = nullptr;
  QCPItemText* label_ = nullptr;
  std::vector<ChartPoint> points_;
  std::optional<std::size_t> pointed_;
  Date from_;
  Date to_;
  int days_ = 1;
};

}  // namespace lumora
