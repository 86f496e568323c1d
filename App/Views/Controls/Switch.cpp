// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Controls/Switch.h"

#include "Views/Theme/Colors.h"

#include <QPainter>

namespace lumora {
namespace {

// Room for the ring that marks the focus, and for a gap that parts it from the track.
constexpr int kMargin = 4;
constexpr double kKnobInset = 2;
constexpr double kProportion = 1.75;

}  // namespace

Switch::Switch(QWidget* parent) : QCheckBox(parent) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  setContentsMargins(kMargin, kMargin, kMargin, kMargin);
}

QSize Switch::sizeHint() const {
  const int height = fontMetrics().height() + 2;
  return {qRound(height * kProportion) + 2 * kMargin, height + 2 * kMargin};
}

bool Switch::hitButton(const QPoint& position) const { return rect().contains(position); }

void Switch::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  if (!isEnabled()) painter.setOpacity(0.45);
  const QRectF track = QRectF(contentsRect());
  const double radius = track.height() / 2;
  painter.setPen(Qt::NoPen);
  const QColor color =
      isChecked() ? markColor(Tint::accent, palette()) : neutralMarkColor(palette());
  painter.setBrush(color);
  painter.drawRoundedRect(track, radius, radius);

  const bool atRight = isChecked() != isRightToLeft();
  const double side = track.height() - 2 * kKnobInset;
  const double left = atRight ? track.right() - kKnobInset - side : track.left() + kKnobInset;
  painter.setBrush(knobColor(color));
  painter.drawEllipse(QRectF(left, track.top() + kKnobInset, side, side));

  if (!hasFocus()) return;
  painter.setBrush(Qt::NoBrush);
  painter.setPen(focusPen(palette()));
  const QRectF ring = QRectF(rect()).adjusted(1, 1, -1, -1);
  painter.drawRoundedRect(ring, ring.height() / 2, ring.height() / 2);
}

}  // namespace lumora
