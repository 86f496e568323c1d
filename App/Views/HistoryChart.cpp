// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/HistoryChart.h"

#include "Views/DateText.h"
#include "Views/Theme.h"

#include <QEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QMouseEvent>
#include <algorithm>
#include <limits>

#include <qcustomplot.h>

namespace lumora {
namespace {

constexpr int kHeight = 110;
constexpr int kSecondsPerDay = 86'400;

QSharedPointer<QCPAxisTicker> percentTicker() {
  const QSharedPointer<QCPAxisTickerText> ticker(new QCPAxisTickerText);
  for (const int percent : {0, 50, 100}) ticker->addTick(percent, QString::number(percent) + "%");
  return ticker;
}

/// Hours of the day, or days of the week, on their own round moments.
QSharedPointer<QCPAxisTicker> timeTicker(int days, Date now) {
  const QSharedPointer<QCPAxisTickerDateTime> ticker(new QCPAxisTickerDateTime);
  const bool twelveHours = shortTimeFormat().contains("AP", Qt::CaseInsensitive);
  ticker->setDateTimeFormat(days != 1 ? "ddd" : twelveHours ? "h AP" : "HH:mm");
  ticker->setTickOrigin(dateTime(now).date().startOfDay());
  ticker->setTickCount(days == 1 ? 4 : 7);
  return ticker;
}

}  // namespace

HistoryChart::HistoryChart(QWidget* parent)
    : QStackedWidget(parent),
      empty_(
          new QLabel(QStringLiteral("Collecting history… a graph appears after a few minutes."))),
      plot_(new QCustomPlot) {
  setFixedHeight(kHeight);
  empty_->setAlignment(Qt::AlignCenter);
  empty_->setWordWrap(true);
  addWidget(empty_);
  addWidget(plot_);
  setUpAxes();
  line_ = plot_->addGraph(plot_->xAxis, plot_->yAxis2);
  plot_->addLayer("pointer", nullptr, QCustomPlot::limAbove);
  plot_->layer("pointer")->setMode(QCPLayer::lmBuffered);
  plot_->setCurrentLayer("pointer");
  cursor_ = new QCPItemLine(plot_);
  tracer_ = new QCPItemTracer(plot_);
  label_ = new QCPItemText(plot_);
  for (QCPItemPosition* end : {cursor_->start, cursor_->end, label_->position}) {
    end->setTypeX(QCPItemPosition::ptPlotCoords);
    end->setTypeY(QCPItemPosition::ptAxisRectRatio);
    end->setAxes(plot_->xAxis, plot_->yAxis2);
    end->setAxisRect(plot_->axisRect());
  }
  tracer_->position->setAxes(plot_->xAxis, plot_->yAxis2);
  tracer_->setStyle(QCPItemTracer::tsCircle);
  tracer_->setSize(7);
  label_->setPadding(QMargins(4, 1, 4, 1));
  plot_->setMouseTracking(true);
  plot_->setFocusPolicy(Qt::StrongFocus);
  plot_->installEventFilter(this);
  plot_->setAccessibleName("Charge history");
  applyLooks();
  pointAt(std::nullopt);
}

void HistoryChart::setUpAxes() {
  plot_->setNoAntialiasingOnDrag(false);
  plot_->axisRect()->setupFullAxesBox(false);
  plot_->axisRect()->setAutoMargins(QCP::msBottom | QCP::msRight);
  plot_->axisRect()->setMargins(QMargins(1, 9, 0, 0));
  plot_->yAxis->setVisible(false);
  plot_->xAxis2->setVisible(false);
  plot_->yAxis->grid()->setVisible(false);
  plot_->yAxis2->setVisible(true);
  plot_->yAxis2->grid()->setVisible(true);
  plot_->yAxis2->setRange(0, 100);
  plot_->yAxis2->setTicker(percentTicker());
  for (QCPAxis* axis : {plot_->xAxis, plot_->yAxis2}) {
    axis->setTickLabels(true);
    axis->setTickPen(Qt::NoPen);
    axis->setTickLength(0);
    axis->setSubTicks(false);
    axis->setTickLabelPadding(4);
  }
}

void HistoryChart::applyLooks() {
  const QColor secondary = secondaryColor(palette());
  const QColor accent = colorOf(Tint::accent, palette());
  QColor grid = secondary;
  grid.setAlphaF(0.25F);
  empty_->setFont(fontFor(TextRole::caption));
  QPalette quiet = palette();
  quiet.setColor(QPalette::WindowText, secondary);
  empty_->setPalette(quiet);
  plot_->setBackground(QBrush(palette().color(QPalette::Window)));
  for (QCPAxis* axis : {plot_->xAxis, plot_->yAxis2}) {
    axis->setBasePen(Qt::NoPen);
    axis->setTickLabelColor(secondary);
    axis->setTickLabelFont(fontFor(TextRole::caption2));
    axis->grid()->setPen(QPen(grid, 1));
    axis->grid()->setZeroLinePen(QPen(grid, 1));
  }
  plot_->xAxis->grid()->setVisible(false);
  line_->setPen(QPen(accent, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  cursor_->setPen(QPen(grid, 1));
  tracer_->setPen(QPen(accent, 2));
  tracer_->setBrush(palette().color(QPalette::Window));
  label_->setFont(fontFor(TextRole::caption2));
  label_->setColor(palette().color(QPalette::WindowText));
  label_->setBrush(palette().color(QPalette::Window));
}

void HistoryChart::show(std::span<const Sample> samples, int days, Date now) {
  points_ = chartPoints(samples);
  setRange(days, now);
  setCurrentWidget(points_.size() <= 1 ? static_cast<QWidget*>(empty_) : plot_);

  QVector<double> times;
  QVector<double> percents;
  for (std::size_t i = 0; i < points_.size(); ++i) {
    const double time = secondsSince1970(points_[i].date);
    if (i > 0 && points_[i].seg != points_[i - 1].seg) {
      times.push_back(time);
      percents.push_back(std::numeric_limits<double>::quiet_NaN());
    }
    times.push_back(time);
    percents.push_back(static_cast<double>(points_[i].pct));
  }
  line_->setData(times, percents);
  pointAt(std::nullopt);
  plot_->replot(QCustomPlot::rpQueuedReplot);
}

void HistoryChart::setRange(int days, Date now) {
  days_ = days;
  to_ = now;
  from_ = now - Seconds(static_cast<double>(days) * kSecondsPerDay);
  plot_->xAxis->setTicker(timeTicker(days, now));
  plot_->xAxis->setRange(secondsSince1970(from_), secondsSince1970(to_));
}

std::optional<ChartPoint> HistoryChart::pointedAt() const {
  return pointed_ ? std::optional(points_[*pointed_]) : std::nullopt;
}

ChartScale HistoryChart::scale() const {
  const QRect area = plot_->axisRect()->rect();
  return {.from = from_,
          .to = to_,
          .width = static_cast<double>(area.width()),
          .height = static_cast<double>(area.height())};
}

QString HistoryChart::describe(const ChartPoint& point) const {
  const QLocale locale;
  const QDateTime moment = dateTime(point.date);
  const QString time = locale.toString(moment.time(), shortTimeFormat());
  const QString day = days_ == 1 ? QString() : locale.toString(moment.date(), "ddd") + " ";
  return day + time + QStringLiteral(" · %1%").arg(point.pct);
}

void HistoryChart::pointAt(std::optional<std::size_t> index) {
  pointed_ = index;
  for (QCPAbstractItem* item : std::initializer_list<QCPAbstractItem*>{cursor_, tracer_, label_}) {
    item->setVisible(index.has_value());
  }
  if (index) {
    const ChartPoint& point = points_[*index];
    const double time = secondsSince1970(point.date);
    cursor_->start->setCoords(time, 0);
    cursor_->end->setCoords(time, 1);
    tracer_->position->setCoords(time, static_cast<double>(point.pct));
    label_->position->setCoords(time, point.pct > 50 ? 0.86 : 0.02);
    const double place = (point.date - from_) / (to_ - from_);
    const Qt::Alignment side = place < 0.25   ? Qt::AlignLeft
                               : place > 0.75 ? Qt::AlignRight
                                              : Qt::AlignHCenter;
    label_->setPositionAlignment(side | Qt::AlignTop);
    label_->setText(describe(point));
    plot_->setAccessibleDescription(describe(point));
  } else {
    plot_->setAccessibleDescription(points_.empty() ? QString() : describe(points_.back()));
  }
  if (isVisible()) plot_->layer("pointer")->replot();
}

void HistoryChart::step(int points) {
  if (points_.empty()) return;
  const auto last = static_cast<std::ptrdiff_t>(points_.size()) - 1;
  const std::ptrdiff_t from = pointed_ ? static_cast<std::ptrdiff_t>(*pointed_) : last;
  pointAt(static_cast<std::size_t>(
      std::clamp<std::ptrdiff_t>(pointed_ ? from + points : last, 0, last)));
}

bool HistoryChart::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::MouseMove: {
      const auto* mouse = static_cast<QMouseEvent*>(event);
      const double pixel = mouse->position().x() - plot_->axisRect()->left();
      const ChartPoint* nearest = nearestPoint(points_, scale().date(pixel));
      if (nearest != nullptr) pointAt(static_cast<std::size_t>(nearest - points_.data()));
      break;
    }
    case QEvent::Leave:
    case QEvent::FocusOut:
      pointAt(std::nullopt);
      break;
    case QEvent::KeyPress: {
      const int key = static_cast<QKeyEvent*>(event)->key();
      if (key != Qt::Key_Left && key != Qt::Key_Right) break;
      step(key == Qt::Key_Left ? -1 : 1);
      return true;
    }
    default:
      break;
  }
  return QStackedWidget::eventFilter(watched, event);
}

void HistoryChart::changeEvent(QEvent* event) {
  const bool looks = event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange;
  // Not while the parts are still being made.
  if (looks && label_ != nullptr) {
    applyLooks();
    plot_->replot(QCustomPlot::rpQueuedReplot);
  }
  QStackedWidget::changeEvent(event);
}

}  // namespace lumora
