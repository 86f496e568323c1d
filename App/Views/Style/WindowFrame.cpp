// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Style/WindowFrame.h"

#include "Views/Style/Style.h"
#include "Views/Theme/Colors.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>

namespace lumora {
namespace {

// Of black, at the edge.
constexpr double kDarkest = 0.22;

constexpr double kHalfLine = 0.5;

constexpr int kRadius = 12;
constexpr int kBreezeRadius = 5;

/// Where a line runs that lies just within, at any scale.
QRectF middleOfLine(const QRect& area) {
  return QRectF(area).adjusted(kHalfLine, kHalfLine, -kHalfLine, -kHalfLine);
}

/// As from a light above: longer below. By rings, which leave out what the area covers.
void drawShadow(QPainter& painter, const QRectF& area, double radius) {
  painter.setBrush(Qt::NoBrush);
  for (int ring = 0; ring < kShadowReach; ++ring) {
    const double away = (ring + 0.5) / kShadowReach;
    QColor color = Qt::black;
    color.setAlphaF(static_cast<float>(kDarkest * (1 - away) * (1 - away)));
    painter.setPen(QPen(color, 1));
    const double out = ring + 0.5;
    painter.drawRoundedRect(area.adjusted(-out, -out, out, out), radius + out, radius + out);
  }
}

}  // namespace

int cornerRadius(const QString& style) { return isGood(style) ? kBreezeRadius : kRadius; }

void drawRoundFrame(QPainter& painter, const QRect& area, const QPalette& palette) {
  painter.setRenderHint(QPainter::Antialiasing);
  const double radius = cornerRadius(QApplication::style()->name());
  drawShadow(painter, area, radius);
  painter.setPen(Qt::NoPen);
  painter.setBrush(palette.color(QPalette::Window));
  painter.drawRoundedRect(area, radius, radius);
  painter.setPen(outlineColor(palette));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(middleOfLine(area), radius - kHalfLine, radius - kHalfLine);
}

void drawSquareFrame(QPainter& painter, const QRect& area, const QPalette& palette) {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(outlineColor(palette));
  painter.drawRect(middleOfLine(area));
}

}  // namespace lumora
