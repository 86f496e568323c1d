// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Popover/HistoryChart.h"

#include "Base/NumberText.h"
#include "Base/Texts.h"
#include "Content/ChartText.h"
#include "Views/Controls/Labels.h"
#include "Views/Popover/ChartGround.h"
#include "Views/Popover/TimeTicker.h"
#include "Views/Style/Shapes.h"
#include "Views/Theme/Colors.h"
#include "Views/Theme/Fonts.h"
#include "Views/Theme/Tokens.h"

#include <QEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

#include <qcustomplot.h>

namespace lumora {
namespace {

constexpr int kHeight = 110;
constexpr int kSecondsPerDay = 86'400;
constexpr double kLineWidth = 2;
constexpr int kTickLength = 4;
constexpr int kLabelPadding = 4;
// Room for the ring that marks the focus.
constexpr int kMargin = 5;
constexpr double kRadius = 4;

/// The plot, with a ring around it while it has the keyboard focus.
class Plot : public QCustomPlot {
 protected:
  void paintEvent(QPaintEvent* event) override {
    drawSharply();
    QCustomPlot::paintEvent(event);
    if (!hasFocus()) return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    drawRing(painter, rect(), kRadius + kFocusLine / 2, focusColor(palette()));
  }

 private:
  /// It takes the scale of the screen where it was made.
  void drawSharply() {
    if (qFuzzyCompare(bufferDevicePixelRatio(), devicePixelRatioF())) return;
    setBufferDevicePixelRatio(devicePixelRatioF());
    replot(rpQueuedRefresh);
  }
};

/// What is told of the point that is pointed at, on a ground of its own.
class Bubble : public QCPItemText {
 public:
  using QCPItemText::QCPItemText;

 protected:
  void draw(QCPPainter* painter) override {
    const QRectF box(topLeft->pixelPosition(), bottomRight->pixelPosition());
    painter->setAntialiasing(true);
    painter->setPen(pen());
    painter->setBrush(brush());
    painter->drawRoundedRect(box, kRadius, kRadius);
    painter->setFont(font());
    painter->setPen(color());
    painter->drawText(box, Qt::AlignCenter, text());
  }
};

/// One segment, its points joined in the order in which they were recorded.
class Segment : public QCPCurve {
 public:
  using QCPCurve::QCPCurve;

 protected:
  /// Half of the line lies outside where it runs along an edge, and its round end, too.
  QRect clipRect() const override {
    constexpr int kBeyond = 2;
    return QCPCurve::clipRect().adjusted(-kBeyond, -kBeyond, kBeyond, kBeyond);
  }
};

QSharedPointer<QCPAxisTicker> percentTicker() {
  const QSharedPointer<QCPAxisTickerText> ticker(new QCPAxisTickerText);
  for (const int percent : {0, 50, 100}) {
    ticker->addTick(percent, QString::fromStdString(percentText(percent)));
  }
  return ticker;
}

}  // namespace

HistoryChart::HistoryChart(QWidget* parent)
    : QStackedWidget(parent),
      empty_(makeWrapping(TextRole::caption,
                          translated("Collecting history… a graph appears after a few minutes."))),
      plot_(new Plot) {
  setFixedHeight(kHeight);
  empty_->setAlignment(Qt::AlignCenter);
  empty_->setColor(TextColor::secondary);
  addWidget(empty_);
  addWidget(plot_);
  setUpAxes();
  ground_ = new ChartGround(plot_);
  plot_->addLayer("pointer", nullptr, QCustomPlot::limAbove);
  plot_->layer("pointer")->setMode(QCPLayer::lmBuffered);
  plot_->setCurrentLayer("pointer");
  cursor_ = new QCPItemLine(plot_);
  tracer_ = new QCPItemTracer(plot_);
  label_ = new Bubble(plot_);
  // At the ends of the chart they reach over it.
  for (QCPAbstractItem* item : std::initializer_list<QCPAbstractItem*>{tracer_, label_}) {
    item->setClipToAxisRect(false);
  }
  label_->position->setType(QCPItemPosition::ptAbsolute);
  for (QCPItemPosition* end : {cursor_->start, cursor_->end}) {
    end->setTypeX(QCPItemPosition::ptPlotCoords);
    end->setTypeY(QCPItemPosition::ptAxisRectRatio);
    end->setAxes(plot_->xAxis, plot_->yAxis2);
    end->setAxisRect(plot_->axisRect());
  }
  tracer_->position->setAxes(plot_->xAxis, plot_->yAxis2);
  tracer_->setStyle(QCPItemTracer::tsCircle);
  tracer_->setSize(7);
  plot_->setMouseTracking(true);
  plot_->setFocusPolicy(Qt::TabFocus);
  plot_->installEventFilter(this);
  plot_->setAccessibleName(translated("Charge history"));
  applyLooks();
  setPoint(std::nullopt);
}

void HistoryChart::setUpAxes() {
  plot_->setNoAntialiasingOnDrag(false);
  plot_->axisRect()->setupFullAxesBox(false);
  plot_->axisRect()->setAutoMargins(QCP::msBottom | QCP::msRight);
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
    axis->setTickLabelPadding(kLabelPadding);
    axis->setPadding(kMargin);
  }
  plot_->xAxis->setSubTicks(true);
  plot_->xAxis->setSubTickLength(0, kTickLength);
  plot_->xAxis->setTickLabelPadding(0);
}

