// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/ViewsModule.h"

#include <algorithm>
#include <cmath>

namespace lumora {

struct ScreenSize {
  int width = 0;
  int height = 0;
};

struct ScreenRect {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
};

/// The top left corner of a popover of `size` that belongs to `click`: centred on it, below it in
/// the upper half of the screen and above it in the lower, and kept on the screen. Without a click
/// it is the corner where most desktops have their tray.
inline ScreenPoint popoverPlace(std::optional<ScreenPoint> click, ScreenSize size,
                                ScreenRect screen) {
  constexpr int kGap = 8;
  const int left = screen.x + kGap;
  const int top = screen.y + kGap;
  const int right = std::max(left, screen.x + screen.width - size.width - kGap);
  const int bottom = std::max(top, screen.y + screen.height - size.height - kGap);
  if (!click) return {right, top};
  const bool upperHalf = click->y < screen.y + screen.height / 2;
  const int y = upperHalf ? click->y + kGap : click->y - size.height - kGap;
  return {std::clamp(click->x - size.width / 2, left, right), std::clamp(y, top, bottom)};
}

/// Where the mouse is: as the toolkit counts, and in the display's pixels, `scale` of which are one
/// of the toolkit's.
struct Pointer {
  ScreenPoint at;
  ScreenPoint pixels;
  double scale = 1;
};

/// The click as the toolkit counts. Trays report it in the display's pixels or in larger ones of
/// the desktop; the pointer that clicked stands at one of the two, else the tray is believed.
/// Absent for the origin, which trays report that do not know.
inline std::optional<ScreenPoint> clickedAt(ScreenPoint reported, const Pointer& pointer) {
  const double near = 48 * pointer.scale;
  const auto isNear = [&](double x, double y) {
    return std::abs(x - pointer.pixels.x) <= near && std::abs(y - pointer.pixels.y) <= near;
  };
  if (reported == ScreenPoint{}) return std::nullopt;
  const bool isThere = isNear(reported.x, reported.y) ||
                       isNear(reported.x * pointer.scale, reported.y * pointer.scale);
  return isThere ? pointer.at : reported;
}

}  // namespace lumora
