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

/// The click as the toolkit counts. Trays report it in its pixels or, `scale` times as many, in the
/// display's; the pointer that clicked stands at one of the two, else the tray is believed. Absent
/// for the origin, which trays report that do not know.
inline std::optional<ScreenPoint> clickedAt(ScreenPoint reported, ScreenPoint pointer,
                                            double scale) {
  constexpr int kNear = 48;
  const auto isNear = [&pointer](double x, double y) {
    return std::abs(x - pointer.x) <= kNear && std::abs(y - pointer.y) <= kNear;
  };
  if (reported == ScreenPoint{}) return std::nullopt;
  if (isNear(reported.x, reported.y) || isNear(reported.x / scale, reported.y / scale)) {
    return pointer;
  }
  return reported;
}

}  // namespace lumora