void HistoryChart::applyLooks() {
  const QColor secondary = textColor(TextColor::secondary, palette());
  const QColor neutral = neutralMarkColor(palette());
  const QColor grid = gridColor(palette());
  const QFont font = fontFor(TextRole::caption2);
  // The uppermost label reaches over the chart by half of its height.
  plot_->axisRect()->setMargins(QMargins(kMargin, QFontMetrics(font).height() / 2 + kMargin, 0, 0));
  plot_->setBackground(QBrush(palette().color(QPalette::Window)));
  for (QCPAxis* axis : {plot_->xAxis, plot_->yAxis2}) {
    axis->setBasePen(Qt::NoPen);
    axis->setTickLabelColor(secondary);
    axis->setTickLabelFont(font);
    axis->grid()->setPen(QPen(grid, 1));
    axis->grid()->setZeroLinePen(QPen(grid, 1));
  }
  plot_->xAxis->grid()->setVisible(false);
  plot_->xAxis->setSubTickPen(QPen(neutral, 1));
  for (int i = 0; i < plot_->plottableCount(); ++i) plot_->plottable(i)->setPen(linePen());
  cursor_->setPen(QPen(neutral, 1));
  tracer_->setPen(QPen(markColor(Tint::accent, palette()), kLineWidth));
  tracer_->setBrush(palette().color(QPalette::Window));
  label_->setColor(textColor(TextColor::primary, palette()));
  label_->setBrush(palette().color(QPalette::Window));
  label_->setPen(hairlineColor(palette()));
}

void HistoryChart::show(std::span<const Sample> samples, int days, Date now,
                        const std::vector<std::int64_t>& thresholds) {
  points_ = chartPoints(samples);
  setRange(days, now);
  ground_->show(points_, thresholds, from_, to_);
  setCurrentWidget(points_.size() <= 1 ? static_cast<QWidget*>(empty_) : plot_);

  plot_->clearPlottables();
  for (auto first = points_.begin(); first != points_.end();) {
    const auto end = std::find_if(
        first, points_.end(), [first](const ChartPoint& point) { return point.seg != first->seg; });
    addSegment({first, end});
    first = end;
  }
  setPoint(std::nullopt);
  plot_->replot(QCustomPlot::rpQueuedReplot);
}

QPen HistoryChart::linePen() const {
  return {markColor(Tint::accent, palette()), kLineWidth, Qt::SolidLine, Qt::RoundCap,
          Qt::RoundJoin};
}

void HistoryChart::addSegment(std::span<const ChartPoint> points) {
  plot_->setCurrentLayer("main");
  auto* segment = new Segment(plot_->xAxis, plot_->yAxis2);
  segment->setPen(linePen());
  // A line of one point would not be seen.
  if (points.size() == 1) {
    segment->setScatterStyle(QCPScatterStyle(QCPScatterStyle::ssDisc, kLineWidth));
  }
  QVector<double> order;
  QVector<double> times;
  QVector<double> percents;
  for (const ChartPoint& point : points) {
    order.push_back(static_cast<double>(point.id));
    times.push_back(secondsSince1970(point.date));
    percents.push_back(static_cast<double>(point.pct));
  }
  segment->setData(order, times, percents, true);
}

void HistoryChart::setRange(int days, Date now) {
  days_ = days;
  to_ = now;
  from_ = now - Seconds(static_cast<double>(days) * kSecondsPerDay);
  plot_->xAxis->setTicker(QSharedPointer<QCPAxisTicker>(new TimeTicker(*plot_->xAxis, days)));
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

void HistoryChart::pointAt(std::optional<std::size_t> index) {
  setPoint(index);
  if (isVisible()) plot_->layer("pointer")->replot();
}

void HistoryChart::setPoint(std::optional<std::size_t> index) {
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
    const QString text = QString::fromStdString(pointText(point, days_));
    placeLabel(point, text);
    plot_->setAccessibleDescription(text);
  } else {
    plot_->setAccessibleDescription(QString::fromStdString(chartText(points_, days_)));
  }
}

/// In the half of the chart in which the point is not, and whole.
void HistoryChart::placeLabel(const ChartPoint& point, const QString& text) {
  constexpr int kPadding = 4;
  const QRect area = plot_->axisRect()->rect();
  const auto widthIn = [&](const QFont& font) {
    return QFontMetrics(font).horizontalAdvance(text) + 2 * kPadding;
  };
  const QFont font = fontThatFits(
      TextRole::caption2, [&](const QFont& tried) { return widthIn(tried) <= area.width(); });
  const double half = widthIn(font) / 2.0;
  const double left = area.left() + half;
  const double right = std::max(left, area.right() - half);
  const bool below = point.pct > 50;
  label_->setFont(font);
  label_->setText(text);
  label_->setPadding(QMargins(kPadding, 1, kPadding, 1));
  label_->setPositionAlignment(Qt::AlignHCenter | (below ? Qt::AlignBottom : Qt::AlignTop));
  label_->position->setCoords(std::clamp(area.left() + scale().x(point.date), left, right),
                              below ? area.bottom() : area.top());
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
