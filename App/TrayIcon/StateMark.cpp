// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrayIcon/StateMark.h"

#include "TrayIcon/Drawing.h"

#include <vector>

namespace lumora {
namespace {

struct Point {
  double x;
  double y;
};
using Outline = std::vector<Point>;

/// A sign on a grid that is five units high: so many pixels has it in an icon of 16.
struct Mark {
  double width = 0;
  std::vector<Outline> outlines;
};

constexpr int kUnits = 5;

Outline rectangle(double x, double y, double width, double height) {
  return {{x, y}, {x + width, y}, {x + width, y + height}, {x, y + height}};
}

const Mark kPlug = {6,
                    {rectangle(1, 0, 1, 2),
                     rectangle(4, 0, 1, 2),
                     {{0, 2}, {6, 2}, {6, 3.5}, {4.5, 5}, {1.5, 5}, {0, 3.5}}}};
const Mark kBolt = {6,
                    {{{2.4, 0}, {5.4, 0}, {4, 1.8}, {6, 1.8}, {1.2, 5}, {2.4, 2.9}, {0.2, 2.9}}}};
// Pixel by pixel, because slanted edges blur into a spot.
const Mark kSmallestBolt = {6,
                            {rectangle(3, 0, 2, 1), rectangle(2, 1, 2, 1), rectangle(1, 2, 4, 1),
                             rectangle(2, 3, 2, 1), rectangle(1, 4, 2, 1)}};
const Mark kCheck = {7, {{{0, 2.6}, {1, 1.6}, {2.6, 3.1}, {6, 0}, {7, 1}, {2.6, 5}}}};
const Mark kExclamation = {2, {rectangle(0, 0, 2, 3), rectangle(0, 4, 2, 1)}};
const Mark kNone;

const Mark& mark(BatteryPicture picture, int height) {
  switch (picture) {
    case BatteryPicture::pluggedIn:
      return kPlug;
    case BatteryPicture::charging:
      return height > kUnits ? kBolt : kSmallestBolt;
    case BatteryPicture::full:
      return kCheck;
    case BatteryPicture::low:
      return kExclamation;
    case BatteryPicture::noBattery:
    case BatteryPicture::onBattery:
      break;
  }
  return kNone;
}

}  // namespace

int markWidth(BatteryPicture picture, int height) {
  return rounded(mark(picture, height).width * height / kUnits);
}

void addMark(cairo_t* cairo, BatteryPicture picture, int x, int y, int height) {
  for (const Outline& outline : mark(picture, height).outlines) {
    cairo_new_sub_path(cairo);
    for (const Point& point : outline) {
      cairo_line_to(cairo, x + point.x * height / kUnits, y + point.y * height / kUnits);
    }
    cairo_close_path(cairo);
  }
}

}  // namespace lumora
