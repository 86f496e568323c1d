// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
// Draws the tray's icons in their states and sizes on light, dark and coloured panels into one
// picture, to be looked at: tray_sheet FILE

#include "TrayIcon/TrayIcon.h"

#include <array>
#include <cstring>
#include <filesystem>
#include <memory>

#include <cairo.h>

namespace lumora::test {
namespace {

using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;
using Context = std::unique_ptr<cairo_t, decltype(&cairo_destroy)>;

constexpr int kGap = 8;
constexpr int kWidth = 1520;
constexpr int kRow = 48 + kGap;
constexpr int kMagnified = 5;
constexpr int kMagnifiedRow = 24 * kMagnified + kGap;
constexpr std::size_t kSizes = 5;  // 16 to 48 pixels.

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

/// Returns where the next one begins.
int place(cairo_t* cairo, const Icon& icon, int x, int y, int scale = 1) {
  const Surface surface = surfaceOf(icon);
  cairo_save(cairo);
  cairo_translate(cairo, x, y);
  cairo_scale(cairo, scale, scale);
  cairo_set_source_surface(cairo, surface.get(), 0, 0);
  cairo_pattern_set_filter(cairo_get_source(cairo), CAIRO_FILTER_NEAREST);
  cairo_paint(cairo);
  cairo_restore(cairo);
  return x + icon.width * scale + kGap;
}

constexpr std::array kPictures = {BatteryPicture::noBattery, BatteryPicture::onBattery,
                                  BatteryPicture::low,       BatteryPicture::pluggedIn,
                                  BatteryPicture::charging,  BatteryPicture::full};
constexpr std::array kPercents = {5, 9, 20, 50, 80, 100};
constexpr std::array kTexts = {"80%", "80% · 3:05", "3:05"};

/// A row of the squares of one picture, each percent in each size, and what may be wide.
void drawRow(cairo_t* cairo, BatteryPicture picture, int y) {
  int x = kGap;
  for (std::size_t size = 0; size < kSizes; ++size) {
    for (const int percent : kPercents) {
      x = place(cairo, drawTrayIcon({picture, percent, ""})[size], x, y);
    }
    x += kGap;
  }
  for (const char* text : kTexts) {
    x = place(cairo, drawTrayIcon({picture, 80, text})[1], x, y);
  }
}

/// The smallest, as through a magnifying glass.
void drawMagnified(cairo_t* cairo, BatteryPicture picture, int y) {
  int x = kGap;
  for (std::size_t size = 0; size < 3; ++size) {
    for (const int percent : {9, 20, 80, 100}) {
      x = place(cairo, drawTrayIcon({picture, percent, ""})[size], x, y, kMagnified);
    }
  }
  place(cairo, drawTrayIcon({picture, 80, "80%"})[0], x, y, kMagnified);
}

struct Panel {
  double red;
  double green;
  double blue;
};

constexpr std::array kPanels = {Panel{0.95, 0.95, 0.95}, Panel{0.16, 0.18, 0.20},
                                Panel{0, 0, 0},          Panel{0.20, 0.40, 0.64},
                                Panel{0.5, 0.5, 0.5},    Panel{0.75, 0.22, 0.17}};
constexpr std::size_t kMagnifiedPanels = 2;

}  // namespace
}  // namespace lumora::test

int main(int argc, char** argv) {
  using namespace lumora::test;
  const std::filesystem::path file = argc > 1 ? argv[1] : "tray.png";
  std::filesystem::create_directories(file.parent_path());
  constexpr int kRows = static_cast<int>(kPictures.size());
  constexpr int kPanelHeight = kRows * kRow;
  constexpr int kMagnifiedHeight = kRows * kMagnifiedRow;
  const int height = static_cast<int>(kPanels.size()) * kPanelHeight +
                     static_cast<int>(kMagnifiedPanels) * kMagnifiedHeight;
  const Surface sheet(cairo_image_surface_create(CAIRO_FORMAT_RGB24, kWidth, height),
                      cairo_surface_destroy);
  const Context cairo(cairo_create(sheet.get()), cairo_destroy);
  int y = 0;
  const auto onPanel = [&](const Panel& panel, int row, const auto& draw) {
    cairo_set_source_rgb(cairo.get(), panel.red, panel.green, panel.blue);
    cairo_rectangle(cairo.get(), 0, y, kWidth, kRows * row);
    cairo_fill(cairo.get());
    for (const lumora::BatteryPicture picture : kPictures) {
      draw(cairo.get(), picture, y + kGap / 2);
      y += row;
    }
  };
  for (std::size_t i = 0; i < kMagnifiedPanels; ++i) {
    onPanel(kPanels[i], kMagnifiedRow, drawMagnified);
  }
  for (const Panel& panel : kPanels) onPanel(panel, kRow, drawRow);
  return cairo_surface_write_to_png(sheet.get(), file.c_str()) == CAIRO_STATUS_SUCCESS ? 0 : 1;
}
