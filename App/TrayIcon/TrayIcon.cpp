// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrayIcon/TrayIcon.h"

#include "TrayIcon/Glyphs.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <memory>

namespace lumora {
namespace {

constexpr std::array kSizes = {16, 22, 24, 32, 48, 64};
constexpr std::size_t kLongestText = 32;

struct Color {
  double red;
  double green;
  double blue;
  double alpha = 1;
};

// White stands out from each of them by more than 4.5 to 1.
constexpr Color kPlate = {0.20, 0.21, 0.23};
constexpr Color kOnBattery = {0.16, 0.40, 0.68};
constexpr Color kCharging = {0.10, 0.48, 0.22};
constexpr Color kLow = {0.74, 0.14, 0.12};
constexpr Color kPole = {0.50, 0.51, 0.53};
constexpr Color kText = {1, 1, 1};
constexpr Color kRim = {1, 1, 1, 0.30};

using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;
using Context = std::unique_ptr<cairo_t, decltype(&cairo_destroy)>;

int rounded(double value) { return static_cast<int>(std::lround(value)); }

void setColor(cairo_t* cairo, const Color& color) {
  cairo_set_source_rgba(cairo, color.red, color.green, color.blue, color.alpha);
}

void addRoundedRectangle(cairo_t* cairo, double x, double y, double width, double height,
                         double radius) {
  cairo_new_sub_path(cairo);
  cairo_arc(cairo, x + width - radius, y + radius, radius, -M_PI / 2, 0);
  cairo_arc(cairo, x + width - radius, y + height - radius, radius, 0, M_PI / 2);
  cairo_arc(cairo, x + radius, y + height - radius, radius, M_PI / 2, M_PI);
  cairo_arc(cairo, x + radius, y + radius, radius, M_PI, 3 * M_PI / 2);
  cairo_close_path(cairo);
}

/// The charge, 0 to 1: the number the text begins with, else what the symbol stands for.
double level(const DrawnIcon& icon) {
  int percent = 0;
  const char* end = icon.text.data() + icon.text.size();
  const auto read = std::from_chars(icon.text.data(), end, percent);
  const bool isPercent = read.ec == std::errc() && (read.ptr == end || *read.ptr == '%');
  if (isPercent) return std::clamp(percent, 0, 100) / 100.0;
  for (const auto& [name, value] : {std::pair("battery.0", 0.05),
                                    {"battery.25", 0.25},
                                    {"battery.50", 0.5},
                                    {"battery.75", 0.75}}) {
    if (icon.symbol == name) return value;
  }
  return 1;
}

Color color(const DrawnIcon& icon) {
  if (icon.symbol == "battery.0") return kLow;
  const bool powered =
      icon.symbol.find("bolt") != std::string::npos || icon.symbol == "battery.100percent";
  return powered ? kCharging : kOnBattery;
}

/// Fills the part of a clipped area that is charged.
void fillCharge(cairo_t* cairo, const DrawnIcon& icon, double x, double y, double width,
                double height) {
  setColor(cairo, color(icon));
  cairo_rectangle(cairo, x, y, width, height);
  cairo_fill(cairo);
}

/// A battery that stands, with the number on it.
void drawSquare(cairo_t* cairo, const DrawnIcon& icon, int side) {
  const int pole = std::max(1, rounded(side * 0.07));
  const double radius = side * 0.17;
  setColor(cairo, kPole);
  addRoundedRectangle(cairo, side * 0.31, 0, side * 0.38, 2.0 * pole, pole * 0.8);
  cairo_fill(cairo);

  cairo_save(cairo);
  addRoundedRectangle(cairo, 0, pole, side, side - pole, radius);
  cairo_clip(cairo);
  // The last of the charge would hardly be seen: all of it warns.
  setColor(cairo, icon.symbol == "battery.0" ? kLow : kPlate);
  cairo_paint(cairo);
  const int charge = rounded((side - pole) * level(icon));
  fillCharge(cairo, icon, 0, side - charge, side, charge);
  cairo_restore(cairo);
  const double rim = std::max(1.0, side / 32.0);
  setColor(cairo, kRim);
  cairo_set_line_width(cairo, rim);
  addRoundedRectangle(cairo, rim / 2, pole + rim / 2, side - rim, side - pole - rim,
                      radius - rim / 2);
  cairo_stroke(cairo);

  GlyphSize size{.height = rounded(side * 0.62),
                 .stroke = std::max(1, rounded(side * 0.105)),
                 .gap = std::max(1, rounded(side * 0.07))};
  const int room = side - 2 * std::max(1, rounded(side * 0.07));
  size.width = rounded(size.height * 0.66);
  while (size.width > 2 && textWidth(icon.text, size) > room) --size.width;
  while (size.stroke > 1 && size.width < 2 * size.stroke + 1) --size.stroke;
  const int width = textWidth(icon.text, size);
  setColor(cairo, kText);
  drawText(cairo, icon.text, (side - width + 1) / 2, pole + (side - pole - size.height + 1) / 2,
           size);
}

GlyphSize textBeside(int height) {
  const int digits = rounded(height * 0.56);
  return {.width = rounded(digits * 0.64),
          .height = digits,
          .stroke = std::max(1, rounded(height * 0.095)),
          .gap = std::max(1, rounded(height * 0.08))};
}

struct Layout {
  int margin;
  int symbol;  ///< Width of the battery.
  int text;
  int width;
};

Layout layOut(const DrawnIcon& icon, int height) {
  const int margin = rounded(height * 0.25);
  const int symbol = rounded(height * 0.95);
  const int text = textWidth(icon.text, textBeside(height));
  return {margin, symbol, text, margin + symbol + margin + text + margin};
}

/// A battery that lies, with its charge and, while charging, a bolt.
void drawLyingBattery(cairo_t* cairo, const DrawnIcon& icon, int x, int height, int width) {
  const int wall = std::max(1, rounded(height / 16.0));
  const int tall = rounded(height * 0.56);
  const int top = (height - tall + 1) / 2;
  const int pole = 2 * wall;
  const int body = width - pole;
  setColor(cairo, kText);
  cairo_set_line_width(cairo, wall);
  addRoundedRectangle(cairo, x + wall / 2.0, top + wall / 2.0, body - wall, tall - wall,
                      tall * 0.2);
  cairo_stroke(cairo);
  cairo_rectangle(cairo, x + body + wall / 2.0, top + tall / 3.0, 1.5 * wall, tall / 3.0);
  cairo_fill(cairo);
  const int room = body - 4 * wall;
  cairo_rectangle(cairo, x + 2 * wall, top + 2 * wall, std::max(1, rounded(room * level(icon))),
                  tall - 4 * wall);
  cairo_fill(cairo);
  if (icon.symbol.find("bolt") == std::string::npos) return;
  // Cut out of the charge, so that it is seen on it and beside it.
  const double unit = height / 16.0;
  const double centre = x + body / 2.0;
  const std::array<std::array<double, 2>, 6> bolt = {
      {{1.4, 2.5}, {-3.6, 8.8}, {-0.6, 8.8}, {-1.4, 13.5}, {3.6, 7.2}, {0.6, 7.2}}};
  for (const auto& [dx, dy] : bolt) cairo_line_to(cairo, centre + dx * unit, dy * unit);
  cairo_close_path(cairo);
  setColor(cairo, kCharging);
  cairo_set_line_width(cairo, 2.0 * wall);
  cairo_stroke_preserve(cairo);
  setColor(cairo, kText);
  cairo_fill(cairo);
}

void drawWide(cairo_t* cairo, const DrawnIcon& icon, int height) {
  const Layout layout = layOut(icon, height);
  const GlyphSize size = textBeside(height);
  const double rim = std::max(1.0, height / 32.0);
  const bool charging = icon.symbol.find("bolt") != std::string::npos;
  const bool low = icon.symbol == "battery.0";
  setColor(cairo, charging ? kCharging : (low ? kLow : kPlate));
  addRoundedRectangle(cairo, 0, 0, layout.width, height, height * 0.28);
  cairo_fill(cairo);
  setColor(cairo, kRim);
  cairo_set_line_width(cairo, rim);
  addRoundedRectangle(cairo, rim / 2, rim / 2, layout.width - rim, height - rim, height * 0.28);
  cairo_stroke(cairo);
  drawLyingBattery(cairo, icon, layout.margin, height, layout.symbol);
  setColor(cairo, kText);
  drawText(cairo, icon.text, 2 * layout.margin + layout.symbol, (height - size.height + 1) / 2,
           size);
}

/// From premultiplied pixels in the machine's byte order.
std::vector<std::uint8_t> networkOrder(cairo_surface_t* surface, int width, int height) {
  cairo_surface_flush(surface);
  const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(surface));
  const unsigned char* row = cairo_image_surface_get_data(surface);
  std::vector<std::uint8_t> argb;
  argb.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4);
  for (int y = 0; y < height; ++y, row += stride) {
    for (int x = 0; x < width; ++x) {
      std::uint32_t pixel = 0;
      std::memcpy(&pixel, row + 4 * static_cast<std::size_t>(x), sizeof pixel);
      const std::uint32_t alpha = pixel >> 24U;
      argb.push_back(static_cast<std::uint8_t>(alpha));
      for (const unsigned shift : {16U, 8U, 0U}) {
        const std::uint32_t part = (pixel >> shift) & 0xFFU;
        argb.push_back(
            static_cast<std::uint8_t>(alpha == 0 ? 0 : (part * 255 + alpha / 2) / alpha));
      }
    }
  }
  return argb;
}

}  // namespace

std::vector<Icon> drawTrayIcon(const DrawnIcon& whole) {
  DrawnIcon icon = whole;
  icon.text.resize(std::min(icon.text.size(), kLongestText));
  const bool wide = icon.place == TextPlace::wide;
  std::vector<Icon> icons;
  icons.reserve(kSizes.size());
  for (const int size : kSizes) {
    const int width = wide ? layOut(icon, size).width : size;
    const Surface surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, size),
                          cairo_surface_destroy);
    const Context context(cairo_create(surface.get()), cairo_destroy);
    if (wide) {
      drawWide(context.get(), icon, size);
    } else {
      drawSquare(context.get(), icon, size);
    }
    icons.push_back({width, size, networkOrder(surface.get(), width, size)});
  }
  return icons;
}

}  // namespace lumora
