// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrayIcon/Glyphs.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

namespace lumora {
namespace {

struct Point {
  double x;
  double y;
};

/// A line through points of the unit square, with its corners rounded; a point that comes twice is
/// a sharp one.
struct Line {
  std::vector<Point> points;
  bool closed = false;
};

struct Glyph {
  std::vector<Line> lines;
  double width = 1;  ///< Of a digit's.
};

const Line kFrame = {{{0, 0}, {1, 0}, {1, 1}, {0, 1}}, true};

/// Squarish figures, which stay legible when they are few pixels high.
Glyph digit(char character) {
  switch (character) {
    case '0':
      return {{kFrame}};
    case '1':
      return {{{{{0, 0.2}, {1, 0}, {1, 1}}}}, 0.5};
    case '2':
      return {{{{{0, 0}, {1, 0}, {1, 0.5}, {0, 0.5}, {0, 1}, {1, 1}}}}};
    case '3':
      return {{{{{0, 0}, {1, 0}, {1, 1}, {0, 1}}}, {{{0.25, 0.5}, {1, 0.5}}}}};
    case '4':
      return {{{{{0, 0}, {0, 0.62}, {1, 0.62}}}, {{{1, 0}, {1, 1}}}}};
    case '5':
      return {{{{{1, 0}, {0, 0}, {0, 0}, {0, 0.45}, {0, 0.45}, {1, 0.45}, {1, 1}, {0, 1}}}}};
    case '6':
      return {{{{{1, 0}, {0, 0}, {0, 1}, {1, 1}, {1, 0.45}, {0, 0.45}}}}};
    case '7':
      return {{{{{0, 0}, {1, 0}, {0.4, 1}}}}};
    case '8':
      return {{kFrame, {{{0, 0.5}, {1, 0.5}}}}};
    default:
      return {{{{{1, 0.55}, {0, 0.55}, {0, 0}, {1, 0}, {1, 1}, {0, 1}}}}};
  }
}

/// The next character of a text in UTF-8, a middle dot as '.'; 0 for one that is not known.
char take(std::string_view& text) {
  constexpr std::string_view kMiddleDot = "·";
  if (text.starts_with(kMiddleDot)) {
    text.remove_prefix(kMiddleDot.size());
    return '.';
  }
  const char character = text.front();
  text.remove_prefix(1);
  return std::string_view("0123456789%: ").find(character) == std::string_view::npos ? '\0'
                                                                                     : character;
}

bool isDigit(char character) { return character >= '0' && character <= '9'; }

int widthOf(char character, const GlyphSize& size) {
  if (isDigit(character)) {
    const double width = digit(character).width * size.width;
    return std::max(size.stroke, static_cast<int>(std::lround(width)));
  }
  if (character == '%') return size.width + std::max(2, size.stroke);
  return character == ' ' ? std::max(1, size.width / 4) : size.stroke;
}

/// One corner of a line: cut off and bent by the radius.
void bend(cairo_t* cairo, Point before, Point corner, Point after, double radius) {
  const auto towards = [&](Point other) {
    const double length = std::hypot(other.x - corner.x, other.y - corner.y);
    const double share = std::min(0.5, length > 0 ? radius / length : 0);
    return Point{corner.x + (other.x - corner.x) * share, corner.y + (other.y - corner.y) * share};
  };
  const Point from = towards(before);
  const Point to = towards(after);
  cairo_line_to(cairo, from.x, from.y);
  cairo_curve_to(cairo, (from.x + 2 * corner.x) / 3, (from.y + 2 * corner.y) / 3,
                 (to.x + 2 * corner.x) / 3, (to.y + 2 * corner.y) / 3, to.x, to.y);
}

void strokeLine(cairo_t* cairo, const std::vector<Point>& points, bool closed, double radius) {
  const std::size_t count = points.size();
  const auto middle = [](Point one, Point other) {
    return Point{(one.x + other.x) / 2, (one.y + other.y) / 2};
  };
  const Point start = closed ? middle(points.back(), points.front()) : points.front();
  cairo_move_to(cairo, start.x, start.y);
  for (std::size_t i = closed ? 0 : 1; i + (closed ? 0 : 1) < count; ++i) {
    bend(cairo, points[(i + count - 1) % count], points[i], points[(i + 1) % count], radius);
  }
  if (closed) {
    cairo_close_path(cairo);
  } else {
    cairo_line_to(cairo, points.back().x, points.back().y);
  }
  cairo_stroke(cairo);
}

void drawDigit(cairo_t* cairo, char character, int x, int y, const GlyphSize& size) {
  const Glyph glyph = digit(character);
  const double half = size.stroke / 2.0;
  const int width = widthOf(character, size);
  // Lines run along the middle of whole pixels.
  const auto place = [&](Point point) {
    return Point{x + half + std::round(point.x * (width - size.stroke)),
                 y + half + std::round(point.y * (size.height - size.stroke))};
  };
  for (const Line& line : glyph.lines) {
    std::vector<Point> points;
    points.reserve(line.points.size());
    for (const Point& point : line.points) points.push_back(place(point));
    strokeLine(cairo, points, line.closed, size.stroke);
  }
}

void drawPercentSign(cairo_t* cairo, int x, int y, const GlyphSize& size) {
  const int width = widthOf('%', size);
  const double stroke = std::max(1.0, size.stroke * 0.75);
  const double radius = (std::min(width, size.height) - stroke) / 4;
  cairo_set_line_width(cairo, stroke);
  for (const double side : {-1.0, 1.0}) {
    const double inset = radius + stroke / 2;
    cairo_new_sub_path(cairo);
    cairo_arc(cairo, side < 0 ? x + inset : x + width - inset,
              side < 0 ? y + inset : y + size.height - inset, radius, 0, 2 * M_PI);
    cairo_stroke(cairo);
  }
  cairo_move_to(cairo, x + width - stroke, y + stroke / 2);
  cairo_line_to(cairo, x + stroke, y + size.height - stroke / 2);
  cairo_stroke(cairo);
  cairo_set_line_width(cairo, size.stroke);
}

void drawDot(cairo_t* cairo, int x, double y, const GlyphSize& size) {
  cairo_rectangle(cairo, x, std::round(y - size.stroke / 2.0), size.stroke, size.stroke);
  cairo_fill(cairo);
}

}  // namespace

int textWidth(std::string_view text, const GlyphSize& size) {
  int width = 0;
  while (!text.empty()) {
    const char character = take(text);
    if (character == '\0') continue;
    width += (width > 0 ? size.gap : 0) + widthOf(character, size);
  }
  return width;
}

void drawText(cairo_t* cairo, std::string_view text, int x, int y, const GlyphSize& size) {
  cairo_set_line_width(cairo, size.stroke);
  cairo_set_line_cap(cairo, CAIRO_LINE_CAP_BUTT);
  cairo_set_line_join(cairo, CAIRO_LINE_JOIN_MITER);
  while (!text.empty()) {
    const char character = take(text);
    if (character == '\0') continue;
    if (isDigit(character)) drawDigit(cairo, character, x, y, size);
    if (character == '%') drawPercentSign(cairo, x, y, size);
    if (character == '.') drawDot(cairo, x, y + size.height / 2.0, size);
    if (character == ':') {
      drawDot(cairo, x, y + size.height * 0.3, size);
      drawDot(cairo, x, y + size.height * 0.75, size);
    }
    x += widthOf(character, size) + size.gap;
  }
}

}  // namespace lumora
