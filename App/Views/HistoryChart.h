// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/ChartPoints.h"

#include <QStackedWidget>
#include <optional>
#include <vector>

class QCPGraph;
class QCPItemLine;
class QCPItemText;
class QCPItemTracer;
class QCustomPlot;
class QLabel;

namespace lumora {

/// The charge level over the last day or week as a line, broken where the record is. Pointing at
/// it, or the arrow keys, show the time and percent there.
class HistoryChart : public QStackedWidget {
 public:
  explicit HistoryChart(QWidget* parent = nullptr);

  /// Draws the samples of the `days` before `now`.
  void show(std::span<const Sample> samples, int days, Date now);

  /// The point that is pointed at; absent when none is.
  std::optional<ChartPoint> pointedAt() const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void setUpAxes();
  void applyLooks();
  void setRange(int days, Date now);
  void pointAt(std::optional<std::size_t> index);
  void step(int points);
  ChartScale scale() const;
  QString describe(const ChartPoint& point) const;

  QLabel* empty_;
  QCustomPlot* plot_;
  QCPGraph* line_ = nullptr;
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
