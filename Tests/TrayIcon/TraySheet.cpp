// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
// Draws the tray's icons in their states and sizes on a light and on a dark panel into one picture,
// to be looked at: tray_sheet FILE

#include "TrayIcon/TrayIcon.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <memory>

#include <cairo.h>

namespace lumora::test {
namespace {

using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;
using Context = std::unique_ptr<cairo_t, decltype(&cairo_destroy)>;

constexpr int kWidth = 1180;
constexpr int kRow = 74;
constexpr int kMagnified = 3;

Surface surfaceOf(const Icon& icon) {
  Surface surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, icon.width, icon.height),
                  cairo_surface_destroy);
  unsigned char* row = cairo_image_surface_get_data(surface.get());
  const std::uint8_t* from = icon.argb.data();
  for (int y = 0; y < icon.height; ++y) {
    for (int x = 0; x < icon.width; ++x, from += 4) {
      const std::uint32_t alpha = from[0];
      const auto part = [&](int i) { return (from[i] * alpha + 127) / 255; };
      const std::uint32_t pixel = alpha << 24U | part(1) << 16U | part(2) << 8U | part(3);
      std::memcpy(row + 4 * static_cast<std::size_t>(x), &pixel, sizeof pixel);
    }
    row += cairo_image_surface_get_stride(surface.get());
  }
  cairo_surface_mark_dirty(surface.get());
  return surface;
}

int place(cairo_t* cairo, const Icon& icon, int x, int y, double scale, cairo_filter_t filter) {
  const Surface surface = surfaceOf(icon);
  cairo_save(cairo);
  cairo_translate(cairo, x, y);
  cairo_scale(cairo, scale, scale);
  cairo_set_source_surface(cairo, surface.get(), 0, 0);
  cairo_pattern_set_filter(cairo_get_source(cairo), filter);
  cairo_paint(cairo);
  cairo_restore(cairo);
  return x + static_cast<int>(icon.width * scale) + 8;
}

void drawRow(cairo_t* cairo, const DrawnIcon& drawn, int y) {
  const auto icons = drawTrayIcon(drawn);
  const int y0 = y + 5;
  int x = 8;
  for (const Icon& icon : icons) x = place(cairo, icon, x, y0, 1, CAIRO_FILTER_NEAREST);
  // As panels of 22 and 28 pixels make it out of the largest.
  for (const double height : {22.0, 28.0}) {
    x = place(cairo, icons.back(), x, y0, height / icons.back().height, CAIRO_FILTER_BEST);
  }
  if (drawn.place == TextPlace::wide) return;
  for (int i = 0; i < 3; ++i) {
    x = place(cairo, icons[static_cast<std::size_t>(i)], x, y0, kMagnified, CAIRO_FILTER_NEAREST);
  }
}

std::vector<DrawnIcon> states() {
  using enum TextPlace;
  return {
      {"battery.100", "100", inside},
      {"battery.75", "82", inside},
      {"battery.50", "46", inside},
      {"battery.25", "20", inside},
      {"battery.0", "7", inside},
      {"battery.100.bolt", "35", inside},
      {"powerplug.fill", "80", inside},
      {"battery.100percent", "100", inside},
      {"battery.75", "69", inside},
      {"battery.75", "82% · 3:05", wide},
      {"battery.100.bolt", "35% · 1:47", wide},
      {"battery.0", "7%", wide},
      {"battery.100percent", "100%", wide},
      {"battery.25", "2:46", wide},
  };
}

}  // namespace
}  // namespace lumora::test

int main(int argc, char** argv) {
  using namespace lumora::test;
  const std::filesystem::path file = argc > 1 ? argv[1] : "tray.png";
  std::filesystem::create_directories(file.parent_path());
  const auto states = lumora::test::states();
  const int height = static_cast<int>(states.size()) * kRow;
  const Surface sheet(cairo_image_surface_create(CAIRO_FORMAT_RGB24, 2 * kWidth, height),
                      cairo_surface_destroy);
  const Context cairo(cairo_create(sheet.get()), cairo_destroy);
  for (const double panel : {0.95, 0.17}) {
    cairo_set_source_rgb(cairo.get(), panel, panel, panel);
    cairo_paint(cairo.get());
    for (std::size_t i = 0; i < states.size(); ++i) {
      drawRow(cairo.get(), states[i], static_cast<int>(i) * kRow);
    }
    cairo_rectangle(cairo.get(), kWidth, 0, kWidth, height);
    cairo_clip(cairo.get());
    cairo_translate(cairo.get(), kWidth, 0);
  }
  return cairo_surface_write_to_png(sheet.get(), file.c_str()) == CAIRO_STATUS_SUCCESS ? 0 : 1;
}
