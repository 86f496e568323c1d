// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Popover/RingView.h"

#include "Base/NumberText.h"
#include "Base/Texts.h"
#include "Views/Theme/Colors.h"

#include <QPainter>
#include <QShowEvent>

namespace lumora {
namespace {

constexpr int kPadding = 6;
constexpr double kStroke = 11;
constexpr int kPercentPixels = 28;
// What fits into the ring; wide fonts are made smaller.
constexpr int kTextWidth = 70;
constexpr int kBarHeight = 6;

}  // namespace

RingView::RingView(QWidget* parent) : QProgressBar(parent) {
  setRange(0, 100);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  setAccessibleName(translated("Battery level"));
}

void RingView::show(std::int64_t percent, Tint tint) {
  tint_ = tint;
  setValue(static_cast<int>(percent));
  arc_.moveTo(static_cast<double>(percent));
  update();
}

void RingView::showEvent(QShowEvent* event) {
  QProgressBar::showEvent(event);
  if (event->spontaneous()) return;
  arc_.set(0);
  arc_.moveTo(value());
}

QSize RingView::sizeHint() const { return {kSide, kSide}; }

void RingView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF ring = QRectF(rect()).adjusted(kPadding, kPadding, -kPadding, -kPadding);
  painter.setPen(QPen(trackColor(palette()), kStroke, Qt::SolidLine, Qt::FlatCap));
  painter.drawEllipse(ring);

  // Sixteenths of a degree, counter-clockwise from three o'clock.
  constexpr int kFullCircle = 360 * 16;
  constexpr int kTwelveOClock = 90 * 16;
  if (arc_.value() > 0) {
    painter.setPen(QPen(markColor(tint_, palette()), kStroke, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(ring, kTwelveOClock, qRound(-kFullCircle * arc_.value() / 100));
  }

  QFont font = QWidget::font();
  font.setPixelSize(kPercentPixels);
  font.setWeight(QFont::DemiBold);
  const QString text = QString::fromStdString(percentText(value()));
  const int advance = QFontMetrics(font).horizontalAdvance(text);
  if (advance > kTextWidth) font.setPixelSize(kPercentPixels * kTextWidth / advance);
  painter.setFont(font);
  painter.setPen(textColor(TextColor::primary, palette()));
  // Its figures, not its line, which has more room below than above in some fonts.
  const QFontMetricsF metrics(font);
  const QRectF figure = metrics.tightBoundingRect(QString::fromStdString(numberText(8)));
  const QPointF middle = QRectF(rect()).center();
  painter.drawText(
      QPointF(middle.x() - metrics.horizontalAdvance(text) / 2, middle.y() - figure.center().y()),
      text);
}

CycleBarView::CycleBarView(QWidget* parent) : QProgressBar(parent) {
  setRange(0, static_cast<int>(CycleBar::kTotal));
  setFixedHeight(kBarHeight);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setAccessibleName(translated("Cycle count"));
}

void CycleBarView::show(const CycleBar& cycles) {
  tint_ = cycles.tint;
  setValue(static_cast<int>(cycles.value));
  setAccessibleDescription(QString::fromStdString(cycles.text));
  update();
}

void CycleBarView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  const auto bar = QRectF(rect());
  const double radius = bar.height() / 2;
  painter.setBrush(trackColor(palette()));
  painter.drawRoundedRect(bar, radius, radius);
  if (value() <= 0) return;

  const double share = static_cast<double>(value()) / maximum();
  QRectF filled = bar;
  filled.setWidth(std::max(bar.width() * share, bar.height()));
  if (layoutDirection() == Qt::RightToLeft) filled.moveRight(bar.right());
  painter.setBrush(markColor(tint_, palette()));
  painter.drawRoundedRect(filled, radius, radius);
}

NoBatterySymbol::NoBatterySymbol(QWidget* parent) : QWidget(parent) { setFixedSize(60, 36); }

void NoBatterySymbol::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(textColor(TextColor::secondary, palette()), 2.5));
  painter.drawRoundedRect(QRectF(3, 6, 48, 24), 7, 7);
  painter.setPen(
      QPen(textColor(TextColor::secondary, palette()), 3.5, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(QPointF(56, 14.5), QPointF(56, 21.5));
}

}  // namespace lumora
