// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/Theme/Colors.h"

#include <QPainter>
#include <QStyleOption>

namespace lumora {

// What controls are drawn of.

/// How a control is touched; not at all where it is disabled.
Touch touchOf(const QStyleOption& option);

/// Whether it has the focus, and the keyboard brought it there.
bool showsFocus(const QStyleOption& option);

/// Of its text, and of its signs.
inline QColor primaryColor(const QStyleOption& option) {
  return textColor(TextColor::primary, option.palette);
}

/// The ground of a control, with an outline where high contrast is wished.
void drawGround(QPainter& painter, const QRectF& area, double radius, const QColor& color,
                const QPalette& palette);

/// The ring around what has the focus, within the area.
void drawRing(QPainter& painter, const QRectF& area, double radius, const QColor& color);

/// A ground with an outline within the area.
void drawPanel(QPainter& painter, const QRectF& area, double radius, const QColor& color,
               const QColor& outline);

/// Where an angle points, in degrees, clockwise.
inline constexpr double kPointsRight = 0;
inline constexpr double kPointsDown = 90;
inline constexpr double kPointsLeft = 180;

void drawAngle(QPainter& painter, QPointF centre, double side, double degrees, const QColor& color);
void drawCheckMark(QPainter& painter, QPointF centre, double side, const QColor& color);
void drawCross(QPainter& painter, QPointF centre, double side, const QColor& color);

/// The half of a stepper that counts down or up.
enum class Step { less, more };

void drawStep(QPainter& painter, const QRectF& area, Step step, Touch touch,
              const QPalette& palette);

/// The line between two halves of a control.
void drawParting(QPainter& painter, int x, const QRect& area, const QPalette& palette);

/// Makes a painter smooth, and faint for what is disabled, until it goes out of scope.
class Painting {
 public:
  Painting(QPainter& painter, const QStyleOption& option);
  ~Painting() { painter_.restore(); }
  Painting(const Painting&) = delete;
  Painting& operator=(const Painting&) = delete;

 private:
  QPainter& painter_;
};

}  // namespace lumora
