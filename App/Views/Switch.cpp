// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Switch.h"

#include "Views/Theme.h"

#include <QPainter>

namespace lumora {
namespace {

// Room for the ring that marks the focus.
constexpr int kMargin = 2;
constexpr double kKnobInset = 2;
constexpr double kProportion = 1.75;

}  // namespace

Switch::Switch(QWidget* parent) : QCheckBox(parent) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
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
  const QRectF track = QRectF(rect()).adjusted(kMargin, kMargin, -kMargin, -kMargin);
  const double radius = track.height() / 2;
  painter.setPen(Qt::NoPen);
  painter.setBrush(isChecked() ? colorOf(Tint::accent, palette()) : troughColor(palette()));
  painter.drawRoundedRect(track, radius, radius);

  const bool atRight = isChecked() != isRightToLeft();
  const double side = track.height() - 2 * kKnobInset;
  const double left = atRight ? track.right() - kKnobInset - side : track.left() + kKnobInset;
  painter.setBrush(Qt::white);
  painter.drawEllipse(QRectF(left, track.top() + kKnobInset, side, side));

  if (!hasFocus()) return;
  painter.setBrush(Qt::NoBrush);
  painter.setPen(focusPen(palette()));
  const QRectF ring = track.adjusted(-1, -1, 1, 1);
  painter.drawRoundedRect(ring, radius + 1, radius + 1);
}

}  // namespace lumora
