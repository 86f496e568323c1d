// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Style/Shapes.h"

#include "Views/Theme/Tokens.h"

#include <QPainterPath>
#include <QTransform>

namespace lumora {
namespace {

void stroke(QPainter& painter, const QPainterPath& path, const QColor& color) {
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(color, kSignLine, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPath(path);
}

/// The area within which a line around it lies.
QRectF within(const QRectF& area, double line) {
  return area.adjusted(line / 2, line / 2, -line / 2, -line / 2);
}

}  // namespace

Painting::Painting(QPainter& painter, const QStyleOption& option) : painter_(painter) {
  painter_.save();
  painter_.setRenderHint(QPainter::Antialiasing);
  if (!option.state.testFlag(QStyle::State_Enabled)) painter_.setOpacity(kDisabledOpacity);
}

Touch touchOf(const QStyleOption& option) {
  if (!option.state.testFlag(QStyle::State_Enabled)) return Touch::none;
  if (option.state.testFlag(QStyle::State_Sunken)) return Touch::pressed;
  return option.state.testFlag(QStyle::State_MouseOver) ? Touch::hovered : Touch::none;
}

bool showsFocus(const QStyleOption& option) {
  return option.state.testFlag(QStyle::State_HasFocus) &&
         option.state.testFlag(QStyle::State_KeyboardFocusChange);
}

void drawGround(QPainter& painter, const QRectF& area, double radius, const QColor& color,
                const QPalette& palette) {
  if (isHighContrast(palette))
    return drawPanel(painter, area, radius, color, hairlineColor(palette));
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  painter.drawRoundedRect(area, radius, radius);
}

void drawRing(QPainter& painter, const QRectF& area, double radius, const QColor& color) {
  painter.setPen(QPen(color, kFocusLine));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(within(area, kFocusLine), radius - 1, radius - 1);
}

void drawPanel(QPainter& painter, const QRectF& area, double radius, const QColor& color,
               const QColor& outline) {
  painter.setPen(QPen(outline, kLine));
  painter.setBrush(color);
  painter.drawRoundedRect(within(area, kLine), radius, radius);
}

void drawAngle(QPainter& painter, QPointF centre, double side, double degrees,
               const QColor& color) {
  const double reach = side / 2;
  const double depth = side / 4;
  QPainterPath path;
  path.moveTo(-depth, -reach);
  path.lineTo(depth, 0);
  path.lineTo(-depth, reach);
  const QTransform turned = QTransform::fromTranslate(centre.x(), centre.y()).rotate(degrees);
  stroke(painter, turned.map(path), color);
}

void drawCheckMark(QPainter& painter, QPointF centre, double side, const QColor& color) {
  QPainterPath path;
  path.moveTo(centre + QPointF(-side / 2, 0));
  path.lineTo(centre + QPointF(-side / 8, side * 3 / 8));
  path.lineTo(centre + QPointF(side / 2, -side * 3 / 8));
  stroke(painter, path, color);
}

void drawCross(QPainter& painter, QPointF centre, double side, const QColor& color) {
  const QPointF down(side / 2, side / 2);
  const QPointF up(side / 2, -side / 2);
  QPainterPath path;
  path.moveTo(centre - down);
  path.lineTo(centre + down);
  path.moveTo(centre - up);
  path.lineTo(centre + up);
  stroke(painter, path, color);
}

void drawStep(QPainter& painter, const QRectF& area, Step step, Touch touch,
              const QPalette& palette) {
  if (touch != Touch::none) {
    constexpr double kInset = 2;
    painter.setPen(Qt::NoPen);
    painter.setBrush(fieldColor(palette, touch));
    painter.drawRoundedRect(area.adjusted(kInset, kInset, -kInset, -kInset), kInnerRadius,
                            kInnerRadius);
  }
  constexpr double kReach = 4.5;
  const QPointF centre = area.center();
  QPainterPath sign;
  sign.moveTo(centre - QPointF(kReach, 0));
  sign.lineTo(centre + QPointF(kReach, 0));
  if (step == Step::more) {
    sign.moveTo(centre - QPointF(0, kReach));
    sign.lineTo(centre + QPointF(0, kReach));
  }
  stroke(painter, sign, textColor(TextColor::primary, palette));
}

void drawParting(QPainter& painter, int x, const QRect& area, const QPalette& palette) {
  constexpr int kInset = 6;
  painter.fillRect(QRect(x, area.top() + kInset, 1, area.height() - 2 * kInset),
                   hairlineColor(palette));
}

}  // namespace lumora
