// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/ScreenPoint.h"
#include "Content/PopoverPlace.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <vector>

namespace lumora {

/// The two edges of a screen, or of what its panels leave of it, that a popover hangs on, and how
/// far from each, in pixels of the toolkit.
struct LayerPlace {
  bool atTop = true;
  bool atLeft = false;
  int marginX = kPopoverGap;
  int marginY = kPopoverGap;

  bool operator==(const LayerPlace&) const = default;
};

/// What Wayland does not tell of a desktop's panels.
struct Panels {
  bool atBottom = false;  ///< As long as nobody has changed that.
  int rise = 0;           ///< Beyond what they reserve of the screen, in pixels of the toolkit.
};

/// A screen as the toolkit counts, and how many of the tray's pixels on it are one of the
/// toolkit's.
struct TraysScreen {
  ScreenRect whole;
  double scale = 1;
};

/// A click on a tray's item on Wayland as the toolkit counts. The tray reports it in the toolkit's
/// pixels or in its own, in which it counts from the upper left corner of the screen; of the points
/// this may be, the one nearest to an edge of its screen is taken, where panels are. Absent where
/// it is on none, and where the tray does not know or counts from its own icon: a tray in the upper
/// left corner, as far as a wide icon goes, is not believed.
inline std::optional<ScreenPoint> clickedInLayer(ScreenPoint reported,
                                                 const std::vector<TraysScreen>& screens) {
  constexpr int kWidestIcon = 128;
  constexpr int kHighestPanel = 48;
  const bool fromIcon = reported.x >= 0 && reported.x < kWidestIcon &&  //
                        reported.y >= 0 && reported.y < kHighestPanel;
  if (fromIcon) return std::nullopt;
  std::optional<ScreenPoint> found;
  int least = std::numeric_limits<int>::max();
  for (const auto& [whole, scale] : screens) {
    for (const double each : {scale, 1.0}) {
      // A tray may report any number.
      const double x = whole.x + (static_cast<double>(reported.x) - whole.x) / each;
      const double y = whole.y + (static_cast<double>(reported.y) - whole.y) / each;
      if (x < whole.x || x > whole.right() || y < whole.y || y > whole.bottom()) continue;
      const ScreenPoint at{static_cast<int>(x), static_cast<int>(y)};
      const int toEdge = toNearestEdge(at, whole);
      if (toEdge >= least) continue;
      least = toEdge;
      found = at;
    }
  }
  return found;
}

/// Where a popover of `size` hangs that belongs to `click`: beside the panel that was clicked,
/// which is the one at the nearest edge, centred along it on the click. Without a click it stands
/// in the corner where the tray usually is: at the right, at the top unless panels are usually at
/// the bottom.
inline LayerPlace layerPlace(std::optional<ScreenPoint> click, ScreenSize size,
                             const ScreenRect& screen, const Panels& panels) {
  const int gap = kPopoverGap + panels.rise;
  if (!click) return {.atTop = !panels.atBottom, .marginY = gap};
  // The screen may have become smaller since.
  const int x = std::clamp(click->x, screen.x, screen.right());
  const int y = std::clamp(click->y, screen.y, screen.bottom());
  const int left = x - screen.x;
  const int right = screen.right() - x;
  const int top = y - screen.y;
  const int bottom = screen.bottom() - y;
  const int toSide = std::min(left, right);
  const int toTopOrBottom = std::min(top, bottom);
  LayerPlace place{.atTop = top < bottom, .atLeft = left < right};
  if (toTopOrBottom <= toSide) {
    place.marginX = std::max(kPopoverGap, toSide - size.width / 2);
    place.marginY = gap;
  } else {
    place.marginX = gap;
    place.marginY = std::max(kPopoverGap, toTopOrBottom - size.height / 2);
  }
  return place;
}

}  // namespace lumora
