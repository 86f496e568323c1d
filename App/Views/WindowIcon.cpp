// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/WindowIcon.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace lumora {
namespace {

constexpr double kSide = 128;

/// A standing battery with its cap.
QPainterPath battery() {
  QPainterPath path;
  path.setFillRule(Qt::WindingFill);
  path.addRoundedRect(QRectF(57, 42, 14, 10), 2, 2);
  path.addRoundedRect(QRectF(51, 46, 26, 40), 5, 5);
  return path;
}

QPainterPath bolt() {
  QPainterPath path({66, 51});
  for (const QPointF& corner :
       {QPointF(56.5, 67.5), {62.8, 67.5}, {61, 81}, {71.5, 63.5}, {65, 63.5}}) {
    path.lineTo(corner);
  }
  path.closeSubpath();
  return path;
}

void draw(QPainter& painter) {
  QLinearGradient ground(0, 8, 0, 120);
  ground.setColorAt(0, QColor(0x2f, 0xb5, 0x8c));
  ground.setColorAt(1, QColor(0x12, 0x70, 0x7a));
  painter.setPen(Qt::NoPen);
  painter.setBrush(ground);
  painter.drawRoundedRect(QRectF(8, 8, 112, 112), 28, 28);

  // The ring of the popover, at the limit of 80 %.
  constexpr int kTwelveOClock = 90 * 16;
  constexpr int kEightyPercent = -288 * 16;
  const QRectF ring(26, 26, 76, 76);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(QColor(255, 255, 255, 71), 10));
  painter.drawEllipse(ring);
  painter.setPen(QPen(Qt::white, 10, Qt::SolidLine, Qt::RoundCap));
  painter.drawArc(ring, kTwelveOClock, kEightyPercent);

  painter.setPen(Qt::NoPen);
  painter.setBrush(Qt::white);
  painter.drawPath(battery());
  painter.setBrush(QColor(0x12, 0x80, 0x7c));
  painter.drawPath(bolt());
}

}  // namespace

QIcon windowIcon() {
  QIcon icon;
  for (const int side : {16, 24, 32, 48, 64}) {
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(side / kSide, side / kSide);
    draw(painter);
    icon.addPixmap(pixmap);
  }
  return icon;
}

}  // namespace lumora
