// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/ScreenPoint.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace lumora {

/// Pixels of the toolkit.
struct ScreenSize {
  int width = 0;
  int height = 0;
};

/// A rectangle on the display, from its left and top edge, in pixels of the toolkit.
struct ScreenRect {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;

  int right() const { return x + width; }
  int bottom() const { return y + height; }
};

/// How far a point within a rectangle is from its nearest edge.
inline int toNearestEdge(ScreenPoint at, const ScreenRect& of) {
  return std::min({at.x - of.x, of.right() - at.x, at.y - of.y, of.bottom() - at.y});
}

/// A monitor, and the part of it that no panel covers.
struct Screen {
  ScreenRect whole;
  ScreenRect free;
};

/// Between the popover and the click, a panel or the screen's edge.
inline constexpr int kPopoverGap = 8;

/// The most of a screen that a popover may take: what is higher scrolls.
inline int popoverHeight(int wanted, const Screen& screen) {
  return std::min(wanted, std::max(0, screen.free.height - 2 * kPopoverGap));
}

/// The top left corner of a popover of `size` that belongs to `click`: centred on it, below it in
/// the upper half of the screen and above it in the lower, and kept on the screen. Without a click
/// it stands where the tray usually is: at the right end of the panel at the top or else at the
/// bottom, or at the lower end of one at a side; at the top right where no panel is known.
inline ScreenPoint popoverPlace(std::optional<ScreenPoint> click, ScreenSize size,
                                const Screen& screen) {
  const ScreenRect& free = screen.free;
  const int left = free.x + kPopoverGap;
  const int top = free.y + kPopoverGap;
  const int right = std::max(left, free.right() - size.width - kPopoverGap);
  const int bottom = std::max(top, free.bottom() - size.height - kPopoverGap);
  if (!click) {
    const bool panelAtTop = free.y > screen.whole.y;
    const bool panelAtBottom = free.bottom() < screen.whole.bottom();
    const bool panelAtLeft = free.x > screen.whole.x;
    const bool panelAtRight = free.right() < screen.whole.right();
    if (panelAtTop) return {right, top};
    if (panelAtBottom || panelAtRight) return {right, bottom};
    return panelAtLeft ? ScreenPoint{left, bottom} : ScreenPoint{right, top};
  }
  // A tray may report any number.
  const int x = std::clamp(click->x, free.x, free.right());
  const int y = std::clamp(click->y, free.y, free.bottom());
  const bool upperHalf = y < free.y + free.height / 2;
  return {std::clamp(x - size.width / 2, left, right),
          std::clamp(upperHalf ? y + kPopoverGap : y - size.height - kPopoverGap, top, bottom)};
}

/// Where a point of a screen is once that has another size or scale: as far from the two edges
/// nearest to it, as what is at the ends of a panel. `unit` is how many pixels of the toolkit are
/// now as far as one was: 1 where panels grow with the scale. What is not on the screen counts as
/// at its edge.
inline ScreenPoint carriedOver(ScreenPoint at, const ScreenRect& before, const ScreenRect& now,
                               double unit = 1) {
  const auto along = [unit](int value, int begin, int end, int nowBegin, int nowEnd) {
    const int here = std::clamp(value, begin, end);
    const bool nearBegin = here - begin < end - here;
    const double distance = unit * (nearBegin ? here - begin : here - end);
    const double there = (nearBegin ? nowBegin : nowEnd) + distance;
    return static_cast<int>(std::lround(std::clamp<double>(there, nowBegin, nowEnd)));
  };
  return {along(at.x, before.x, before.right(), now.x, now.right()),
          along(at.y, before.y, before.bottom(), now.y, now.bottom())};
}

/// Where the mouse is: as the toolkit counts, and in the display's pixels, `scale` of which are one
/// of the toolkit's; and the whole screen that it is on, as the toolkit counts.
struct Pointer {
  ScreenPoint at;
  ScreenPoint pixels;
  double scale = 1;
  ScreenRect screen;
};

/// The click as the toolkit counts. Trays report it in the display's pixels or in larger ones of
/// the desktop, MATE's from the corner of its panel; the pointer that clicked stands at one of the
/// first two, or at an edge of its screen, where panels are. Else the tray is believed. Absent for
/// the origin, which trays report that do not know.
inline std::optional<ScreenPoint> clickedAt(ScreenPoint reported, const Pointer& pointer) {
  constexpr int kPanel = 48;
  const double near = kPanel * pointer.scale;
  const auto isNear = [&](double x, double y) {
    return std::abs(x - pointer.pixels.x) <= near && std::abs(y - pointer.pixels.y) <= near;
  };
  if (reported == ScreenPoint{}) return std::nullopt;
  const bool isThere = toNearestEdge(pointer.at, pointer.screen) < kPanel ||
                       isNear(reported.x, reported.y) ||
                       isNear(reported.x * pointer.scale, reported.y * pointer.scale);
  return isThere ? pointer.at : reported;
}

}  // namespace lumora
