// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cmath>

#include <cairo.h>

namespace lumora {

struct Color {
  double red = 0;
  double green = 0;
  double blue = 0;
  double alpha = 1;
};

/// To the nearest whole pixel, halves away from zero.
inline int rounded(double value) { return static_cast<int>(std::lround(value)); }

/// Draws in this colour from now on.
inline void setColor(cairo_t* cairo, const Color& color) {
  cairo_set_source_rgba(cairo, color.red, color.green, color.blue, color.alpha);
}

/// Adds a rectangle with round corners to the path; `x` and `y` are its top left corner, in pixels.
inline void addRoundedRectangle(cairo_t* cairo, double x, double y, double width, double height,
                                double radius) {
  cairo_new_sub_path(cairo);
  cairo_arc(cairo, x + width - radius, y + radius, radius, -M_PI / 2, 0);
  cairo_arc(cairo, x + width - radius, y + height - radius, radius, 0, M_PI / 2);
  cairo_arc(cairo, x + radius, y + height - radius, radius, M_PI / 2, M_PI);
  cairo_arc(cairo, x + radius, y + radius, radius, M_PI, 3 * M_PI / 2);
  cairo_close_path(cairo);
}

}  // namespace lumora
